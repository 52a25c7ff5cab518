// Writes valid inputs into the folder named on the command line, one subfolder per fuzzer
// (named after it), as starting points: random bytes rarely get past a 15304-byte format
// mark.

#include "model/workspace.h"
#include "storage/configuration_file.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>

namespace {

void Write(const velmora::Network& network, const std::filesystem::path& path) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    velmora::WriteConfiguration(network, file);
}

} // namespace

int main(int argc, char* argv[]) {
    if (argc != 2) {
        std::cerr << "uso: make_fuzz_seeds CARTELLA\n";
        return 1;
    }
    const std::filesystem::path folder = std::filesystem::path(argv[1]) / "configuration_loader";
    std::filesystem::create_directories(folder);
    velmora::Workspace workspace;
    workspace.Net.ExportExtension = ".cop";
    velmora::NewNetwork(workspace.Net, "/opt/velmora");
    Write(workspace.Net, folder / "empty.nodi");

    for (int slot : {4, 9}) {
        velmora::Node& node = workspace.Net.NodeAt(slot);
        node.InUse = velmora::kTrue;
        node.Configured = velmora::kTrue;
        node.EdsName = "drive";
        node.TxPdoCount = 1;
        node.RxPdoCount = 1;
        node.PdoAt(0).Direction = "TX";
        node.PdoAt(0).Settings.Mode = "Fast";
        node.PdoAt(1).Direction = "RX";
        node.PdoAt(1).Settings.Mode = "Slow";
        node.PdoAt(0).Settings.Mappings[0] = {"Posizione", "6064", "0", "32", velmora::kTrue};
        for (auto& pdo : node.Pdos) {
            pdo.OwnerSlot = static_cast<std::int16_t>(slot);
        }
    }
    workspace.Net.NodeCount = 2;
    Write(workspace.Net, folder / "two_nodes.nodi");
    return 0;
}
