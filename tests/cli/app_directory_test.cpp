#include "platform/app_directory.h"

#include <QCoreApplication>
#include <QDir>
#include <gtest/gtest.h>

namespace velmora {
namespace {

TEST(AppDirectory, OptionThenEnvironmentThenExecutableFolder) {
    int argc = 1;
    char name[] = "/opt/velmora/bin/velmora";
    char* argv[] = {name, nullptr};
    QCoreApplication app(argc, argv);

    qputenv("VELMORA_HOME", "/srv/velmora/");
    EXPECT_EQ(ResolveAppDirectory("/opt/app//", true), "/opt/app");
    EXPECT_EQ(ResolveAppDirectory("", false), "/srv/velmora/"); // as it stands
    qunsetenv("VELMORA_HOME");
    const std::string executableDir = QCoreApplication::applicationDirPath().toStdString();
    EXPECT_EQ(ResolveAppDirectory("", false), executableDir);
    // The test program's folder has no eds/: the window takes the repository's ready folder.
    EXPECT_EQ(ResolveAppDirectory("", true),
              QDir::cleanPath(VELMORA_SOURCE_DATA_DIR).toStdString());
}

} // namespace
} // namespace velmora
