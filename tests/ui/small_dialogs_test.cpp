// The time-out, export settings and channel dialogs, driven through their widgets.

#include "dialog_harness.h"
#include "export/node_timeouts.h"
#include "session/export_commands.h"
#include "ui/channel_window.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>

namespace velmora::test {
namespace {

using Kind = DialogRequest::Kind;

class SmallDialogs : public DialogHarness {};

TEST_F(SmallDialogs, TimeoutStoresOnOkOnly) {
    app_.AddDrive(2);
    SetNodeTimeout(app_.Ws().Net, 2, 5, 20);
    OpenWith({Kind::Timeout, 2}, [](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Par. di TimeOut su nodo 3");
        EXPECT_EQ(Find<QLineEdit>(dialog, "repetitions")->text(), "5");
        EXPECT_EQ(Find<QLineEdit>(dialog, "repetitionTime")->text(), "20");
        for (QPushButton* button : dialog.findChildren<QPushButton*>()) {
            EXPECT_FALSE(button->autoDefault()) << button->objectName().toStdString();
        }
        Type(dialog, "repetitions", "7");
        QTest::keyClick(Find<QLineEdit>(dialog, "repetitions"), Qt::Key_Return);
        EXPECT_TRUE(dialog.isVisible()); // Enter presses no button here
        Click(dialog, "cancel");
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_EQ(GetNodeTimeout(app_.Ws().Net, 2).repetitions, 5);

    OpenWith({Kind::Timeout, 2}, [](QDialog& dialog) {
        Type(dialog, "repetitions", "7");
        QTest::keyClick(&dialog, Qt::Key_Escape);
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_EQ(GetNodeTimeout(app_.Ws().Net, 2).repetitions, 5);

    OpenWith({Kind::Timeout, 2}, [](QDialog& dialog) {
        Picture(dialog, "timeout");
        Type(dialog, "repetitions", "3");
        Type(dialog, "repetitionTime", "100");
        Click(dialog, "ok");
        EXPECT_FALSE(dialog.isVisible());
    });
    const NodeTimeout stored = GetNodeTimeout(app_.Ws().Net, 2);
    EXPECT_EQ(stored.repetitions, 3);
    EXPECT_EQ(stored.repetitionTime, 100);
    EXPECT_TRUE(dialogs_.shown.empty());
}

TEST_F(SmallDialogs, TimeoutOverflowIsShownAndTheDialogStaysOpen) {
    app_.AddDrive(0);
    OpenWith({Kind::Timeout, 0}, [this](QDialog& dialog) {
        Type(dialog, "repetitions", "99999");
        Click(dialog, "ok");
        ASSERT_EQ(dialogs_.shown.size(), 1u);
        EXPECT_TRUE(dialogs_.shown[0].starts_with("Error: "));
        EXPECT_TRUE(dialog.isVisible());
        Type(dialog, "repetitions", "4");
        Click(dialog, "ok");
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_EQ(GetNodeTimeout(app_.Ws().Net, 0).repetitions, 4);
}

TEST_F(SmallDialogs, ExportSettingsSaveTheLimit) {
    OpenWith({Kind::ExportSettings}, [](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Configurazione");
        EXPECT_EQ(Find<QLineEdit>(dialog, "maxFastPdo")->text(), "10");
        Type(dialog, "maxFastPdo", "12");
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    EXPECT_EQ(app_.Ws().Net.MaxFastPdo(), 10);

    const bool changed = OpenWith({Kind::ExportSettings}, [](QDialog& dialog) {
        Picture(dialog, "settings");
        Type(dialog, "maxFastPdo", "3.5");
        Click(dialog, "save");
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_TRUE(changed);
    EXPECT_EQ(app_.Ws().Net.MaxFastPdo(), 4);
    EXPECT_TRUE(app_.Ws().Net.DefaultFilePath().empty());
}

class ChannelDialog : public DialogHarness {
protected:
    // Opens the channel dialog the way the window does: it returns at once.
    ChannelWindow* Show() {
        parent_->setEnabled(false);
        EXPECT_FALSE(launcher_.Open({Kind::ChannelDialog}, parent_.get()));
        ChannelWindow* window = launcher_.Channels();
        EXPECT_NE(window, nullptr);
        return window;
    }
    QLabel* Label(QWidget* window, const char* name) { return window->findChild<QLabel*>(name); }
    // One configured node with a fast TX PDO of 4 bytes.
    void OneFastPdo() {
        Node& node = app_.AddDrive(4);
        node.Configured = kTrue;
        Pdo& pdo = node.PdoAt(0);
        pdo.Settings.Mode = "Fast";
    }
};

TEST_F(ChannelDialog, ExportShowsTheTallLayoutAndOkEnablesTheWindow) {
    app_.Ws().Net.ExportPath = app_.AppDir() + "/rete.cop";
    ExportToController(app_.Ws(), app_.Ws().ChannelDialog);
    ChannelWindow* window = Show();
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(window->isEnabled());
    EXPECT_FALSE(window->isModal());
    EXPECT_FALSE(parent_->isEnabled());
    EXPECT_EQ(window->windowTitle(), "Controllo Canali");
    EXPECT_EQ(window->findChild<QLineEdit*>("txFast")->text(), "0");
    EXPECT_TRUE(Label(window, "allowed")->isVisible());
    EXPECT_FALSE(Label(window, "refused")->isVisible());
    QLabel* message = Label(window, "message");
    EXPECT_TRUE(message->isVisible());
    EXPECT_EQ(message->text(), "Salvataggio file ORV  OK");
    EXPECT_EQ(message->palette().color(QPalette::WindowText), QColor(Qt::blue));
    // No fast PDO: 2 frames and 9 bytes, 0.316 ms at 500 kbit/s, with the locale's point.
    const QString point = QLocale().decimalPoint();
    EXPECT_EQ(window->findChild<QLineEdit*>("time")->text(), "0" + point + "316 (msec)");
    Picture(*window, "channels-tall");

    // 125 kbit/s, reached with the label's access key: four times as long.
    QComboBox* bitRate = window->findChild<QComboBox*>("bitRate");
    EXPECT_EQ(bitRate->currentText(), "500");
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window));
    QTest::keyClick(window, Qt::Key_B, Qt::AltModifier);
    EXPECT_EQ(QApplication::focusWidget(), bitRate);
    QTest::keyClick(bitRate, Qt::Key_Home);
    EXPECT_EQ(bitRate->currentText(), "125");
    EXPECT_EQ(window->findChild<QLineEdit*>("time")->text(), "1" + point + "264 (msec)");

    QTest::mouseClick(window->findChild<QPushButton*>("ok"), Qt::LeftButton);
    EXPECT_FALSE(window->isVisible());
    EXPECT_TRUE(parent_->isEnabled());
    EXPECT_FALSE(app_.Ws().ChannelDialog.Visible);
}

TEST_F(ChannelDialog, RefusedTestShowsTheShortLayoutAndClosingEnablesTheWindow) {
    OneFastPdo();
    app_.Ws().Net.MaxFastPdo() = 0;
    EXPECT_FALSE(TestPdo(app_.Ws(), app_.Ws().ChannelDialog));
    ChannelWindow* first = Show();
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first->findChild<QLineEdit*>("txFast")->text(), "1");
    EXPECT_TRUE(Label(first, "refused")->isVisible());
    EXPECT_FALSE(Label(first, "allowed")->isVisible());
    EXPECT_FALSE(Label(first, "message")->isVisible());
    Picture(*first, "channels-short");
    first->close(); // the window's close button
    EXPECT_TRUE(parent_->isEnabled());

    // The export refused: the same dialog, tall, with the red message.
    app_.Ws().Net.ExportPath = app_.AppDir() + "/rete.cop";
    ExportToController(app_.Ws(), app_.Ws().ChannelDialog);
    ChannelWindow* second = Show();
    EXPECT_EQ(second, first);
    QLabel* message = Label(second, "message");
    EXPECT_TRUE(message->isVisible());
    EXPECT_EQ(message->text(), "Impossibile esportare");
    EXPECT_EQ(message->palette().color(QPalette::WindowText), QColor(Qt::red));
    QTest::keyClick(second, Qt::Key_Escape);
    EXPECT_TRUE(parent_->isEnabled());
}

} // namespace
} // namespace velmora::test
