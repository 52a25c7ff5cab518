#include "model/network.h"
#include "model/runtime_error.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

// Fills every PDO, mapping and parameter of a node, the last entries included.
void Scribble(Node& node) {
    node.EdsName = "drive";
    node.InUse = kTrue;
    node.repetitions = 3;
    for (auto& pdo : node.Pdos) {
        pdo.Used = kTrue;
        pdo.Direction = "TX";
        pdo.Settings.Bytes = "8";
        for (auto& mapping : pdo.Settings.Mappings) {
            mapping = {"v", "6040", "0", "16", kTrue};
        }
    }
    for (auto& parameter : node.Parameters) {
        parameter = {"p", "6060", "0", "1", "1", kTrue};
    }
}

TEST(Network, ClearNodeResetsListedFieldsAndLeavesTheLastEntries) {
    Network network;
    Scribble(network.NodeAt(7));
    ClearNode(network, 7);
    const Node& node = network.NodeAt(7);

    EXPECT_EQ(node.EdsName, "");
    EXPECT_EQ(node.InUse, 0);
    EXPECT_EQ(node.repetitions, 3); // not part of the reset
    const Pdo& pdo = node.PdoAt(kLastPdo - 1);
    EXPECT_EQ(pdo.Used, 0);
    EXPECT_EQ(pdo.Direction, "NOTYPE");
    EXPECT_EQ(pdo.Settings.Mode, "Non configurato");
    EXPECT_EQ(pdo.Settings.CobId, "0");
    EXPECT_EQ(pdo.Settings.Bytes, "8"); // not listed, kept
    EXPECT_EQ(pdo.OwnerSlot, -1);
    EXPECT_EQ(pdo.PdoNumber, -1);
    EXPECT_EQ(pdo.Settings.Mappings[9].Used, 0);
    EXPECT_EQ(pdo.Settings.Mappings[9].Vcb, "v");
    EXPECT_EQ(pdo.Settings.Mappings[kLastMapping].Used, kTrue);
    EXPECT_EQ(node.Pdos[kLastPdo].Used, kTrue);
    EXPECT_EQ(node.Parameters[99].Used, 0);
    EXPECT_EQ(node.Parameters[99].Value, "");
    EXPECT_EQ(node.Parameters[99].Name, "p");
    EXPECT_EQ(node.Parameters[kLastParameter].Value, "1");
}

TEST(Network, NewNetworkEmptiesAllButSlot500AndKeepsOtherExportSettings) {
    Network network;
    SetExportExtension(network);
    Scribble(network.NodeAt(0));
    Scribble(network.NodeAt(kLastSlot));
    network.ExportSettings.RxPdoCount = 9;
    network.NodeCount = 2;
    network.Saved = kTrue;

    NewNetwork(network, "/opt/velmora");

    EXPECT_EQ(network.NodeCount, 0);
    EXPECT_EQ(network.Saved, 0);
    EXPECT_EQ(network.ChannelCheck, kTrue);
    EXPECT_EQ(CurrentFileName(network), "Senza nome.eds");
    EXPECT_EQ(network.DefaultFilePath(), "/opt/velmora/none.cop");
    EXPECT_EQ(network.MaxFastPdo(), 10);
    EXPECT_EQ(network.ExportSettings.RxPdoCount, 9);
    EXPECT_EQ(network.NodeAt(0).InUse, 0);
    EXPECT_EQ(network.NodeAt(kLastSlot).EdsName, "drive");
}

TEST(Network, EveryIndexIsCheckedAndCopiesAreDeep) {
    Network network;
    Node& node = network.NodeAt(kLastSlot);
    EXPECT_THROW(network.NodeAt(-1), RuntimeError);
    EXPECT_THROW(network.NodeAt(501), RuntimeError);
    EXPECT_THROW(node.PdoAt(51), RuntimeError);
    EXPECT_THROW(node.ParameterAt(101), RuntimeError);
    EXPECT_THROW(node.PdoAt(0).Settings.MappingAt(11), RuntimeError);

    Scribble(network.NodeAt(4));
    Network copy = network;
    EXPECT_EQ(copy, network);
    copy.NodeAt(4).Pdos[3].Settings.Mappings[2].Length = "32";
    EXPECT_NE(copy, network);
}

} // namespace
} // namespace velmora
