#pragma once

// A node's configuration time-outs: how many times the controller repeats a request before
// it declares the node failed, and the time per repetition in milliseconds.

#include <cstdint>

namespace velmora {

struct Network;

struct NodeTimeout {
    std::int16_t repetitions = 0;
    std::int16_t repetitionTime = 0;

    bool operator==(const NodeTimeout&) const = default;
};

// Both check the slot (0..500); outside it is the SubscriptOutOfRange error. No range check
// on the values: negative ones are stored as they are.
NodeTimeout GetNodeTimeout(const Network& network, int slot);
void SetNodeTimeout(Network& network, int slot, std::int16_t repetitions,
                    std::int16_t repetitionTime);

} // namespace velmora
