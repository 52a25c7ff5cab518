#include "pdo/mode_choice.h"

#include "model/transmission_mode.h"

namespace velmora {

std::string StoredModeText(std::string_view shown) {
    if (shown == TransmissionMode::ManualShown) {
        return std::string(TransmissionMode::Manual);
    }
    return std::string(shown);
}

} // namespace velmora
