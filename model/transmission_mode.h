#pragma once

// The texts of a PDO's transmission mode and direction. Modes are held as text in
// PdoSettings::Mode and compared exactly, case included.

#include <string_view>

namespace velmora {

namespace TransmissionMode {
inline constexpr std::string_view Fast = "Fast";
inline constexpr std::string_view Slow = "Slow";
inline constexpr std::string_view Manual = "Manual";
inline constexpr std::string_view Disabled = "Disabilitato";
inline constexpr std::string_view NotConfigured = "Non configurato";
// Written by node creation from the product library and by the PDO editor's working copy
// before a PDO is loaded into it. It never equals NotConfigured.
inline constexpr std::string_view NotConfiguredCapital = "Non Configurato";
// The chooser shows "Manuale"; saving stores it as Manual.
inline constexpr std::string_view ManualShown = "Manuale";

// True for both spellings of the unconfigured state.
inline bool IsNotConfigured(std::string_view mode) {
    return mode == NotConfigured || mode == NotConfiguredCapital;
}
} // namespace TransmissionMode

namespace PdoDirection {
inline constexpr std::string_view Tx = "TX";
inline constexpr std::string_view Rx = "RX";
inline constexpr std::string_view None = "NOTYPE";
} // namespace PdoDirection

} // namespace velmora
