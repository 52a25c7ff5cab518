#pragma once

// The logic of the "Salva nodo in libreria" dialog: a category (one of the library's, or a
// new name that creates its folder) and a product name, by default the node's EDS name.
// A product that already exists is replaced only after a Yes/No question.

#include "interfaces/dialog_result.h"

#include <string>
#include <vector>

namespace velmora {

struct Workspace;
class UserDialogs;

namespace SaveToLibraryTexts {
inline constexpr const char* Title = "Salva nodo in libreria";
inline constexpr const char* ErrorTitle = "Errore";
} // namespace SaveToLibraryTexts

class SaveToLibraryDialog {
public:
    SaveToLibraryDialog(Workspace& workspace, UserDialogs& dialogs);

    // Opens the dialog for the node in slot (in use, else InvalidArgument): the categories as
    // the library holds them now, the first one chosen (none in an empty library), and the
    // node's EdsName as the product name.
    void Open(int slot);

    const std::vector<std::string>& Categories() const { return categories_; }
    std::string& CategoryText() { return category_; }
    std::string& NameText() { return name_; }

    // Saves the node. A bad name is shown ("Errore") and the dialog stays open; an existing
    // product asks "... Sostituirlo?" and No leaves the dialog open. The network never
    // changes; the dialog closes once the product is written. A run-time error (a folder
    // that cannot be written) is shown and the dialog stays open.
    DialogResult Ok();

private:
    Workspace& workspace_;
    UserDialogs& dialogs_;
    int slot_ = -1;
    std::vector<std::string> categories_;
    std::string category_;
    std::string name_;
};

} // namespace velmora
