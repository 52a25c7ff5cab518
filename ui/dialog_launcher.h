#pragma once

// What the main window asks for when a command needs a dialog: open it for a request of the
// main window's logic and tell whether it changed the network. The window's own launcher
// opens the Qt dialogs; tests give a scripted one.

#include "commands/main_commands.h"

class QWidget;

namespace velmora {

class DialogLauncher {
public:
    virtual ~DialogLauncher() = default;
    // Opens the dialog of request over parent and returns when the user has closed it: true
    // when it changed the network. A dialog that stays open beside the window (the channel
    // dialog) returns at once with false. Run-time errors of the dialog's logic are shown
    // by the dialog itself; none reach the caller.
    virtual bool Open(const DialogRequest& request, QWidget* parent) = 0;
    // True while a dialog that Open left open beside the window (the channel dialog, shown
    // after an editor's save) keeps the window disabled; it enables the window when it closes.
    virtual bool HoldsWindow() const { return false; }
};

} // namespace velmora
