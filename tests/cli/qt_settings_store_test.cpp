#include "platform/qt_settings_store.h"

#include <QSettings>
#include <QStandardPaths>
#include <gtest/gtest.h>

namespace velmora {
namespace {

TEST(QtSettingsStore, WritesTheApplicationFolderWhereQSettingsReadsIt) {
    QStandardPaths::setTestModeEnabled(true); // a private folder, not the user's settings
    QtSettingsStore store;
    store.Write("Generali", "Path", "/opt/velmora");
    const QSettings settings(QSettings::IniFormat, QSettings::UserScope, "Velmora", "Velmora");
    EXPECT_EQ(settings.value("Generali/Path").toString(), "/opt/velmora");
}

} // namespace
} // namespace velmora
