// Every real EDS file of the corpus, end to end: loaded, turned into a node, saved and
// loaded back.

#include "eds/node_creation.h"
#include "model/runtime_error.h"
#include "session/workspace.h"
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

TEST(EdsCorpus, EveryFileBuildsANodeOrStopsAtALimit) {
    const std::string corpus = VELMORA_CORPUS_DIR;
    std::vector<std::string> names;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(corpus + "/eds", error)) {
        names.push_back(entry.path().filename().string());
    }
    if (names.empty()) {
        GTEST_SKIP() << "no corpus at " << corpus;
    }
    std::sort(names.begin(), names.end());
    // Files known to break a limit of the reader (a section of more than 100 lines).
    const std::set<std::string> expectedToStop = {"sevcon_gen4.eds"};

    test::TempDir dir;
    Workspace workspace;
    // The corpus folder is the EDS folder of an application folder above it.
    workspace.AppDirectory = corpus;
    SetExportExtension(workspace.Net);
    NewNetwork(workspace.Net, workspace.AppDirectory);
    int slot = 0;
    for (const std::string& name : names) {
        SCOPED_TRACE(name);
        try {
            AddNodeFromEds(workspace.ForNodeImport(), name, slot);
        } catch (const RuntimeError& stop) {
            EXPECT_EQ(expectedToStop.count(name), 1u) << stop.what();
            EXPECT_NE(std::string(stop.what()).find("supera le 100 righe"), std::string::npos);
            continue;
        }
        EXPECT_EQ(expectedToStop.count(name), 0u);
        ++workspace.Net.NodeCount;
        ++slot;
    }

    // Saved and loaded back, every node comes back into its slot unchanged.
    SaveConfiguration(workspace.Net, dir.Folder(), "corpus.nodi");
    Workspace loaded;
    loaded.AppDirectory = corpus;
    SetExportExtension(loaded.Net);
    LoadIntoWorkspace(loaded, dir.Folder(), "corpus.nodi");
    EXPECT_EQ(loaded.Net.NodeCount, slot);
    for (int s = 0; s < slot; ++s) {
        EXPECT_TRUE(loaded.Net.NodeAt(s) == workspace.Net.NodeAt(s)) << "slot " << s;
    }
}

} // namespace
} // namespace velmora
