// The main window through its widgets, offscreen, with the scripted adapters of tests/support
// and a launcher that records the dialogs the window asks for.

#include "commands/main_commands.h"
#include "interfaces/settings_store.h"
#include "interfaces/text_viewer.h"
#include "support/app_fixture.h"
#include "support/recording_help.h"
#include "support/scripted_alerts.h"
#include "support/scripted_dialogs.h"
#include "ui/dialog_launcher.h"
#include "ui/main_window.h"
#include "ui/network_tree_model.h"

#include <QAction>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QTest>
#include <QTreeView>
#include <gtest/gtest.h>

namespace velmora {
namespace {

using Kind = DialogRequest::Kind;

struct NoViewer : TextViewer {
    void Open(const std::string&) override {}
};

struct NoSettings : SettingsStore {
    void Write(const std::string&, const std::string&, const std::string&) override {}
};

// Records each request; an add-node request creates a drive in the next free slot.
struct ScriptedLauncher : DialogLauncher {
    explicit ScriptedLauncher(test::AppFixture& app) : app_(app) {}
    std::vector<DialogRequest> opened;
    bool Open(const DialogRequest& request, QWidget*) override {
        opened.push_back(request);
        if (request.Dialog == Kind::AddNode) {
            app_.AddDrive(nextSlot++);
            return true;
        }
        return false;
    }
    int nextSlot = 2;

private:
    test::AppFixture& app_;
};

class MainWindowWidgets : public ::testing::Test {
protected:
    MainWindowWidgets()
        : commands_(app_.Ws(), dialogs_, alerts_, viewer_, help_), launcher_(app_) {
        NoSettings settings;
        commands_.StartUp(settings, "", app_.AppDir() + "/log.txt");
        window_ = std::make_unique<MainWindow>(app_.Ws(), commands_, dialogs_, launcher_);
        window_->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(window_.get()));
    }

    QAction* Item(const char* name) const { return window_->findChild<QAction*>(name); }

    int ItemWithKey(const QString& key) const {
        const NetworkTree& tree = commands_.Tree();
        for (int i = 0; i < tree.Size(); ++i) {
            if (QString::fromStdString(std::string(tree.Key(i))) == key) {
                return i;
            }
        }
        ADD_FAILURE() << "no item " << key.toStdString();
        return -1;
    }

    QModelIndex IndexOf(const QString& key) const {
        return window_->TreeModel()->IndexOfItem(ItemWithKey(key));
    }

    // Opens the view's item with the keyboard: make it current, press Enter.
    void PressEnterOn(const QString& key) {
        QTreeView* view = window_->TreeView();
        view->setCurrentIndex(IndexOf(key));
        QTest::keyClick(view, Qt::Key_Return);
    }

    test::AppFixture app_;
    test::ScriptedDialogs dialogs_;
    test::ScriptedAlerts alerts_;
    NoViewer viewer_;
    test::RecordingHelp help_;
    MainCommands commands_;
    ScriptedLauncher launcher_;
    std::unique_ptr<MainWindow> window_;
};

TEST_F(MainWindowWidgets, MenusAndToolbarShowTheCommandTable) {
    QStringList menus;
    for (QAction* menu : window_->menuBar()->actions()) {
        menus << menu->text();
    }
    EXPECT_EQ(menus, (QStringList{"File", "Modifica", "Opzioni", "&Libreria", "Help"}));
    for (const MenuItem& item : kMenuItems) {
        QAction* action = Item(std::string(item.Name).c_str());
        ASSERT_NE(action, nullptr) << item.Name;
        EXPECT_EQ(action->text().toStdString(), item.Caption);
    }
    for (const ToolbarButton& button : kToolbar) {
        QAction* action = window_->ButtonAction(button.Position);
        EXPECT_EQ(action->toolTip().toStdString(), button.ToolTip);
        EXPECT_NE(action, window_->MenuAction(CommandForKey(button.Key).value_or(Command::About)));
    }
    // A new network turns the File menu's "&Salva" off but not the toolbar's save button: the
    // two kinds of control keep separate states.
    EXPECT_FALSE(Item("mnFileSave")->isEnabled());
    EXPECT_TRUE(window_->ButtonAction(3)->isEnabled());
    EXPECT_FALSE(Item("memorizza")->isEnabled());
    EXPECT_EQ(window_->TreeModel()->rowCount(), 0); // an empty network shows no item
}

TEST_F(MainWindowWidgets, ToolbarDispatchesByKey) {
    window_->ButtonAction(7)->trigger(); // key 13: the library insertion
    ASSERT_EQ(launcher_.opened.size(), 1u);
    EXPECT_EQ(launcher_.opened[0].Dialog, Kind::TakeFromLibrary);
    window_->ButtonAction(5)->trigger(); // "Stampa file di configurazione": nothing
    EXPECT_EQ(launcher_.opened.size(), 1u);
    EXPECT_TRUE(dialogs_.shown.empty());
    window_->ButtonAction(6)->trigger();
    ASSERT_EQ(launcher_.opened.size(), 2u);
    EXPECT_EQ(launcher_.opened[1].Dialog, Kind::AddNode);
}

TEST_F(MainWindowWidgets, AddingANodeShowsItAndKeepsItsCommands) {
    Item("aggiungi")->trigger();
    Item("aggiungi")->trigger();
    EXPECT_TRUE(Item("modifica")->isEnabled());
    EXPECT_TRUE(Item("memorizza")->isEnabled());
    EXPECT_EQ(window_->findChild<QLineEdit*>("nodeCount")->text(), "2");
    EXPECT_TRUE(window_->windowTitle().endsWith("*"));
    EXPECT_EQ(window_->TreeView()->currentIndex(), window_->TreeModel()->IndexOfItem(0));

    // Selecting a parameter switches the remove caption; a node switches it back.
    app_.Ws().Net.NodeAt(2).ParameterAt(0) = {"p", "6060", "0", "1", "3", kTrue};
    app_.Ws().Net.NodeAt(2).ParameterCount = 1;
    window_->RunCommand(Command::ModifyParameter); // nothing selected: the alert
    ASSERT_EQ(alerts_.shown.size(), 1u);
    commands_.RebuildTree();
    window_->Refresh();
    window_->TreeView()->setExpanded(IndexOf("2@drive"), true);
    window_->TreeView()->setExpanded(IndexOf("2@drive@Can_netParameter"), true);
    window_->TreeView()->setCurrentIndex(IndexOf("0@2"));
    EXPECT_EQ(Item("mnModificaRemove")->text(), "Rimuovi parametro");
    EXPECT_FALSE(window_->ButtonAction(9)->isEnabled());
    window_->TreeView()->setCurrentIndex(IndexOf("2@drive"));
    EXPECT_EQ(Item("mnModificaRemove")->text(), "Rimuovi Nodo");

    // Expanding by hand is stored in the node and survives the next rebuild.
    EXPECT_NE(app_.Ws().Net.NodeAt(2).ParameterFolderExpanded, 0);
    window_->TreeView()->setExpanded(IndexOf("3@drive"), false);
    EXPECT_EQ(app_.Ws().Net.NodeAt(3).Expanded, 0);
    window_->Refresh();
    EXPECT_FALSE(window_->TreeView()->isExpanded(IndexOf("3@drive")));
    EXPECT_TRUE(window_->TreeView()->isExpanded(IndexOf("2@drive")));
}

TEST_F(MainWindowWidgets, EnterAndDoubleClickOpenTheItemsEditor) {
    Item("aggiungi")->trigger();
    PressEnterOn("TX0@2");
    ASSERT_EQ(launcher_.opened.size(), 2u);
    EXPECT_EQ(launcher_.opened[1], (DialogRequest{Kind::PdoEditor, 2, 0}));

    QTreeView* view = window_->TreeView();
    const QRect node = view->visualRect(IndexOf("2@drive"));
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, node.center());
    QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, node.center());
    ASSERT_EQ(launcher_.opened.size(), 3u);
    EXPECT_EQ(launcher_.opened[2], (DialogRequest{Kind::ModifyNode, 2}));

    PressEnterOn("master"); // the root: no node to edit
    ASSERT_EQ(alerts_.shown.size(), 1u);
    EXPECT_EQ(alerts_.shown[0].Source, "MainWin");
    EXPECT_TRUE(window_->isEnabled());
}

TEST_F(MainWindowWidgets, ClosingAsksOnceAboutUnsavedChanges) {
    Item("aggiungi")->trigger();
    dialogs_.yesNoAnswers = {false};
    window_->close();
    EXPECT_EQ(dialogs_.shown,
              std::vector<std::string>{"YesNo: Dati non salvati | Dati non salvati, salvare ?"});
    EXPECT_FALSE(window_->isVisible());
}

TEST_F(MainWindowWidgets, AFailedCommandIsShownAndTheWindowGoesOn) {
    Item("aggiungi")->trigger();
    app_.Ws().Net.NodeCount = 600; // past the slots: the channel count fails
    Item("testPDO")->trigger();
    ASSERT_EQ(dialogs_.shown.size(), 1u);
    EXPECT_TRUE(dialogs_.shown[0].starts_with("Error: "));
    EXPECT_TRUE(window_->isEnabled());
    app_.Ws().Net.NodeCount = 1;
    Item("aggiungi")->trigger();
    EXPECT_EQ(launcher_.opened.size(), 2u);
}

} // namespace
} // namespace velmora
