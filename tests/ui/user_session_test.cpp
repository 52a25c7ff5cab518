// A whole working session through the widgets: the real main window and its real dialogs
// over an application folder holding the sample drive. The user adds the drive, sets up its
// first TX PDO, its time-outs, saves and exports; the files must be, byte for byte, those
// that velmora-cli builds and exports from the same request written as a scenario.

#include "cli/cli.h"
#include "commands/main_commands.h"
#include "dialog_harness.h"
#include "interfaces/settings_store.h"
#include "interfaces/text_viewer.h"
#include "ui/channel_window.h"
#include "ui/main_window.h"
#include "ui/network_tree_model.h"

#include <filesystem>
#include <sstream>

#include <QAction>
#include <QComboBox>
#include <QListWidget>
#include <QPushButton>
#include <QToolBar>
#include <QTreeView>
#include <QTreeWidget>

namespace velmora::test {
namespace {

struct NoViewer : TextViewer {
    void Open(const std::string&) override {}
};
struct NoSettings : SettingsStore {
    void Write(const std::string&, const std::string&, const std::string&) override {}
};

class UserSession : public DialogHarness {
protected:
    UserSession() : commands_(app_.Ws(), dialogs_, alerts_, viewer_, help_) {
        app_.WriteEds("Drive402.eds",
                      ReadFileBytes(VELMORA_SOURCE_DIR "/share/velmora/eds/Drive402.eds"));
        NoSettings settings;
        commands_.StartUp(settings, "", app_.AppDir() + "/log.txt");
        window_ = std::make_unique<MainWindow>(app_.Ws(), commands_, dialogs_, launcher_);
        window_->show();
    }

    // Runs script on the modal dialog that the next action opens; ran tells it did.
    static void WhenModal(bool& ran, std::function<void(QDialog&)> script) {
        QTimer::singleShot(0, [&ran, script = std::move(script)] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr) << "no modal dialog";
            ran = true;
            script(*dialog);
            if (dialog->isVisible()) {
                ADD_FAILURE() << dialog->objectName().toStdString() << " left open";
                dialog->reject();
            }
        });
    }
    static void ClickTool(QWidget& owner, const char* action) {
        QAction* found = owner.findChild<QAction*>(action);
        ASSERT_NE(found, nullptr) << action;
        ASSERT_TRUE(found->isEnabled()) << action;
        QToolBar* bar = nullptr;
        for (QToolBar* candidate : owner.findChildren<QToolBar*>()) {
            if (candidate->widgetForAction(found) != nullptr) {
                bar = candidate;
            }
        }
        ASSERT_NE(bar, nullptr) << action;
        QTest::mouseClick(bar->widgetForAction(found), Qt::LeftButton);
    }
    QModelIndex ItemWithKey(const std::string& key) const {
        for (int i = 0; i < commands_.Tree().Size(); ++i) {
            if (commands_.Tree().Key(i) == key) {
                return window_->TreeModel()->IndexOfItem(i);
            }
        }
        ADD_FAILURE() << "no item " << key;
        return {};
    }
    static int Cli(const QStringList& args, const std::string& appDir) {
        std::ostringstream out;
        std::ostringstream err;
        const int status = cli::Run(args, appDir, out, err);
        EXPECT_EQ(err.str(), "") << args.join(' ').toStdString();
        return status;
    }

    NoViewer viewer_;
    MainCommands commands_;
    std::unique_ptr<MainWindow> window_;
};

TEST_F(UserSession, TheWindowMakesTheFilesThatTheCommandLineMakes) {
    // The drive as node 5, from the add-node dialog, with the mouse.
    bool added = false;
    WhenModal(added, [](QDialog& dialog) {
        QListWidget* products = dialog.findChild<QListWidget*>("products");
        const auto items = products->findItems("Drive402", Qt::MatchExactly);
        ASSERT_EQ(items.size(), 1);
        QTest::mouseClick(products->viewport(), Qt::LeftButton, {},
                          products->visualItemRect(items[0]).center());
        QTest::mouseClick(dialog.findChild<QLineEdit*>("nodeNumber"), Qt::LeftButton);
        QTest::keyClicks(dialog.findChild<QLineEdit*>("nodeNumber"), "5");
        QTest::mouseClick(dialog.findChild<QPushButton*>("ok"), Qt::LeftButton);
    });
    ClickTool(*window_, "button6");
    ASSERT_TRUE(added);
    ASSERT_NE(app_.Ws().Net.NodeAt(4).InUse, 0);

    // TX PDO 1 from the tree with the keyboard: Fast, a COB-ID of its own, one more mapping
    // from the chooser, save.
    bool edited = false;
    bool mapped = false;
    WhenModal(edited, [&mapped](QDialog& editor) {
        QComboBox* mode = editor.findChild<QComboBox*>("mode");
        mode->setFocus();
        QTest::keyClick(mode, Qt::Key_Up);
        ASSERT_EQ(mode->currentText(), "Fast");
        QLineEdit* cobId = editor.findChild<QLineEdit*>("cobId");
        EXPECT_EQ(cobId->text(), "185");
        cobId->setFocus();
        cobId->selectAll();
        QTest::keyClicks(cobId, "1a5");
        QTest::keyClick(cobId, Qt::Key_Tab); // leaving the field checks the COB-ID
        EXPECT_EQ(cobId->text(), "1a5");

        WhenModal(mapped, [](QDialog& mapping) {
            QComboBox* objects = mapping.findChild<QComboBox*>("objects");
            const int wanted = objects->findText("[6064] ", Qt::MatchStartsWith);
            ASSERT_GT(wanted, 0);
            objects->setFocus();
            for (int i = 0; i < wanted; ++i) {
                QTest::keyClick(objects, Qt::Key_Down);
            }
            EXPECT_EQ(mapping.findChild<QLineEdit*>("index")->text(), "6064");
            EXPECT_EQ(mapping.findChild<QLineEdit*>("length")->text(), "32");
            QTest::mouseClick(mapping.findChild<QPushButton*>("saveMapping"), Qt::LeftButton);
        });
        ClickTool(editor, "addMapping");
        ClickTool(editor, "savePdo");
    });
    window_->TreeView()->setFocus();
    window_->TreeView()->setCurrentIndex(ItemWithKey("TX0@4"));
    QTest::keyClick(window_->TreeView(), Qt::Key_Return);
    ASSERT_TRUE(edited);
    ASSERT_TRUE(mapped);
    EXPECT_TRUE(window_->isEnabled());

    // The time-outs, from the tree with a double click.
    bool timed = false;
    WhenModal(timed, [](QDialog& dialog) {
        for (const auto& [field, text] :
             {std::pair{"repetitions", "3"}, std::pair{"repetitionTime", "100"}}) {
            QLineEdit* edit = dialog.findChild<QLineEdit*>(field);
            edit->selectAll();
            QTest::keyClicks(edit, text);
        }
        QTest::mouseClick(dialog.findChild<QPushButton*>("ok"), Qt::LeftButton);
    });
    QTreeView* view = window_->TreeView();
    view->setExpanded(ItemWithKey("4@Drive402"), true);
    const QRect timeout = view->visualRect(ItemWithKey("PARTIMEOUT@4"));
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, timeout.center());
    QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, timeout.center());
    ASSERT_TRUE(timed);

    // Save under a name, then export; the export shows the channel dialog.
    const std::string folder = app_.AppDir() + "/rete/";
    std::filesystem::create_directory(folder);
    dialogs_.fileAnswers = {folder + "impianto.nodi"};
    ClickTool(*window_, "button3");
    ClickTool(*window_, "button12");
    ChannelWindow* channels = launcher_.Channels();
    ASSERT_NE(channels, nullptr);
    QTest::mouseClick(channels->findChild<QPushButton*>("ok"), Qt::LeftButton);
    EXPECT_TRUE(window_->isEnabled());
    EXPECT_TRUE(dialogs_.fileAnswers.empty());
    const std::string windowNodi = ReadFileBytes(folder + "impianto.nodi");
    const std::string windowCop = ReadFileBytes(folder + "impianto.cop");
    ASSERT_FALSE(windowNodi.empty());
    ASSERT_FALSE(windowCop.empty());

    // The same request as a scenario, into the same files.
    std::filesystem::remove(folder + "impianto.nodi");
    std::filesystem::remove(folder + "impianto.cop");
    const std::string scenario = folder + "scenario.json";
    WriteFileBytes(scenario, R"({"nodes": [{"node": 5, "eds": "Drive402.eds",
        "timeout": [3, 100],
        "pdos": {"TX0": {"mode": "Fast", "cob_id": "1a5", "bytes": "7", "comm": "1",
                         "pcfg": 3,
                         "mappings": [["statusword", "6041", "0", "16"],
                                      ["modes of operation display", "6061", "0", "8"],
                                      ["position actual value", "6064", "0", "32"]]}}}]})");
    const QString appDir = QString::fromStdString(app_.AppDir());
    ASSERT_EQ(Cli({"--app-dir", appDir, "build", QString::fromStdString(scenario), "-o",
                   QString::fromStdString(folder + "impianto.nodi")},
                  app_.AppDir()),
              0);
    ASSERT_EQ(
        Cli({"--app-dir", appDir, "export", QString::fromStdString(folder + "impianto.nodi")},
            app_.AppDir()),
        0);
    EXPECT_TRUE(ReadFileBytes(folder + "impianto.nodi") == windowNodi) << "the .nodi differ";
    EXPECT_EQ(ReadFileBytes(folder + "impianto.cop"), windowCop);
}

} // namespace
} // namespace velmora::test
