// Writes valid inputs into the folder named on the command line, one subfolder per fuzzer
// (named after it), as starting points: random bytes rarely get past a 15304-byte format
// mark.

#include "library/product_file.h"
#include "session/workspace.h"
#include "storage/configuration_file.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>

namespace {

constexpr const char* kSmallEds =
    "[FileInfo]\r\nFileName=drive.eds\r\n[DeviceInfo]\r\nGranularity=8\r\n"
    "[1400]\r\nParameterName=RPDO1 communication\r\nObjectType=0x9\r\nSubNumber=3\r\n"
    "[1400sub1]\r\nParameterName=COB-ID\r\nDataType=0x0007\r\nAccessType=rw\r\n"
    "DefaultValue=$NODEID+0x200\r\nPDOMapping=0\r\n"
    "[1600]\r\nParameterName=RPDO1 mapping\r\nObjectType=0x9\r\n"
    "[1600sub0]\r\nParameterName=Number\r\nDefaultValue=1\r\n"
    "[1600sub1]\r\nParameterName=Map 1\r\nDefaultValue=0x60400010\r\n"
    "[1800]\r\nParameterName=TPDO1 communication\r\nObjectType=0x9\r\n"
    "[1800sub2]\r\nParameterName=Transmission type\r\nDefaultValue=255\r\n"
    "[1A00]\r\nParameterName=TPDO1 mapping\r\nObjectType=0x9\r\n"
    "[1A00sub0]\r\nDefaultValue=2\r\n[1A00sub1]\r\nDefaultValue=0x60410010\r\n"
    "[1A00sub2]\r\nDefaultValue=0x60640020\r\n"
    "[6040]\r\nParameterName=Controlword\r\nObjectType=0x7\r\nDataType=0x0006\r\n"
    "AccessType=rw\r\nPDOMapping=1\r\n"
    "[6041]\r\nParameterName=Statusword\r\nObjectType=0x7\r\nDataType=0x0006\r\n"
    "AccessType=ro\r\nPDOMapping=1\r\n"
    "[6064]\r\nParameterName=Position actual value\r\nObjectType=0x7\r\n"
    "DataType=0x0004\r\nAccessType=ro\r\nPDOMapping=1\r\nHighLimit=0x7FFFFFFF\r\n";

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
    velmora::SetExportExtension(workspace.Net);
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

    // The configured node of slot 4 as a product of the library.
    const std::filesystem::path library = std::filesystem::path(argv[1]) / "library_reader";
    std::filesystem::create_directories(library);
    const std::string product = velmora::ProductFileBytes(workspace.Net.NodeAt(4));
    std::ofstream(library / "drive.libs", std::ios::binary) << product;

    // A small EDS with a TX and an RX PDO and their default mappings.
    const std::filesystem::path eds = std::filesystem::path(argv[1]) / "eds_reader";
    std::filesystem::create_directories(eds);
    std::ofstream(eds / "drive.eds", std::ios::binary) << kSmallEds;
    return 0;
}
