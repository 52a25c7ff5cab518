// Every real EDS file of the corpus, end to end: loaded, turned into a node, saved and
// loaded back.

#include "eds/eds_object_table.h"
#include "eds/eds_reader.h"
#include "eds/node_creation.h"
#include "model/runtime_error.h"
#include "model/workspace.h"
#include "storage/configuration_file.h"
#include "support/temp_dir.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace velmora {
namespace {

std::string CorpusFolder() {
    return std::string(VELMORA_CORPUS_DIR) + "/eds/";
}

std::vector<std::string> CorpusFiles() {
    std::vector<std::string> names;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(CorpusFolder(), error)) {
        if (entry.path().extension() == ".eds") {
            names.push_back(entry.path().filename().string());
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

TEST(EdsCorpus, EveryFileLoadsOrStopsAtALimit) {
    const std::vector<std::string> names = CorpusFiles();
    if (names.empty()) {
        GTEST_SKIP() << "no corpus at " << CorpusFolder();
    }
    // Files known to break a limit of the reader.
    const std::set<std::string> expectedToStop = {"sevcon_gen4.eds"};
    EdsObjectTable table;
    for (const std::string& name : names) {
        SCOPED_TRACE(name);
        try {
            LoadEds(table, CorpusFolder(), name);
            EXPECT_EQ(expectedToStop.count(name), 0u);
            EXPECT_GE(table.EdsObjectCount(), 2);
        } catch (const RuntimeError& error) {
            EXPECT_EQ(expectedToStop.count(name), 1u) << error.what();
            EXPECT_EQ(error.Code(), ErrorCode::SubscriptOutOfRange);
            const std::string message = error.what();
            EXPECT_TRUE(message.find("supera le 100 righe") != std::string::npos ||
                        message.find("sezioni di oggetti") != std::string::npos)
                << message;
        }
        const EdsPdoCounts counts = CountEdsPdos(table);
        EXPECT_LE(counts.txCount, 17);
        EXPECT_LE(counts.rxCount, 17);
    }
}

TEST(EdsCorpus, NodesFromEveryFileSaveAndLoadBack) {
    const std::vector<std::string> names = CorpusFiles();
    if (names.empty()) {
        GTEST_SKIP() << "no corpus at " << CorpusFolder();
    }
    test::TempDir dir;
    Workspace workspace;
    // The corpus folder is the EDS folder of an application folder above it.
    workspace.AppDirectory = VELMORA_CORPUS_DIR;
    workspace.Net.ExportExtension = ".cop";
    NewNetwork(workspace.Net, workspace.AppDirectory);

    int slot = 0;
    for (const std::string& name : names) {
        SCOPED_TRACE(name);
        try {
            AddNodeFromEds(workspace, name, slot);
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.Code(), ErrorCode::SubscriptOutOfRange) << error.what();
            ClearNode(workspace.Net, slot);
            continue;
        }
        const Node& node = workspace.Net.NodeAt(slot);
        EXPECT_EQ(node.PdoAt(0).OwnerSlot, slot);
        for (int p = 0; p < node.TxPdoCount + node.RxPdoCount && p <= kLastPdo; ++p) {
            const Pdo& pdo = node.PdoAt(p);
            if (pdo.Direction == "TX" || pdo.Direction == "RX") {
                EXPECT_EQ(pdo.OwnerSlot, slot);
                EXPECT_LE(pdo.Settings.MappingCount, 11);
            }
        }
        ++workspace.Net.NodeCount;
        ++slot;
    }
    ASSERT_GT(slot, 0);

    SaveConfiguration(workspace.Net, dir.Folder(), "corpus.nodi");
    Workspace loaded;
    loaded.AppDirectory = VELMORA_CORPUS_DIR;
    loaded.Net.ExportExtension = ".cop";
    LoadConfiguration(loaded, dir.Folder(), "corpus.nodi");
    EXPECT_EQ(loaded.Net.NodeCount, slot);
    for (int s = 0; s < slot; ++s) {
        EXPECT_TRUE(loaded.Net.NodeAt(s) == workspace.Net.NodeAt(s)) << "slot " << s;
    }
}

} // namespace
} // namespace velmora
