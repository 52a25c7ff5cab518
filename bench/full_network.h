#pragma once

// The largest network the records hold, for the benchmarks: every slot in use, 25 TX and 26
// RX fast PDOs per node (all 51 entries), each with 11 mappings, and 101 parameters.

#include "tests/support/network_builder.h"

namespace velmora::bench {

inline Network FullNetwork() {
    Network network = test::EmptyNetwork();
    for (int slot = 0; slot <= kLastSlot; ++slot) {
        Node& node =
            test::AddNode(network, slot, 25, 26, TransmissionMode::Fast, "full_drive.eds");
        node.repetitions = 3;
        node.repetitionTime = 100;
        for (Pdo& pdo : node.Pdos) {
            pdo.Settings.Bytes = "8";
            pdo.Settings.Pcfg = 3;
            pdo.Settings.Comm = "1";
            for (int k = 0; k <= kLastMapping; ++k) {
                test::AddMapping(pdo, "Variabile_" + std::to_string(k), "6064", std::to_string(k),
                                 "8");
            }
        }
        for (int k = 0; k <= kLastParameter; ++k) {
            test::AddParameter(node, "Parametro " + std::to_string(k), "2000", std::to_string(k),
                               "2", std::to_string(k * 10));
        }
    }
    return network;
}

} // namespace velmora::bench
