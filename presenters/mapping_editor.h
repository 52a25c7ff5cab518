#pragma once

// The mapping editor: the dialog, opened from the PDO editor, in which the user adds a mapped
// object to the PDO being edited or changes one (variable name, object index, sub-index and
// length in bits), typing them or picking one of the node's PDO-mappable EDS objects. It
// writes into the PDO editor's working copy of the mapping table (MappingCount and
// Mappings); the PDO editor stores that in the network when the PDO is saved.
//
// MappingEditor holds the dialog's state; the widget shows it and forwards the user's
// actions. ValidateMapping and StoreMapping are its two rules as plain functions.
//
// Run-time errors (RuntimeError) propagate to the caller, the command boundary.

#include "eds/object_list.h"
#include "model/network.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

struct Workspace;
class AlertDialog;
class UserDialogs;
class HelpViewer;

namespace MappingEditorTexts {
inline constexpr std::string_view TitleNew = "Aggiungi mappatura per ...";
inline constexpr std::string_view TitleEdit = "Modifica mappatura per ";
inline constexpr std::string_view NameLabel = "Name";
inline constexpr std::string_view IndexLabel = "Index";
inline constexpr std::string_view SubIndexLabel = "Subindex";
inline constexpr std::string_view LengthLabel = "Lenght"; // spelled so
inline constexpr std::string_view NumberLabel = "Numero mappatura";
inline constexpr std::string_view BaseLabel = "Valuta index in base";
inline constexpr std::string_view Decimal = "Decimale";
inline constexpr std::string_view Hexadecimal = "Esadecimale";
inline constexpr std::string_view SaveButton = "Salva mappatura";
inline constexpr std::string_view ErrorTitle = "Errore";
inline constexpr std::string_view EmptyLength = "Impossibile salvare con campo Lenght vuoto";
inline constexpr std::string_view EmptySubIndex = "Impossibile salvare con campo SubIndex vuoto";
inline constexpr std::string_view EmptyIndex = "Impossibile salvare con campo Index vuoto";
inline constexpr std::string_view DuplicateName = "Nome variabile duplicato";
inline constexpr std::string_view EmptyName = "Nome variabile non specificato";
inline constexpr std::string_view TooManyMappings =
    "Impossibile aggiungere la mappatura: il pdo ne contiene già 11";
} // namespace MappingEditorTexts

enum class MappingEditorMode {
    New,  // adds a mapping after the last one
    Edit, // changes an existing one
};

// The four texts the user fills in.
struct MappingFields {
    std::string Name;
    std::string Index;
    std::string SubIndex;
    std::string Length; // bits

    bool operator==(const MappingFields&) const = default;
};

// ValidateMapping: the first failure, in this order, as the text of its "Errore" message box;
// nullopt when the fields may be stored. Lenght, Subindex, then Index of zero characters
// (blanks are content); then the name (NameFromChooserText) compared, trimmed and
// upper-cased, with the Vcb of the working copy's entries 0 up to and including MappingCount
// (the entry just past the last is looked at too): one equal entry is a duplicate for a new
// mapping, two for an edited one, whose own entry (mappingNumber - 1) counts as meeting its
// old name once, so renaming it to another entry's name is refused while keeping its name
// passes; then an empty name. The duplicate test comes first on purpose, so a new mapping
// with no name usually meets the empty entry past the last and reads "Nome variabile
// duplicato"; for an edited mapping whose name was cleared the own entry counts only when
// its old name is empty too, so it usually reads "Nome variabile non specificato". With all
// eleven entries in use the walk ends at entry 10.
std::optional<std::string> ValidateMapping(const PdoSettings& workingCopy, MappingEditorMode mode,
                                           int mappingNumber, const MappingFields& fields);

// StoreMapping: in base "d" the record's ObjectIndex is first replaced by the upper-case
// hexadecimal digits of its decimal value ("24676" gives "6064"; a value outside 32 bits is
// the Overflow error and nothing is stored). Edit: the record replaces entry mappingNumber - 1
// (mappingNumber 1..11). New: it goes to entry MappingCount (0..10), which then grows by one.
// Either way its Used is set. An entry outside 0..10 is the SubscriptOutOfRange error.
void StoreMapping(PdoSettings& workingCopy, int mappingNumber, PdoMapping record,
                  std::string_view base, MappingEditorMode mode);

// The Name field is always the name input: picking an object in the chooser fills it, and a
// text holding "]" (a pasted item text) is cut after it as NameFromChooserText says.
class MappingEditor {
public:
    // Told when the dialog closes: stored is true when a mapping was written into the
    // working copy.
    using CloseHandler = std::function<void(bool stored)>;

    // Opens the dialog on workingCopy (which must outlive it) for the node's EDS (edsName
    // without ".eds"). Edit mode shows entry mappingNumber - 1 (1..11, else the
    // SubscriptOutOfRange error); New mode starts empty with the number MappingCount + 1.
    // The object chooser lists the PDO-mappable objects of the EDS, loaded again into
    // workspace.Eds; an EDS that cannot be read is a run-time error, and the dialog does not
    // open.
    MappingEditor(Workspace& workspace, AlertDialog& alerts, UserDialogs& dialogs,
                  HelpViewer& help, PdoSettings& workingCopy, const std::string& edsName,
                  std::string_view pdoDescription, MappingEditorMode mode, int mappingNumber,
                  CloseHandler onClose = {});

    MappingEditor(const MappingEditor&) = delete;
    MappingEditor& operator=(const MappingEditor&) = delete;

    // "Aggiungi mappatura per ..." as it stands, or "Modifica mappatura per " followed by the
    // PDO's description.
    const std::string& Title() const { return title_; }
    MappingEditorMode Mode() const { return mode_; }
    // "Numero mappatura": the 1-based number of the entry being written.
    std::string MappingNumberText() const;

    // The chooser: "Scegli un parametro", then one "[index sub n] name" item per mappable
    // object.
    const std::vector<std::string>& ObjectItems() const { return items_; }
    int SelectedObject() const { return selectedObject_; } // 0: nothing picked
    // False after picking a read-only object: the widget disables what depends on
    // writability. True otherwise.
    bool PickedWritable() const { return pickedWritable_; }

    const MappingFields& Fields() const { return fields_; }
    // "h" (Esadecimale, when the dialog opens) or "d" (Decimale): the base of Index.
    const std::string& Base() const { return base_; }

    bool IsOpen() const { return open_; }
    // False while an alert the dialog raised is up.
    bool Enabled() const { return !alertUp_; }

    // Picking chooser item 1..: Index gets the object's index in hexadecimal and the base
    // becomes "h", Subindex its sub-index (decimal, "0" for a main object), Lenght the
    // length its data type gives (bytes x 8), Name its name. Item 0 changes nothing; an
    // item outside the chooser is the SubscriptOutOfRange error.
    void PickObject(int item);
    void EditName(std::string text);
    void EditIndex(std::string text);
    void EditSubIndex(std::string text);
    void EditLength(std::string text);

    // The key filter of Index, for every character typed there (Backspace as U+0008). In
    // base "d" a non-digit, in base "h" a non-digit from "h" (code 104) up, shows the alert
    // "Inserire un valore decimale corretto", or "Inserire un valore esadecimale corretto" /
    // "compreso tra 0x180 e 0x57F", and is rejected: the result is false and the widget does
    // not insert it. So "a".."g", upper-case letters and punctuation pass in base "h".
    bool TypeIndexKey(char32_t key);

    // The base selector: converts Index into the other base (IndexInBase; an empty Index
    // reads as 0 and becomes "0") and remembers it. Choosing the current base changes
    // nothing.
    void ChooseBase(std::string_view base);

    // "Salva mappatura", Enter in Name and the first toolbar button: a new mapping when the
    // PDO already holds eleven is refused with a message box; otherwise ValidateMapping
    // (its failure shown in a message box titled "Errore", the dialog staying open with its
    // contents), then StoreMapping and the dialog closes. Returns whether it was stored.
    bool Save();
    bool EnterInName() { return Save(); }
    // The discard button and every toolbar button but the first: closes without storing and
    // without asking.
    void Discard();
    // Toolbar button at position 1.. (1 saves, any other discards).
    void ClickToolbarButton(int position);
    // The help button: the page "mapPDO.htm".
    void ShowHelp();

private:
    void Close(bool stored);

    AlertDialog& alerts_;
    UserDialogs& dialogs_;
    HelpViewer& help_;
    PdoSettings& workingCopy_;
    MappingEditorMode mode_;
    int mappingNumber_;
    CloseHandler onClose_;
    std::string title_;
    std::vector<ListedObject> objects_; // the mappable objects, item i at objects_[i - 1]
    std::vector<std::string> items_;
    int selectedObject_ = 0;
    bool pickedWritable_ = true;
    MappingFields fields_;
    std::string base_ = "h";
    bool open_ = true;
    bool alertUp_ = false;
};

} // namespace velmora
