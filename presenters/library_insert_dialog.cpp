#include "presenters/library_insert_dialog.h"

#include "interfaces/alert_dialog.h"
#include "interfaces/user_dialogs.h"
#include "library/product_insertion.h"
#include "model/runtime_error.h"
#include "presenters/add_node_dialog.h"
#include "session/workspace.h"

#include <memory>

namespace velmora {

LibraryInsertDialog::LibraryInsertDialog(Workspace& workspace, NetworkTree& tree,
                                         AlertDialog& alerts, UserDialogs& dialogs)
    : workspace_(workspace), tree_(tree), alerts_(alerts), dialogs_(dialogs) {}

void LibraryInsertDialog::Open() {
    entries_.clear();
    numberText_.clear();
    copiesText_ = "1";
    Refresh();
}

void LibraryInsertDialog::Refresh() {
    listing_ = ProductLibrary(LibraryDirectory(workspace_.AppDirectory)).List();
    category_ = -1;
    product_ = -1;
}

void LibraryInsertDialog::Select(int category, int product) {
    CheckIndex(category, -1, static_cast<long long>(listing_.Categories.size()) - 1, "categoria");
    const long long products =
        category < 0
            ? 0
            : static_cast<long long>(
                  listing_.Categories[static_cast<std::size_t>(category)].Products.size());
    CheckIndex(product, -1, products - 1, "prodotto");
    category_ = category;
    product_ = product;
}

std::string LibraryInsertDialog::Details() const {
    if (category_ < 0 || product_ < 0) {
        return {};
    }
    const ProductSummary& s = listing_.Categories[static_cast<std::size_t>(category_)]
                                  .Products[static_cast<std::size_t>(product_)]
                                  .Summary;
    return "EDS: " + s.EdsFile() + "\nPDO TX: " + std::to_string(s.TxPdoCount) +
           "\nPDO RX: " + std::to_string(s.RxPdoCount) +
           "\nParametri: " + std::to_string(s.ParameterCount);
}

void LibraryInsertDialog::Alert(const std::string& line1, const std::string& line2) {
    alerts_.ShowAlert(BlockingAlert(LibraryInsertTexts::AlertSource, line1, line2));
}

bool LibraryInsertDialog::Add() {
    if (category_ < 0 || product_ < 0) {
        Alert(LibraryInsertTexts::NoProduct);
        return false;
    }
    const std::optional<int> number = ParseNodeNumber(numberText_);
    if (!number) {
        Alert(kBadNodeNumberLine1, kBadNodeNumberLine2);
        return false;
    }
    const std::optional<int> copies = ParseNodeNumber(copiesText_);
    if (!copies) {
        Alert(LibraryInsertTexts::BadCopies, "inserire un numero da 1 a 501");
        return false;
    }
    const LibraryCategory& category = listing_.Categories[static_cast<std::size_t>(category_)];
    entries_.push_back({category.Name, category.Products[static_cast<std::size_t>(product_)].Name,
                        *number, *copies});
    return true;
}

void LibraryInsertDialog::RemoveEntry(int i) {
    CheckIndex(i, 0, static_cast<long long>(entries_.size()) - 1, "riga");
    entries_.erase(entries_.begin() + i);
}

DialogResult LibraryInsertDialog::Ok() {
    if (entries_.empty() && !Add()) {
        return {};
    }
    const ProductLibrary library(LibraryDirectory(workspace_.AppDirectory));
    Network& network = workspace_.Net;
    try {
        std::vector<std::unique_ptr<Node>> products;
        std::vector<ProductPlacement> placements;
        std::vector<int> taken; // the slots of the entries before
        for (const LibraryInsertEntry& entry : entries_) {
            products.push_back(std::make_unique<Node>());
            const LibraryOutcome loaded =
                library.Load(entry.Category, entry.Product, *products.back());
            if (!loaded.Done()) {
                dialogs_.Inform(kInsertionErrorTitle, loaded.Message);
                return {};
            }
            for (const int slot :
                 SuccessiveFreeSlots(network, entry.Number - 1, entry.Copies, taken)) {
                placements.push_back({products.back().get(), slot});
                taken.push_back(slot);
            }
        }
        const InsertionOutcome outcome =
            InsertProducts(workspace_.ForNodeImport(), tree_, placements);
        switch (outcome.Status) {
        case InsertionStatus::Inserted:
            break;
        case InsertionStatus::EdsMissing:
            dialogs_.Inform(outcome.Title, outcome.Line1);
            return {};
        default:
            Alert(outcome.Line1, outcome.Line2);
            return {};
        }
        for (const ImportMessage& message : outcome.Messages) {
            dialogs_.Inform(message.Title, message.Text);
        }
    } catch (const RuntimeError& error) {
        dialogs_.ShowError(error.what());
        return {};
    }
    return {true, true};
}

} // namespace velmora
