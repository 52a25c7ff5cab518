#include "presenters/mapping_editor.h"

#include "eds/eds_reader.h"
#include "interfaces/alert_dialog.h"
#include "interfaces/help_viewer.h"
#include "interfaces/user_dialogs.h"
#include "model/runtime_error.h"
#include "model/text.h"
#include "pdo/cob_id_entry.h"
#include "session/workspace.h"

#include <algorithm>

namespace velmora {

namespace {

std::string ComparableName(std::string_view name) {
    return UpperCase(Trim(name));
}

} // namespace

std::optional<std::string> ValidateMapping(const PdoSettings& workingCopy, MappingEditorMode mode,
                                           int mappingNumber, const MappingFields& fields) {
    if (fields.Length.empty()) {
        return std::string(MappingEditorTexts::EmptyLength);
    }
    if (fields.SubIndex.empty()) {
        return std::string(MappingEditorTexts::EmptySubIndex);
    }
    if (fields.Index.empty()) {
        return std::string(MappingEditorTexts::EmptyIndex);
    }
    const std::string name = NameFromChooserText(fields.Name);
    const std::string wanted = ComparableName(name);
    // An edited mapping meets its own old name once, so it takes a second equal entry; its
    // own entry counts whatever the new name, so that a rename onto another name is caught.
    // A cleared name is compared as the walk compares it, own entry included, so that it is
    // reported as missing rather than as the empty entry past the last.
    const bool editing = mode == MappingEditorMode::Edit;
    const int duplicateAt = editing ? 2 : 1;
    const int own = editing && !name.empty() ? mappingNumber - 1 : -1;
    const int last = std::min<int>(workingCopy.MappingCount, kLastMapping);
    int equal = 0;
    for (int i = 0; i <= last; ++i) {
        if (i == own || ComparableName(workingCopy.MappingAt(i).Vcb) == wanted) {
            ++equal;
        }
        if (equal == duplicateAt) {
            return std::string(MappingEditorTexts::DuplicateName);
        }
    }
    if (name.empty()) {
        return std::string(MappingEditorTexts::EmptyName);
    }
    return std::nullopt;
}

void StoreMapping(PdoSettings& workingCopy, int mappingNumber, PdoMapping record,
                  std::string_view base, MappingEditorMode mode) {
    if (base == "d") {
        record.ObjectIndex = IndexInBase(record.ObjectIndex, "d");
    }
    record.Used = kTrue;
    if (mode == MappingEditorMode::Edit) {
        CheckIndex(mappingNumber, 1, kLastMapping + 1, "numero mappatura");
        workingCopy.MappingAt(mappingNumber - 1) = std::move(record);
        return;
    }
    workingCopy.MappingAt(workingCopy.MappingCount) = std::move(record);
    ++workingCopy.MappingCount;
}

MappingEditor::MappingEditor(Workspace& workspace, AlertDialog& alerts, UserDialogs& dialogs,
                             HelpViewer& help, PdoSettings& workingCopy,
                             const std::string& edsName, std::string_view pdoDescription,
                             MappingEditorMode mode, int mappingNumber, CloseHandler onClose)
    : alerts_(alerts), dialogs_(dialogs), help_(help), workingCopy_(workingCopy), mode_(mode),
      mappingNumber_(mappingNumber), onClose_(std::move(onClose)) {
    title_ = mode == MappingEditorMode::New
                 ? std::string(MappingEditorTexts::TitleNew)
                 : std::string(MappingEditorTexts::TitleEdit) + std::string(pdoDescription);
    if (mode == MappingEditorMode::Edit) {
        CheckIndex(mappingNumber, 1, kLastMapping + 1, "numero mappatura");
        const PdoMapping& entry = workingCopy_.MappingAt(mappingNumber - 1);
        fields_ = {entry.Vcb, entry.ObjectIndex, entry.SubIndex, entry.Length};
    } else {
        mappingNumber_ = workingCopy_.MappingCount + 1;
    }

    items_.emplace_back(kChooseObjectItem);
    LoadEds(workspace.Eds, workspace.EdsDirectory(), edsName + ".eds");
    for (ListedObject& object : BuildObjectList(workspace.Eds)) {
        if (object.PdoMappable) {
            items_.push_back(ObjectItemText(object));
            objects_.push_back(std::move(object));
        }
    }
}

std::string MappingEditor::MappingNumberText() const {
    return DecimalText(mappingNumber_);
}

void MappingEditor::PickObject(int item) {
    CheckIndex(item, 0, static_cast<long long>(objects_.size()), "voce della lista");
    if (!open_ || item == 0) {
        return;
    }
    const ListedObject& object = objects_[static_cast<std::size_t>(item - 1)];
    selectedObject_ = item;
    fields_.Index = HexText(object.Index);
    base_ = "h";
    fields_.SubIndex = DecimalText(object.SubIndex < 0 ? 0 : object.SubIndex);
    fields_.Length = DecimalText(BytesForDataType(object.DataType) * 8);
    fields_.Name = object.Name;
    pickedWritable_ = object.Writable;
}

void MappingEditor::EditName(std::string text) {
    fields_.Name = std::move(text);
}

void MappingEditor::EditIndex(std::string text) {
    fields_.Index = std::move(text);
}

void MappingEditor::EditSubIndex(std::string text) {
    fields_.SubIndex = std::move(text);
}

void MappingEditor::EditLength(std::string text) {
    fields_.Length = std::move(text);
}

bool MappingEditor::TypeIndexKey(char32_t key) {
    if (!open_) {
        return false;
    }
    const IndexKeyCheck check = FilterIndexKey(base_, key, "mapping");
    if (!check.Alert) {
        return true;
    }
    ShowAlertDisabling(alerts_, *check.Alert, alertUp_);
    return false;
}

void MappingEditor::ChooseBase(std::string_view base) {
    if (!open_ || base == base_ || (base != "h" && base != "d")) {
        return;
    }
    fields_.Index = IndexInBase(fields_.Index, base_);
    base_ = std::string(base);
}

bool MappingEditor::Save() {
    if (!open_ || alertUp_) {
        return false;
    }
    const std::string errorTitle(MappingEditorTexts::ErrorTitle);
    if (mode_ == MappingEditorMode::New && workingCopy_.MappingCount > kLastMapping) {
        dialogs_.Inform(errorTitle, std::string(MappingEditorTexts::TooManyMappings));
        return false;
    }
    if (const auto error = ValidateMapping(workingCopy_, mode_, mappingNumber_, fields_)) {
        dialogs_.Inform(errorTitle, *error);
        return false;
    }
    PdoMapping record{NameFromChooserText(fields_.Name), fields_.Index, fields_.SubIndex,
                      fields_.Length, kTrue};
    StoreMapping(workingCopy_, mappingNumber_, std::move(record), base_, mode_);
    Close(true);
    return true;
}

void MappingEditor::Discard() {
    if (open_) {
        Close(false);
    }
}

void MappingEditor::ClickToolbarButton(int position) {
    if (position == 1) {
        Save();
    } else {
        Discard();
    }
}

void MappingEditor::ShowHelp() {
    help_.OpenHelpPage(HelpPage::MappingEditor);
}

void MappingEditor::Close(bool stored) {
    open_ = false;
    if (onClose_) {
        onClose_(stored);
    }
}

} // namespace velmora
