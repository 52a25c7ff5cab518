#include "pdo/field_flags.h"

namespace velmora {

std::int16_t EncodeFieldFlags(bool cobId, bool comm, bool inhibit, bool event, bool rtr) {
    return static_cast<std::int16_t>((cobId ? 1 : 0) + (comm ? 2 : 0) + (inhibit ? 4 : 0) +
                                     (event ? 8 : 0) + (rtr ? 16 : 0));
}

FieldFlags DecodeFieldFlags(std::int16_t flags) {
    auto bit = [flags](int value) -> std::int16_t { return (flags & value) != 0 ? 1 : 0; };
    return {bit(1), bit(2), bit(4), bit(8), bit(16)};
}

} // namespace velmora
