#include "commands/main_commands.h"

#include "interfaces/alert_dialog.h"
#include "interfaces/help_viewer.h"
#include "interfaces/user_dialogs.h"
#include "model/paths.h"
#include "model/runtime_error.h"
#include "session/export_commands.h"
#include "session/workspace.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace velmora {

namespace {

// The commands NewNetwork disables and node creation enables.
constexpr Command kNodeCommands[] = {Command::ModifyNode,      Command::Remove,
                                     Command::CopyNode,        Command::PasteNode,
                                     Command::ConfigurePdo,    Command::AddParameter,
                                     Command::ModifyParameter, Command::SaveToLibrary};
constexpr int kNodeButtons[] = {ToolbarPosition::ModifyNode, ToolbarPosition::RemoveNode,
                                ToolbarPosition::SelectNode, ToolbarPosition::ReplicateNode,
                                ToolbarPosition::ExportToLibrary};

} // namespace

MainCommands::MainCommands(Workspace& workspace, UserDialogs& dialogs, AlertDialog& alerts,
                           TextViewer& viewer, HelpViewer& help)
    : workspace_(workspace), dialogs_(dialogs), alerts_(alerts), viewer_(viewer), help_(help),
      session_(workspace, dialogs, *this), removeCaption_(MenuItemFor(Command::Remove)->Caption) {
    enabled_.fill(true);
    buttons_.fill(true);
    EnableNodeCommands(false);
}

void MainCommands::StartUp(SettingsStore& settings, const std::string& commandLine,
                           const std::string& traceFile) {
    session_.StartUp(settings, commandLine, traceFile);
}

bool MainCommands::IsEnabled(Command command) const {
    return enabled_[static_cast<std::size_t>(command)];
}

bool MainCommands::IsButtonEnabled(int position) const {
    CheckIndex(position, ToolbarPosition::First, ToolbarPosition::Last, "Pulsante");
    return buttons_[static_cast<std::size_t>(position)];
}

void MainCommands::SetEnabled(Command command, bool enabled) {
    enabled_[static_cast<std::size_t>(command)] = enabled;
}

void MainCommands::SetButton(int position, bool enabled) {
    buttons_[static_cast<std::size_t>(position)] = enabled;
}

void MainCommands::EnableNodeCommands(bool enabled) {
    for (Command command : kNodeCommands) {
        SetEnabled(command, enabled);
    }
    for (int position : kNodeButtons) {
        SetButton(position, enabled);
    }
    // Pasting needs a copied node.
    const bool canPaste = enabled && copiedSlot_ >= 0;
    SetEnabled(Command::PasteNode, canPaste);
    SetButton(ToolbarPosition::ReplicateNode, canPaste);
}

DialogRequest MainCommands::Execute(Command command) {
    exportRan_ = false;
    DialogRequest request;
    RunAtCommandBoundary(dialogs_, [&] {
        request = Run(command);
        if (exportRan_ && request.Dialog == DialogRequest::Kind::None) {
            request.Dialog = DialogRequest::Kind::ChannelDialog;
        }
    });
    return request;
}

DialogRequest MainCommands::ClickButton(int position) {
    CheckIndex(position, ToolbarPosition::First, ToolbarPosition::Last, "Pulsante");
    const auto command = CommandForKey(kToolbar[static_cast<std::size_t>(position - 1)].Key);
    return command ? Execute(*command) : DialogRequest{};
}

DialogRequest MainCommands::Run(Command command) {
    using Kind = DialogRequest::Kind;
    switch (command) {
    case Command::FileNew:
        session_.New();
        return {};
    case Command::FileLoad:
        session_.Load();
        return {};
    case Command::FileSave:
        session_.Save();
        return {};
    case Command::FileSaveAs:
        session_.SaveAs();
        return {};
    case Command::AddEds:
        AddEdsFile();
        return {};
    case Command::FileQuit:
        session_.Quit();
        return {Kind::Quit};
    case Command::AddNode:
        return {Kind::AddNode};
    case Command::ModifyNode:
        if (target_.Slot < 0) {
            ShowSelectAnItemAlert();
            return {};
        }
        return {Kind::ModifyNode, target_.Slot};
    case Command::Remove:
        RemoveSelected();
        return {};
    case Command::CopyNode:
        CopySelected();
        return {};
    case Command::PasteNode:
        if (copiedSlot_ < 0) {
            ShowSelectAnItemAlert();
            return {};
        }
        return {Kind::PasteNode, copiedSlot_};
    case Command::ConfigurePdo:
        if (target_.Kind != TreeTargetKind::Pdo) {
            ShowSelectAnItemAlert();
            return {};
        }
        return {Kind::PdoEditor, target_.Slot, target_.PdoIndex};
    case Command::AddParameter:
        if (target_.Slot < 0) {
            ShowSelectAnItemAlert();
            return {};
        }
        return {Kind::NewParameter, target_.Slot};
    case Command::ModifyParameter:
        if (target_.Kind != TreeTargetKind::Parameter) {
            ShowSelectAnItemAlert();
            return {};
        }
        return {Kind::ParameterEditor, target_.Slot, target_.ParameterIndex};
    case Command::TestPdo:
        TestPdo(workspace_, workspace_.ChannelDialog);
        return {Kind::ChannelDialog};
    case Command::ShowFinalFile: {
        const ControllerFileResult result = velmora::ShowFinalFile(workspace_, viewer_);
        if (!result.Complete) {
            dialogs_.ShowError(result.Reason);
        }
        return {};
    }
    case Command::ExportSettings:
        session_.MarkModified();
        return {Kind::ExportSettings};
    case Command::SaveToLibrary:
        if (target_.Slot < 0) {
            ShowSelectAnItemAlert();
            return {};
        }
        return {Kind::SaveToLibrary, target_.Slot};
    case Command::TakeFromLibrary:
        return {Kind::TakeFromLibrary};
    case Command::EditLibrary:
        return {Kind::EditLibrary};
    case Command::HelpContents:
        help_.OpenHelpPage(HelpPage::Main);
        return {};
    case Command::About:
        return {Kind::About};
    case Command::ExportToOrv:
        return ExportCommand();
    }
    return {};
}

DialogRequest MainCommands::ExportCommand() {
    const ExportOutcome outcome =
        velmora::ExportToController(workspace_, workspace_.ChannelDialog);
    if (outcome.Status == ExportStatus::NoFileName) {
        dialogs_.Inform(std::string(ExportTexts::NoNameTitle),
                        std::string(ExportTexts::NoNameText));
        return {}; // the message box is the whole answer
    }
    return {DialogRequest::Kind::ChannelDialog};
}

void MainCommands::ExportToController() {
    ExportCommand();
    exportRan_ = true;
}

void MainCommands::SelectItem(int i) {
    RunAtCommandBoundary(dialogs_, [&] {
        const TreeSelection selection = tree_.SelectItem(workspace_.Net, i);
        selected_ = i;
        ApplySelection(selection.Target, selection);
    });
}

void MainCommands::ApplySelection(const TreeTarget& target, const TreeSelection& selection) {
    target_ = target;
    if (!selection.RemoveCaption.empty()) {
        removeCaption_ = selection.RemoveCaption;
    }
    const bool ofNode = target.Slot >= 0;
    EnableNodeCommands(ofNode);
    SetEnabled(Command::ConfigurePdo, target.Kind == TreeTargetKind::Pdo);
    SetEnabled(Command::ModifyParameter, target.Kind == TreeTargetKind::Parameter);
    SetEnabled(Command::Remove,
               target.Kind == TreeTargetKind::Node || target.Kind == TreeTargetKind::Parameter);
    SetButton(ToolbarPosition::RemoveNode, target.Kind == TreeTargetKind::Node);
    if (selection.DisableButtons9And10) {
        SetButton(ToolbarPosition::RemoveNode, false);
        SetButton(ToolbarPosition::SelectNode, false);
    }
    // Pasting does not depend on what is selected, only on a copied node.
    SetEnabled(Command::PasteNode, copiedSlot_ >= 0);
    SetButton(ToolbarPosition::ReplicateNode, copiedSlot_ >= 0);
    infoText_ = InfoTextFor(workspace_, target);
}

DialogRequest MainCommands::ActivateItem(int i) {
    using Kind = DialogRequest::Kind;
    try {
        const TreeActivation activation =
            tree_.ActivateItem(workspace_.Net, workspace_.Modified, i);
        session_.NoteModified();
        if (activation.RebuildOnOpen) {
            RebuildTree();
        }
        const TreeTarget& target = activation.Target;
        switch (activation.Editor) {
        case TreeEditor::Pdo:
            return {Kind::PdoEditor, target.Slot, target.PdoIndex};
        case TreeEditor::Parameter:
            return {Kind::ParameterEditor, target.Slot, target.ParameterIndex};
        case TreeEditor::NewParameter:
            return {Kind::NewParameter, target.Slot};
        case TreeEditor::Timeout:
            return {Kind::Timeout, target.Slot};
        case TreeEditor::Node:
            if (target.Slot < 0) {
                // The root: the node edit finds no node behind it.
                throw RuntimeError(ErrorCode::InvalidArgument, "nessun nodo selezionato");
            }
            return {Kind::ModifyNode, target.Slot};
        }
    } catch (const RuntimeError&) {
        ShowSelectAnItemAlert();
    }
    return {};
}

void MainCommands::ExpandItem(int i, bool expanded) {
    RunAtCommandBoundary(dialogs_, [&] { tree_.OnItemExpanded(workspace_.Net, i, expanded); });
}

void MainCommands::HelpKey() {
    help_.OpenHelpPage(HelpPage::MainWindow);
}

void MainCommands::DialogClosed(const DialogRequest& request, bool changed) {
    using Kind = DialogRequest::Kind;
    RunAtCommandBoundary(dialogs_, [&] {
        switch (request.Dialog) {
        case Kind::AddNode:
        case Kind::ModifyNode:
        case Kind::PasteNode:
        case Kind::TakeFromLibrary:
            if (changed) {
                AfterChange();
                EnableNodeCommands(true);
            }
            break;
        case Kind::PdoEditor:
        case Kind::ParameterEditor:
        case Kind::NewParameter:
            if (changed) {
                AfterChange();
            }
            break;
        default:
            break;
        }
    });
}

// A command has changed the network: the mark, then the tree, as every command does.
void MainCommands::AfterChange() {
    session_.MarkModified();
    RebuildTree();
}

void MainCommands::RemoveSelected() {
    Network& network = workspace_.Net;
    if (target_.Kind == TreeTargetKind::Parameter) {
        Node& node = network.NodeAt(target_.Slot);
        // The later parameters move down one place; the entry they leave is emptied, so
        // that the export, which stops at the first unused entry, does not repeat the last.
        const int last = std::min<int>(node.ParameterCount, kLastParameter + 1) - 1;
        for (int k = target_.ParameterIndex; k < last; ++k) {
            node.ParameterAt(k) = node.ParameterAt(k + 1);
        }
        if (last >= target_.ParameterIndex) {
            node.ParameterAt(last) = NodeParameter{};
        }
        --node.ParameterCount;
    } else if (target_.Kind == TreeTargetKind::Node) {
        ClearNode(network, target_.Slot);
        --network.NodeCount;
        if (copiedSlot_ == target_.Slot) {
            copiedSlot_ = -1;
        }
    } else {
        ShowSelectAnItemAlert();
        return;
    }
    AfterChange();
}

void MainCommands::CopySelected() {
    if (target_.Kind != TreeTargetKind::Node) {
        ShowSelectAnItemAlert();
        return;
    }
    copiedSlot_ = target_.Slot;
    // Copying changes nothing, but marks the configuration all the same.
    session_.MarkModified();
    SetEnabled(Command::PasteNode, true);
    SetButton(ToolbarPosition::ReplicateNode, true);
}

void MainCommands::AddEdsFile() {
    const auto chosen =
        dialogs_.ChooseFileToOpen("Carica configurazione ...",
                                  {{"tipo di file (*.eds)", "*.eds"}, {"All Files (*.*)", "*.*"}});
    if (!chosen) {
        return;
    }
    std::string folder;
    std::string name;
    SplitPath(*chosen, folder, name);
    const std::string target = workspace_.EdsDirectory() + name;
    std::error_code error;
    const auto from = ToFsPath(*chosen);
    const auto to = ToFsPath(target);
    if (!std::filesystem::equivalent(from, to, error)) {
        std::filesystem::create_directories(ToFsPath(workspace_.EdsDirectory()), error);
        error.clear();
        std::filesystem::copy_file(from, to, std::filesystem::copy_options::overwrite_existing,
                                   error);
        if (error) {
            throw RuntimeError(ErrorCode::PathFileAccess,
                               *chosen + " -> " + target + ": " + error.message());
        }
    }
    workspace_.EdsFiles = ListEdsFiles(workspace_.EdsDirectory());
}

void MainCommands::ShowSelectAnItemAlert() {
    ShowAlertDisabling(
        alerts_,
        BlockingAlert("MainWin", "Selezionare un elemento dalla treeView e scegliere un azione ",
                      "oppure fare doppio click sull'elemento desiderato"),
        windowDisabled_);
}

void MainCommands::NetworkEmptied() {
    tree_.Clear();
    selected_ = -1;
    target_ = TreeTarget{};
    copiedSlot_ = -1;
    infoText_.clear();
    EnableNodeCommands(false);
    SetEnabled(Command::FileSave, false);
}

void MainCommands::RebuildTree() {
    const TreeRebuildResult result =
        tree_.RebuildNetworkTree(workspace_.Net, session_.HasUnsavedChanges());
    nodeCountText_ = result.NodeCountText;
    selected_ = result.SelectedItem;
    target_ = TreeTarget{};
    infoText_ = selected_ >= 0 ? InfoTextFor(workspace_, target_) : std::string();
    if (result.DisableNodeCommands) {
        EnableNodeCommands(false);
    }
}

bool MainCommands::TreeHasItems() const {
    return tree_.Size() > 0;
}

void MainCommands::ShowRootCaption(const std::string& caption) {
    tree_.SetRootCaption(caption);
}

void MainCommands::ChangeMarked() {
    SetButton(ToolbarPosition::SelectNode, true);
}

void MainCommands::EnableFileCommand() {
    SetEnabled(Command::FileSave, true);
}

bool RunAtCommandBoundary(UserDialogs& dialogs, const std::function<void()>& command) {
    try {
        command();
        return true;
    } catch (const RuntimeError& error) {
        dialogs.ShowError(error.what());
        return false;
    }
}

std::string InfoTextFor(const Workspace& workspace, const TreeTarget& target) {
    const Network& network = workspace.Net;
    if (target.Slot < 0) {
        return "Configurazione: " + network.FileName +
               "\nNodi: " + std::to_string(network.NodeCount) +
               "\nFile di esportazione: " + network.ExportPath +
               "\nNumero max di PDO fast: " + std::to_string(network.MaxFastPdo());
    }
    const Node& node = network.NodeAt(target.Slot);
    const std::string nodeLine =
        "Nodo " + std::to_string(target.Slot + 1) + ": " + node.EdsName + "\n";
    switch (target.Kind) {
    case TreeTargetKind::Pdo: {
        const Pdo& pdo = node.PdoAt(target.PdoIndex);
        const PdoSettings& s = pdo.Settings;
        std::string text = nodeLine + PdoName(pdo) + " (" + s.Mode + ")\nCob_Id: " + s.CobId +
                           "\nByte: " + s.Bytes + "\nComm: " + s.Comm +
                           "\nInhibit_time: " + s.InhibitTime + "\nEvent_time: " + s.EventTime +
                           "\nMappature: " + std::to_string(s.MappingCount);
        for (int k = 0; k < std::min<int>(s.MappingCount, kLastMapping + 1); ++k) {
            const PdoMapping& m = s.MappingAt(k);
            text += "\n  " + m.Vcb + " [" + m.ObjectIndex + " sub " + m.SubIndex + "] " +
                    m.Length + " bit";
        }
        return text;
    }
    case TreeTargetKind::Parameter: {
        const NodeParameter& p = node.ParameterAt(target.ParameterIndex);
        return nodeLine + "Parametro: " + p.Name + "\nIndex: " + p.ObjectIndex +
               "\nSubindex: " + p.SubIndex + "\nNByte: " + p.ByteCount + "\nValore: " + p.Value;
    }
    case TreeTargetKind::ParameterFolder:
        return nodeLine + "Parametri: " + std::to_string(node.ParameterCount);
    default:
        return nodeLine + "PDO TX: " + std::to_string(node.TxPdoCount) +
               "\nPDO RX: " + std::to_string(node.RxPdoCount) +
               "\nParametri: " + std::to_string(node.ParameterCount) +
               "\nTime-out: " + std::to_string(node.repetitions) + " ripetizioni, " +
               std::to_string(node.repetitionTime) + " ms";
    }
}

} // namespace velmora
