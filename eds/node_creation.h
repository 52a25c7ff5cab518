#pragma once

// Node creation from an EDS file: the node's PDO counts, one Pdo per PDO the EDS describes,
// each with its default COB-ID and the default mapping read from the EDS mapping objects.
// The add-node command drives AddNodeFromEds; the insertion of a node from the product
// library and the node paste reuse ImportEdsPdos.

#include "model/network.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

class EdsObjectTable;

// What node creation works on: the network it adds to, the EDS object table it loads each
// node's EDS into, and the folder of the EDS files (with its trailing separator).
struct NodeImport {
    Network& Net;
    EdsObjectTable& Eds;
    std::string EdsDirectory;
};

// A message box shown during the import: the GUI shows it, velmora-cli prints it as a
// warning and goes on.
struct ImportMessage {
    std::string Title;
    std::string Text;

    bool operator==(const ImportMessage&) const = default;
};

// The mapping table of a PDO as DefaultMappingFromEds builds it.
struct DefaultMapping {
    std::int16_t MappingCount = 0;
    std::array<PdoMapping, kLastMapping + 1> Mappings{};
};

// Loads edsName from the EDS folder, counts its PDOs (CountEdsPdos) and imports them into
// slot (0..500). The slot is not cleared first; NodeCount is the caller's. A file error of
// LoadEds stops the creation.
std::vector<ImportMessage> AddNodeFromEds(const NodeImport& target, const std::string& edsName,
                                          int slot);

// Fills the node fields of slot (EdsName = edsName up to its first ".", the counts, no
// parameters, InUse and Expanded set, PDO 0's OwnerSlot = slot even when there is no PDO),
// then walks the TX PDOs (0x1800 + k with 0x1A00 + k, both found as main objects in the
// loaded table) and the RX PDOs (0x1400 + k with 0x1600 + k), creating them at positions
// 0, 1, ... and txCount, txCount + 1, .... Each walk stops when it has the counted number or
// when k reaches 11 with PDOs still missing: then "Errore numero di pdo RX" (also for the
// TX walk), titled "Import Error", is returned, and the node keeps the PDOs created so far
// with its counts uncorrected.
std::vector<ImportMessage> ImportEdsPdos(const NodeImport& target, const std::string& edsName,
                                         int txCount, int rxCount, int slot);

// One PDO at position of slot: Direction, OwnerSlot = slot, PdoNumber = k, Note = the node's
// EdsName, DefaultCobId from ComputeDefaultCobId with a cleared five-value block, and the
// mapping table from DefaultMappingFromEds(EdsName + ".eds", direction, k).
void CreatePdoFromEds(const NodeImport& target, int slot, int position, int k,
                      std::string_view direction);

// Loads edsFileName again and reads the default mapping of PDO k: the mapping object is
// "1a0" (TX) or "160" (RX) followed by k in decimal, read as hexadecimal (k = 10 gives
// 0x1A010, which no EDS holds: the eleventh PDO gets no default mapping). Its sub-index 0
// gives the number n of entries (kept within 0..11); entry i comes from sub-index i's
// DefaultValue "0xIIIISSLL": ObjectIndex characters 3..6 as they stand, SubIndex and Length
// (bits) read as hexadecimal and written in decimal, Used -1. Vcb is the mapped object's
// name: the main object's when the first entry of its index is a simple variable (object
// type 7), else the sub-object's; a name equal to the previous entry's gets " #" and a
// running number (" # 0", " # 1", ...) that restarts when the name changes.
DefaultMapping DefaultMappingFromEds(const NodeImport& target, const std::string& edsFileName,
                                     std::string_view direction, int k);

} // namespace velmora
