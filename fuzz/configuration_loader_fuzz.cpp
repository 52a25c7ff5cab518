// Feeds arbitrary bytes to the configuration-file loader as if they were a ".nodi" file.
// Every outcome but a RuntimeError or a clean load is a bug, and so is a RuntimeError that
// leaves the network changed.

#include "model/runtime_error.h"
#include "session/workspace.h"
#include "storage/configuration_file.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // One workspace for the whole run: every load starts by emptying the network anyway.
    static velmora::Workspace* workspace = [] {
        auto* created = new velmora::Workspace;
        created->AppDirectory = "/opt/velmora";
        velmora::SetExportExtension(created->Net);
        return created;
    }();
    std::istringstream in(std::string(reinterpret_cast<const char*>(data), size));
    // What the last successful load left; the slots are too large to copy for every input.
    const std::int16_t nodeCount = workspace->Net.NodeCount;
    const velmora::Node settings = workspace->Net.ExportSettings;
    try {
        velmora::LoadConfiguration(workspace->Net, workspace->AppDirectory, in, "/fuzz/",
                                   "input.nodi");
    } catch (const velmora::RuntimeError&) {
        if (workspace->Net.NodeCount != nodeCount ||
            !(workspace->Net.ExportSettings == settings)) {
            std::abort();
        }
        return 0;
    }
    try {
        // What loaded must save again without trouble, or fail with a run-time error.
        std::ostringstream out;
        velmora::WriteConfiguration(workspace->Net, out);
    } catch (const velmora::RuntimeError&) {
    }
    return 0;
}
