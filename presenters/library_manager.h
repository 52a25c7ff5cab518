#pragma once

// The logic of the "Modifica nodo in libreria" window, the library manager: the categories
// and their products as the disk holds them, and the operations on them (rename, delete
// after a question, move a product to another category, create and remove categories).
// Every operation reads the library again afterwards, and Refresh does so on demand, so the
// view follows changes made by another program too.

#include "library/product_library.h"

#include <string>

namespace velmora {

struct Workspace;
class UserDialogs;

namespace LibraryManagerTexts {
inline constexpr const char* Title = "Modifica nodo in libreria";
inline constexpr const char* ErrorTitle = "Errore";
} // namespace LibraryManagerTexts

class LibraryManager {
public:
    LibraryManager(Workspace& workspace, UserDialogs& dialogs);

    // Reads the library as it is now.
    void Refresh();
    const LibraryListing& Library() const { return listing_; }

    // Each returns true when the library changed. A refusal (a bad name, a name already
    // taken, a category that is not empty) is shown titled "Errore"; a removal asks first
    // and No changes nothing; a run-time error of the file system is shown. The listing is
    // read again in every case.
    bool CreateCategory(const std::string& name);
    bool RenameCategory(const std::string& category, const std::string& newName);
    bool RemoveCategory(const std::string& category);
    bool RenameProduct(const std::string& category, const std::string& name,
                       const std::string& newName);
    bool MoveProduct(const std::string& category, const std::string& name,
                     const std::string& toCategory);
    bool RemoveProduct(const std::string& category, const std::string& name);

private:
    template <typename Operation> bool Run(Operation operation);

    Workspace& workspace_;
    UserDialogs& dialogs_;
    LibraryListing listing_;
};

} // namespace velmora
