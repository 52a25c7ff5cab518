#pragma once

// The per-user settings store. The program writes one value into it at start-up (the
// application folder under "Generali"/"Path") and never reads it back. The app implements it
// with QSettings.

#include <string>

namespace velmora {

class SettingsStore {
public:
    virtual ~SettingsStore() = default;
    virtual void Write(const std::string& section, const std::string& key,
                       const std::string& value) = 0;
};

} // namespace velmora
