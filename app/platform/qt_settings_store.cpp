#include "platform/qt_settings_store.h"

#include <QSettings>

namespace velmora {

void QtSettingsStore::Write(const std::string& section, const std::string& key,
                            const std::string& value) {
    QSettings settings(QSettings::IniFormat, QSettings::UserScope, "Velmora", "Velmora");
    settings.beginGroup(QString::fromStdString(section));
    settings.setValue(QString::fromStdString(key), QString::fromStdString(value));
    settings.endGroup();
    settings.sync();
}

} // namespace velmora
