#pragma once

// The network tree as a model without widgets: the root for the configuration, one item per
// node and under it the time-out item, the PDOs and the "Parameter" folder with the node's
// parameters. Every change of the network rebuilds it from the node table; selecting or
// activating an item maps it back to its record by parsing the item's key and caption.
//
// Items are kept in one flat vector in tree order (parents before children), and all keys
// and captions in one text buffer, so a rebuild of a full network makes a handful of
// allocations and a view (a QAbstractItemModel) reads items on demand.
//
// Keys: root "master"; node slot "@" EdsName; time-out "PARTIMEOUT@" slot; TX PDO "TX" p "@"
// slot (p the index in Pdos); RX PDO "RX" (p - TxPdoCount) "@" slot; parameter folder the
// node key followed by "@Can_netParameter"; parameter k "@" slot.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

struct Network;
struct Node;

enum class TreeItemKind { Root, Node, Timeout, TxPdo, RxPdo, ParameterFolder, Parameter };

struct TreeItem {
    TreeItemKind Kind = TreeItemKind::Root;
    int Parent = -1; // item index; -1 for the root
    int Depth = 0;   // 0 for the root
    int Row = 0;     // position among the parent's children
    int Slot = -1;   // the node's slot; -1 for the root
    int Index = -1;  // the index in Pdos or Parameters; -1 for other kinds
    bool Expanded = false;
};

// What a rebuild tells the main window.
struct TreeRebuildResult {
    std::string NodeCountText; // NodeCount as plain decimal text
    bool DisableNodeCommands = false;
    int SelectedItem = -1; // the root, or -1 when the tree was cleared
};

// The record an item stands for, recovered from its key and caption.
enum class TreeTargetKind { Root, Node, Timeout, Pdo, ParameterFolder, Parameter };

struct TreeTarget {
    TreeTargetKind Kind = TreeTargetKind::Root;
    int Slot = -1;           // -1 for the root
    std::string Direction;   // "TX" or "RX" for a PDO
    int PdoIndex = -1;       // the index in Pdos (RX keys are offset by TxPdoCount)
    int ParameterIndex = -1; // the index in Parameters

    bool operator==(const TreeTarget&) const = default;
};

// What selecting an item changes in the main window.
struct TreeSelection {
    TreeTarget Target;
    // The new caption of the remove command ("Rimuovi parametro" for a parameter, "Rimuovi
    // Nodo" for a node); empty when the selection leaves it as it is.
    std::string RemoveCaption;
    // Selecting a parameter disables toolbar buttons 9 and 10.
    bool DisableButtons9And10 = false;
};

// The editor that activating (double-clicking) an item opens.
enum class TreeEditor {
    Pdo,          // the PDO editor for Target's PDO
    Parameter,    // the parameter editor for Target's parameter
    NewParameter, // the parameter editor adding a parameter to Target's node
    Node,         // the edit-node command (also for the root: Target.Slot is then -1)
    Timeout,      // the time-out dialog for Target's node, with a rebuild as it opens
};

struct TreeActivation {
    TreeEditor Editor = TreeEditor::Node;
    TreeTarget Target;
    // The time-out dialog: RebuildNetworkTree runs as the dialog opens, while it is shown.
    bool RebuildOnOpen = false;
};

class NetworkTree {
public:
    // Rebuilds the whole tree from the network: the root (expanded) with the configuration
    // caption (FileName without its last four characters, then " (salvato)" when Saved is set
    // and there are no unsavedChanges, " (modificato)" otherwise), then the first NodeCount
    // in-use slots in slot order. PDOs are walked by direction only: from entry 0 while "TX",
    // then on while "RX" (a gap hides the later PDOs; the walk ends at the end of the table).
    // When NodeCount is 0 the tree is cleared again and the node commands are disabled;
    // otherwise the root is selected. Resets CollapseOnRebuild. A FileName shorter than four
    // characters is the InvalidArgument error; a NodeCount above the in-use slots runs past slot
    // 500: the SubscriptOutOfRange error, with the items added so far kept.
    TreeRebuildResult RebuildNetworkTree(const Network& network, bool unsavedChanges);

    // The one-shot flag (1 = set) the library insertion sets: the next rebuild shows every
    // node collapsed.
    std::int16_t CollapseOnRebuild() const { return collapseOnRebuild_; }
    void SetCollapseOnRebuild(std::int16_t value) { collapseOnRebuild_ = value; }

    // Removes every item.
    void Clear();
    // Replaces the root's caption until the next rebuild or clear (the saved and modified
    // marks); does nothing while the tree is empty.
    void SetRootCaption(std::string caption);

    int Size() const { return static_cast<int>(items_.size()); }
    // Item i in tree order (0 is the root); i outside the tree is SubscriptOutOfRange.
    const TreeItem& Item(int i) const;
    std::string_view Key(int i) const;
    std::string_view Caption(int i) const;
    int ChildCount(int i) const;
    // The item index of child `row` of item i.
    int Child(int i, int row) const;

    // The user expanded or collapsed item i: a "Parameter" folder stores the value in its
    // node's ParameterFolderExpanded (slot from the parent's key), any other item whose key
    // holds "@" in Expanded of the slot before its "@". Nothing is rebuilt.
    void OnItemExpanded(Network& network, int i, bool expanded);

    // Maps item i back to its record and copies a selected parameter into
    // SelectedParameter.
    TreeSelection SelectItem(Network& network, int i) const;

    // Decides the editor that activating item i opens, in this order: a "pdo_" caption not
    // under the folder; an item under the folder; the folder; any key without "PARTIMEOUT"
    // (node or root); the time-out item. Then sets modified (the configuration's modified
    // mark) to -1. A PDO key that does not parse is the InvalidArgument error, and the mark
    // is left as it was.
    TreeActivation ActivateItem(const Network& network, std::int16_t& modified, int i) const;

private:
    struct Entry {
        TreeItem item;
        std::uint32_t keyBegin = 0;
        std::uint32_t captionBegin = 0; // the key ends here
        std::uint32_t captionEnd = 0;
        int firstChild = 0; // into children_
        int childCount = 0;
    };

    // The steps of a rebuild for one node: its item and time-out item (returns the node
    // item), its PDO items, its "Parameter" folder and parameters.
    int AddNodeItems(int root, int slot, const Node& node);
    void AddPdoItems(int nodeItem, int slot, const Node& node);
    void AddParameterItems(int nodeItem, int slot, const Node& node);
    int BeginItem(TreeItemKind kind, int parent, int slot, int index, bool expanded);
    void StartCaption(int item);
    void EndItem(int item);
    void LinkChildren();
    const Entry& EntryAt(int i) const;
    TreeTarget TargetOf(const Network& network, int i) const;

    std::vector<Entry> items_;
    std::vector<int> children_;
    std::string text_;
    std::optional<std::string> rootCaption_;
    std::int16_t collapseOnRebuild_ = 0;
};

// The number before the first "@" of a key: the slot of a node key, the index of a PDO or
// parameter key. A key without "@" is the InvalidArgument error.
int SlotFromKey(std::string_view key);
// The number after the first "@" of a key: the slot of a time-out, PDO or parameter key.
int SlotAfterAt(std::string_view key);

// kind "n" stores value in the node's Expanded, kind "p" in its ParameterFolderExpanded; any
// other kind stores nothing. A slot outside 0..500 is the SubscriptOutOfRange error.
void SetItemExpanded(Network& network, int slot, std::int16_t value, std::string_view kind);

} // namespace velmora
