#include "presenters/add_node_dialog.h"

#include "eds/node_creation.h"
#include "interfaces/alert_dialog.h"
#include "interfaces/user_dialogs.h"
#include "model/network.h"
#include "model/runtime_error.h"
#include "model/text.h"
#include "pdo/node_paste.h"
#include "session/workspace.h"

namespace velmora {

namespace {

inline constexpr std::string_view kEdsExtension = ".eds";

std::string ProductOf(const std::string& file) {
    const std::size_t size = file.size();
    if (size >= kEdsExtension.size() &&
        LowerCase(std::string_view(file).substr(size - kEdsExtension.size())) == kEdsExtension) {
        return file.substr(0, size - kEdsExtension.size());
    }
    return file;
}

// The node an EDS file makes is named by the text before the first "."; file names match
// regardless of case.
bool MakesNodeNamed(const std::string& file, const std::string& edsName) {
    return LowerCase(file.substr(0, file.find('.'))) == LowerCase(edsName);
}

} // namespace

std::optional<int> ParseNodeNumber(std::string_view text) {
    const std::string_view digits = Trim(text);
    if (digits.empty()) {
        return std::nullopt;
    }
    int value = 0;
    for (const char c : digits) {
        if (c < '0' || c > '9') {
            return std::nullopt;
        }
        value = value * 10 + (c - '0');
        if (value > kLastSlot + 1) {
            return std::nullopt;
        }
    }
    if (value < 1) {
        return std::nullopt;
    }
    return value;
}

std::string OccupiedNodeLine(int number, std::string_view edsName) {
    return "Il nodo " + DecimalText(number) + " è già occupato da " + std::string(edsName);
}

AddNodeDialog::AddNodeDialog(Workspace& workspace, AlertDialog& alerts, UserDialogs& dialogs)
    : workspace_(workspace), alerts_(alerts), dialogs_(dialogs) {}

void AddNodeDialog::Open(std::string_view mode, int slot) {
    modifySlot_ = -1;
    selected_ = -1;
    numberText_.clear();
    files_ = workspace_.EdsFiles;
    products_.clear();
    for (const std::string& file : files_) {
        products_.push_back(ProductOf(file));
    }
    if (mode != AddNodeTexts::ModifyMode) {
        title_ = AddNodeTexts::TitleAdd;
        return;
    }

    const Node& node = workspace_.Net.NodeAt(slot);
    if (node.InUse == 0) {
        throw RuntimeError(ErrorCode::InvalidArgument,
                           "lo slot " + DecimalText(slot) + " non contiene un nodo");
    }
    title_ = AddNodeTexts::TitleModify;
    modifySlot_ = slot;
    numberText_ = DecimalText(slot + 1);
    for (std::size_t i = 0; i < files_.size(); ++i) {
        if (MakesNodeNamed(files_[i], node.EdsName)) {
            selected_ = static_cast<int>(i);
            break;
        }
    }
}

void AddNodeDialog::SelectProduct(int item) {
    CheckIndex(item, -1, static_cast<long long>(products_.size()) - 1, "prodotto");
    selected_ = item;
}

void AddNodeDialog::Refuse(const std::string& line1, const std::string& line2) {
    alerts_.ShowAlert(BlockingAlert(std::string(AddNodeTexts::AlertSource), line1, line2));
}

DialogResult AddNodeDialog::Ok() {
    Network& network = workspace_.Net;
    if (!ModifyMode() && selected_ < 0) {
        Refuse("Selezionare un prodotto dalla lista", "");
        return {};
    }
    const std::optional<int> number = ParseNodeNumber(numberText_);
    if (!number) {
        Refuse(kBadNodeNumberLine1, kBadNodeNumberLine2);
        return {};
    }
    const int slot = *number - 1;
    const int fromSlot = ModifyMode() ? modifySlot_ : slot;
    const Node& target = network.NodeAt(slot);
    if (slot != modifySlot_ && target.InUse != 0) {
        Refuse(OccupiedNodeLine(*number, target.EdsName), "");
        return {};
    }
    // In modify mode no product selected (its EDS is gone from the list) keeps the product.
    const bool rebuild =
        !ModifyMode() ||
        (selected_ >= 0 && !MakesNodeNamed(files_[static_cast<std::size_t>(selected_)],
                                           network.NodeAt(fromSlot).EdsName));
    if (!rebuild && slot == fromSlot) {
        return {false, true};
    }

    // Everything below is undone when it fails: the network stays as it was.
    const std::int16_t nodeCount = network.NodeCount;
    const Node fromBackup = network.NodeAt(fromSlot);
    std::optional<Node> toBackup;
    if (slot != fromSlot) {
        toBackup = network.NodeAt(slot);
    }
    const auto restore = [&] {
        network.NodeAt(fromSlot) = fromBackup;
        if (toBackup) {
            network.NodeAt(slot) = *toBackup;
        }
        network.NodeCount = nodeCount;
    };

    std::vector<ImportMessage> messages;
    try {
        if (!rebuild) {
            const Node moving = fromBackup;
            ClearNode(network, fromSlot);
            --network.NodeCount;
            const PasteResult moved = PasteNode(network, moving, slot);
            if (!moved.Pasted) {
                restore();
                AlertRequest alert = *moved.Alert;
                alert.Source = AddNodeTexts::AlertSource;
                alert.DisablesEditor = true;
                alerts_.ShowAlert(alert);
                return {};
            }
        } else {
            if (ModifyMode()) {
                ClearNode(network, fromSlot);
            } else {
                ++network.NodeCount;
            }
            messages = AddNodeFromEds(workspace_.ForNodeImport(),
                                      files_[static_cast<std::size_t>(selected_)], slot);
        }
    } catch (...) {
        restore();
        throw;
    }
    for (const ImportMessage& message : messages) {
        dialogs_.Inform(message.Title, message.Text);
    }
    return {true, true};
}

} // namespace velmora
