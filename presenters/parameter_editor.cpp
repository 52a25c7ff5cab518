#include "presenters/parameter_editor.h"

#include "eds/eds_reader.h"
#include "interfaces/alert_dialog.h"
#include "interfaces/user_dialogs.h"
#include "model/numeric.h"
#include "model/runtime_error.h"
#include "model/text.h"
#include "pdo/cob_id_entry.h"
#include "session/workspace.h"

namespace velmora {

namespace {

inline constexpr const char* kErrorTitle = "Errore";

bool IsNumeric(std::string_view text) {
    return ParseDecimal(text).has_value();
}

} // namespace

bool PassesFirstCharacterHexTest(std::string_view text) {
    if (text.empty()) {
        return true;
    }
    const char first = UpperCase(CharSlice(text, 0, 1))[0];
    return (first >= '0' && first <= '9') || (first >= 'A' && first <= 'F');
}

ParameterEditor::ParameterEditor(Workspace& workspace, AlertDialog& alerts, UserDialogs& dialogs)
    : workspace_(workspace), alerts_(alerts), dialogs_(dialogs) {}

bool ParameterEditor::OpenParameterEditor(int nodeSlot, int parameterSlot, std::string_view mode) {
    const Node& node = workspace_.Net.NodeAt(nodeSlot);
    const bool isNew = mode == ParameterEditorTexts::NewMode;
    if (isNew && parameterSlot > kLastParameter) {
        dialogs_.Inform(kErrorTitle, "Impossibile aggiungere il parametro: il nodo " +
                                         DecimalText(nodeSlot + 1) + " ha già " +
                                         DecimalText(kLastParameter + 1) + " parametri");
        return false;
    }
    CheckIndex(parameterSlot, 0, kLastParameter, "parametro");
    LoadEds(workspace_.Eds, workspace_.EdsDirectory(), node.EdsName + ".eds");
    objects_ = BuildObjectList(workspace_.Eds);

    nodeSlot_ = nodeSlot;
    parameterSlot_ = parameterSlot;
    isNew_ = isNew;
    title_ = std::string(isNew ? ParameterEditorTexts::TitleNew : ParameterEditorTexts::TitleEdit);
    old_ = NodeParameter{};
    items_.assign(1, kChooseObjectItem);
    for (const ListedObject& object : objects_) {
        items_.push_back(ObjectItemText(object));
    }
    fields_ = ParameterFields{};
    fields_.ComboText = items_.front();
    return true;
}

void ParameterEditor::setOldData(const NodeParameter& old) {
    old_ = old;
    fields_.ComboText = old.Name;
    fields_.NameText = old.Name;
    fields_.IndexText = old.ObjectIndex;
    fields_.SubIndexText = old.SubIndex;
    fields_.NByteText = old.ByteCount;
    fields_.ValueText = old.Value;
}

void ParameterEditor::PickObject(int item) {
    CheckIndex(item, 0, static_cast<long long>(items_.size()) - 1, "oggetto");
    const std::string base = fields_.Base;
    fields_ = ParameterFields{};
    fields_.ComboText = items_[static_cast<std::size_t>(item)];
    if (item == 0) {
        fields_.Base = base;
        return;
    }
    const ListedObject& object = objects_[static_cast<std::size_t>(item - 1)];
    fields_.NameText = object.Name;
    fields_.IndexText = HexText(object.Index);
    fields_.Base = "h";
    fields_.SubIndexText = object.SubIndex < 0 ? "0" : DecimalText(object.SubIndex);
    fields_.NByteText = DecimalText(BytesForDataType(object.DataType));
}

void ParameterEditor::SetBase(std::string_view base) {
    const bool switches =
        (base == "d" && fields_.Base == "h") || (base == "h" && fields_.Base == "d");
    if (!switches) {
        return;
    }
    fields_.IndexText = IndexInBase(fields_.IndexText, fields_.Base);
    fields_.Base = std::string(base);
}

bool ParameterEditor::IndexKeyTyped(char32_t key) {
    const IndexKeyCheck check =
        FilterIndexKey(fields_.Base, key, ParameterEditorTexts::AlertSource);
    if (!check.Alert) {
        return true;
    }
    alerts_.ShowAlert(*check.Alert);
    return false;
}

ParameterCheck ParameterEditor::ValidateParameter() const {
    const auto fail = [](const char* text) { return ParameterCheck{text, true}; };
    // The length message is reused for NByte, as the system has it.
    if (fields_.NByteText.empty()) {
        return fail("Impossibile salvare con campo Lenght vuoto");
    }
    if (fields_.SubIndexText.empty()) {
        return fail("Impossibile salvare con campo SubIndex vuoto");
    }
    if (fields_.IndexText.empty()) {
        return fail("Impossibile salvare con campo Index vuoto");
    }
    if (!IsNumeric(fields_.NByteText)) {
        return fail("Campo Lenght non numerico");
    }
    if (!IsNumeric(fields_.SubIndexText) && !PassesFirstCharacterHexTest(fields_.SubIndexText)) {
        return fail("Campo SubIndex non numerico");
    }
    if (!IsNumeric(fields_.IndexText) && !PassesFirstCharacterHexTest(fields_.IndexText)) {
        return fail("Campo Index non numerico");
    }
    return {};
}

DialogResult ParameterEditor::SaveParameter() {
    NodeParameter record;
    record.Name = NameFromChooserText(fields_.ComboText);
    const ParameterCheck check = ValidateParameter();
    if (check.Failed) {
        dialogs_.Inform(kErrorTitle, check.ErrorText);
        return {};
    }
    record.ObjectIndex = fields_.IndexText;
    if (fields_.Base == "d") {
        record.ObjectIndex = IndexInBase(fields_.IndexText, "d");
    }
    record.SubIndex = fields_.SubIndexText;
    record.ByteCount = fields_.NByteText;
    record.Value = fields_.ValueText;
    if (record.Name == old_.Name && record.ObjectIndex == old_.ObjectIndex &&
        record.SubIndex == old_.SubIndex && record.ByteCount == old_.ByteCount &&
        record.Value == old_.Value) {
        return {false, true};
    }

    Node& node = workspace_.Net.NodeAt(nodeSlot_);
    record.Used = kTrue;
    node.ParameterAt(parameterSlot_) = record;
    if (isNew_) {
        ++node.ParameterCount;
    }
    node.Configured = kTrue;
    return {true, true};
}

} // namespace velmora
