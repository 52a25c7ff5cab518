#include "app_directory.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace velmora {

namespace {

std::string WithoutTrailingSeparators(std::string dir) {
    while (dir.size() > 1 && (dir.back() == '/' || dir.back() == '\\')) {
        dir.pop_back();
    }
    return dir;
}

bool HoldsEdsFolder(const QString& dir) {
    return QFileInfo(QDir(dir).filePath("eds")).isDir();
}

} // namespace

std::string ResolveAppDirectory(const QString& optionValue, bool findData) {
    if (!optionValue.isEmpty()) {
        return WithoutTrailingSeparators(optionValue.toStdString());
    }
    const QByteArray home = qgetenv("VELMORA_HOME");
    if (!home.isEmpty()) {
        return QString::fromLocal8Bit(home).toStdString(); // used as it stands
    }
    const QString executableDir = QCoreApplication::applicationDirPath();
    if (findData && !HoldsEdsFolder(executableDir)) {
        const QStringList candidates = {
            QDir::cleanPath(executableDir + "/../share/velmora"),
#ifdef VELMORA_SOURCE_DATA_DIR
            QStringLiteral(VELMORA_SOURCE_DATA_DIR),
#endif
        };
        for (const QString& candidate : candidates) {
            if (HoldsEdsFolder(candidate)) {
                return candidate.toStdString();
            }
        }
    }
    return executableDir.toStdString();
}

} // namespace velmora
