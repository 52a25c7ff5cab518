// The main window with its real dialogs: the channel dialog keeps the window disabled until
// it closes, also when a PDO save calls for it.

#include "commands/main_commands.h"
#include "dialog_harness.h"
#include "interfaces/settings_store.h"
#include "interfaces/text_viewer.h"
#include "ui/channel_window.h"
#include "ui/main_window.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QToolBar>

namespace velmora::test {
namespace {

struct NoViewer : TextViewer {
    void Open(const std::string&) override {}
};
struct NoSettings : SettingsStore {
    void Write(const std::string&, const std::string&, const std::string&) override {}
};

class WindowWithDialogs : public DialogHarness {
protected:
    WindowWithDialogs() : commands_(app_.Ws(), dialogs_, alerts_, viewer_, help_) {
        NoSettings settings;
        commands_.StartUp(settings, "", app_.AppDir() + "/log.txt");
        window_ = std::make_unique<MainWindow>(app_.Ws(), commands_, dialogs_, launcher_);
        window_->show();
    }

    void CloseChannels() {
        ChannelWindow* channels = launcher_.Channels();
        ASSERT_NE(channels, nullptr);
        ASSERT_TRUE(channels->isVisible());
        EXPECT_TRUE(channels->isEnabled());
        QTest::mouseClick(channels->findChild<QPushButton*>("ok"), Qt::LeftButton);
        EXPECT_FALSE(channels->isVisible());
        EXPECT_TRUE(window_->isEnabled());
    }

    NoViewer viewer_;
    MainCommands commands_;
    std::unique_ptr<MainWindow> window_;
};

TEST_F(WindowWithDialogs, TestPdoDisablesTheWindowUntilTheChannelDialogCloses) {
    window_->findChild<QAction*>("testPDO")->trigger();
    EXPECT_FALSE(window_->isEnabled());
    CloseChannels();
}

TEST_F(WindowWithDialogs, ASaveReachingTheFastLimitShowsTheChannelDialog) {
    app_.AddDrive(0);
    app_.Ws().Net.MaxFastPdo() = 1;
    commands_.RebuildTree();
    window_->Refresh();
    int pdoItem = -1;
    for (int i = 0; i < commands_.Tree().Size(); ++i) {
        if (commands_.Tree().Key(i) == "TX0@0") {
            pdoItem = i;
        }
    }
    ASSERT_GE(pdoItem, 0);
    bool edited = false;
    QTimer::singleShot(0, [&] {
        auto* editor = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(editor, nullptr);
        edited = true;
        EXPECT_TRUE(editor->isEnabled());
        QComboBox* mode = editor->findChild<QComboBox*>("mode");
        mode->setFocus();
        QTest::keyClick(mode, Qt::Key_Up); // Fast
        QAction* save = editor->findChild<QAction*>("savePdo");
        QTest::mouseClick(editor->findChild<QToolBar*>()->widgetForAction(save), Qt::LeftButton);
    });
    window_->ActivateItem(pdoItem);
    EXPECT_TRUE(edited);
    EXPECT_EQ(app_.Ws().Net.NodeAt(0).PdoAt(0).Settings.Mode, "Fast");
    EXPECT_FALSE(window_->isEnabled());
    EXPECT_EQ(launcher_.Channels()->findChild<QLabel*>("caption")->text(),
              "Analisi canali della rete");
    CloseChannels();
}

} // namespace
} // namespace velmora::test
