#pragma once

// The PDO editor ("Configura Pdo"): the modal dialog in which the user sets up one PDO of one
// node (mode, COB-ID, bytes, Comm, inhibit and event time, the field-flag switches and the
// mapping list) and saves it into the network or drops the changes.
//
// PdoEditor holds the working copy and everything the dialog shows: field texts, which
// fields, switches and commands are usable, the mapping tree, the header texts. The widget
// copies that state in and forwards the user's actions; every rule lives here.
//
// Markers set when the editor opens:
// - EDS mapping (the PDO's mapping is taken from the node's EDS) and the mapping editor's
//   "fixed" marker: both set for a TX PDO whose EDS mapping object (0x1A00 + k) has a
//   read-only sub-index 0 (AccessType "ro" or "const"), i.e. a fixed mapping; clear for every
//   RX PDO, and when the EDS cannot be read.
// - First configuration: set when the PDO opens unconfigured (either spelling); turning the
//   COB-ID switch on then also turns Comm on with the value "1".
//
// The PDO's byte count follows its mapping: whenever the mapping list changes (a mapping
// stored, removed or cleared), and when a configured mode rebuilds a non-empty tree, Bytes
// becomes the Lengths of the mappings summed in bits and rounded up to whole bytes (a Length
// that is not a number counts as 0). Opening the editor leaves the stored Bytes as it is.
//
// Run-time errors (RuntimeError) propagate to the caller, the command boundary.

#include "interfaces/alert_dialog.h"
#include "model/network.h"
#include "pdo/cob_id_entry.h"
#include "presenters/mapping_editor.h"

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

struct Workspace;
class UserDialogs;
class HelpViewer;

namespace PdoEditorTexts {
inline constexpr std::string_view Title = "Configura Pdo";
inline constexpr std::string_view PdoHeader = "Process data object : ";
inline constexpr std::string_view ProductHeader = "Prodotto :";
inline constexpr std::string_view ModeLabel = "Modo";
inline constexpr std::string_view CobIdLabel = "Cob_Id";
inline constexpr std::string_view BaseLabel = "Base Cob_id:";
inline constexpr std::string_view Hexadecimal = "Esadecimale";
inline constexpr std::string_view Decimal = "Decimale";
inline constexpr std::string_view BytesLabel = "Byte";
inline constexpr std::string_view CommLabel = "Comm";
inline constexpr std::string_view InhibitLabel = "Inhibit_time";
inline constexpr std::string_view EventLabel = "Event_time";
inline constexpr std::string_view RtrLabel = "RTR";
inline constexpr std::string_view PdoMenu = "Pdo";
inline constexpr std::string_view MappingMenu = "Mappature";
inline constexpr std::string_view MappingTreeRoot = "Mappature";
inline constexpr std::string_view SelectMapping = "Selezionare una mappatura";
inline constexpr std::string_view ToRemove = "dalla treeView per rimuoverla.";
inline constexpr std::string_view ToModify = "dalla treeView per modificarla.";
} // namespace PdoEditorTexts

// The editor's commands, each a toolbar button and a menu entry.
enum class PdoCommand { Save, Cancel, ClearMappings, AddMapping, RemoveMapping, ModifyMapping };

struct PdoCommandText {
    std::string_view ToolTip;   // of the toolbar button
    std::string_view MenuEntry; // "&" marks the access key
};
PdoCommandText TextOf(PdoCommand command);

// The five switches in the order of their flag bits.
enum class PdoSwitch { CobId, Comm, Inhibit, Event, Rtr };

// What Save (and the conflict alert's "Inserisci comunque il Cob-Id", which saves at once)
// tells the main window.
struct PdoSaveResult {
    // The PDO was written and the editor closed: the main window rebuilds its tree.
    bool Saved = false;
    // The channel analysis warned that the fast-PDO limit is reached and showed the channel
    // dialog; otherwise the main window is enabled again and brought to the front.
    bool ChannelDialogShown = false;
};

// The byte count of a mapping table as text: the Lengths of entries 0..MappingCount-1 in use,
// summed in bits and rounded up to whole bytes (12 bits give "2"). A Length that is not
// wholly a decimal number counts as 0; the result lies within 0..32767.
std::string MappingBytesText(const PdoSettings& settings);

class PdoEditor {
public:
    // Opens the editor for PDO pdoIndex (0..50) of the node in slot (0..500); outside is the
    // SubscriptOutOfRange error. initData, then the fields are filled from the PDO with the
    // loading marker set: texts as stored (a PDO stored as "Manual" shows "Manual"), the
    // switches from Pcfg, the mapping tree from its entries. The base is "h", the COB-ID
    // check disarmed, the previous mode "Non configurato". Reads the node's EDS into
    // workspace.Eds to set the markers (see above).
    PdoEditor(Workspace& workspace, AlertDialog& alerts, UserDialogs& dialogs, HelpViewer& help,
              int slot, int pdoIndex);
    ~PdoEditor();

    PdoEditor(const PdoEditor&) = delete;
    PdoEditor& operator=(const PdoEditor&) = delete;

    // --- what the dialog shows ---

    std::string_view Title() const { return PdoEditorTexts::Title; }
    // Beside "Process data object : ": "pdo_" direction and number ("pdo_TX1").
    const std::string& PdoDescription() const { return pdoDescription_; }
    // Beside "Prodotto :": the node's EdsName and number ("drive (5)").
    const std::string& ProductDescription() const { return productDescription_; }

    // The mode chooser's text: a choice of kModeChoices, or a stored text as it stands.
    const std::string& ModeText() const { return working_.Mode; }
    const std::string& CobIdText() const { return cobEntry_.FieldText; }
    const std::string& CobIdBase() const { return cobEntry_.Base; } // "h" or "d"
    const std::string& BytesText() const { return working_.Bytes; }
    const std::string& CommText() const { return working_.Comm; }
    const std::string& InhibitTimeText() const { return working_.InhibitTime; }
    const std::string& EventTimeText() const { return working_.EventTime; }
    // The Bytes chooser's entries: "0" to "256".
    static const std::vector<std::string>& BytesChoices();

    bool SwitchOn(PdoSwitch which) const;
    // A switch can be clicked once a configured mode was chosen ("Non configurato" leaves
    // only the mode chooser usable).
    bool SwitchEnabled(PdoSwitch which) const;
    // The COB-ID entry and its two base options: usable while its switch is on, except in
    // "Disabilitato". Greyed when not usable.
    bool CobIdFieldEnabled() const;
    bool CommFieldEnabled() const { return SwitchOn(PdoSwitch::Comm); }
    bool InhibitTimeFieldEnabled() const { return SwitchOn(PdoSwitch::Inhibit); }
    bool EventTimeFieldEnabled() const { return SwitchOn(PdoSwitch::Event); }
    // Not in "Non configurato"; never for a TX PDO whose mapping comes from the EDS.
    bool BytesEnabled() const;

    // The toolbar button and the menu entry of a command. "Aggiungi &mappatura" takes the
    // state of its toolbar button.
    bool ButtonEnabled(PdoCommand command) const;
    bool MenuEntryEnabled(PdoCommand command) const;
    bool MappingMenuEnabled() const { return configurable_; }

    // The mapping tree: the root "Mappature", then one item per mapping entry in use
    // ("[6064 sub 0] posizione (32 bit)"); empty after "Non configurato" until a configured
    // mode is chosen. Commands name an item by its position here (-1: nothing selected).
    std::vector<std::string> MappingTree() const;
    // The label beside the tree: the number of mapping entries shown.
    std::string MappingCountText() const;

    // --- the editor's state ---

    bool IsOpen() const { return open_; }
    // False while an alert that disables the editor, or the mapping editor, is up. While
    // disabled, or once closed, the editor ignores the user's actions.
    bool Enabled() const;
    // "yes" when the edits are saved or dropped, "no" while there are unsaved edits.
    const std::string& SavedMarker() const { return savedMarker_; }
    bool MappingsSaved() const { return mappingsSaved_; }
    bool EdsMappingMarker() const { return edsMapping_; }
    bool FirstConfiguration() const { return firstConfiguration_; }
    // The mapping editor's fixed marker ("yes" / "no" as a flag).
    bool MappingFixed() const { return mappingFixed_; }
    // The mapping editor while it is open, else nullptr.
    MappingEditor* OpenMappingEditor() const;

    // --- the user's actions ---

    // Choosing a mode ("Manuale" among them). "Non configurato" resets the PDO (default
    // mapping read again from the EDS when the mapping comes from it, the mapping no longer
    // fixed; last accepted COB-ID = DefaultCobId; Bytes "0"; every switch off and every field
    // cleared to "0"; mapping commands and tree gone). "Disabilitato" sets the COB-ID to "0"
    // and turns its switch on, keeping the rest. Any other mode, chosen while the previous
    // mode is "Non configurato" or "Disabilitato" (only those two modes change the previous
    // mode, so that always holds), turns an active COB-ID switch off and empties its field,
    // makes Bytes and the mapping commands usable and rebuilds the tree; "Fast" and "Slow"
    // then turn the COB-ID switch on, which shows the DefaultCobId.
    void ChooseMode(std::string_view shown);
    // A switch clicked. On: its field becomes usable; the COB-ID switch, outside
    // "Disabilitato", also shows the DefaultCobId (base "h") and, on a first configuration,
    // turns Comm on with "1". Off: the field is greyed and keeps its text.
    void SetSwitch(PdoSwitch which, bool on);

    // The COB-ID field: every typed character (Backspace as U+0008) goes through
    // FilterCobIdKey; the result is the character to insert, 0 to discard it. The widget
    // reports the resulting text with EditCobIdText.
    char32_t TypeCobIdKey(char32_t key) const;
    void EditCobIdText(std::string text);
    // The base options: ToHexBase / ToDecimalBase of the field (a value that does not fit is
    // the Overflow error, the field unchanged).
    void ChooseCobIdBase(std::string_view base);
    // Leaving the field: CheckCobIdEntry. A refusal shows its alert and puts the last accepted
    // COB-ID back; a conflict offers "Inserisci comunque il Cob-Id", and ticking it saves at
    // once, storing the duplicate on purpose.
    PdoSaveResult LeaveCobIdField();

    void ChooseBytes(std::string text);
    void EditComm(std::string text);
    void EditInhibitTime(std::string text);
    void EditEventTime(std::string text);

    // "Salva pdo": the COB-ID checked again (a failure keeps the editor open), then CobId
    // ("0" when empty, the hexadecimal digits of a decimal entry), EventTime and InhibitTime
    // ("0" when empty), Mode ("Manual" for "Manuale"), Bytes, Comm as typed, Pcfg from the
    // switches and the mapping table replace the PDO's settings; its Used and the node's
    // Configured become -1; the editor closes and the channel analysis' OnPdoModeSaved runs.
    PdoSaveResult Save();
    // "Annulla Operazioni": closes without writing and without asking.
    void Cancel();

    // "Pulisci mappature": every mapping entry removed.
    void ClearMappings();
    // "Aggiungi nuova mappatura": opens the mapping editor for a new entry (nullptr and a
    // message box when the PDO already holds eleven).
    MappingEditor* AddMapping();
    // "Rimuovi mappatura" on tree item selectedItem: the later entries move down one place.
    // Without a mapping item selected, the alert "Selezionare una mappatura" /
    // "dalla treeView per rimuoverla." is shown instead.
    void RemoveMapping(int selectedItem);
    // "Modifica mappatura", and a double click on a tree item: the mapping editor on that
    // entry, or the alert "Selezionare una mappatura" / "dalla treeView per modificarla.".
    MappingEditor* ModifyMapping(int selectedItem);
    MappingEditor* ActivateMappingItem(int item) { return ModifyMapping(item); }

    // A key with the help meaning: F1 without Shift, Ctrl or Alt opens "editPDO.htm".
    void PressHelpKey(bool shift, bool ctrl, bool alt);

    // --- operations the rest of the system calls ---

    // Resets the working copy: COB-ID, event and inhibit time, Comm and Bytes "0", the mode
    // "Non Configurato" (capital C) until the PDO's own values are filled in.
    void initData();
    // Arms the COB-ID check.
    void setCobChecked();
    // Disarms it: the next check only re-arms and passes.
    void unSetCobChecked();

private:
    bool AcceptsInput() const { return open_ && Enabled(); }
    bool IsTx() const;
    bool MappingItemSelected(int selectedItem) const;
    // Shows the alert of a failed COB-ID check; true when the duplicate is to be stored.
    bool RefuseCobId(const CobIdCheck& check);
    void SelectMappingAlert(std::string_view secondLine);
    void TurnCobIdSwitchOn();
    void MappingListChanged();
    void MappingEditorClosed(bool stored);
    MappingEditor* StartMappingEditor(MappingEditorMode mode, int mappingNumber);
    std::string CobIdToStore() const;
    void Edited() { savedMarker_ = "no"; }

    Workspace& workspace_;
    AlertDialog& alerts_;
    UserDialogs& dialogs_;
    HelpViewer& help_;
    int slot_;
    int pdoIndex_;
    std::string pdoDescription_;
    std::string productDescription_;
    std::string defaultCobId_;

    // The working copy: Mode, Bytes, Comm, InhibitTime, EventTime and the mapping table; the
    // COB-ID field lives in cobEntry_.
    PdoSettings working_;
    CobIdEntryState cobEntry_;
    std::array<bool, 5> switches_{};
    std::string previousMode_;
    bool configurable_ = false; // Bytes, switches and the mapping commands usable
    bool treeShown_ = true;

    bool open_ = true;
    bool alertUp_ = false;
    std::string savedMarker_ = "yes";
    bool mappingsSaved_ = true;
    bool edsMapping_ = false;
    bool mappingFixed_ = false;
    bool firstConfiguration_ = false;
    std::unique_ptr<MappingEditor> mappingEditor_;
};

} // namespace velmora
