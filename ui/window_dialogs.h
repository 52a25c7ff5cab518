#pragma once

// The window's dialogs: opens the Qt dialog that a request of the main window's logic names,
// over the main window, and reports whether the network changed.

#include "dialog_launcher.h"

#include <string>

#include <QPointer>

namespace velmora {

struct Workspace;
class UserDialogs;
class AlertDialog;
class HelpViewer;
class ChannelWindow;
class NetworkTree;

class WindowDialogs : public DialogLauncher {
public:
    // tree is the main window's network tree (MainCommands::Tree): the insertion from the
    // library sets its CollapseOnRebuild.
    WindowDialogs(Workspace& workspace, NetworkTree& tree, UserDialogs& dialogs,
                  AlertDialog& alerts, HelpViewer& help);
    ~WindowDialogs() override;

    bool Open(const DialogRequest& request, QWidget* parent) override;
    bool HoldsWindow() const override;

    // The about box's text: name, version, licence, Qt version, the application folder.
    std::string AboutText() const;

    // The channel dialog, once it has been shown; it lives as long as the main window.
    ChannelWindow* Channels() const;

private:
    bool OpenDialog(const DialogRequest& request, QWidget* parent);
    void ShowChannels(QWidget* parent);

    Workspace& workspace_;
    NetworkTree& tree_;
    UserDialogs& dialogs_;
    AlertDialog& alerts_;
    HelpViewer& help_;
    QPointer<ChannelWindow> channels_;
};

} // namespace velmora
