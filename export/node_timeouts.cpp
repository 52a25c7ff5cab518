#include "export/node_timeouts.h"

#include "model/network.h"

namespace velmora {

NodeTimeout GetNodeTimeout(const Network& network, int slot) {
    const Node& node = network.NodeAt(slot);
    return {node.repetitions, node.repetitionTime};
}

void SetNodeTimeout(Network& network, int slot, std::int16_t repetitions,
                    std::int16_t repetitionTime) {
    Node& node = network.NodeAt(slot);
    node.repetitions = repetitions;
    node.repetitionTime = repetitionTime;
}

} // namespace velmora
