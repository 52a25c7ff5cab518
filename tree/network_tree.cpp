#include "tree/network_tree.h"

#include "model/network.h"
#include "model/network_walk.h"
#include "model/numeric.h"
#include "model/runtime_error.h"
#include "model/text.h"
#include "model/transmission_mode.h"

#include <charconv>

namespace velmora {

namespace {

constexpr std::string_view kRootKey = "master";
constexpr std::string_view kTimeoutKey = "PARTIMEOUT";
constexpr std::string_view kFolderKeySuffix = "@Can_netParameter";
constexpr std::string_view kFolderCaption = "Parameter";
constexpr std::string_view kPdoCaptionMark = "pdo_";

void AppendNumber(std::string& text, long long value) {
    char buffer[24];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    text.append(buffer, result.ptr);
}

// A number read out of a key the way the handlers read it: the leading number of the text.
int KeyNumber(std::string_view text) {
    return ToInt32(ReadNumber(text));
}

std::size_t AtPosition(std::string_view key) {
    const std::size_t at = key.find('@');
    if (at == std::string_view::npos) {
        throw RuntimeError(ErrorCode::InvalidArgument,
                           "chiave senza \"@\": \"" + std::string(key) + "\"");
    }
    return at;
}

bool Contains(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

bool IsPdoKey(std::string_view key) {
    return key.starts_with(PdoDirection::Tx) || key.starts_with(PdoDirection::Rx);
}

// "TXp@slot" or "RXq@slot": the direction from the first two characters, the index from the
// digits before "@" (RX offset by the node's TxPdoCount), the slot after it.
TreeTarget PdoTarget(const Network& network, std::string_view key) {
    if (!IsPdoKey(key)) {
        throw RuntimeError(ErrorCode::InvalidArgument,
                           "chiave di PDO non valida: \"" + std::string(key) + "\"");
    }
    const std::size_t at = AtPosition(key);
    TreeTarget target;
    target.Kind = TreeTargetKind::Pdo;
    target.Direction = std::string(key.substr(0, 2));
    target.Slot = KeyNumber(key.substr(at + 1));
    target.PdoIndex = KeyNumber(key.substr(2, at - 2));
    if (target.Direction == PdoDirection::Rx) {
        target.PdoIndex += network.NodeAt(target.Slot).TxPdoCount;
    }
    return target;
}

TreeTarget ParameterTarget(std::string_view key) {
    TreeTarget target;
    target.Kind = TreeTargetKind::Parameter;
    target.ParameterIndex = SlotFromKey(key);
    target.Slot = SlotAfterAt(key);
    return target;
}

} // namespace

int SlotFromKey(std::string_view key) {
    return KeyNumber(key.substr(0, AtPosition(key)));
}

int SlotAfterAt(std::string_view key) {
    return KeyNumber(key.substr(AtPosition(key) + 1));
}

void SetItemExpanded(Network& network, int slot, std::int16_t value, std::string_view kind) {
    Node& node = network.NodeAt(slot);
    if (kind == "n") {
        node.Expanded = value;
    } else if (kind == "p") {
        node.ParameterFolderExpanded = value;
    }
}

const NetworkTree::Entry& NetworkTree::EntryAt(int i) const {
    CheckIndex(i, 0, static_cast<long long>(items_.size()) - 1, "Elemento dell'albero");
    return items_[static_cast<std::size_t>(i)];
}

const TreeItem& NetworkTree::Item(int i) const {
    return EntryAt(i).item;
}

std::string_view NetworkTree::Key(int i) const {
    const Entry& entry = EntryAt(i);
    return std::string_view(text_).substr(entry.keyBegin, entry.captionBegin - entry.keyBegin);
}

std::string_view NetworkTree::Caption(int i) const {
    const Entry& entry = EntryAt(i);
    if (i == 0 && rootCaption_) {
        return *rootCaption_;
    }
    return std::string_view(text_).substr(entry.captionBegin,
                                          entry.captionEnd - entry.captionBegin);
}

int NetworkTree::ChildCount(int i) const {
    return EntryAt(i).childCount;
}

int NetworkTree::Child(int i, int row) const {
    const Entry& entry = EntryAt(i);
    CheckIndex(row, 0, entry.childCount - 1, "Riga dell'albero");
    return children_[static_cast<std::size_t>(entry.firstChild + row)];
}

void NetworkTree::Clear() {
    items_.clear();
    children_.clear();
    text_.clear();
    rootCaption_.reset();
}

void NetworkTree::SetRootCaption(std::string caption) {
    if (!items_.empty()) {
        rootCaption_ = std::move(caption);
    }
}

// The key is appended to text_ after BeginItem, the caption after StartCaption.
int NetworkTree::BeginItem(TreeItemKind kind, int parent, int slot, int index, bool expanded) {
    Entry entry;
    entry.item.Kind = kind;
    entry.item.Parent = parent;
    entry.item.Depth = parent < 0 ? 0 : items_[static_cast<std::size_t>(parent)].item.Depth + 1;
    entry.item.Slot = slot;
    entry.item.Index = index;
    entry.item.Expanded = expanded;
    entry.keyBegin = static_cast<std::uint32_t>(text_.size());
    items_.push_back(entry);
    return static_cast<int>(items_.size()) - 1;
}

void NetworkTree::StartCaption(int item) {
    items_[static_cast<std::size_t>(item)].captionBegin = static_cast<std::uint32_t>(text_.size());
}

void NetworkTree::EndItem(int item) {
    items_[static_cast<std::size_t>(item)].captionEnd = static_cast<std::uint32_t>(text_.size());
}

void NetworkTree::LinkChildren() {
    children_.assign(items_.size() > 0 ? items_.size() - 1 : 0, 0);
    for (const Entry& entry : items_) {
        if (entry.item.Parent >= 0) {
            ++items_[static_cast<std::size_t>(entry.item.Parent)].childCount;
        }
    }
    int next = 0;
    for (Entry& entry : items_) {
        entry.firstChild = next;
        next += entry.childCount;
        entry.childCount = 0;
    }
    for (std::size_t i = 0; i < items_.size(); ++i) {
        const int parent = items_[i].item.Parent;
        if (parent >= 0) {
            Entry& owner = items_[static_cast<std::size_t>(parent)];
            items_[i].item.Row = owner.childCount;
            children_[static_cast<std::size_t>(owner.firstChild + owner.childCount)] =
                static_cast<int>(i);
            ++owner.childCount;
        }
    }
}

TreeRebuildResult NetworkTree::RebuildNetworkTree(const Network& network, bool unsavedChanges) {
    Clear();
    const std::size_t nameChars = CharCount(network.FileName);
    if (nameChars < 4) {
        throw RuntimeError(ErrorCode::InvalidArgument,
                           "nome di configurazione troppo corto: \"" + network.FileName + "\"");
    }
    try {
        const int root = BeginItem(TreeItemKind::Root, -1, -1, -1, true);
        text_ += kRootKey;
        StartCaption(root);
        // The last four characters go, so "demo.nodi" keeps its dot: "demo. (salvato)".
        text_ += CharSlice(network.FileName, 0, nameChars - 4);
        text_ += network.Saved != 0 && !unsavedChanges ? " (salvato)" : " (modificato)";
        EndItem(root);

        ForEachNodeInUse(network, network.NodeCount, [&](int slot, const Node& node) {
            const int item = AddNodeItems(root, slot, node);
            AddPdoItems(item, slot, node);
            AddParameterItems(item, slot, node);
        });
    } catch (...) {
        LinkChildren(); // the items added so far stay usable
        throw;
    }
    LinkChildren();

    TreeRebuildResult result;
    result.NodeCountText = DecimalText(network.NodeCount);
    if (network.NodeCount != 0) {
        result.SelectedItem = 0;
    } else {
        Clear();
        result.DisableNodeCommands = true;
    }
    collapseOnRebuild_ = 0;
    return result;
}

int NetworkTree::AddNodeItems(int root, int slot, const Node& node) {
    const bool expanded = node.Expanded != 0 && collapseOnRebuild_ != 1;
    const int item = BeginItem(TreeItemKind::Node, root, slot, -1, expanded);
    AppendNumber(text_, slot);
    text_ += '@';
    text_ += node.EdsName;
    StartCaption(item);
    text_ += node.EdsName;
    text_ += " (";
    AppendNumber(text_, slot + 1);
    text_ += ')';
    EndItem(item);

    const int timeout = BeginItem(TreeItemKind::Timeout, item, slot, -1, false);
    text_ += kTimeoutKey;
    text_ += '@';
    AppendNumber(text_, slot);
    StartCaption(timeout);
    text_ += "CFG_TIMEOUT(";
    AppendNumber(text_, node.repetitions);
    text_ += ',';
    AppendNumber(text_, node.repetitionTime);
    text_ += ')';
    EndItem(timeout);
    return item;
}

void NetworkTree::AddPdoItems(int nodeItem, int slot, const Node& node) {
    ForEachTxThenRxPdo(node, [&](int p, const Pdo& pdo) {
        const bool tx = pdo.Direction == PdoDirection::Tx;
        const int item =
            BeginItem(tx ? TreeItemKind::TxPdo : TreeItemKind::RxPdo, nodeItem, slot, p, false);
        text_ += pdo.Direction;
        AppendNumber(text_, tx ? p : p - node.TxPdoCount);
        text_ += '@';
        AppendNumber(text_, slot);
        StartCaption(item);
        text_ += PdoName(pdo);
        text_ += " (";
        text_ += pdo.Settings.Mode;
        text_ += ')';
        EndItem(item);
    });
}

void NetworkTree::AddParameterItems(int nodeItem, int slot, const Node& node) {
    const int folder = BeginItem(TreeItemKind::ParameterFolder, nodeItem, slot, -1,
                                 node.ParameterFolderExpanded != 0);
    AppendNumber(text_, slot);
    text_ += '@';
    text_ += node.EdsName;
    text_ += kFolderKeySuffix;
    StartCaption(folder);
    text_ += kFolderCaption;
    EndItem(folder);

    for (int k = 0; k < node.ParameterCount; ++k) {
        const NodeParameter& parameter = node.ParameterAt(k);
        const int item = BeginItem(TreeItemKind::Parameter, folder, slot, k, false);
        AppendNumber(text_, k);
        text_ += '@';
        AppendNumber(text_, slot);
        StartCaption(item);
        text_ += parameter.Name;
        text_ += " (";
        text_ += parameter.Value;
        text_ += ')';
        EndItem(item);
    }
}

void NetworkTree::OnItemExpanded(Network& network, int i, bool expanded) {
    const Entry& entry = EntryAt(i);
    const std::int16_t value = expanded ? kTrue : kFalse;
    if (Caption(i) == kFolderCaption) {
        SetItemExpanded(network, SlotFromKey(Key(entry.item.Parent)), value, "p");
    } else if (Contains(Key(i), "@")) {
        SetItemExpanded(network, SlotFromKey(Key(i)), value, "n");
    }
    items_[static_cast<std::size_t>(i)].item.Expanded = expanded;
}

TreeTarget NetworkTree::TargetOf(const Network& network, int i) const {
    const std::string_view key = Key(i);
    const int parent = Item(i).Parent;
    const std::string_view parentCaption = parent >= 0 ? Caption(parent) : std::string_view();
    TreeTarget target;
    if (IsPdoKey(key)) {
        return PdoTarget(network, key);
    }
    if (Contains(key, kTimeoutKey)) {
        target.Kind = TreeTargetKind::Timeout;
        target.Slot = SlotAfterAt(key);
    } else if (Caption(i) == kFolderCaption) {
        target.Kind = TreeTargetKind::ParameterFolder;
        target.Slot = SlotFromKey(Key(parent));
    } else if (parentCaption == kFolderCaption) {
        return ParameterTarget(key);
    } else if (Contains(key, "@")) {
        target.Kind = TreeTargetKind::Node;
        target.Slot = SlotFromKey(key);
    }
    return target;
}

TreeSelection NetworkTree::SelectItem(Network& network, int i) const {
    TreeSelection selection;
    selection.Target = TargetOf(network, i);
    if (selection.Target.Kind == TreeTargetKind::Parameter) {
        network.SelectedParameter =
            network.NodeAt(selection.Target.Slot).ParameterAt(selection.Target.ParameterIndex);
        selection.RemoveCaption = "Rimuovi parametro";
        selection.DisableButtons9And10 = true;
    } else if (selection.Target.Kind == TreeTargetKind::Node) {
        selection.RemoveCaption = "Rimuovi Nodo";
    }
    return selection;
}

TreeActivation NetworkTree::ActivateItem(const Network& network, std::int16_t& modified,
                                         int i) const {
    const std::string_view key = Key(i);
    const std::string_view caption = Caption(i);
    const int parent = Item(i).Parent;
    const std::string_view parentCaption = parent >= 0 ? Caption(parent) : std::string_view();

    TreeActivation activation;
    if (Contains(caption, kPdoCaptionMark) && parentCaption != kFolderCaption) {
        activation.Editor = TreeEditor::Pdo;
        activation.Target = PdoTarget(network, key);
    } else if (parentCaption == kFolderCaption) {
        activation.Editor = TreeEditor::Parameter;
        activation.Target = ParameterTarget(key);
    } else if (caption == kFolderCaption) {
        activation.Editor = TreeEditor::NewParameter;
        activation.Target.Kind = TreeTargetKind::ParameterFolder;
        activation.Target.Slot = SlotFromKey(Key(parent));
    } else if (!Contains(key, kTimeoutKey)) {
        activation.Editor = TreeEditor::Node;
        if (Contains(key, "@")) {
            activation.Target.Kind = TreeTargetKind::Node;
            activation.Target.Slot = SlotFromKey(key);
        }
    } else {
        activation.Editor = TreeEditor::Timeout;
        activation.Target.Kind = TreeTargetKind::Timeout;
        activation.Target.Slot = SlotAfterAt(key);
        activation.RebuildOnOpen = true;
    }
    modified = kTrue;
    return activation;
}

} // namespace velmora
