#pragma once

// The network stored in tests/data/configuration/golden.nodi. Node 7 (slot 6) has every field
// set, its PDO 1 included: within each record level every number holds a value of its own
// (flags take different non-zero values) and every text a text of its own, so two fields
// exchanged in the record layout change the file's bytes. Node 301 (slot 300) is a bare node
// after it. Texts hold Windows-1252 letters and the euro sign.

#include "support/network_builder.h"

namespace velmora::test {

inline constexpr int kGoldenFullSlot = 6;
inline constexpr int kGoldenBareSlot = 300;

inline Network GoldenNetwork() {
    Network network = EmptyNetwork("/opt/velmora");
    network.MaxFastPdo() = 12;

    Node& node = network.NodeAt(kGoldenFullSlot);
    node.EdsName = "Servo Velocità €";
    node.TxPdoCount = 1;
    node.RxPdoCount = 2;
    node.ParameterCount = 3;
    node.Configured = -1;
    node.Expanded = -2;
    node.ParameterFolderExpanded = -3;
    node.InUse = -4;
    node.Reserved = 0x12345678;
    node.repetitions = 5;
    node.repetitionTime = 1500;

    Pdo& tx = node.PdoAt(0);
    tx.DefaultCobId = "187";
    tx.Used = kTrue;
    tx.Note = node.EdsName;
    tx.Direction = "TX";
    tx.OwnerSlot = kGoldenFullSlot;
    tx.PdoNumber = 0;
    tx.Block = {kTrue, kTrue, 0, 0, 0};
    tx.Settings = {"187", "0", "0", "1", "Fast", "6", 3};
    AddMapping(tx, "Velocità", "606C", "0", "32");
    AddMapping(tx, "Stato €", "6041", "0", "16");

    Pdo& rx = node.PdoAt(1);
    rx.DefaultCobId = "207";
    rx.Used = kTrue;
    rx.Note = node.EdsName;
    rx.Direction = "RX";
    rx.OwnerSlot = kGoldenFullSlot;
    rx.PdoNumber = 0;
    rx.Block = {-2, -3, -4, -5, -6};
    rx.Settings = {"20A", "250", "10", "254", "Slow", "2", 15};
    AddMapping(rx, "Comando", "6040", "1", "16");

    node.Parameters[0] = {"Modalità", "6060", "0", "1", "3", kTrue};
    ++network.NodeCount;

    Node& bare = AddNode(network, kGoldenBareSlot, 0, 0, TransmissionMode::Slow, "io_€");
    bare.Configured = kFalse;
    return network;
}

} // namespace velmora::test
