#include "eds/node_creation.h"
#include "model/network.h"
#include "model/text.h"
#include "session/workspace.h"
#include "support/app_fixture.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace velmora {
namespace {

// The objects that mappings name: two simple variables and a record.
const char* kObjects = "[6040]\nParameterName=Controlword\nObjectType=0x7\n"
                       "[6041]\nParameterName=Statusword\nObjectType=0x7\n"
                       "[2000]\nParameterName=Inputs\nObjectType=0x9\n"
                       "[2000sub1]\nParameterName=Input A\nObjectType=0x7\n"
                       "[2000sub2]\nParameterName=Input B\nObjectType=0x7\n";

// One PDO: its communication object (with sub-index 2) and its mapping object.
std::string PdoObjects(const std::string& comm, const std::string& map,
                       const std::vector<std::string>& entries, const std::string& count = "") {
    std::string text = "[" + comm + "]\nObjectType=0x9\n[" + comm + "sub2]\nDefaultValue=255\n" +
                       "[" + map + "]\nObjectType=0x9\n[" + map + "sub0]\nDefaultValue=" +
                       (count.empty() ? std::to_string(entries.size()) : count) + "\n";
    for (std::size_t i = 0; i < entries.size(); ++i) {
        text += "[" + map + "sub" + std::to_string(i + 1) + "]\nDefaultValue=" + entries[i] + "\n";
    }
    return text;
}

struct NodeCreation : ::testing::Test {
    test::AppFixture app;
    Network& net = app.Ws().Net;
};

TEST_F(NodeCreation, PdosInObjectOrderWithDefaults) {
    app.WriteEds("Drive.EDS", std::string(kObjects) + PdoObjects("1800", "1A00", {"0x60410010"}) +
                                  PdoObjects("1802", "1A02", {}) +
                                  PdoObjects("1400", "1600", {"0x60400010"}));
    EXPECT_TRUE(AddNodeFromEds(app.Ws().ForNodeImport(), "Drive.EDS", 4).empty());

    const Node& node = net.NodeAt(4);
    EXPECT_EQ(node.EdsName, "Drive");
    EXPECT_EQ(node.TxPdoCount, 2);
    EXPECT_EQ(node.RxPdoCount, 1);
    EXPECT_EQ(node.InUse + node.Expanded, 2 * kTrue);
    EXPECT_EQ(net.NodeCount, 0); // counting the node is the caller's

    // 0x1801 is missing: the PDO number is k, not the running count.
    const char* expected[] = {"TX 0 185", "TX 2 385", "RX 0 205"};
    for (int p = 0; p < 3; ++p) {
        const Pdo& pdo = node.PdoAt(p);
        EXPECT_EQ(pdo.Direction + " " + std::to_string(pdo.PdoNumber) + " " + pdo.DefaultCobId,
                  expected[p]);
        EXPECT_EQ(pdo.OwnerSlot, 4);
        EXPECT_EQ(pdo.Note, "Drive");
    }
    EXPECT_EQ(node.PdoAt(0).Settings.Mappings[0],
              (PdoMapping{"statusword", "6041", "0", "16", kTrue}));
    EXPECT_EQ(node.PdoAt(2).Settings.Mappings[0].Vcb, "controlword");
    EXPECT_EQ(node.PdoAt(3).Direction, "NOTYPE");
}

TEST_F(NodeCreation, WalkStopsAtElevenPdosOfEachDirection) {
    std::string text = kObjects;
    for (int k = 0; k < 12; ++k) {
        text += PdoObjects(HexText(0x1800 + k), HexText(0x1A00 + k), {"0x60410010"}) +
                PdoObjects(HexText(0x1400 + k), HexText(0x1600 + k), {});
    }
    app.WriteEds("twelve.eds", text);
    // Twelve TX and twelve RX PDOs are counted, eleven of each created, one message each.
    const ImportMessage expected{"Import Error", "Errore numero di pdo RX"};
    EXPECT_EQ(AddNodeFromEds(app.Ws().ForNodeImport(), "twelve", 1),
              (std::vector<ImportMessage>{expected, expected}));
    const Node& node = net.NodeAt(1);
    EXPECT_EQ(node.TxPdoCount, 12);
    EXPECT_EQ(node.RxPdoCount, 12);
    // k = 10 looks for mapping object 0x1A010: the eleventh PDO has no default mapping.
    EXPECT_EQ(node.PdoAt(10).PdoNumber, 10);
    EXPECT_EQ(node.PdoAt(10).Settings.MappingCount, 0);
    EXPECT_EQ(node.PdoAt(11).Direction, "NOTYPE"); // never created
    EXPECT_EQ(node.PdoAt(12).Direction, "RX");     // RX starts at TxPdoCount
}

TEST_F(NodeCreation, DefaultMappingNamesAndEntries) {
    app.WriteEds(
        "io.eds",
        std::string(kObjects) +
            PdoObjects("1800", "1A00",
                       {"0x60410010", "0x60410010", "0x60410010", "0x60400010", "0x60400010"}) +
            PdoObjects("1801", "1A01", {"0x20000208", "0x20000108", "0x20000108"}, "0x04") +
            PdoObjects("1802", "1A02", {"0x60410010"}, "99"));
    AddNodeFromEds(app.Ws().ForNodeImport(), "io.eds", 2);
    const Node& node = net.NodeAt(2);

    const PdoSettings& first = node.PdoAt(0).Settings;
    ASSERT_EQ(first.MappingCount, 5);
    const char* names[] = {"statusword", "statusword # 0", "statusword # 1", "controlword",
                           "controlword # 0"};
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(first.Mappings[static_cast<std::size_t>(i)].Vcb, names[i]);
    }

    // A record's entries take the sub-object's name; a missing sub-entry gives an empty one.
    const PdoSettings& second = node.PdoAt(1).Settings;
    ASSERT_EQ(second.MappingCount, 4);
    EXPECT_EQ(second.Mappings[0], (PdoMapping{"input b", "2000", "2", "8", kTrue}));
    EXPECT_EQ(second.Mappings[1].Vcb, "input a");
    EXPECT_EQ(second.Mappings[3], (PdoMapping{"", "", "0", "0", kTrue}));
    EXPECT_EQ(second.Mappings[4], PdoMapping{});

    // A count above eleven is kept at eleven.
    EXPECT_EQ(node.PdoAt(2).Settings.MappingCount, 11);
}

TEST_F(NodeCreation, ANodeWithoutPdosStillNamesItsSlotForLoading) {
    app.WriteEds("none.eds", "[1000]\nParameterName=Device Type\n");
    EXPECT_TRUE(AddNodeFromEds(app.Ws().ForNodeImport(), "none.eds", 7).empty());
    // The configuration file puts a node back into the slot that its PDO 0 names.
    EXPECT_EQ(net.NodeAt(7).PdoAt(0).OwnerSlot, 7);
}

} // namespace
} // namespace velmora
