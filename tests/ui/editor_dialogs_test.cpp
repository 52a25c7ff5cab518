// The PDO editor and the mapping editor it opens, driven through their widgets.

#include "pdo_editor_harness.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QRadioButton>
#include <QToolBar>
#include <QTreeWidget>

namespace velmora::test {
namespace {

using Kind = DialogRequest::Kind;

class EditorDialogs : public PdoEditorHarness {
protected:
    static QStringList TreeItems(QDialog& dialog) {
        QStringList items;
        QTreeWidget* tree = Find<QTreeWidget>(dialog, "mappings");
        for (int i = 0; i < tree->topLevelItemCount(); ++i) {
            items << tree->topLevelItem(i)->text(0);
            for (int c = 0; c < tree->topLevelItem(i)->childCount(); ++c) {
                items << tree->topLevelItem(i)->child(c)->text(0);
            }
        }
        return items;
    }
};

TEST_F(EditorDialogs, FastSwitchesTheCobIdOnAndSaveWritesThePdo) {
    const bool changed = OpenWith({Kind::PdoEditor, 4, 2}, [this](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Configura Pdo");
        EXPECT_EQ(Find<QComboBox>(dialog, "mode")->currentText(), "Non configurato");
        EXPECT_FALSE(Find<QLineEdit>(dialog, "cobId")->isEnabled());
        EXPECT_FALSE(Find<QCheckBox>(dialog, "cobIdSwitch")->isEnabled());

        ModeUp(dialog, 1);
        EXPECT_EQ(Find<QComboBox>(dialog, "mode")->currentText(), "Fast");
        EXPECT_TRUE(Find<QCheckBox>(dialog, "cobIdSwitch")->isChecked());
        QLineEdit* cobId = Find<QLineEdit>(dialog, "cobId");
        EXPECT_EQ(cobId->text(), "205");
        EXPECT_TRUE(cobId->isEnabled());
        EXPECT_EQ(cobId->palette().color(QPalette::Base), QColor(Qt::white));
        EXPECT_EQ(TreeItems(dialog).value(0), "Mappature");

        // The key filter: "g" and Backspace are discarded in base "h".
        cobId->setFocus();
        cobId->end(false);
        QTest::keyClicks(cobId, "g");
        QTest::keyClick(cobId, Qt::Key_Backspace);
        EXPECT_EQ(cobId->text(), "205");

        QTest::mouseClick(Find<QCheckBox>(dialog, "eventSwitch"), Qt::LeftButton);
        EXPECT_TRUE(Find<QLineEdit>(dialog, "eventTime")->isEnabled());
        Type(dialog, "eventTime", "");
        Picture(dialog, "pdo-editor");
        Trigger(dialog, "savePdo");
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_TRUE(changed);
    EXPECT_EQ(RxPdo().Settings.Mode, "Fast");
    EXPECT_EQ(RxPdo().Settings.CobId, "205");
    EXPECT_EQ(RxPdo().Settings.EventTime, "0");
    EXPECT_NE(app_.Ws().Net.NodeAt(4).Configured, 0);
    EXPECT_TRUE(alerts_.shown.empty());
}

TEST_F(EditorDialogs, EscapeCancelsAndMappingCommandsNeedASelection) {
    const Pdo before = RxPdo();
    const bool changed = OpenWith({Kind::PdoEditor, 4, 2}, [this](QDialog& dialog) {
        ModeUp(dialog, 2); // Slow
        Trigger(dialog, "removeMapping");
        ASSERT_EQ(alerts_.shown.size(), 1u);
        EXPECT_EQ(alerts_.shown[0].Line1, "Selezionare una mappatura");
        EXPECT_EQ(alerts_.shown[0].Line2, "dalla treeView per rimuoverla.");
        EXPECT_TRUE(dialog.isVisible());

        QTest::keyClick(&dialog, Qt::Key_F1, Qt::ShiftModifier);
        QTest::keyClick(&dialog, Qt::Key_F1);
        EXPECT_EQ(help_.pages, std::vector<std::string>{"editPDO.htm"});

        QTest::keyClick(&dialog, Qt::Key_Escape);
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_FALSE(changed);
    EXPECT_EQ(RxPdo(), before);
}

TEST_F(EditorDialogs, TheMappingEditorAddsAMappingToTheTree) {
    OpenWith({Kind::PdoEditor, 4, 2}, [this](QDialog& dialog) {
        ModeUp(dialog, 1);
        const int itemsBefore = TreeItems(dialog).size();
        bool mappingShown = false;
        QTimer::singleShot(0, [&] {
            auto* mapping = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(mapping, nullptr);
            ASSERT_NE(mapping, &dialog);
            mappingShown = true;
            EXPECT_TRUE(mapping->windowTitle().startsWith("Aggiungi mappatura per "));
            EXPECT_FALSE(dialog.isEnabled());
            // Decimal base: a letter is refused with the alert.
            QTest::mouseClick(Find<QRadioButton>(*mapping, "decimal"), Qt::LeftButton);
            // The switch turned the empty Index into "0"; the user types over it.
            Find<QLineEdit>(*mapping, "index")->selectAll();
            QTest::keyClicks(Find<QLineEdit>(*mapping, "index"), "2467a6");
            EXPECT_EQ(Find<QLineEdit>(*mapping, "index")->text(), "24676");
            EXPECT_EQ(alerts_.shown.back().Line1, "Inserire un valore decimale corretto");
            // Backspace is the field's own, whatever the base's filter says of other keys.
            QTest::keyClick(Find<QLineEdit>(*mapping, "index"), Qt::Key_Backspace);
            EXPECT_EQ(Find<QLineEdit>(*mapping, "index")->text(), "2467");
            QTest::keyClicks(Find<QLineEdit>(*mapping, "index"), "6");
            Type(*mapping, "subIndex", "0");
            Type(*mapping, "length", "32");
            Picture(*mapping, "mapping-editor");
            Click(*mapping, "help");
            EXPECT_EQ(help_.pages, std::vector<std::string>{"mapPDO.htm"});
            Type(*mapping, "name", "Posizione");
            QTest::keyClick(Find<QLineEdit>(*mapping, "name"), Qt::Key_Return);
            EXPECT_FALSE(mapping->isVisible());
        });
        Trigger(dialog, "addMapping");
        EXPECT_TRUE(mappingShown);
        EXPECT_TRUE(dialog.isEnabled());
        const QStringList items = TreeItems(dialog);
        EXPECT_EQ(items.size(), itemsBefore + 1);
        EXPECT_TRUE(items.back().contains("Posizione")) << items.back().toStdString();
        EXPECT_TRUE(items.back().contains("6064")) << items.back().toStdString();
        Trigger(dialog, "savePdo");
    });
    EXPECT_EQ(RxPdo().Settings.MappingAt(RxPdo().Settings.MappingCount - 1).ObjectIndex, "6064");
}

TEST_F(EditorDialogs, ToolbarsShowTheProjectsIcons) {
    OpenWith({Kind::PdoEditor, 4, 0}, [this](QDialog& dialog) {
        bool mappingShown = false;
        QTimer::singleShot(0, [&] {
            auto* mapping = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(mapping, nullptr);
            mappingShown = true;
            for (QAction* action : Find<QToolBar>(*mapping, "mappingToolbar")->actions()) {
                EXPECT_FALSE(action->icon().pixmap(16).isNull())
                    << action->objectName().toStdString();
            }
            QTest::keyClick(mapping, Qt::Key_Escape);
        });
        QList<QAction*> actions = Find<QToolBar>(dialog, "pdoToolbar")->actions();
        ASSERT_EQ(actions.size(), 6);
        for (QAction* action : actions) {
            EXPECT_FALSE(action->icon().pixmap(16).isNull()) << action->objectName().toStdString();
            EXPECT_FALSE(action->toolTip().isEmpty());
        }
        QTreeWidget* tree = Find<QTreeWidget>(dialog, "mappings");
        ModeUp(dialog, 1);
        ASSERT_GT(tree->topLevelItemCount(), 0);
        tree->setCurrentItem(tree->topLevelItem(0)->child(0));
        Trigger(dialog, "modifyMapping");
        EXPECT_TRUE(mappingShown);
    });
}

TEST_F(EditorDialogs, ParameterFromTheChooserIsSavedByEnterInValore) {
    const bool changed = OpenWith({Kind::NewParameter, 4}, [this](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Aggiungi parametro per ...");
        QComboBox* objects = Find<QComboBox>(dialog, "objects");
        const int item = objects->findText("[6060] ", Qt::MatchStartsWith);
        ASSERT_GT(item, 0);
        QLineEdit* chooser = objects->lineEdit();
        chooser->selectAll();
        QTest::keyClicks(chooser, objects->itemText(item));
        QTest::keyClick(chooser, Qt::Key_Return); // applies the chosen object
        EXPECT_EQ(Find<QLineEdit>(dialog, "index")->text(), "6060");
        EXPECT_EQ(Find<QLineEdit>(dialog, "nByte")->text(), "1");
        EXPECT_TRUE(dialog.isVisible());
        Picture(dialog, "parameter-editor");
        Type(dialog, "value", "3");
        QTest::keyClick(Find<QLineEdit>(dialog, "value"), Qt::Key_Return);
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_TRUE(changed);
    const Node& node = app_.Ws().Net.NodeAt(4);
    EXPECT_EQ(node.ParameterCount, 1);
    EXPECT_EQ(node.ParameterAt(0).ObjectIndex, "6060");
    EXPECT_EQ(node.ParameterAt(0).Value, "3");
}

TEST_F(EditorDialogs, ParameterValidationKeepsTheEditorOpen) {
    Node& node = app_.Ws().Net.NodeAt(4);
    node.ParameterAt(0) = {"Modes of operation", "6060", "0", "1", "3", kTrue};
    node.ParameterCount = 1;
    const bool changed = OpenWith({Kind::ParameterEditor, 4, 0}, [this](QDialog& dialog) {
        EXPECT_EQ(Find<QLineEdit>(dialog, "index")->text(), "6060");
        Type(dialog, "nByte", "");
        Click(dialog, "saveParameter");
        ASSERT_EQ(dialogs_.shown.size(), 1u);
        EXPECT_EQ(dialogs_.shown[0],
                  "Inform: Errore | Impossibile salvare con campo Lenght vuoto");
        EXPECT_TRUE(dialog.isVisible());

        QTest::mouseClick(Find<QRadioButton>(dialog, "decimal"), Qt::LeftButton);
        EXPECT_EQ(Find<QLineEdit>(dialog, "index")->text(), "24672");
        QLineEdit* index = Find<QLineEdit>(dialog, "index");
        index->setFocus();
        index->end(false);
        QTest::keyClicks(index, "x");
        EXPECT_EQ(index->text(), "24672");
        EXPECT_EQ(alerts_.shown.back().Line1, "Inserire un valore decimale corretto");

        Type(dialog, "nByte", "1");
        Click(dialog, "saveParameter"); // nothing changed: the editor just closes
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_FALSE(changed);
    EXPECT_EQ(node.ParameterAt(0).ObjectIndex, "6060");
}

} // namespace
} // namespace velmora::test
