#include "model/runtime_error.h"
#include "support/network_builder.h"
#include "tree/network_tree.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

// One line per item: two blanks per level, key, tab, caption, and " +" when expanded.
std::string Render(const NetworkTree& tree) {
    std::string text;
    for (int i = 0; i < tree.Size(); ++i) {
        text += std::string(2 * tree.Item(i).Depth, ' ') + std::string(tree.Key(i)) + "\t" +
                std::string(tree.Caption(i)) + (tree.Item(i).Expanded ? " +" : "") + "\n";
    }
    return text;
}

// A saved "demo.nodi": slot 0 with two TX and one RX PDO and two parameters, and a bare
// node in slot 7.
class NetworkTreeTest : public ::testing::Test {
protected:
    NetworkTreeTest() {
        network = test::EmptyNetwork();
        network.FileName = "demo.nodi";
        network.Saved = kTrue;
        Node& node = test::AddNode(network, 0, 2, 1, "Fast");
        node.PdoAt(1).Settings.Mode = "Non configurato";
        node.PdoAt(2).Settings.Mode = "Slow";
        node.repetitions = 3;
        node.repetitionTime = 100;
        node.Expanded = kTrue;
        test::AddParameter(node, "Modes of operation", "6060", "0", "1", "1");
        test::AddParameter(node, "Limite", "607D", "1", "4", "-5");
        test::AddNode(network, 7, 0, 0, "Slow", "io.eds").ParameterFolderExpanded = kTrue;
    }

    Network network;
    std::int16_t modified = 0;
    NetworkTree tree;
};

TEST_F(NetworkTreeTest, RebuildItemsKeysAndCaptions) {
    const TreeRebuildResult result = tree.RebuildNetworkTree(network, false);
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
    EXPECT_EQ(tree.Child(0, 1), 9); // the links a view walks
    EXPECT_EQ(tree.Child(6, 1), 8);
    EXPECT_EQ(tree.Item(8).Row, 1);
    EXPECT_THROW(tree.Child(2, 0), RuntimeError);

    tree.RebuildNetworkTree(network, true); // a file of its own, but unsaved changes
    EXPECT_EQ(tree.Caption(0), "demo. (modificato)");
    network.Saved = 0;
    network.FileName = "àbçd";
    tree.RebuildNetworkTree(network, false);
    EXPECT_EQ(tree.Caption(0), " (modificato)"); // four characters, not bytes
    network.FileName = "àbç";
    EXPECT_THROW(tree.RebuildNetworkTree(network, false), RuntimeError);
}

TEST_F(NetworkTreeTest, RebuildWalksAndFlags) {
    // A gap in the directions hides the later PDOs; NodeCount ends the slot walk.
    network.NodeAt(0).PdoAt(1).Direction = "NOTYPE";
    network.NodeCount = 1;
    tree.SetCollapseOnRebuild(1);
    tree.RebuildNetworkTree(network, false);
    EXPECT_EQ(tree.Size(), 7);
    EXPECT_FALSE(tree.Item(1).Expanded); // collapsed once...
    tree.RebuildNetworkTree(network, false);
    EXPECT_TRUE(tree.Item(1).Expanded); // ...then the stored flag again

    network.NodeCount = 3; // more than in use: the walk passes slot 500
    EXPECT_THROW(tree.RebuildNetworkTree(network, false), RuntimeError);
    EXPECT_EQ(tree.Size(), 10); // the items added before the error stay

    network = test::EmptyNetwork(); // no nodes: cleared again, node commands disabled
    const TreeRebuildResult empty = tree.RebuildNetworkTree(network, false);
    EXPECT_EQ(tree.Size(), 0);
    EXPECT_TRUE(empty.DisableNodeCommands);
    EXPECT_EQ(empty.SelectedItem, -1);
}

TEST_F(NetworkTreeTest, ExpandSelectAndActivate) {
    tree.RebuildNetworkTree(network, false);

    tree.OnItemExpanded(network, 1, false); // node item of slot 0
    tree.OnItemExpanded(network, 6, true);  // its "Parameter" folder
    tree.OnItemExpanded(network, 0, false); // the root: no "@", nothing stored
    EXPECT_EQ(network.NodeAt(0).Expanded, 0);
    EXPECT_EQ(network.NodeAt(0).ParameterFolderExpanded, kTrue);

    // What each item opens is pinned by the main window's tests; here what they leave out.
    EXPECT_EQ(tree.SelectItem(network, 2).Target.Kind, TreeTargetKind::Timeout);
    EXPECT_EQ(tree.SelectItem(network, 6).Target.Kind, TreeTargetKind::ParameterFolder);
    EXPECT_EQ(tree.ActivateItem(network, modified, 0).Target.Slot, -1);  // the root: edit node
    EXPECT_TRUE(tree.ActivateItem(network, modified, 10).RebuildOnOpen); // the time-out of slot 7

    // A node whose EDS name contains "pdo_" falls under the PDO rule and does not parse.
    network.NodeAt(7).EdsName = "pdo_io.eds";
    tree.RebuildNetworkTree(network, false);
    EXPECT_THROW(tree.ActivateItem(network, modified, 9), RuntimeError);
}

} // namespace
} // namespace velmora
