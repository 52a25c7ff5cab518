#include "presenters/add_node_dialog.h"

#include "eds/eds_object_table.h"
#include "eds/eds_reader.h"
#include "eds/node_creation.h"
#include "interfaces/alert_dialog.h"
#include "interfaces/user_dialogs.h"
#include "model/cp1252.h"
#include "model/network.h"
#include "model/paths.h"
#include "model/runtime_error.h"
#include "model/text.h"
#include "pdo/node_paste.h"
#include "session/workspace.h"

#include <fstream>
#include <memory>
#include <sstream>

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

// The description of an EDS file of the folder; none when it cannot be read.
std::optional<ProductDescription> DescribeEds(const std::string& edsDirectory,
                                              const std::string& file) {
    std::ifstream in(ToFsPath(ResolveNameIgnoringCase(EdsPath(edsDirectory, file))),
                     std::ios::binary);
    if (!in) {
        return std::nullopt;
    }
    std::ostringstream bytes;
    bytes << in.rdbuf();
    ProductDescription description;
    try {
        // A table of its own: the workspace's keeps the EDS that the last import loaded.
        const auto table = std::make_unique<EdsObjectTable>();
        std::istringstream text(bytes.str());
        LoadEds(*table, text);
        const EdsPdoCounts counts = CountEdsPdos(*table);
        description.TxPdoCount = counts.txCount;
        description.RxPdoCount = counts.rxCount;
    } catch (const RuntimeError&) {
        return std::nullopt;
    }
    std::istringstream text(bytes.str());
    ReadDeviceInfo(text, description);
    return description;
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

std::string ProductDescription::Text() const {
    return "Costruttore: " + VendorName + "\nProdotto: " + ProductName +
           "\nPDO TX: " + DecimalText(TxPdoCount) + "   PDO RX: " + DecimalText(RxPdoCount);
}

void ReadDeviceInfo(std::istream& in, ProductDescription& description) {
    bool inDeviceInfo = false;
    std::string line;
    while (std::getline(in, line)) {
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        const std::string_view trimmed = Trim(line);
        if (trimmed.starts_with('[')) {
            inDeviceInfo = LowerCase(trimmed) == "[deviceinfo]";
            continue;
        }
        const std::size_t equals = trimmed.find('=');
        if (!inDeviceInfo || equals == std::string_view::npos) {
            continue;
        }
        const std::string key = LowerCase(Trim(trimmed.substr(0, equals)));
        const std::string value = Cp1252ToUtf8(Trim(trimmed.substr(equals + 1)));
        if (key == "vendorname") {
            description.VendorName = value;
        } else if (key == "productname") {
            description.ProductName = value;
        }
    }
}

void AddNodeDialog::Open(std::string_view mode, int slot) {
    modifySlot_ = -1;
    selected_ = -1;
    description_.reset();
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
            SelectProduct(static_cast<int>(i));
            break;
        }
    }
}

void AddNodeDialog::SelectProduct(int item) {
    CheckIndex(item, -1, static_cast<long long>(products_.size()) - 1, "prodotto");
    selected_ = item;
    description_.reset();
    if (item >= 0) {
        description_ =
            DescribeEds(workspace_.EdsDirectory(), files_[static_cast<std::size_t>(item)]);
    }
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
