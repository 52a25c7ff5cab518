#pragma once

// What the dialog tests share: the application folder with its drive EDS, scripted message
// boxes and alerts, the window's launcher over a plain parent window, and a way to act on the
// modal dialog that a call opens.

#include "support/app_fixture.h"
#include "support/recording_help.h"
#include "support/scripted_alerts.h"
#include "support/scripted_dialogs.h"
#include "tree/network_tree.h"
#include "ui/window_dialogs.h"

#include <functional>
#include <memory>

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

namespace velmora::test {

class DialogHarness : public ::testing::Test {
protected:
    DialogHarness() : launcher_(app_.Ws(), tree_, dialogs_, alerts_, help_) {
        parent_ = std::make_unique<QWidget>();
        parent_->resize(400, 300);
        parent_->show();
    }

    // Opens the dialog of request as the main window does (window disabled meanwhile) and runs
    // script on the modal dialog once it shows; a request that opens no modal dialog fails.
    bool OpenWith(const DialogRequest& request, std::function<void(QDialog&)> script) {
        bool ran = false;
        QTimer::singleShot(0, [&] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (dialog == nullptr) {
                ADD_FAILURE() << "no modal dialog";
                return;
            }
            ran = true;
            EXPECT_TRUE(dialog->isEnabled());
            script(*dialog);
            if (dialog->isVisible()) {
                dialog->reject(); // a script that leaves it open must not hang the test
            }
        });
        parent_->setEnabled(false);
        const bool changed = launcher_.Open(request, parent_.get());
        parent_->setEnabled(true);
        EXPECT_TRUE(ran) << "the dialog did not open";
        return changed;
    }

    template <typename T> static T* Find(QDialog& dialog, const char* name) {
        T* widget = dialog.findChild<T*>(name);
        EXPECT_NE(widget, nullptr) << name;
        return widget;
    }
    // Replaces a field's text as the user does.
    static void Type(QDialog& dialog, const char* field, const QString& text) {
        QLineEdit* edit = Find<QLineEdit>(dialog, field);
        edit->selectAll();
        QTest::keyClick(edit, Qt::Key_Delete);
        QTest::keyClicks(edit, text);
    }
    static void Click(QDialog& dialog, const char* button) {
        QTest::mouseClick(Find<QAbstractButton>(dialog, button), Qt::LeftButton);
    }
    // Saves a picture of the dialog when VELMORA_UI_PICTURES names a folder.
    static void Picture(QWidget& widget, const char* name) {
        const QString folder = qEnvironmentVariable("VELMORA_UI_PICTURES");
        if (!folder.isEmpty()) {
            widget.grab().save(folder + "/" + name + ".png");
        }
    }

    AppFixture app_;
    ScriptedDialogs dialogs_;
    ScriptedAlerts alerts_;
    RecordingHelp help_;
    NetworkTree tree_; // the main window's tree, for the dialogs that set its flags
    WindowDialogs launcher_;
    std::unique_ptr<QWidget> parent_;
};

} // namespace velmora::test
