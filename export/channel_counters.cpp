#include "export/channel_counters.h"

#include "model/network.h"
#include "model/network_walk.h"
#include "model/runtime_error.h"
#include "model/transmission_mode.h"

namespace velmora {

namespace {

void Increment(std::int16_t& counter) {
    if (counter == INT16_MAX) {
        throw RuntimeError(ErrorCode::Overflow, "contatori dei canali");
    }
    ++counter;
}

} // namespace

void CountNodeModes(const Node& node, ChannelCounters& counters) {
    ForEachTxThenRxPdo(node, [&counters](int, const Pdo& pdo) {
        const bool tx = pdo.Direction == PdoDirection::Tx;
        const std::string& mode = pdo.Settings.Mode;
        if (mode == TransmissionMode::Fast) {
            Increment(tx ? counters.txFast : counters.rxFast);
        } else if (mode == TransmissionMode::Slow) {
            Increment(tx ? counters.txSlow : counters.rxSlow);
        }
    });
}

void RecountAfterLoad(const Network& network, ChannelCounters& counters) {
    counters.txSlow = 0;
    counters.rxSlow = 0;
    counters.txFast = 0;
    counters.rxFast = 0;
    for (int slot = 0; slot <= kLastSlot; ++slot) {
        const Node& node = network.NodeAt(slot);
        if (node.InUse != 0 && node.Configured != 0) {
            CountNodeModes(node, counters);
        }
    }
}

} // namespace velmora
