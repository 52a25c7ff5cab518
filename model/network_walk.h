#pragma once

// The two walks over the records that the tree, the configuration file, the export, the
// channel analysis and the COB-ID search share, each with the rule the system always had.

#include "model/network.h"
#include "model/transmission_mode.h"

#include <type_traits>

namespace velmora {

// Calls visit(slot, node) for each in-use slot, from slot 0 upward, until nodeCount in-use
// slots have been visited; a visit that returns false ends the walk there. The count is
// trusted: a count smaller than the nodes in use leaves the later ones out, and a larger one
// runs the walk past slot 500, the SubscriptOutOfRange error (raised after every node in use
// was visited).
template <typename Visit>
void ForEachNodeInUse(const Network& network, int nodeCount, Visit&& visit) {
    int seen = 0;
    for (int slot = 0; seen < nodeCount; ++slot) {
        const Node& node = network.NodeAt(slot);
        if (node.InUse == 0) {
            continue;
        }
        ++seen;
        if constexpr (std::is_same_v<decltype(visit(slot, node)), bool>) {
            if (!visit(slot, node)) {
                return;
            }
        } else {
            visit(slot, node);
        }
    }
}

// Calls visit(p, pdo) for a node's PDO entries, TX first: from entry 0 while the Direction is
// "TX", then on while it is "RX". Only Direction is read, so a gap hides every later PDO; the
// walk ends at the end of the 51-entry table.
template <typename Visit> void ForEachTxThenRxPdo(const Node& node, Visit&& visit) {
    int p = 0;
    for (; p <= kLastPdo && node.Pdos[p].Direction == PdoDirection::Tx; ++p) {
        visit(p, node.Pdos[p]);
    }
    for (; p <= kLastPdo && node.Pdos[p].Direction == PdoDirection::Rx; ++p) {
        visit(p, node.Pdos[p]);
    }
}

} // namespace velmora
