// The three library dialogs, driven through their widgets: saving a node, inserting products
// from the library and managing it, each checked against the library folder on disk.

#include "dialog_harness.h"
#include "library/product_library.h"

#include <filesystem>
#include <fstream>

#include <QComboBox>
#include <QLabel>
#include <QTreeWidget>

namespace velmora::test {
namespace {

using Kind = DialogRequest::Kind;
namespace fs = std::filesystem;

class LibraryDialogs : public DialogHarness {
protected:
    ProductLibrary Library() const { return ProductLibrary(LibraryDirectory(app_.AppDir())); }

    // The drive of slot 0 stored as product name of category; the slot is freed again.
    void StoreDrive(const std::string& category, const std::string& name) {
        Node& drive = app_.AddDrive(0);
        ASSERT_TRUE(Library().Save(category, name, drive, false).Done());
        ClearNode(app_.Ws().Net, 0);
        --app_.Ws().Net.NodeCount;
    }
    int ParametersStored(const std::string& category, const std::string& name) const {
        Node product;
        EXPECT_TRUE(Library().Load(category, name, product).Done());
        return product.ParameterCount;
    }

    // Clicks the item of a library tree: a category, or product of category.
    static void Choose(QDialog& dialog, const QString& category, const QString& product = {}) {
        QTreeWidget* tree = Find<QTreeWidget>(dialog, "library");
        const auto found = tree->findItems(category, Qt::MatchExactly);
        ASSERT_EQ(found.size(), 1) << category.toStdString();
        QTreeWidgetItem* item = found[0];
        for (int i = 0; !product.isEmpty() && i < found[0]->childCount(); ++i) {
            if (found[0]->child(i)->text(0) == product) {
                item = found[0]->child(i);
            }
        }
        ASSERT_TRUE(product.isEmpty() || item != found[0]) << product.toStdString();
        tree->scrollToItem(item);
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {},
                          tree->visualItemRect(item).center());
    }
    // The library tree as "category: product product | category: ...".
    static std::string Shown(QDialog& dialog) {
        QTreeWidget* tree = Find<QTreeWidget>(dialog, "library");
        std::string text;
        for (int c = 0; c < tree->topLevelItemCount(); ++c) {
            text += (c > 0 ? " | " : "") + tree->topLevelItem(c)->text(0).toStdString() + ":";
            for (int p = 0; p < tree->topLevelItem(c)->childCount(); ++p) {
                text += " " + tree->topLevelItem(c)->child(p)->text(0).toStdString();
            }
        }
        return text;
    }
    std::string LastShown() const { return dialogs_.shown.empty() ? "" : dialogs_.shown.back(); }
    std::string LastAlert() const {
        return alerts_.shown.empty()
                   ? ""
                   : alerts_.shown.back().Line1 + "|" + alerts_.shown.back().Line2;
    }
};

// --- Salva nodo in libreria ---

TEST_F(LibraryDialogs, SaveRefusesABadNameThenCreatesTheCategoryOnDisk) {
    app_.AddDrive(4);
    const bool changed = OpenWith({Kind::SaveToLibrary, 4}, [this](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Salva nodo in libreria");
        EXPECT_EQ(Find<QComboBox>(dialog, "category")->count(), 0);
        EXPECT_EQ(Find<QLineEdit>(dialog, "productName")->text(), "drive");

        Type(dialog, "categoryText", "Azionamenti");
        Type(dialog, "productName", "asse/1");
        Click(dialog, "save");
        EXPECT_EQ(LastShown(), "Inform: Errore | Nome del prodotto non valido (\"asse/1\"): "
                               "non può contenere \"/\"");
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_FALSE(fs::exists(Library().CategoryPath("Azionamenti")));
        EXPECT_EQ(Find<QLineEdit>(dialog, "productName")->text(), "asse/1"); // to correct

        Type(dialog, "productName", "asse 1");
        Picture(dialog, "save-to-library");
        QTest::keyClick(Find<QLineEdit>(dialog, "productName"), Qt::Key_Return);
        EXPECT_TRUE(dialog.isVisible()); // Enter is not Save
        Click(dialog, "save");
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_FALSE(changed); // the library is not the network
    EXPECT_TRUE(fs::is_regular_file(Library().ProductPath("Azionamenti", "asse 1")));
}

TEST_F(LibraryDialogs, SaveOffersTheCategoriesAndReplacesOnlyAfterYes) {
    StoreDrive("Azionamenti", "drive");
    ASSERT_TRUE(Library().CreateCategory("Sensori").Done());
    Node& drive = app_.AddDrive(2);
    drive.ParameterAt(0) = {"Modes of operation", "6060", "0", "1", "1", kTrue};
    drive.ParameterCount = 1;

    dialogs_.yesNoAnswers = {false, true};
    OpenWith({Kind::SaveToLibrary, 2}, [this](QDialog& dialog) {
        auto* category = Find<QComboBox>(dialog, "category");
        ASSERT_EQ(category->count(), 2);
        EXPECT_EQ(category->currentText(), "Azionamenti");
        // Down picks the next category as a choice of the list does.
        QTest::keyClick(category, Qt::Key_Down);
        EXPECT_EQ(category->currentText(), "Sensori");
        QTest::keyClick(category, Qt::Key_Up);

        Click(dialog, "save");
        EXPECT_EQ(LastShown(), "YesNo: Salva nodo in libreria | Il prodotto \"drive\" esiste "
                               "già nella categoria \"Azionamenti\". Sostituirlo?");
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(ParametersStored("Azionamenti", "drive"), 0);
        Click(dialog, "save");
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_EQ(ParametersStored("Azionamenti", "drive"), 1);
    EXPECT_FALSE(fs::exists(Library().ProductPath("Sensori", "drive")));
}

// --- Prendi nodo da libreria ---

TEST_F(LibraryDialogs, InsertPutsCopiesAtSuccessiveFreeNumbers) {
    StoreDrive("Azionamenti", "drive");
    app_.AddDrive(2); // node 3 is taken
    const bool changed = OpenWith({Kind::TakeFromLibrary}, [this](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Prendi nodo da libreria");
        EXPECT_EQ(Shown(dialog), "Azionamenti: drive");
        EXPECT_FALSE(Find<QLabel>(dialog, "problems")->isVisibleTo(&dialog));

        Type(dialog, "nodeNumber", "2");
        Click(dialog, "ok");
        EXPECT_EQ(LastAlert(), "Selezionare un prodotto dalla libreria|");

        Choose(dialog, "Azionamenti", "drive");
        EXPECT_EQ(Find<QLabel>(dialog, "details")->text(),
                  "EDS: drive.eds\nPDO TX: 2\nPDO RX: 1\nParametri: 0");
        Type(dialog, "copies", "0");
        Click(dialog, "ok");
        EXPECT_EQ(LastAlert(), "Numero di copie non valido:|inserire un numero da 1 a 501");
        EXPECT_EQ(app_.Ws().Net.NodeCount, 1);

        Type(dialog, "copies", "2");
        Click(dialog, "ok");
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_TRUE(changed);
    EXPECT_EQ(app_.Ws().Net.NodeCount, 3);
    EXPECT_EQ(app_.Ws().Net.NodeAt(1).EdsName, "drive"); // node 2
    EXPECT_NE(app_.Ws().Net.NodeAt(3).InUse, 0);         // node 4, past the taken 3
    EXPECT_EQ(app_.Ws().Net.NodeAt(4).InUse, 0);
    EXPECT_EQ(tree_.CollapseOnRebuild(), 1);
}

TEST_F(LibraryDialogs, InsertTakesTheListAllOrNothing) {
    StoreDrive("Azionamenti", "drive");
    StoreDrive("Azionamenti", "drive bis");
    app_.AddDrive(0);
    OpenWith({Kind::TakeFromLibrary}, [this](QDialog& dialog) {
        Choose(dialog, "Azionamenti", "drive");
        Type(dialog, "nodeNumber", "5");
        Click(dialog, "add");
        Choose(dialog, "Azionamenti", "drive bis");
        Type(dialog, "nodeNumber", "1");
        Click(dialog, "add");
        auto* entries = Find<QTreeWidget>(dialog, "entries");
        ASSERT_EQ(entries->topLevelItemCount(), 2);
        EXPECT_EQ(entries->topLevelItem(1)->text(1), "drive bis");
        EXPECT_EQ(entries->topLevelItem(1)->text(2), "1");
        Picture(dialog, "library-insert");

        Click(dialog, "ok");
        EXPECT_EQ(LastAlert(), "Il nodo 1 è già occupato da drive|");
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(app_.Ws().Net.NodeAt(4).InUse, 0); // nothing half-inserted
        EXPECT_EQ(tree_.CollapseOnRebuild(), 0);

        auto* remove = Find<QAbstractButton>(dialog, "removeEntry");
        EXPECT_FALSE(remove->isEnabled());
        QTest::mouseClick(entries->viewport(), Qt::LeftButton, {},
                          entries->visualItemRect(entries->topLevelItem(1)).center());
        Click(dialog, "removeEntry");
        ASSERT_EQ(entries->topLevelItemCount(), 1);
        Type(dialog, "nodeNumber", "6");
        Click(dialog, "add");
        Click(dialog, "ok");
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_EQ(app_.Ws().Net.NodeCount, 3);
    EXPECT_NE(app_.Ws().Net.NodeAt(4).InUse, 0);
    EXPECT_NE(app_.Ws().Net.NodeAt(5).InUse, 0);
}

// --- Modifica nodo in libreria ---

TEST_F(LibraryDialogs, ManagerChangesTheDiskAndShowsItAgain) {
    StoreDrive("Azionamenti", "drive");
    StoreDrive("Azionamenti", "vecchio");
    const bool changed = OpenWith({Kind::EditLibrary}, [this](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Modifica nodo in libreria");
        EXPECT_EQ(Shown(dialog), "Azionamenti: drive vecchio");

        Choose(dialog, "Azionamenti", "drive");
        EXPECT_EQ(Find<QLineEdit>(dialog, "name")->text(), "drive");
        Type(dialog, "name", "asse X");
        Click(dialog, "rename");
        EXPECT_TRUE(fs::exists(Library().ProductPath("Azionamenti", "asse X")));
        EXPECT_EQ(Shown(dialog), "Azionamenti: asse X vecchio");
        EXPECT_EQ(Find<QTreeWidget>(dialog, "library")->currentItem()->text(0), "asse X");

        Type(dialog, "name", "Sensori");
        Click(dialog, "newCategory");
        EXPECT_TRUE(fs::is_directory(Library().CategoryPath("Sensori")));
        Choose(dialog, "Azionamenti", "asse X");
        auto* target = Find<QComboBox>(dialog, "target");
        target->setCurrentIndex(target->findText("Sensori"));
        Click(dialog, "move");
        EXPECT_TRUE(fs::exists(Library().ProductPath("Sensori", "asse X")));
        EXPECT_EQ(Shown(dialog), "Azionamenti: vecchio | Sensori: asse X");

        dialogs_.yesNoAnswers = {false, true};
        Choose(dialog, "Azionamenti", "vecchio");
        Click(dialog, "removeProduct");
        EXPECT_TRUE(fs::exists(Library().ProductPath("Azionamenti", "vecchio")));
        Click(dialog, "removeProduct");
        EXPECT_EQ(LastShown(), "YesNo: Modifica nodo in libreria | Rimuovere il prodotto "
                               "\"vecchio\" dalla categoria \"Azionamenti\"?");
        EXPECT_FALSE(fs::exists(Library().ProductPath("Azionamenti", "vecchio")));
        EXPECT_EQ(Shown(dialog), "Azionamenti: | Sensori: asse X");

        // Another program adds a product; Aggiorna shows it.
        app_.AddDrive(9);
        ASSERT_TRUE(Library().Save("Sensori", "encoder", app_.Ws().Net.NodeAt(9), false).Done());
        EXPECT_EQ(Shown(dialog), "Azionamenti: | Sensori: asse X");
        Click(dialog, "refresh");
        EXPECT_EQ(Shown(dialog), "Azionamenti: | Sensori: asse X encoder");
        Picture(dialog, "library-manager");
        QTest::keyClick(&dialog, Qt::Key_Escape);
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_FALSE(changed);
}

TEST_F(LibraryDialogs, ManagerRefusesThroughTheMessageAndRemovesOnlyEmptyCategories) {
    StoreDrive("Azionamenti", "drive");
    ASSERT_TRUE(Library().CreateCategory("Vuota").Done());
    OpenWith({Kind::EditLibrary}, [this](QDialog& dialog) {
        Choose(dialog, "Azionamenti");
        EXPECT_FALSE(Find<QAbstractButton>(dialog, "removeProduct")->isEnabled());
        EXPECT_FALSE(Find<QAbstractButton>(dialog, "move")->isEnabled());
        Type(dialog, "name", "Vuota");
        Click(dialog, "rename");
        EXPECT_EQ(LastShown(), "Inform: Errore | La categoria \"Vuota\" esiste già");
        EXPECT_EQ(Find<QLineEdit>(dialog, "name")->text(), "Vuota"); // left to correct

        dialogs_.yesNoAnswers = {true, true};
        Click(dialog, "removeCategory");
        EXPECT_EQ(LastShown(), "Inform: Errore | La categoria \"Azionamenti\" non è vuota");
        EXPECT_TRUE(fs::exists(Library().ProductPath("Azionamenti", "drive")));
        Choose(dialog, "Vuota");
        Click(dialog, "removeCategory");
        EXPECT_FALSE(fs::exists(Library().CategoryPath("Vuota")));
        EXPECT_EQ(Shown(dialog), "Azionamenti: drive");
    });
}

// --- A damaged product file ---

TEST_F(LibraryDialogs, ADamagedProductIsNamedAndTheOthersStayListed) {
    StoreDrive("Azionamenti", "drive");
    const std::string damaged = Library().ProductPath("Azionamenti", "rotto");
    std::ofstream(damaged) << "questo non è un prodotto\n";

    for (const Kind kind : {Kind::TakeFromLibrary, Kind::EditLibrary}) {
        OpenWith({kind}, [&](QDialog& dialog) {
            EXPECT_EQ(Shown(dialog), "Azionamenti: drive");
            auto* problems = Find<QLabel>(dialog, "problems");
            EXPECT_TRUE(problems->isVisibleTo(&dialog));
            const QStringList lines = problems->text().split('\n');
            ASSERT_EQ(lines.size(), 2) << problems->text().toStdString();
            EXPECT_EQ(lines[0], "Prodotti non leggibili:");
            EXPECT_TRUE(lines[1].contains(QString::fromStdString(damaged)));
            if (kind == Kind::EditLibrary) {
                Picture(dialog, "library-manager-damaged");
            }
        });
    }

    // Removed by hand: Aggiorna forgets it.
    OpenWith({Kind::EditLibrary}, [&](QDialog& dialog) {
        fs::remove(damaged);
        Click(dialog, "refresh");
        EXPECT_FALSE(Find<QLabel>(dialog, "problems")->isVisibleTo(&dialog));
    });
}

} // namespace
} // namespace velmora::test
