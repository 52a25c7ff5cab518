// A few real EDS files with known content; the whole corpus runs under the "corpus" label.

#include "eds/eds_object_table.h"
#include "eds/eds_reader.h"
#include "eds/node_creation.h"
#include "session/workspace.h"

#include <filesystem>
#include <string>

#include <gtest/gtest.h>

namespace velmora {
namespace {

const std::string kCorpus = VELMORA_CORPUS_DIR;

bool HaveCorpus() {
    return std::filesystem::exists(kCorpus + "/eds/elmo_gold.eds");
}

TEST(RealEdsFiles, CommentLineTakenForASection) {
    if (!HaveCorpus()) {
        GTEST_SKIP() << "no corpus at " << kCorpus;
    }
    EdsObjectTable table;
    LoadEds(table, kCorpus + "/eds/", "elmo_gold");
    // "Line7=3. 6075, 6076, 603F  60C4 sub 6, ..." in [Comments] holds "sub": index 0,
    // sub-index 0, stored before [1000].
    EXPECT_EQ(GetEdsObject(table, 2).IndexText + "/" + GetEdsObject(table, 2).SubIndexText, "0/0");
    EXPECT_EQ(GetEdsObjectCount(table), 512);
}

TEST(RealEdsFiles, NodesWithTheirDefaultMappings) {
    if (!HaveCorpus()) {
        GTEST_SKIP() << "no corpus at " << kCorpus;
    }
    Workspace workspace;
    workspace.AppDirectory = kCorpus;
    EXPECT_TRUE(
        AddNodeFromEds(workspace.ForNodeImport(), "canopeneditor_demo_drive.eds", 9).empty());
    const Node& drive = workspace.Net.NodeAt(9);
    EXPECT_EQ(drive.TxPdoCount, 2);
    EXPECT_EQ(drive.RxPdoCount, 1);
    const PdoSettings& tx0 = drive.PdoAt(0).Settings;
    ASSERT_EQ(tx0.MappingCount, 3);
    EXPECT_EQ(tx0.Mappings[0], (PdoMapping{"statusword", "6041", "0", "16", kTrue}));
    EXPECT_EQ(drive.PdoAt(2).Settings.Mappings[2].Vcb, "bremse aktiv");
}

} // namespace
} // namespace velmora
