#include "presenters/pdo_editor.h"

#include "eds/eds_object_table.h"
#include "eds/eds_reader.h"
#include "eds/eds_text.h"
#include "eds/node_creation.h"
#include "export/channel_analysis.h"
#include "interfaces/alert_dialog.h"
#include "interfaces/help_viewer.h"
#include "interfaces/user_dialogs.h"
#include "model/numeric.h"
#include "model/runtime_error.h"
#include "model/text.h"
#include "model/transmission_mode.h"
#include "pdo/field_flags.h"
#include "pdo/mode_choice.h"
#include "session/workspace.h"

#include <algorithm>
#include <cmath>

namespace velmora {

namespace {

std::size_t SwitchSlot(PdoSwitch which) {
    return static_cast<std::size_t>(which);
}

// The entries the mapping table shows: MappingCount kept within 0..11.
int ShownMappingCount(const PdoSettings& settings) {
    return std::clamp<int>(settings.MappingCount, 0, kLastMapping + 1);
}

// A TX PDO whose EDS mapping object has a read-only sub-index 0 carries a fixed mapping. The
// mapping object is formed as node creation forms it ("1a0" and k in decimal).
bool HasFixedEdsMapping(Workspace& workspace, const Node& node, const Pdo& pdo) {
    if (pdo.Direction != PdoDirection::Tx) {
        return false;
    }
    try {
        LoadEds(workspace.Eds, workspace.EdsDirectory(), node.EdsName + ".eds");
    } catch (const RuntimeError&) {
        return false; // without its EDS the PDO is simply edited freely
    }
    const std::int32_t index = ReadEdsHex("1a0" + DecimalText(pdo.PdoNumber));
    const EdsObjectMatch count = FindEdsObject(workspace.Eds, index, 0);
    return count.Found && (count.Object.AccessType == "ro" || count.Object.AccessType == "const");
}

} // namespace

PdoCommandText TextOf(PdoCommand command) {
    switch (command) {
    case PdoCommand::Save:
        return {"Salva pdo", "Salva &Pdo"};
    case PdoCommand::Cancel:
        return {"Annulla Operazioni", "&Annulla"};
    case PdoCommand::ClearMappings:
        return {"Pulisci mappature", "Pulisci mappature"};
    case PdoCommand::AddMapping:
        return {"Aggiungi nuova mappatura", "Aggiungi &mappatura"};
    case PdoCommand::RemoveMapping:
        return {"Rimuovi mappatura", "&Elimina mappatura"};
    case PdoCommand::ModifyMapping:
        return {"Modifica mappatura", "Modifica mappatura"};
    }
    return {};
}

std::string MappingBytesText(const PdoSettings& settings) {
    double bits = 0;
    for (int i = 0; i < ShownMappingCount(settings); ++i) {
        const PdoMapping& mapping = settings.MappingAt(i);
        const std::optional<double> length = ParseDecimal(mapping.Length);
        if (mapping.Used != 0 && length && std::isfinite(*length)) {
            bits += *length;
        }
    }
    const double bytes = std::clamp(std::ceil(bits / 8), 0.0, 32767.0);
    return DecimalText(static_cast<long long>(bytes));
}

PdoEditor::PdoEditor(Workspace& workspace, AlertDialog& alerts, UserDialogs& dialogs,
                     HelpViewer& help, int slot, int pdoIndex)
    : workspace_(workspace), alerts_(alerts), dialogs_(dialogs), help_(help), slot_(slot),
      pdoIndex_(pdoIndex), previousMode_(TransmissionMode::NotConfigured) {
    const Node& node = workspace_.Net.NodeAt(slot);
    const Pdo& pdo = node.PdoAt(pdoIndex);
    initData();

    cobEntry_.Loading = true;
    working_ = pdo.Settings;
    cobEntry_.FieldText = pdo.Settings.CobId;
    cobEntry_.LastAccepted = pdo.Settings.CobId;
    cobEntry_.Mode = working_.Mode;
    const FieldFlags flags = DecodeFieldFlags(pdo.Settings.Pcfg);
    switches_ = {flags.CobId != 0, flags.Comm != 0, flags.Inhibit != 0, flags.Event != 0,
                 flags.Rtr != 0};
    cobEntry_.CobIdSwitch = switches_[0];
    defaultCobId_ = pdo.DefaultCobId;
    pdoDescription_ = PdoName(pdo);
    productDescription_ = node.EdsName + " (" + DecimalText(slot + 1) + ")";

    const bool unconfigured = TransmissionMode::IsNotConfigured(working_.Mode);
    configurable_ = !unconfigured;
    firstConfiguration_ = unconfigured;
    edsMapping_ = HasFixedEdsMapping(workspace_, node, pdo);
    mappingFixed_ = edsMapping_;
    cobEntry_.Loading = false;
}

PdoEditor::~PdoEditor() = default;

const std::vector<std::string>& PdoEditor::BytesChoices() {
    static const std::vector<std::string> choices = [] {
        std::vector<std::string> texts;
        for (int bytes = 0; bytes <= 256; ++bytes) {
            texts.push_back(DecimalText(bytes));
        }
        return texts;
    }();
    return choices;
}

bool PdoEditor::SwitchOn(PdoSwitch which) const {
    return switches_[SwitchSlot(which)];
}

bool PdoEditor::SwitchEnabled(PdoSwitch) const {
    return configurable_;
}

bool PdoEditor::CobIdFieldEnabled() const {
    return SwitchOn(PdoSwitch::CobId) && working_.Mode != TransmissionMode::Disabled;
}

bool PdoEditor::BytesEnabled() const {
    return configurable_ && !(IsTx() && edsMapping_);
}

bool PdoEditor::ButtonEnabled(PdoCommand command) const {
    switch (command) {
    case PdoCommand::Save:
    case PdoCommand::Cancel:
        return true;
    case PdoCommand::ClearMappings:
    case PdoCommand::RemoveMapping:
        return configurable_ && !mappingFixed_;
    case PdoCommand::AddMapping:
        return BytesEnabled() && !mappingFixed_;
    case PdoCommand::ModifyMapping:
        return configurable_;
    }
    return false;
}

bool PdoEditor::MenuEntryEnabled(PdoCommand command) const {
    // Every entry follows its button; for "Aggiungi &mappatura" that is the rule itself.
    return ButtonEnabled(command);
}

std::vector<std::string> PdoEditor::MappingTree() const {
    std::vector<std::string> items;
    if (!treeShown_) {
        return items;
    }
    items.emplace_back(PdoEditorTexts::MappingTreeRoot);
    for (int i = 0; i < ShownMappingCount(working_); ++i) {
        const PdoMapping& m = working_.MappingAt(i);
        items.push_back("[" + m.ObjectIndex + " sub " + m.SubIndex + "] " + m.Vcb + " (" +
                        m.Length + " bit)");
    }
    return items;
}

std::string PdoEditor::MappingCountText() const {
    return DecimalText(treeShown_ ? ShownMappingCount(working_) : 0);
}

bool PdoEditor::Enabled() const {
    return !alertUp_ && OpenMappingEditor() == nullptr;
}

MappingEditor* PdoEditor::OpenMappingEditor() const {
    return mappingEditor_ && mappingEditor_->IsOpen() ? mappingEditor_.get() : nullptr;
}

void PdoEditor::ChooseMode(std::string_view shown) {
    if (!AcceptsInput()) {
        return;
    }
    if (shown == TransmissionMode::NotConfigured) {
        if (edsMapping_) {
            // Read first: an EDS that cannot be read stops the command before anything changes.
            const Pdo& pdo = workspace_.Net.NodeAt(slot_).PdoAt(pdoIndex_);
            const DefaultMapping mapping = DefaultMappingFromEds(
                workspace_.ForNodeImport(), workspace_.Net.NodeAt(slot_).EdsName + ".eds",
                pdo.Direction, pdo.PdoNumber);
            working_.MappingCount = mapping.MappingCount;
            working_.Mappings = mapping.Mappings;
            mappingFixed_ = false;
        }
        previousMode_ = TransmissionMode::NotConfigured;
        cobEntry_.LastAccepted = defaultCobId_;
        switches_ = {};
        cobEntry_.CobIdSwitch = false;
        cobEntry_.FieldText = "0";
        working_.Bytes = "0";
        working_.Comm = "0";
        working_.InhibitTime = "0";
        working_.EventTime = "0";
        configurable_ = false;
        treeShown_ = false;
        working_.Mode = std::string(shown);
    } else if (shown == TransmissionMode::Disabled) {
        previousMode_ = TransmissionMode::Disabled;
        working_.Mode = std::string(shown);
        cobEntry_.FieldText = "0";
        if (!SwitchOn(PdoSwitch::CobId)) {
            TurnCobIdSwitchOn();
        }
    } else {
        working_.Mode = std::string(shown);
        if (previousMode_ == TransmissionMode::NotConfigured ||
            previousMode_ == TransmissionMode::Disabled) {
            if (SwitchOn(PdoSwitch::CobId)) {
                switches_[0] = false;
                cobEntry_.CobIdSwitch = false;
                cobEntry_.FieldText.clear();
            }
            configurable_ = true;
            treeShown_ = true;
            if (ShownMappingCount(working_) > 0) {
                working_.Bytes = MappingBytesText(working_);
            }
        }
        if ((shown == TransmissionMode::Fast || shown == TransmissionMode::Slow) &&
            !SwitchOn(PdoSwitch::CobId)) {
            TurnCobIdSwitchOn();
        }
    }
    cobEntry_.Mode = working_.Mode;
    Edited();
}

void PdoEditor::SetSwitch(PdoSwitch which, bool on) {
    if (!AcceptsInput() || !SwitchEnabled(which) || SwitchOn(which) == on) {
        return;
    }
    if (which == PdoSwitch::CobId && on) {
        TurnCobIdSwitchOn();
    } else {
        switches_[SwitchSlot(which)] = on;
        cobEntry_.CobIdSwitch = switches_[0];
    }
    Edited();
}

void PdoEditor::TurnCobIdSwitchOn() {
    switches_[0] = true;
    cobEntry_.CobIdSwitch = true;
    if (working_.Mode == TransmissionMode::Disabled) {
        return;
    }
    cobEntry_.FieldText = defaultCobId_;
    cobEntry_.Base = "h"; // the default is hexadecimal text
    if (firstConfiguration_) {
        switches_[SwitchSlot(PdoSwitch::Comm)] = true;
        working_.Comm = "1";
    }
}

char32_t PdoEditor::TypeCobIdKey(char32_t key) const {
    return FilterCobIdKey(cobEntry_.Base, key);
}

void PdoEditor::EditCobIdText(std::string text) {
    if (AcceptsInput() && CobIdFieldEnabled()) {
        cobEntry_.FieldText = std::move(text);
        Edited();
    }
}

void PdoEditor::ChooseCobIdBase(std::string_view base) {
    if (!AcceptsInput() || !CobIdFieldEnabled()) {
        return;
    }
    if (base == "h") {
        ToHexBase(cobEntry_.Base, cobEntry_.FieldText);
    } else if (base == "d") {
        ToDecimalBase(cobEntry_.Base, cobEntry_.FieldText);
    }
}

PdoSaveResult PdoEditor::LeaveCobIdField() {
    if (!AcceptsInput()) {
        return {};
    }
    const CobIdCheck check = CheckCobIdEntry(workspace_.Net, cobEntry_);
    if (!check.Passed() && RefuseCobId(check)) {
        return Save();
    }
    return {};
}

void PdoEditor::ChooseBytes(std::string text) {
    if (AcceptsInput() && BytesEnabled()) {
        working_.Bytes = std::move(text);
        Edited();
    }
}

void PdoEditor::EditComm(std::string text) {
    if (AcceptsInput() && CommFieldEnabled()) {
        working_.Comm = std::move(text);
        Edited();
    }
}

void PdoEditor::EditInhibitTime(std::string text) {
    if (AcceptsInput() && InhibitTimeFieldEnabled()) {
        working_.InhibitTime = std::move(text);
        Edited();
    }
}

void PdoEditor::EditEventTime(std::string text) {
    if (AcceptsInput() && EventTimeFieldEnabled()) {
        working_.EventTime = std::move(text);
        Edited();
    }
}

PdoSaveResult PdoEditor::Save() {
    if (!AcceptsInput()) {
        return {};
    }
    const CobIdCheck check = CheckCobIdEntry(workspace_.Net, cobEntry_);
    if (!check.Passed()) {
        // With "Inserisci comunque il Cob-Id" the check is now disarmed: this Save passes.
        return RefuseCobId(check) ? Save() : PdoSaveResult{};
    }

    PdoSettings settings = working_;
    settings.CobId = CobIdToStore();
    if (settings.EventTime.empty()) {
        settings.EventTime = "0";
    }
    if (settings.InhibitTime.empty()) {
        settings.InhibitTime = "0";
    }
    settings.Mode = StoredModeText(working_.Mode);
    settings.Pcfg =
        EncodeFieldFlags(switches_[0], switches_[1], switches_[2], switches_[3], switches_[4]);

    Node& node = workspace_.Net.NodeAt(slot_);
    Pdo& pdo = node.PdoAt(pdoIndex_);
    pdo.Settings = std::move(settings);
    pdo.Used = kTrue;
    node.Configured = kTrue;
    open_ = false;
    savedMarker_ = "yes";
    mappingsSaved_ = true;

    PdoSaveResult result;
    result.Saved = true;
    result.ChannelDialogShown = OnPdoModeSaved(workspace_.Net, pdo.Direction, pdo.Settings.Mode,
                                               workspace_.Channels, workspace_.ChannelDialog);
    return result;
}

std::string PdoEditor::CobIdToStore() const {
    const std::string& text = cobEntry_.FieldText;
    if (text.empty()) {
        return "0";
    }
    if (cobEntry_.Base == "d") {
        return HexText(ToInt32(RoundHalfEven(ReadNumber(text))));
    }
    return text;
}

void PdoEditor::Cancel() {
    if (AcceptsInput()) {
        savedMarker_ = "yes";
        open_ = false;
    }
}

void PdoEditor::ClearMappings() {
    if (!AcceptsInput() || !ButtonEnabled(PdoCommand::ClearMappings)) {
        return;
    }
    working_.Mappings.fill(PdoMapping{});
    working_.MappingCount = 0;
    MappingListChanged();
}

MappingEditor* PdoEditor::AddMapping() {
    if (!AcceptsInput() || !ButtonEnabled(PdoCommand::AddMapping)) {
        return nullptr;
    }
    if (working_.MappingCount > kLastMapping) {
        dialogs_.Inform(std::string(MappingEditorTexts::ErrorTitle),
                        std::string(MappingEditorTexts::TooManyMappings));
        return nullptr;
    }
    return StartMappingEditor(MappingEditorMode::New, working_.MappingCount + 1);
}

void PdoEditor::RemoveMapping(int selectedItem) {
    if (!AcceptsInput() || !ButtonEnabled(PdoCommand::RemoveMapping)) {
        return;
    }
    if (!MappingItemSelected(selectedItem)) {
        SelectMappingAlert(PdoEditorTexts::ToRemove);
        return;
    }
    const int count = ShownMappingCount(working_);
    for (int i = selectedItem - 1; i + 1 < count; ++i) {
        working_.MappingAt(i) = working_.MappingAt(i + 1);
    }
    working_.MappingAt(count - 1) = PdoMapping{};
    working_.MappingCount = static_cast<std::int16_t>(count - 1);
    MappingListChanged();
}

MappingEditor* PdoEditor::ModifyMapping(int selectedItem) {
    if (!AcceptsInput() || !ButtonEnabled(PdoCommand::ModifyMapping)) {
        return nullptr;
    }
    if (!MappingItemSelected(selectedItem)) {
        SelectMappingAlert(PdoEditorTexts::ToModify);
        return nullptr;
    }
    return StartMappingEditor(MappingEditorMode::Edit, selectedItem);
}

void PdoEditor::PressHelpKey(bool shift, bool ctrl, bool alt) {
    if (AcceptsInput() && !shift && !ctrl && !alt) {
        help_.OpenHelpPage(HelpPage::PdoEditor);
    }
}

void PdoEditor::initData() {
    cobEntry_.FieldText = "0";
    working_.EventTime = "0";
    working_.InhibitTime = "0";
    working_.Comm = "0";
    working_.Bytes = "0";
    working_.Mode = std::string(TransmissionMode::NotConfiguredCapital);
    cobEntry_.Mode = working_.Mode;
}

void PdoEditor::setCobChecked() {
    cobEntry_.Armed = true;
}

void PdoEditor::unSetCobChecked() {
    cobEntry_.Armed = false;
}

bool PdoEditor::IsTx() const {
    return workspace_.Net.NodeAt(slot_).PdoAt(pdoIndex_).Direction == PdoDirection::Tx;
}

bool PdoEditor::MappingItemSelected(int selectedItem) const {
    return treeShown_ && selectedItem >= 1 && selectedItem <= ShownMappingCount(working_);
}

bool PdoEditor::RefuseCobId(const CobIdCheck& check) {
    const bool ticked = ShowAlertDisabling(alerts_, *check.Alert, alertUp_);
    if (check.Verdict != CobIdVerdict::Conflict) {
        return false; // the field already shows the last accepted COB-ID again
    }
    return CloseCobIdConflict(cobEntry_, check.Alert->Candidate, ticked);
}

void PdoEditor::SelectMappingAlert(std::string_view secondLine) {
    AlertRequest request;
    request.Source = "pdowin";
    request.Line1 = PdoEditorTexts::SelectMapping;
    request.Line2 = secondLine;
    request.DisablesEditor = true;
    ShowAlertDisabling(alerts_, request, alertUp_);
}

void PdoEditor::MappingListChanged() {
    working_.Bytes = MappingBytesText(working_);
    treeShown_ = true;
    mappingsSaved_ = false;
    Edited();
}

void PdoEditor::MappingEditorClosed(bool stored) {
    if (stored) {
        MappingListChanged();
    }
}

MappingEditor* PdoEditor::StartMappingEditor(MappingEditorMode mode, int mappingNumber) {
    mappingEditor_.reset();
    mappingEditor_ = std::make_unique<MappingEditor>(
        workspace_, alerts_, dialogs_, help_, working_, workspace_.Net.NodeAt(slot_).EdsName,
        pdoDescription_, mode, mappingNumber,
        [this](bool stored) { MappingEditorClosed(stored); });
    return mappingEditor_.get();
}

} // namespace velmora
