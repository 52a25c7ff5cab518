// The PDO and mapping editors never leave the user stuck: a refused COB-ID comes back, a
// duplicate stored on purpose closes the editor, Enter in Index does not save, closing the
// mapping editor's window hands the PDO editor back, and the two modes without a COB-ID
// of their own show as they are.

#include "pdo_editor_harness.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>
#include <QToolBar>
#include <QTreeWidget>

namespace velmora::test {
namespace {

using Kind = DialogRequest::Kind;

class EditorWaysOut : public PdoEditorHarness {
protected:
    // Types text over the COB-ID and leaves the field with Tab.
    static void EnterCobId(QDialog& dialog, const char* text) {
        // Focus moves, and leaves the field, only inside the active window.
        dialog.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
        QLineEdit* cobId = Find<QLineEdit>(dialog, "cobId");
        cobId->setFocus();
        cobId->selectAll();
        QTest::keyClicks(cobId, text);
        QTest::keyClick(cobId, Qt::Key_Tab);
    }
    static int MappingItems(QDialog& dialog) {
        QTreeWidget* tree = Find<QTreeWidget>(dialog, "mappings");
        return tree->topLevelItemCount() == 0 ? 0 : tree->topLevelItem(0)->childCount();
    }
};

TEST_F(EditorWaysOut, ARefusedCobIdComesBackAndADuplicateStoredOnPurposeCloses) {
    Node& node = app_.Ws().Net.NodeAt(4);
    node.Configured = kTrue;
    Pdo& tx = node.PdoAt(0);
    tx.Used = kTrue;
    tx.Settings.Mode = "Slow";
    tx.Settings.CobId = "185";
    RxPdo().Used = kTrue;
    RxPdo().Settings.Mode = "Slow";
    RxPdo().Settings.CobId = "206";
    RxPdo().Settings.Pcfg = 1; // the COB-ID switch on

    const bool changed = OpenWith({Kind::PdoEditor, 4, 2}, [this](QDialog& dialog) {
        QLineEdit* cobId = Find<QLineEdit>(dialog, "cobId");
        ASSERT_EQ(cobId->text(), "206");
        EnterCobId(dialog, "206"); // the first check after the editor shows only arms it
        EnterCobId(dialog, "7ff"); // above 0x57F
        ASSERT_EQ(alerts_.shown.size(), 1u);
        EXPECT_EQ(alerts_.shown[0].Line1, "Inserire un valore esadecimale ");
        EXPECT_EQ(alerts_.shown[0].Line2, "compreso tra 0x180 e 0x57F");
        EXPECT_EQ(cobId->text(), "206");
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_TRUE(dialog.isEnabled());

        // The COB-ID of TX PDO 1: the conflict, and "Inserisci comunque il Cob-Id" ticked.
        alerts_.insertAnyway = {true};
        EnterCobId(dialog, "185");
        ASSERT_EQ(alerts_.shown.size(), 2u);
        EXPECT_TRUE(alerts_.shown[1].ShowsInsertAnyway);
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_TRUE(changed);
    EXPECT_EQ(RxPdo().Settings.CobId, "185");
    EXPECT_EQ(RxPdo().Settings.Mode, "Slow");
}

TEST_F(EditorWaysOut, EnterInIndexDoesNotSaveAndClosingTheMappingWindowHandsBackTheEditor) {
    const bool changed = OpenWith({Kind::PdoEditor, 4, 2}, [this](QDialog& dialog) {
        ModeUp(dialog, 2); // Slow
        const int before = MappingItems(dialog);
        bool shown = false;
        QTimer::singleShot(0, [&] {
            auto* mapping = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(mapping, nullptr);
            ASSERT_NE(mapping, &dialog);
            shown = true;
            Type(*mapping, "name", "Comando");
            Type(*mapping, "subIndex", "0");
            Type(*mapping, "length", "16");
            Type(*mapping, "index", "6040");
            QTest::keyClick(Find<QLineEdit>(*mapping, "index"), Qt::Key_Return);
            EXPECT_TRUE(mapping->isVisible());
            EXPECT_TRUE(dialogs_.shown.empty()); // no validation ran either
            mapping->close();                    // the window's close button
            EXPECT_FALSE(mapping->isVisible());
        });
        Trigger(dialog, "addMapping");
        ASSERT_TRUE(shown);
        EXPECT_TRUE(dialog.isEnabled());
        EXPECT_EQ(MappingItems(dialog), before);
        Trigger(dialog, "savePdo");
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_TRUE(changed);
    EXPECT_EQ(RxPdo().Settings.Mode, "Slow");
    EXPECT_EQ(RxPdo().Settings.MappingCount, 1);
}

TEST_F(EditorWaysOut, DisabilitatoAndNonConfiguratoShowAsTheyAre) {
    OpenWith({Kind::PdoEditor, 4, 2}, [this](QDialog& dialog) {
        ModeUp(dialog, 1); // Fast: fields and mappings in use
        ModeUp(dialog, 3); // Disabilitato
        EXPECT_EQ(Find<QComboBox>(dialog, "mode")->currentText(), "Disabilitato");
        EXPECT_EQ(Find<QLineEdit>(dialog, "cobId")->text(), "0");
        EXPECT_TRUE(Find<QCheckBox>(dialog, "cobIdSwitch")->isChecked());
        Trigger(dialog, "savePdo");
    });
    EXPECT_EQ(RxPdo().Settings.Mode, "Disabilitato");
    EXPECT_EQ(RxPdo().Settings.CobId, "0");

    OpenWith({Kind::PdoEditor, 4, 2}, [this](QDialog& dialog) {
        QComboBox* mode = Find<QComboBox>(dialog, "mode");
        EXPECT_EQ(mode->currentText(), "Disabilitato"); // as stored
        mode->setFocus();
        QTest::keyClick(mode, Qt::Key_End); // the last entry
        EXPECT_EQ(mode->currentText(), "Non configurato");
        for (const char* field : {"cobId", "comm", "inhibitTime", "eventTime"}) {
            EXPECT_FALSE(Find<QLineEdit>(dialog, field)->isEnabled()) << field;
        }
        EXPECT_FALSE(Find<QComboBox>(dialog, "bytes")->isEnabled());
        EXPECT_EQ(MappingItems(dialog), 0);
        EXPECT_FALSE(Find<QAction>(dialog, "addMapping")->isEnabled());
        Trigger(dialog, "savePdo");
    });
    EXPECT_EQ(RxPdo().Settings.Mode, "Non configurato");
    EXPECT_EQ(RxPdo().Settings.Bytes, "0");
    EXPECT_EQ(RxPdo().Settings.Pcfg, 0);
}

} // namespace
} // namespace velmora::test
