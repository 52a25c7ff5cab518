// The add-node, modify-node and paste dialogs, driven through their widgets.

#include "dialog_harness.h"

#include <filesystem>

#include <QLabel>
#include <QListWidget>

namespace velmora::test {
namespace {

using Kind = DialogRequest::Kind;

class NodeDialogs : public DialogHarness {
protected:
    NodeDialogs() { app_.WriteEds("drive.eds", kDriveEds); }

    static void ChooseProduct(QDialog& dialog, const QString& product) {
        QListWidget* list = Find<QListWidget>(dialog, "products");
        const auto items = list->findItems(product, Qt::MatchExactly);
        ASSERT_EQ(items.size(), 1);
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                          list->visualItemRect(items[0]).center());
    }
    std::string LastAlert() const {
        return alerts_.shown.empty()
                   ? ""
                   : alerts_.shown.back().Line1 + "|" + alerts_.shown.back().Line2;
    }
};

TEST_F(NodeDialogs, AddNodeRefusesThroughTheAlertAndCreatesOnOk) {
    app_.AddDrive(2);
    const bool changed = OpenWith({Kind::AddNode}, [this](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Aggiungi nodo");
        QListWidget* list = Find<QListWidget>(dialog, "products");
        ASSERT_EQ(list->count(), 1);
        EXPECT_EQ(list->item(0)->text(), "drive");
        EXPECT_EQ(list->currentRow(), -1);
        EXPECT_TRUE(Find<QLineEdit>(dialog, "nodeNumber")->text().isEmpty());
        Picture(dialog, "add-node");

        Type(dialog, "nodeNumber", "5");
        Click(dialog, "ok");
        EXPECT_EQ(LastAlert(), "Selezionare un prodotto dalla lista|");
        EXPECT_TRUE(dialog.isVisible());

        ChooseProduct(dialog, "drive");
        EXPECT_EQ(Find<QLabel>(dialog, "description")->text(),
                  "Costruttore: \nProdotto: \nPDO TX: 2   PDO RX: 1");
        Type(dialog, "nodeNumber", "502");
        Click(dialog, "ok");
        EXPECT_EQ(LastAlert(), "Numero nodo non valido:|inserire un numero da 1 a 501");

        Type(dialog, "nodeNumber", "3");
        Click(dialog, "ok");
        EXPECT_EQ(LastAlert(), "Il nodo 3 è già occupato da drive|");
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(app_.Ws().Net.NodeCount, 1);

        Type(dialog, "nodeNumber", "5");
        QTest::keyClick(Find<QLineEdit>(dialog, "nodeNumber"), Qt::Key_Return);
        EXPECT_TRUE(dialog.isVisible()); // Enter is not OK
        Click(dialog, "ok");
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_TRUE(changed);
    EXPECT_EQ(alerts_.shown.size(), 3u);
    EXPECT_NE(app_.Ws().Net.NodeAt(4).InUse, 0);
    EXPECT_EQ(app_.Ws().Net.NodeAt(4).EdsName, "drive");
}

TEST_F(NodeDialogs, ModifyShowsTheNodeAndAMissingEdsIsShownWithTheDialogOpen) {
    app_.AddDrive(2);
    const bool changed = OpenWith({Kind::ModifyNode, 2}, [this](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Modifica nodo");
        EXPECT_EQ(Find<QListWidget>(dialog, "products")->currentRow(), 0);
        EXPECT_EQ(Find<QLineEdit>(dialog, "nodeNumber")->text(), "3");
        Click(dialog, "cancel");
    });
    EXPECT_FALSE(changed);

    OpenWith({Kind::AddNode}, [this](QDialog& dialog) {
        std::filesystem::remove(app_.Ws().EdsDirectory() + "drive.eds");
        ChooseProduct(dialog, "drive");
        Type(dialog, "nodeNumber", "9");
        Click(dialog, "ok");
        ASSERT_EQ(dialogs_.shown.size(), 1u);
        EXPECT_TRUE(dialogs_.shown[0].starts_with("Error: "));
        EXPECT_TRUE(dialog.isVisible());
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    EXPECT_EQ(app_.Ws().Net.NodeAt(8).InUse, 0);
}

TEST_F(NodeDialogs, PasteAsksForTheNumberOfTheCopy) {
    app_.AddDrive(0);
    const bool changed = OpenWith({Kind::PasteNode, 0}, [this](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Incolla Nodo ...");
        EXPECT_EQ(Find<QLabel>(dialog, "prompt")->text(),
                  "Impostare il numero nodo per il prodotto  drive");
        EXPECT_TRUE(Find<QLineEdit>(dialog, "nodeNumber")->text().isEmpty());
        Picture(dialog, "paste");
        Type(dialog, "nodeNumber", "1");
        Click(dialog, "ok");
        EXPECT_EQ(LastAlert(), "Il nodo 1 è già occupato da drive|");
        EXPECT_TRUE(dialog.isVisible());
        Type(dialog, "nodeNumber", "7");
        Click(dialog, "ok");
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_TRUE(changed);
    EXPECT_NE(app_.Ws().Net.NodeAt(6).InUse, 0);

    // Nothing copied: the alert says so and no dialog opens.
    EXPECT_FALSE(launcher_.Open({Kind::PasteNode, -1}, parent_.get()));
    EXPECT_EQ(alerts_.shown.back().Line1, "Nessun nodo da incollare:");
}

} // namespace
} // namespace velmora::test
