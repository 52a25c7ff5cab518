#pragma once

// The network-wide counters of the channel analysis: PDOs per direction and mode, and the
// frames and bytes of one fast cycle. They persist between analyses until the next recount.

#include <cstdint>

namespace velmora {

struct Network;
struct Node;

struct ChannelCounters {
    std::int16_t txSlow = 0;
    std::int16_t rxSlow = 0;
    std::int16_t txFast = 0;
    std::int16_t rxFast = 0;
    std::int16_t frames = 0;
    std::int16_t bytes = 0;
    std::int16_t fastBytes = 0;

    bool operator==(const ChannelCounters&) const = default;
};

// Adds one node's PDOs to the four PDO counters: entries from 0 while the direction is
// "TX", then on while it is "RX" (ending at the end of the table), "Fast" and "Slow" counted,
// every other mode ignored. A counter past 32767 is the Overflow error.
void CountNodeModes(const Node& node, ChannelCounters& counters);

// The recount that follows loading a configuration: the four PDO counters are reset, then
// every in-use slot whose Configured flag is set has its TX PDOs walked from entry 0 while
// the direction is "TX", then its RX PDOs while it is "RX", counting "Fast" and "Slow".
// frames, bytes and fastBytes are left as they are. A sum past 32767 is the Overflow error.
void RecountAfterLoad(const Network& network, ChannelCounters& counters);

} // namespace velmora
