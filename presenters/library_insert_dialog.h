#pragma once

// The logic of the "Prendi nodo da libreria" dialog: the library's categories and their
// products as a tree, the chosen product's EDS, PDO and parameter counts, a node number and
// a number of copies. Products are gathered in a list (each with its first node number and
// its copies, which take the successive free numbers) and inserted together on OK, all or
// nothing (InsertProducts).

#include "interfaces/dialog_result.h"
#include "library/product_library.h"

#include <string>
#include <vector>

namespace velmora {

struct Workspace;
class NetworkTree;
class AlertDialog;
class UserDialogs;

namespace LibraryInsertTexts {
inline constexpr const char* Title = "Prendi nodo da libreria";
inline constexpr const char* AlertSource = "libWin";
inline constexpr const char* NoProduct = "Selezionare un prodotto dalla libreria";
inline constexpr const char* BadCopies = "Numero di copie non valido:";
} // namespace LibraryInsertTexts

// One line of the list to insert.
struct LibraryInsertEntry {
    std::string Category;
    std::string Product;
    int Number = 0; // the first node number, 1..501
    int Copies = 1;

    bool operator==(const LibraryInsertEntry&) const = default;
};

class LibraryInsertDialog {
public:
    // tree is the main window's network tree, whose CollapseOnRebuild the insertion sets.
    LibraryInsertDialog(Workspace& workspace, NetworkTree& tree, AlertDialog& alerts,
                        UserDialogs& dialogs);

    // Reads the library as it is now; nothing selected, the list empty, the number empty and
    // one copy.
    void Open();
    // Reads the library again, keeping the list; the selection is cleared.
    void Refresh();

    const LibraryListing& Library() const { return listing_; }
    // Chooses product (-1 for none) of category (indexes into Library()); outside the
    // listing is SubscriptOutOfRange.
    void Select(int category, int product);
    // The chosen category and product, -1 when none.
    int SelectedCategory() const { return category_; }
    int SelectedProduct() const { return product_; }
    // "EDS: drive.eds", "PDO TX: 2", "PDO RX: 1", "Parametri: 1" lines of the chosen
    // product; empty when none is chosen.
    std::string Details() const;

    std::string& NumberText() { return numberText_; }
    std::string& CopiesText() { return copiesText_; }

    // Adds the chosen product with the typed number and copies to the list; false after an
    // alert (no product, a number outside 1..501, copies outside 1..501).
    bool Add();
    const std::vector<LibraryInsertEntry>& Entries() const { return entries_; }
    // i outside the list is SubscriptOutOfRange.
    void RemoveEntry(int i);

    // Inserts the list (or, when it is empty, the chosen product as Add would list it). A
    // missing EDS shows "Eds non trovato:" + the EDS file, titled "Errore"; an occupied
    // number or a COB-ID in use is an alert; a damaged product file is shown with its path
    // and reason. Each leaves the dialog open and the network as it was. On success the
    // import messages are shown and the dialog closes with the network changed.
    DialogResult Ok();

private:
    void Alert(const std::string& line1, const std::string& line2 = "");

    Workspace& workspace_;
    NetworkTree& tree_;
    AlertDialog& alerts_;
    UserDialogs& dialogs_;
    LibraryListing listing_;
    int category_ = -1;
    int product_ = -1;
    std::string numberText_;
    std::string copiesText_ = "1";
    std::vector<LibraryInsertEntry> entries_;
};

} // namespace velmora
