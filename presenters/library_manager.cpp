#include "presenters/library_manager.h"

#include "interfaces/user_dialogs.h"
#include "model/runtime_error.h"
#include "session/workspace.h"

namespace velmora {

LibraryManager::LibraryManager(Workspace& workspace, UserDialogs& dialogs)
    : workspace_(workspace), dialogs_(dialogs) {}

void LibraryManager::Refresh() {
    listing_ = ProductLibrary(LibraryDirectory(workspace_.AppDirectory)).List();
}

template <typename Operation> bool LibraryManager::Run(Operation operation) {
    bool done = false;
    try {
        const LibraryOutcome outcome =
            operation(ProductLibrary(LibraryDirectory(workspace_.AppDirectory)));
        done = outcome.Done();
        if (!done) {
            dialogs_.Inform(LibraryManagerTexts::ErrorTitle, outcome.Message);
        }
    } catch (const RuntimeError& error) {
        dialogs_.ShowError(error.what());
    }
    Refresh();
    return done;
}

bool LibraryManager::CreateCategory(const std::string& name) {
    return Run([&](const ProductLibrary& library) { return library.CreateCategory(name); });
}

bool LibraryManager::RenameCategory(const std::string& category, const std::string& newName) {
    return Run(
        [&](const ProductLibrary& library) { return library.RenameCategory(category, newName); });
}

bool LibraryManager::RemoveCategory(const std::string& category) {
    if (!dialogs_.AskYesNo(LibraryManagerTexts::Title,
                           "Rimuovere la categoria \"" + category + "\"?")) {
        return false;
    }
    return Run([&](const ProductLibrary& library) { return library.RemoveCategory(category); });
}

bool LibraryManager::RenameProduct(const std::string& category, const std::string& name,
                                   const std::string& newName) {
    return Run([&](const ProductLibrary& library) {
        return library.RenameProduct(category, name, newName);
    });
}

bool LibraryManager::MoveProduct(const std::string& category, const std::string& name,
                                 const std::string& toCategory) {
    return Run([&](const ProductLibrary& library) {
        return library.MoveProduct(category, name, toCategory);
    });
}

bool LibraryManager::RemoveProduct(const std::string& category, const std::string& name) {
    if (!dialogs_.AskYesNo(LibraryManagerTexts::Title, "Rimuovere il prodotto \"" + name +
                                                           "\" dalla categoria \"" + category +
                                                           "\"?")) {
        return false;
    }
    return Run(
        [&](const ProductLibrary& library) { return library.RemoveProduct(category, name); });
}

} // namespace velmora
