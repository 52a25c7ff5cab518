#include "presenters/save_to_library_dialog.h"

#include "interfaces/user_dialogs.h"
#include "library/product_library.h"
#include "model/runtime_error.h"
#include "session/workspace.h"

namespace velmora {

SaveToLibraryDialog::SaveToLibraryDialog(Workspace& workspace, UserDialogs& dialogs)
    : workspace_(workspace), dialogs_(dialogs) {}

void SaveToLibraryDialog::Open(int slot) {
    const Node& node = workspace_.Net.NodeAt(slot);
    if (node.InUse == 0) {
        throw RuntimeError(ErrorCode::InvalidArgument,
                           "lo slot " + std::to_string(slot) + " non contiene un nodo");
    }
    slot_ = slot;
    categories_ = ProductLibrary(LibraryDirectory(workspace_.AppDirectory)).Categories();
    category_ = categories_.empty() ? std::string() : categories_.front();
    name_ = node.EdsName;
}

DialogResult SaveToLibraryDialog::Ok() {
    const ProductLibrary library(LibraryDirectory(workspace_.AppDirectory));
    const Node& node = workspace_.Net.NodeAt(slot_);
    try {
        LibraryOutcome outcome = library.Save(category_, name_, node, false);
        if (outcome.Status == LibraryStatus::Exists) {
            if (!dialogs_.AskYesNo(SaveToLibraryTexts::Title,
                                   outcome.Message + ". Sostituirlo?")) {
                return {};
            }
            outcome = library.Save(category_, name_, node, true);
        }
        if (!outcome.Done()) {
            dialogs_.Inform(SaveToLibraryTexts::ErrorTitle, outcome.Message);
            return {};
        }
    } catch (const RuntimeError& error) {
        dialogs_.ShowError(error.what());
        return {};
    }
    return {false, true};
}

} // namespace velmora
