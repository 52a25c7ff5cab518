#pragma once

// The logic of the add-node dialog: a product list (the EDS files of the EDS folder) and a
// node-number field. "Aggiungi nodo" creates a node from the chosen EDS in the slot of the
// typed number; "Modifica nodo" opens the same dialog in modify mode ("mod") on an existing
// node, to rebuild it from another EDS or move it to another number.
//
// A moved node keeps its configuration and takes the COB-IDs of its new slot by the paste
// rule: every PDO gets its new default COB-ID, except a "Disabilitato" PDO, which keeps its
// own. The move is refused when one of those defaults is already used elsewhere.
//
// Run-time errors (RuntimeError) propagate to the caller, the command boundary.

#include "interfaces/dialog_result.h"

#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

struct Workspace;
class AlertDialog;
class UserDialogs;

namespace AddNodeTexts {
inline constexpr std::string_view ModifyMode = "mod";
inline constexpr std::string_view TitleAdd = "Aggiungi nodo";
inline constexpr std::string_view TitleModify = "Modifica nodo";
inline constexpr std::string_view AlertSource = "addWin";
} // namespace AddNodeTexts

// A typed node number: digits only (blanks around them allowed) with a value of 1..501;
// nullopt for anything else.
std::optional<int> ParseNodeNumber(std::string_view text);

// "Il nodo " + number + " è già occupato da " + the occupying node's EdsName.
std::string OccupiedNodeLine(int number, std::string_view edsName);

// The alert lines for a node number outside 1..501.
inline constexpr const char* kBadNodeNumberLine1 = "Numero nodo non valido:";
inline constexpr const char* kBadNodeNumberLine2 = "inserire un numero da 1 a 501";

// What the dialog shows beside the list about the chosen product: the vendor and product
// name of its EDS's [DeviceInfo] and its TX and RX PDOs as CountEdsPdos counts them.
struct ProductDescription {
    std::string VendorName;
    std::string ProductName;
    int TxPdoCount = 0;
    int RxPdoCount = 0;

    // "Costruttore: ...", "Prodotto: ..." and "PDO TX: n   PDO RX: m", one a line.
    std::string Text() const;
    bool operator==(const ProductDescription&) const = default;
};

// Reads the VendorName and ProductName keys of the [DeviceInfo] section of EDS text
// (Windows-1252; section and key names in any case, values trimmed) into description; a key
// that is missing leaves its field as it was.
void ReadDeviceInfo(std::istream& in, ProductDescription& description);

class AddNodeDialog {
public:
    // alerts shows the dialog's refusals (source "addWin"); dialogs the import messages.
    AddNodeDialog(Workspace& workspace, AlertDialog& alerts, UserDialogs& dialogs);

    // Opens the dialog. The products are the workspace's EdsFiles shown without their
    // ".eds" extension. Mode "mod" edits the node in slot (0..500, else SubscriptOutOfRange;
    // a free slot is the InvalidArgument error): its product is selected (the first whose
    // name before the first "." equals the node's EdsName ignoring case; none when its EDS
    // is no longer listed) and the number shows slot + 1. Any other mode adds a node: no
    // product selected, empty number.
    void Open(std::string_view mode, int slot = -1);

    bool ModifyMode() const { return modifySlot_ >= 0; }
    const std::string& Title() const { return title_; }
    const std::vector<std::string>& Products() const { return products_; }
    // The selected product, -1 for none.
    int SelectedProduct() const { return selected_; }
    // item -1..Products().size() - 1, else SubscriptOutOfRange. Reads the description of the
    // chosen product's EDS; the dialog's network and EDS table stay as they were.
    void SelectProduct(int item);
    // The chosen product's description; none when no product is chosen or its EDS cannot be
    // read (the error then comes with OK, as before).
    const std::optional<ProductDescription>& Description() const { return description_; }
    std::string& NumberText() { return numberText_; }
    const std::string& NumberText() const { return numberText_; }

    // OK. Refused with an alert, the dialog staying open: no product selected when adding,
    // a number outside 1..501, a number whose slot holds another node ("Il nodo N è già
    // occupato da ..."), a move whose new COB-IDs are in use ("Il CobId X è già " /
    // "assegnato al pdo ..."). Adding creates the node from the listed EDS file with
    // AddNodeFromEds and counts it. Modifying rebuilds the node from the new EDS when the
    // product changed (ClearNode, then the new node, in the new slot when the number changed
    // too; NodeCount stays) and moves it when only the number changed (no product selected
    // keeps the product); when neither changed the dialog just closes. Import messages are
    // shown after the change. A run-time error (an EDS that is missing or cannot be read)
    // leaves the network as it was.
    DialogResult Ok();

private:
    void Refuse(const std::string& line1, const std::string& line2);

    Workspace& workspace_;
    AlertDialog& alerts_;
    UserDialogs& dialogs_;
    int modifySlot_ = -1;
    std::string title_;
    std::vector<std::string> files_; // the EDS file behind each product
    std::vector<std::string> products_;
    int selected_ = -1;
    std::optional<ProductDescription> description_;
    std::string numberText_;
};

} // namespace velmora
