// Save and load of a full configuration: 501 nodes whose records are filled to the last of
// their 15304 bytes.

#include "session/workspace.h"
#include "storage/configuration_file.h"
#include "storage/record_io.h"

#include <filesystem>
#include <memory>

#include <benchmark/benchmark.h>

namespace {

using namespace velmora;

// Gives every string of the node two characters and the rest of the record to EdsName.
void FillToTheLimit(Node& node, int slot) {
    auto fill = [](std::string& text) { text = "ab"; };
    node.InUse = kTrue;
    node.Configured = kTrue;
    for (Pdo& pdo : node.Pdos) {
        fill(pdo.DefaultCobId);
        fill(pdo.Note);
        fill(pdo.Direction);
        PdoSettings& s = pdo.Settings;
        for (std::string* text :
             {&s.CobId, &s.EventTime, &s.InhibitTime, &s.Comm, &s.Mode, &s.Bytes}) {
            fill(*text);
        }
        for (PdoMapping& mapping : s.Mappings) {
            for (std::string* text :
                 {&mapping.Vcb, &mapping.ObjectIndex, &mapping.SubIndex, &mapping.Length}) {
                fill(*text);
            }
        }
        pdo.OwnerSlot = static_cast<std::int16_t>(slot);
    }
    for (NodeParameter& parameter : node.Parameters) {
        for (std::string* text : {&parameter.Name, &parameter.ObjectIndex, &parameter.SubIndex,
                                  &parameter.ByteCount, &parameter.Value}) {
            fill(*text);
        }
    }
    RecordWriter probe(100000);
    WriteNodeRecord(probe, node);
    node.EdsName.append(kConfigurationRecordLength - probe.Used(), 'n');
}

std::unique_ptr<Workspace> FullNetwork() {
    auto workspace = std::make_unique<Workspace>();
    workspace->AppDirectory = "/opt/velmora";
    SetExportExtension(workspace->Net);
    NewNetwork(workspace->Net, workspace->AppDirectory);
    for (int slot = 0; slot <= kLastSlot; ++slot) {
        FillToTheLimit(workspace->Net.NodeAt(slot), slot);
    }
    workspace->Net.NodeCount = kLastSlot + 1;
    return workspace;
}

std::string BenchFolder() {
    const auto folder = std::filesystem::temp_directory_path() / "velmora-bench";
    std::filesystem::create_directories(folder);
    return folder.string() + "/";
}

void BM_SaveFullNetwork(benchmark::State& state) {
    auto workspace = FullNetwork();
    const std::string folder = BenchFolder();
    for (auto _ : state) {
        SaveConfiguration(workspace->Net, folder, "full.nodi");
    }
    state.SetBytesProcessed(state.iterations() * 503 * kConfigurationRecordLength);
}
BENCHMARK(BM_SaveFullNetwork)->Unit(benchmark::kMillisecond);

void BM_LoadFullNetwork(benchmark::State& state) {
    const std::string folder = BenchFolder();
    SaveConfiguration(FullNetwork()->Net, folder, "full.nodi");
    auto workspace = std::make_unique<Workspace>();
    workspace->AppDirectory = "/opt/velmora";
    for (auto _ : state) {
        LoadIntoWorkspace(*workspace, folder, "full.nodi");
        benchmark::DoNotOptimize(workspace->Net.NodeCount);
    }
    state.SetBytesProcessed(state.iterations() * 503 * kConfigurationRecordLength);
}
BENCHMARK(BM_LoadFullNetwork)->Unit(benchmark::kMillisecond);

} // namespace
