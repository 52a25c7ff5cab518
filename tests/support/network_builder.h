#pragma once

// Builds test networks by filling the records directly, as node creation and the editors
// would: nodes with n TX and m RX PDOs, mappings and parameters. Header-only and free of
// GoogleTest, so the benchmarks use it too.

#include "model/network.h"
#include "model/text.h"
#include "model/transmission_mode.h"

#include <string>
#include <string_view>

namespace velmora::test {

// A new, empty network as start-up makes it.
inline Network EmptyNetwork(std::string_view appDirectory = "/app") {
    Network network;
    SetExportExtension(network);
    NewNetwork(network, appDirectory);
    return network;
}

// Puts an in-use, configured node into a free slot with txCount TX PDOs (entries
// 0..txCount-1) and rxCount RX PDOs after them, all used, in the given mode, with default
// COB-IDs and empty mapping tables; NodeCount grows by one.
inline Node& AddNode(Network& network, int slot, int txCount, int rxCount,
                     std::string_view mode = TransmissionMode::Slow,
                     std::string_view edsName = "drive.eds") {
    Node& node = network.NodeAt(slot);
    node.EdsName = edsName;
    node.InUse = kTrue;
    node.Configured = kTrue;
    node.TxPdoCount = static_cast<std::int16_t>(txCount);
    node.RxPdoCount = static_cast<std::int16_t>(rxCount);
    node.Pdos[0].OwnerSlot = static_cast<std::int16_t>(slot); // where loading puts it back
    for (int p = 0; p < txCount + rxCount; ++p) {
        Pdo& pdo = node.PdoAt(p);
        const bool tx = p < txCount;
        const int number = tx ? p : p - txCount;
        pdo.Used = kTrue;
        pdo.Note = edsName;
        pdo.Direction = tx ? PdoDirection::Tx : PdoDirection::Rx;
        pdo.OwnerSlot = static_cast<std::int16_t>(slot);
        pdo.PdoNumber = static_cast<std::int16_t>(number);
        pdo.Settings.Mode = mode;
        pdo.Settings.CobId = HexText((tx ? 0x180 + 0x100 * number : 0x200) + slot + 1);
        pdo.Settings.Bytes = "0";
    }
    ++network.NodeCount;
    return node;
}

// Appends a used mapping at MappingCount.
inline void AddMapping(Pdo& pdo, std::string_view vcb, std::string_view index,
                       std::string_view subIndex, std::string_view length) {
    PdoMapping& mapping = pdo.Settings.MappingAt(pdo.Settings.MappingCount);
    mapping = {std::string(vcb), std::string(index), std::string(subIndex), std::string(length),
               kTrue};
    ++pdo.Settings.MappingCount;
}

// Appends a used parameter at ParameterCount.
inline void AddParameter(Node& node, std::string_view name, std::string_view index,
                         std::string_view subIndex, std::string_view byteCount,
                         std::string_view value) {
    NodeParameter& parameter = node.ParameterAt(node.ParameterCount);
    parameter = {std::string(name),      std::string(index), std::string(subIndex),
                 std::string(byteCount), std::string(value), kTrue};
    ++node.ParameterCount;
}

// The worked example of the export file: node 5 (slot 4) with time-out 3 x 100 ms, TX 1
// Fast with two mappings, TX 2 Disabilitato, RX 1 Slow with one mapping, one parameter.
inline Network WorkedExampleNetwork() {
    Network network = EmptyNetwork();
    Node& node = AddNode(network, 4, 2, 1);
    node.repetitions = 3;
    node.repetitionTime = 100;
    node.PdoAt(0).Settings = {"185", "0", "0", "1", "Fast", "4", 3};
    AddMapping(node.PdoAt(0), "Posizione", "6064", "0", "32");
    AddMapping(node.PdoAt(0), "Stato", "6041", "0", "16");
    node.PdoAt(1).Settings = {"285", "0", "0", "0", "Disabilitato", "", 0};
    node.PdoAt(2).Settings = {"205", "0", "0", "0", "Slow", "2", 15};
    AddMapping(node.PdoAt(2), "Comando", "6040", "0", "16");
    AddParameter(node, "Modes of operation", "6060", "0", "1", "1");
    return network;
}

} // namespace velmora::test
