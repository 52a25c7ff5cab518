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

} // namespace
} // namespace velmora::test
