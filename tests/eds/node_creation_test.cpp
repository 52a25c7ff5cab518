#include "eds/node_creation.h"
#include "model/network.h"
#include "model/workspace.h"
#include "storage/configuration_file.h"
#include "support/temp_dir.h"

#include <filesystem>
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

std::string Hex2(int k) {
    const char* digits = "0123456789ABCDEF";
    return std::string{digits[k / 16], digits[k % 16]};
}

class NodeCreation : public ::testing::Test {
protected:
    NodeCreation() {
        workspace_.AppDirectory = dir_.Path();
        workspace_.Net.ExportExtension = ".cop";
        NewNetwork(workspace_.Net, workspace_.AppDirectory);
        std::filesystem::create_directory(dir_.File("eds"));
    }

    void WriteEds(const std::string& name, const std::string& text) {
        test::WriteFileBytes(dir_.File("eds/" + name), text);
    }

    test::TempDir dir_;
    Workspace workspace_;
};

TEST_F(NodeCreation, PdosInObjectOrderWithDefaults) {
    WriteEds("Drive.EDS", std::string(kObjects) + PdoObjects("1800", "1A00", {"0x60410010"}) +
                              PdoObjects("1802", "1A02", {}) +
                              PdoObjects("1400", "1600", {"0x60400010"}));
    const auto messages = AddNodeFromEds(workspace_, "Drive.EDS", 4);
    EXPECT_TRUE(messages.empty());

    const Node& node = workspace_.Net.NodeAt(4);
    EXPECT_EQ(node.EdsName, "Drive");
    EXPECT_EQ(node.TxPdoCount, 2);
    EXPECT_EQ(node.RxPdoCount, 1);
    EXPECT_EQ(node.InUse, kTrue);
    EXPECT_EQ(node.Expanded, kTrue);
    EXPECT_EQ(node.ParameterCount, 0);
    EXPECT_EQ(workspace_.Net.NodeCount, 0); // counting the node is the caller's

    const char* directions[] = {"TX", "TX", "RX"};
    const int numbers[] = {0, 2, 0}; // 0x1801 is missing: k, not the running count
    const char* cobIds[] = {"185", "385", "205"};
    for (int p = 0; p < 3; ++p) {
        const Pdo& pdo = node.PdoAt(p);
        EXPECT_EQ(pdo.Direction, directions[p]);
        EXPECT_EQ(pdo.PdoNumber, numbers[p]);
        EXPECT_EQ(pdo.DefaultCobId, cobIds[p]);
        EXPECT_EQ(pdo.OwnerSlot, 4);
        EXPECT_EQ(pdo.Note, "Drive");
        EXPECT_EQ(pdo.Block, PdoFlagBlock{});
        EXPECT_EQ(pdo.Settings.Mode, "Non configurato");
    }
    EXPECT_EQ(node.PdoAt(0).Settings.MappingCount, 1);
    EXPECT_EQ(node.PdoAt(0).Settings.Mappings[0],
              (PdoMapping{"statusword", "6041", "0", "16", kTrue}));
    EXPECT_EQ(node.PdoAt(1).Settings.MappingCount, 0);
    EXPECT_EQ(node.PdoAt(2).Settings.Mappings[0].Vcb, "controlword");
    EXPECT_EQ(node.PdoAt(3).Direction, "NOTYPE");
}

TEST_F(NodeCreation, WalkStopsAtElevenPdos) {
    std::string eleven = kObjects;
    for (int k = 0; k < 11; ++k) {
        eleven += PdoObjects("18" + Hex2(k), "1A" + Hex2(k), {"0x60410010"});
    }
    WriteEds("eleven.eds", eleven);
    EXPECT_TRUE(AddNodeFromEds(workspace_, "eleven.eds", 0).empty());
    const Node& node = workspace_.Net.NodeAt(0);
    EXPECT_EQ(node.TxPdoCount, 11);
    EXPECT_EQ(node.PdoAt(9).Settings.MappingCount, 1);
    // k = 10 looks for mapping object 0x1A010: the eleventh PDO has no default mapping.
    EXPECT_EQ(node.PdoAt(10).PdoNumber, 10);
    EXPECT_EQ(node.PdoAt(10).DefaultCobId, "B81");
    EXPECT_EQ(node.PdoAt(10).Settings.MappingCount, 0);

    // Twelve TX and twelve RX PDOs are counted, eleven of each created, one message each.
    std::string twelve = eleven + PdoObjects("180B", "1A0B", {});
    for (int k = 0; k < 12; ++k) {
        twelve += PdoObjects("14" + Hex2(k), "16" + Hex2(k), {});
    }
    WriteEds("twelve.eds", twelve);
    const auto messages = AddNodeFromEds(workspace_, "twelve", 1);
    const ImportMessage expected{"Import Error", "Errore numero di pdo RX"};
    EXPECT_EQ(messages, (std::vector<ImportMessage>{expected, expected}));
    const Node& big = workspace_.Net.NodeAt(1);
    EXPECT_EQ(big.TxPdoCount, 12);
    EXPECT_EQ(big.RxPdoCount, 12);
    EXPECT_EQ(big.PdoAt(10).PdoNumber, 10);
    EXPECT_EQ(big.PdoAt(11).Direction, "NOTYPE"); // never created
    EXPECT_EQ(big.PdoAt(12).Direction, "RX");     // RX starts at TxPdoCount
    EXPECT_EQ(big.PdoAt(22).PdoNumber, 10);
    EXPECT_EQ(big.PdoAt(23).Direction, "NOTYPE");
}

TEST_F(NodeCreation, DefaultMappingNamesAndEntries) {
    WriteEds(
        "io.eds",
        std::string(kObjects) +
            PdoObjects("1800", "1A00",
                       {"0x60410010", "0x60410010", "0x60410010", "0x60400010", "0x60400010"}) +
            PdoObjects("1801", "1A01", {"0x20000208", "0x20000108", "0x20000108"}, "0x04") +
            PdoObjects("1802", "1A02", {"0x60410010"}, "99"));
    AddNodeFromEds(workspace_, "io.eds", 2);
    const Node& node = workspace_.Net.NodeAt(2);

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
    EXPECT_EQ(second.Mappings[2].Vcb, "input a # 0");
    EXPECT_EQ(second.Mappings[3], (PdoMapping{"", "", "0", "0", kTrue}));
    EXPECT_EQ(second.Mappings[4], PdoMapping{});

    // A count above eleven is kept at eleven.
    EXPECT_EQ(node.PdoAt(2).Settings.MappingCount, 11);
    EXPECT_EQ(node.PdoAt(2).Settings.Mappings[10].Used, kTrue);
}

TEST_F(NodeCreation, CreatedNodesSaveAndLoadBack) {
    WriteEds("none.eds", "[1000]\nParameterName=Device Type\n");
    WriteEds("drive.eds", std::string(kObjects) + PdoObjects("1800", "1A00", {"0x60410010"}) +
                              PdoObjects("1400", "1600", {"0x60400010"}));
    AddNodeFromEds(workspace_, "none.eds", 7); // no PDOs at all
    AddNodeFromEds(workspace_, "drive.eds", 3);
    workspace_.Net.NodeCount = 2;
    EXPECT_EQ(workspace_.Net.NodeAt(7).PdoAt(0).OwnerSlot, 7);

    SaveConfiguration(workspace_.Net, dir_.Folder(), "rete.nodi");
    Workspace loaded;
    loaded.AppDirectory = dir_.Path();
    loaded.Net.ExportExtension = ".cop";
    LoadConfiguration(loaded, dir_.Folder(), "rete.nodi");
    EXPECT_EQ(loaded.Net.NodeCount, 2);
    EXPECT_EQ(loaded.Net.NodeAt(7), workspace_.Net.NodeAt(7));
    EXPECT_EQ(loaded.Net.NodeAt(3), workspace_.Net.NodeAt(3));
}

} // namespace
} // namespace velmora
