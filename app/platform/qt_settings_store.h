#pragma once

// The per-user settings store on top of QSettings: INI format, user scope, organisation and
// application "Velmora". Start-up writes the application folder under "Generali"/"Path".

#include "interfaces/settings_store.h"

namespace velmora {

class QtSettingsStore : public SettingsStore {
public:
    void Write(const std::string& section, const std::string& key,
               const std::string& value) override;
};

} // namespace velmora
