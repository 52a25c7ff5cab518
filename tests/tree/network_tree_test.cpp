#include "model/runtime_error.h"
#include "model/workspace.h"
#include "support/network_builder.h"
#include "tree/network_tree.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

using test::AddNode;
using test::AddParameter;
using test::EmptyNetwork;

TreeTarget Target(TreeTargetKind kind, int slot, std::string direction = "", int pdo = -1,
                  int parameter = -1) {
    TreeTarget target;
    target.Kind = kind;
    target.Slot = slot;
    target.Direction = direction;
    target.PdoIndex = pdo;
    target.ParameterIndex = parameter;
    return target;
}

// One line per item: two blanks per level, key, tab, caption, and "+" when expanded.
std::string Render(const NetworkTree& tree) {
    std::string text;
    for (int i = 0; i < tree.Size(); ++i) {
        text += std::string(2 * tree.Item(i).Depth, ' ') + std::string(tree.Key(i)) + "\t" +
                std::string(tree.Caption(i)) + (tree.Item(i).Expanded ? " +" : "") + "\n";
    }
    return text;
}

// A saved "demo.nodi" with a node in slot 0 (two TX, one RX PDO, two parameters) and a
// bare node in slot 7.
Workspace DemoWorkspace() {
    Workspace workspace;
    Network& network = workspace.Net;
    network = EmptyNetwork();
    network.FileName = "demo.nodi";
    network.Saved = kTrue;
    Node& node = AddNode(network, 0, 2, 1, "Fast");
    node.PdoAt(1).Settings.Mode = "Non configurato";
    node.PdoAt(2).Settings.Mode = "Slow";
    node.repetitions = 3;
    node.repetitionTime = 100;
    node.Expanded = kTrue;
    AddParameter(node, "Modes of operation", "6060", "0", "1", "1");
    AddParameter(node, "Limite", "607D", "1", "4", "-5");
    AddNode(network, 7, 0, 0, "Slow", "io.eds");
    network.NodeAt(7).ParameterFolderExpanded = kTrue;
    return workspace;
}

TEST(NetworkTree, RebuildItemsKeysAndCaptions) {
    Workspace workspace = DemoWorkspace();
    NetworkTree tree;
    const TreeRebuildResult result = tree.RebuildNetworkTree(workspace.Net);
    EXPECT_EQ(Render(tree), "master\tdemo. (salvato) +\n"
                            "  0@drive.eds\tdrive.eds (1) +\n"
                            "    PARTIMEOUT@0\tCFG_TIMEOUT(3,100)\n"
                            "    TX0@0\tpdo_TX1 (Fast)\n"
                            "    TX1@0\tpdo_TX2 (Non configurato)\n"
                            "    RX0@0\tpdo_RX1 (Slow)\n"
                            "    0@drive.eds@Can_netParameter\tParameter\n"
                            "      0@0\tModes of operation (1)\n"
                            "      1@0\tLimite (-5)\n"
                            "  7@io.eds\tio.eds (8)\n"
                            "    PARTIMEOUT@7\tCFG_TIMEOUT(0,0)\n"
                            "    7@io.eds@Can_netParameter\tParameter +\n");
    EXPECT_EQ(result.NodeCountText, "2");
    EXPECT_EQ(result.SelectedItem, 0);
    EXPECT_FALSE(result.DisableNodeCommands);

    // The child links a view walks.
    EXPECT_EQ(tree.ChildCount(0), 2);
    EXPECT_EQ(tree.Child(0, 1), 9);
    EXPECT_EQ(tree.ChildCount(1), 5);
    EXPECT_EQ(tree.Child(6, 1), 8);
    EXPECT_EQ(tree.Item(8).Row, 1);
    EXPECT_EQ(tree.Item(8).Parent, 6);
    EXPECT_THROW(tree.Child(2, 0), RuntimeError);
    EXPECT_THROW(tree.Item(12), RuntimeError);

    // Unsaved: " (modificato)" after the name minus four characters.
    workspace.Net.Saved = 0;
    workspace.Net.FileName = "Senza nome.eds";
    tree.RebuildNetworkTree(workspace.Net);
    EXPECT_EQ(tree.Caption(0), "Senza nome (modificato)");
    workspace.Net.FileName = "àbç"; // three characters, more bytes
    EXPECT_THROW(tree.RebuildNetworkTree(workspace.Net), RuntimeError);
    workspace.Net.FileName = "àbçd";
    tree.RebuildNetworkTree(workspace.Net);
    EXPECT_EQ(tree.Caption(0), " (modificato)");
}

TEST(NetworkTree, RebuildWalksAndFlags) {
    Workspace workspace = DemoWorkspace();
    Network& network = workspace.Net;
    NetworkTree tree;

    // A gap in the directions hides the later PDOs; NodeCount ends the slot walk.
    network.NodeAt(0).PdoAt(1).Direction = "NOTYPE";
    network.NodeCount = 1;
    tree.SetCollapseOnRebuild(1);
    tree.RebuildNetworkTree(network);
    EXPECT_EQ(tree.Size(), 7);
    EXPECT_EQ(tree.Key(3), "TX0@0");
    EXPECT_EQ(tree.Key(4), "0@drive.eds@Can_netParameter");
    EXPECT_FALSE(tree.Item(1).Expanded); // collapsed once...
    EXPECT_EQ(tree.CollapseOnRebuild(), 0);
    tree.RebuildNetworkTree(network);
    EXPECT_TRUE(tree.Item(1).Expanded); // ...then the stored flag again

    // More nodes counted than in use: the walk passes slot 500.
    network.NodeCount = 3;
    try {
        tree.RebuildNetworkTree(network);
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Code(), ErrorCode::SubscriptOutOfRange);
    }
    EXPECT_EQ(tree.Size(), 10); // the items added before the error stay

    // No nodes: the tree is cleared again and the node commands disabled.
    network = EmptyNetwork();
    const TreeRebuildResult empty = tree.RebuildNetworkTree(network);
    EXPECT_EQ(tree.Size(), 0);
    EXPECT_TRUE(empty.DisableNodeCommands);
    EXPECT_EQ(empty.SelectedItem, -1);
    EXPECT_EQ(empty.NodeCountText, "0");
}

TEST(NetworkTree, ExpandStoresTheFlags) {
    Workspace workspace = DemoWorkspace();
    Network& network = workspace.Net;
    NetworkTree tree;
    tree.RebuildNetworkTree(network);

    tree.OnItemExpanded(network, 1, false); // node item of slot 0
    EXPECT_EQ(network.NodeAt(0).Expanded, 0);
    EXPECT_FALSE(tree.Item(1).Expanded);
    tree.OnItemExpanded(network, 6, true); // its "Parameter" folder
    EXPECT_EQ(network.NodeAt(0).ParameterFolderExpanded, kTrue);
    tree.OnItemExpanded(network, 0, false); // the root has no "@": nothing stored
    EXPECT_EQ(network.NodeAt(0).Expanded, 0);

    SetItemExpanded(network, 7, kTrue, "n");
    EXPECT_EQ(network.NodeAt(7).Expanded, kTrue);
    SetItemExpanded(network, 7, kTrue, "x");
    EXPECT_THROW(SetItemExpanded(network, 501, kTrue, "n"), RuntimeError);

    EXPECT_EQ(SlotFromKey("12@drive.eds"), 12);
    EXPECT_EQ(SlotAfterAt("PARTIMEOUT@12"), 12);
    EXPECT_THROW(SlotFromKey("master"), RuntimeError);
}

TEST(NetworkTree, SelectionAndActivationFindTheRecord) {
    Workspace workspace = DemoWorkspace();
    Network& network = workspace.Net;
    NetworkTree tree;
    tree.RebuildNetworkTree(network);

    const auto select = [&](int item) { return tree.SelectItem(network, item); };
    EXPECT_EQ(select(0).Target, TreeTarget{});
    EXPECT_EQ(select(1).Target, Target(TreeTargetKind::Node, 0));
    EXPECT_EQ(select(1).RemoveCaption, "Rimuovi Nodo");
    EXPECT_EQ(select(2).Target, Target(TreeTargetKind::Timeout, 0));
    EXPECT_EQ(select(5).Target, Target(TreeTargetKind::Pdo, 0, "RX", 2));
    EXPECT_EQ(select(6).Target, Target(TreeTargetKind::ParameterFolder, 0));
    EXPECT_EQ(select(6).RemoveCaption, "");
    const TreeSelection parameter = select(8);
    EXPECT_EQ(parameter.Target, Target(TreeTargetKind::Parameter, 0, "", -1, 1));
    EXPECT_EQ(parameter.RemoveCaption, "Rimuovi parametro");
    EXPECT_TRUE(parameter.DisableButtons9And10);
    EXPECT_EQ(network.SelectedParameter.Name, "Limite");

    const auto activate = [&](int item) { return tree.ActivateItem(workspace, item); };
    EXPECT_EQ(activate(4).Editor, TreeEditor::Pdo);
    EXPECT_EQ(activate(4).Target, Target(TreeTargetKind::Pdo, 0, "TX", 1));
    EXPECT_EQ(activate(7).Editor, TreeEditor::Parameter);
    EXPECT_EQ(activate(7).Target.ParameterIndex, 0);
    EXPECT_EQ(activate(11).Editor, TreeEditor::NewParameter);
    EXPECT_EQ(activate(11).Target.Slot, 7);
    EXPECT_EQ(activate(9).Editor, TreeEditor::Node);
    EXPECT_EQ(activate(9).Target.Slot, 7);
    EXPECT_EQ(activate(0).Editor, TreeEditor::Node); // the root: edit node, no slot
    EXPECT_EQ(activate(0).Target.Slot, -1);
    const TreeActivation timeout = activate(10);
    EXPECT_EQ(timeout.Editor, TreeEditor::Timeout);
    EXPECT_EQ(timeout.Target.Slot, 7);
    EXPECT_TRUE(timeout.RebuildAfter);
    EXPECT_EQ(workspace.Modified, kTrue);

    // A node whose EDS name contains "pdo_" falls into the PDO rule and does not parse.
    network.NodeAt(7).EdsName = "pdo_io.eds";
    tree.RebuildNetworkTree(network);
    EXPECT_THROW(activate(9), RuntimeError);
}

} // namespace
} // namespace velmora
