#pragma once

// The logic of the parameter editor: the dialog in which the user adds an object-dictionary
// write ("parameter") to a node, or changes one, typing it or choosing the object from the
// node's EDS. The presenter holds the dialog's fields, its object chooser and the old record;
// the widget copies the fields in and out and forwards the user's actions. Saving writes
// straight into the node's Parameters.
//
// Run-time errors (RuntimeError) propagate to the caller, the command boundary.

#include "eds/object_list.h"
#include "interfaces/dialog_result.h"
#include "model/network.h"

#include <string>
#include <string_view>
#include <vector>

namespace velmora {

struct Workspace;
class AlertDialog;
class UserDialogs;

namespace ParameterEditorTexts {
inline constexpr std::string_view NewMode = "new";
inline constexpr std::string_view TitleNew = "Aggiungi parametro per ...";
inline constexpr std::string_view TitleEdit = "Modifica parametro";
inline constexpr std::string_view SaveButton = "Salva &parametro";
inline constexpr std::string_view BaseLabel = "Valuta index in base";
inline constexpr std::string_view DecimalOption = "Decimale";
inline constexpr std::string_view HexadecimalOption = "Esadecimale";
inline constexpr std::string_view AlertSource = "parametri";
} // namespace ParameterEditorTexts

// The dialog's fields as texts. The widget writes what the user types into them.
struct ParameterFields {
    // The object chooser's text: the chosen item's text, or a name typed into it.
    std::string ComboText;
    std::string NameText; // the "Name" label: the chosen object's name
    std::string IndexText;
    std::string SubIndexText;
    std::string NByteText;
    std::string ValueText;  // "Valore"
    std::string Base = "h"; // the base of IndexText: "h" or "d"

    bool operator==(const ParameterFields&) const = default;
};

// The result of ValidateParameter: the message of the first failure.
struct ParameterCheck {
    std::string ErrorText;
    bool Failed = false;
};

// The hexadecimal test of the editor's fields: only the first character of the upper-cased
// text decides ("1Z" passes, "Z1" fails); an empty text passes. Kept as the system has it.
bool PassesFirstCharacterHexTest(std::string_view text);

class ParameterEditor {
public:
    // dialogs shows the "Errore" message boxes; alerts the key filter's alerts (source
    // "parametri").
    ParameterEditor(Workspace& workspace, AlertDialog& alerts, UserDialogs& dialogs);

    // Opens the editor on parameter parameterSlot of the node in nodeSlot. Mode "new" adds a
    // parameter (the caller passes the node's next free entry, its ParameterCount); any other
    // mode edits, and the caller then hands the old record over with setOldData. Every field
    // starts empty in base "h" and the chooser shows "Scegli un parametro" followed by every
    // object of the node's EDS (EdsName + ".eds", loaded again). A new parameter on a node
    // whose 101 entries are all taken is refused with a message and the result is false. An
    // EDS that cannot be read, or a slot outside its bounds otherwise, is a run-time error
    // that leaves the editor as it was.
    bool OpenParameterEditor(int nodeSlot, int parameterSlot, std::string_view mode);

    // The record being edited, kept for the change test of SaveParameter; its texts fill the
    // fields (the name into the chooser's text and the Name label).
    void setOldData(const NodeParameter& old);

    const std::string& Title() const { return title_; }
    bool IsNew() const { return isNew_; }
    // "Scegli un parametro", then one item per listed EDS object.
    const std::vector<std::string>& ObjectItems() const { return items_; }
    ParameterFields& Fields() { return fields_; }
    const ParameterFields& Fields() const { return fields_; }

    // The user chose item `item` of the chooser (or pressed Enter on it). Item 0 empties the
    // fields; any other fills Index (hexadecimal, base "h"), Subindex (decimal, "0" for a
    // main object), NByte (bytes of its data type), the Name label and the chooser's text,
    // and empties Valore. An item outside the list is the SubscriptOutOfRange error.
    void PickObject(int item);

    // The base selector: "d" shows Index in decimal, "h" in hexadecimal, converted as the
    // mapping editor does (IndexInBase: "A000" is "40960"); nothing happens when the base is
    // already the one chosen. An Index beyond 32 bits is the Overflow error, which leaves the
    // field and the base as they were.
    void SetBase(std::string_view base);

    // Every character typed into Index, editing keys such as Backspace (8) included: true
    // when it is inserted. A non-digit in base "d", and in base "h" a non-digit whose code is
    // 104 ("h") or more, is rejected and its alert shown. So in base "d" Backspace too is
    // refused, as the system's filter does; Delete and selection still edit the field.
    bool IndexKeyTyped(char32_t key);

    // Checks, in this order, that NByte, Subindex and Index are not empty, that NByte is a
    // number and that Subindex and Index are numbers or pass the hexadecimal test. Valore is
    // never checked.
    ParameterCheck ValidateParameter() const;

    // "Salva &parametro" (also Enter in Valore). A validation failure is shown in a message
    // box titled "Errore" and the editor stays open. A decimal Index is stored in
    // upper-case hexadecimal. When the record equals the old data the editor just closes
    // without a change; otherwise it is stored in the parameter's entry with Used set,
    // ParameterCount grows by one for a new parameter and the node is marked Configured.
    DialogResult SaveParameter();

private:
    Workspace& workspace_;
    AlertDialog& alerts_;
    UserDialogs& dialogs_;
    int nodeSlot_ = 0;
    int parameterSlot_ = 0;
    bool isNew_ = true;
    std::string title_;
    std::vector<ListedObject> objects_;
    std::vector<std::string> items_;
    ParameterFields fields_;
    NodeParameter old_;
};

} // namespace velmora
