#pragma once

// The field flags (Pcfg) of a PDO: five switches telling which optional entries the
// controller writes to the node. The word is the sum of the switch values: 1 COB-ID,
// 2 Comm (transmission type), 4 inhibit time, 8 event time, 16 RTR.

#include <cstdint>

namespace velmora {

// The five switches, each 0 or 1, in the order of their bits.
struct FieldFlags {
    std::int16_t CobId = 0;
    std::int16_t Comm = 0;
    std::int16_t Inhibit = 0;
    std::int16_t Event = 0;
    std::int16_t Rtr = 0;

    bool operator==(const FieldFlags&) const = default;
};

std::int16_t EncodeFieldFlags(bool cobId, bool comm, bool inhibit, bool event, bool rtr);
// Each switch is 1 when its bit is set; bits above 16 are ignored.
FieldFlags DecodeFieldFlags(std::int16_t flags);

} // namespace velmora
