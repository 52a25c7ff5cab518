#pragma once

// The mode chooser of the PDO editor: the five entries it offers, always in this order, and
// the text stored for the one shown differently ("Manuale" is stored as "Manual"). Stored
// texts are put back into the chooser as they stand.

#include <array>
#include <string>
#include <string_view>

namespace velmora {

inline constexpr std::array<std::string_view, 5> kModeChoices = {"Disabilitato", "Manuale", "Slow",
                                                                 "Fast", "Non configurato"};

// The text stored in PdoSettings::Mode for a shown text: "Manual" for "Manuale", any other
// text as it stands.
std::string StoredModeText(std::string_view shown);

} // namespace velmora
