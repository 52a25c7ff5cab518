#include "window_dialogs.h"

#include "add_node_window.h"
#include "channel_window.h"
#include "dialog_support.h"
#include "export_settings_window.h"
#include "interfaces/user_dialogs.h"
#include "library_insert_window.h"
#include "library_manager_window.h"
#include "parameter_window.h"
#include "paste_window.h"
#include "pdo_window.h"
#include "presenters/add_node_dialog.h"
#include "presenters/export_settings_dialog.h"
#include "presenters/library_insert_dialog.h"
#include "presenters/library_manager.h"
#include "presenters/parameter_editor.h"
#include "presenters/paste_dialog.h"
#include "presenters/save_to_library_dialog.h"
#include "presenters/timeout_dialog.h"
#include "save_to_library_window.h"
#include "session/workspace.h"
#include "timeout_window.h"

#include <QMessageBox>
#include <QtGlobal>

namespace velmora {

WindowDialogs::WindowDialogs(Workspace& workspace, NetworkTree& tree, UserDialogs& dialogs,
                             AlertDialog& alerts, HelpViewer& help)
    : workspace_(workspace), tree_(tree), dialogs_(dialogs), alerts_(alerts), help_(help) {}

WindowDialogs::~WindowDialogs() = default;

std::string WindowDialogs::AboutText() const {
    return std::string("Velmora ") + VELMORA_VERSION +
           "\nConfigurazione di reti CANopen per il controllore programmabile.\n\n"
           "Licenza: MIT\nQt " +
           qVersion() + "\nCartella dell'applicazione: " + workspace_.AppDirectory;
}

bool WindowDialogs::Open(const DialogRequest& request, QWidget* parent) {
    bool changed = false;
    RunShowingErrors(dialogs_, [&] { changed = OpenDialog(request, parent); });
    return changed;
}

bool WindowDialogs::OpenDialog(const DialogRequest& request, QWidget* parent) {
    using Kind = DialogRequest::Kind;
    switch (request.Dialog) {
    case Kind::About:
        QMessageBox::about(parent, QObject::tr("Informazioni su Velmora"),
                           QString::fromStdString(AboutText()));
        return false;
    case Kind::Timeout: {
        TimeoutDialog presenter(workspace_.Net, "PARTIMEOUT@" + std::to_string(request.Slot));
        TimeoutWindow window(presenter, dialogs_, parent);
        EnableOverParent(window);
        window.exec();
        return false; // storing time-outs marks nothing
    }
    case Kind::ExportSettings: {
        ExportSettingsDialog presenter(workspace_);
        ExportSettingsWindow window(presenter, dialogs_, parent);
        EnableOverParent(window);
        return window.exec() == QDialog::Accepted;
    }
    case Kind::AddNode:
    case Kind::ModifyNode: {
        AddNodeDialog presenter(workspace_, alerts_, dialogs_);
        if (request.Dialog == Kind::ModifyNode) {
            presenter.Open(AddNodeTexts::ModifyMode, request.Slot);
        } else {
            presenter.Open("");
        }
        AddNodeWindow window(presenter, dialogs_, parent);
        EnableOverParent(window);
        window.exec();
        return window.NetworkChanged();
    }
    case Kind::PasteNode: {
        PasteDialog presenter(workspace_, alerts_);
        if (!presenter.Open(request.Slot)) {
            return false;
        }
        PasteWindow window(presenter, dialogs_, parent);
        EnableOverParent(window);
        window.exec();
        return window.NetworkChanged();
    }
    case Kind::PdoEditor: {
        PdoEditor presenter(workspace_, alerts_, dialogs_, help_, request.Slot, request.Index);
        PdoWindow window(presenter, dialogs_, parent);
        EnableOverParent(window);
        window.exec();
        if (window.SaveResult().ChannelDialogShown) {
            ShowChannels(parent);
        }
        return window.SaveResult().Saved;
    }
    case Kind::NewParameter:
    case Kind::ParameterEditor: {
        ParameterEditor presenter(workspace_, alerts_, dialogs_);
        const Node& node = workspace_.Net.NodeAt(request.Slot);
        if (request.Dialog == Kind::NewParameter) {
            if (!presenter.OpenParameterEditor(request.Slot, node.ParameterCount,
                                               ParameterEditorTexts::NewMode)) {
                return false;
            }
        } else {
            presenter.OpenParameterEditor(request.Slot, request.Index, "mod");
            presenter.setOldData(node.ParameterAt(request.Index));
        }
        ParameterWindow window(presenter, dialogs_, parent);
        EnableOverParent(window);
        window.exec();
        return window.NetworkChanged();
    }
    case Kind::SaveToLibrary: {
        SaveToLibraryDialog presenter(workspace_, dialogs_);
        presenter.Open(request.Slot);
        SaveToLibraryWindow window(presenter, dialogs_, parent);
        EnableOverParent(window);
        window.exec();
        return false; // the library is not the network
    }
    case Kind::TakeFromLibrary: {
        LibraryInsertDialog presenter(workspace_, tree_, alerts_, dialogs_);
        presenter.Open();
        LibraryInsertWindow window(presenter, dialogs_, parent);
        EnableOverParent(window);
        window.exec();
        return window.NetworkChanged();
    }
    case Kind::EditLibrary: {
        LibraryManager presenter(workspace_, dialogs_);
        presenter.Refresh();
        LibraryManagerWindow window(presenter, dialogs_, parent);
        EnableOverParent(window);
        window.exec();
        return false;
    }
    case Kind::ChannelDialog:
        ShowChannels(parent);
        return false;
    case Kind::None:
    case Kind::Quit: // the main window answers these itself; there is no dialog to open
        return false;
    }
    return false;
}

bool WindowDialogs::HoldsWindow() const {
    return channels_ != nullptr && channels_->isVisible();
}

ChannelWindow* WindowDialogs::Channels() const {
    return channels_;
}

void WindowDialogs::ShowChannels(QWidget* parent) {
    if (channels_ == nullptr) {
        channels_ =
            new ChannelWindow(workspace_.ChannelDialog, workspace_.Channels, dialogs_, parent);
    }
    channels_->ShowOverParent();
}

} // namespace velmora
