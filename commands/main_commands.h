#pragma once

// The main window's logic: the network tree it shows, which commands are usable, the
// information panel, and what every menu item, toolbar button, selection and double click
// does. Commands that need a dialog return a DialogRequest; the window opens that dialog
// (whose own logic is another presenter) and reports back with DialogClosed. A run-time
// error stops the command that met it and is shown through UserDialogs::ShowError, and the
// program goes on: this class is the command boundary for what it runs, and the window is
// the boundary for the dialogs' presenters, which let run-time errors through; it makes
// each call it forwards to one of them through RunAtCommandBoundary.
//
// Choices made here where the system leaves them open:
// - NewNetwork disables the node commands (Modifica nodo, Rimuovi, Copia, Incolla, Configura
//   pdo, the two parameter commands, Salva nodo in libreria and toolbar buttons 8 to 11 and
//   13) and the File menu's "&Salva"; New, Load, Save as and a command-line start enable
//   "&Salva" again.
// - Selecting an item enables the commands that apply to it: a node's commands for any item
//   of a node, "Configura pdo" for a PDO, the parameter commands for a parameter (which also
//   disables buttons 9 and 10); the root enables none of them. Creating, pasting or
//   modifying a node enables the node commands, as node creation does.
// - Copying a node enables the paste command ("Incolla nodo", button 11), which stays
//   disabled until a node has been copied.
// - "Salva nodo in libreria" needs a node's item selected, as the other node commands do;
//   "Prendi nodo da libreria" and "Modifica nodo in libreria" are always available.

#include "commands/command_table.h"
#include "interfaces/configuration_host.h"
#include "session/configuration_session.h"
#include "tree/network_tree.h"

#include <array>
#include <functional>
#include <string>

namespace velmora {

struct Workspace;
class UserDialogs;
class AlertDialog;
class TextViewer;
class HelpViewer;
class SettingsStore;

// A dialog the window must open for a command.
struct DialogRequest {
    enum class Kind {
        None,
        AddNode,         // the add-node dialog
        ModifyNode,      // the add-node dialog in its "mod" mode for Slot
        PdoEditor,       // the PDO editor for Pdos[Index] of Slot
        ParameterEditor, // the parameter editor for Parameters[Index] of Slot
        NewParameter,    // the parameter editor adding a parameter to Slot
        Timeout,         // the time-out dialog for Slot
        PasteNode,       // the paste dialog for the node copied from Slot
        SaveToLibrary,   // the save-to-library dialog for the node of Slot
        TakeFromLibrary, // the dialog inserting nodes from the product library
        EditLibrary,     // the library manager
        ExportSettings,  // the export settings dialog
        ChannelDialog,   // show the channel dialog (Workspace::ChannelDialog)
        About,           // the about box
        Quit,            // close the program
    };
    Kind Dialog = Kind::None;
    int Slot = -1;
    int Index = -1;

    bool operator==(const DialogRequest&) const = default;
};

class MainCommands : public ConfigurationHost {
public:
    MainCommands(Workspace& workspace, UserDialogs& dialogs, AlertDialog& alerts,
                 TextViewer& viewer, HelpViewer& help);

    // Start-up: see ConfigurationSession::StartUp.
    void StartUp(SettingsStore& settings, const std::string& commandLine,
                 const std::string& traceFile);

    // A menu item.
    DialogRequest Execute(Command command);
    // A toolbar button, by position (ToolbarPosition): runs the command of the button's key.
    DialogRequest ClickButton(int position);
    // The user selected tree item i: fills the information panel, updates the commands.
    void SelectItem(int i);
    // The user double-clicked tree item i (or pressed Enter on it): opens its editor. Any
    // failure, no item selected included, shows the "Selezionare un elemento dalla
    // treeView ..." alert instead. For the time-out dialog the tree is rebuilt here, before
    // the window opens it; its closing changes nothing.
    DialogRequest ActivateItem(int i);
    // The user expanded or collapsed tree item i.
    void ExpandItem(int i, bool expanded);
    // F1 in the main window.
    void HelpKey();
    // A dialog opened for request closed; changed says whether it changed the network.
    void DialogClosed(const DialogRequest& request, bool changed);

    // What the window shows.
    const NetworkTree& Tree() const { return tree_; }
    // The insertion from the library sets the tree's CollapseOnRebuild.
    NetworkTree& Tree() { return tree_; }
    int SelectedItem() const { return selected_; }
    bool IsEnabled(Command command) const;
    bool IsButtonEnabled(int position) const;
    const std::string& RemoveCaption() const { return removeCaption_; }
    const std::string& NodeCountText() const { return nodeCountText_; }
    const std::string& InfoText() const { return infoText_; }
    bool WindowEnabled() const { return !windowDisabled_; }
    // The slot of the copied node, -1 when none.
    int CopiedSlot() const { return copiedSlot_; }

    ConfigurationSession& Session() { return session_; }

    // ConfigurationHost
    void NetworkEmptied() override;
    void RebuildTree() override;
    bool TreeHasItems() const override;
    void ShowRootCaption(const std::string& caption) override;
    void ChangeMarked() override;
    void EnableFileCommand() override;
    void ExportToController() override;

private:
    DialogRequest Run(Command command);
    void SetEnabled(Command command, bool enabled);
    void SetButton(int position, bool enabled);
    void EnableNodeCommands(bool enabled);
    void ApplySelection(const TreeTarget& target, const TreeSelection& selection);
    void AfterChange();
    void RemoveSelected();
    void CopySelected();
    void AddEdsFile();
    void ShowSelectAnItemAlert();
    DialogRequest ExportCommand();

    Workspace& workspace_;
    UserDialogs& dialogs_;
    AlertDialog& alerts_;
    TextViewer& viewer_;
    HelpViewer& help_;
    ConfigurationSession session_;
    NetworkTree tree_;

    int selected_ = -1;
    TreeTarget target_; // the record the selected item stands for
    std::array<bool, kCommandCount> enabled_{};
    std::array<bool, ToolbarPosition::Last + 1> buttons_{}; // by position
    std::string removeCaption_;
    std::string nodeCountText_;
    std::string infoText_;
    bool windowDisabled_ = false; // while an alert it raised is up
    int copiedSlot_ = -1;
    bool exportRan_ = false; // a Save ran the export: the channel dialog must show
};

// The command boundary: runs command; a run-time error it raises stops it and is shown
// through dialogs.ShowError, and the result is false. Other exceptions pass.
bool RunAtCommandBoundary(UserDialogs& dialogs, const std::function<void()>& command);

// The information panel's text for an item's record.
std::string InfoTextFor(const Workspace& workspace, const TreeTarget& target);

} // namespace velmora
