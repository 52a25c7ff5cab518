#include "cli/configuration_loading.h"

#include "model/paths.h"
#include "session/workspace.h"

namespace velmora::cli {

void LoadConfigurationFile(Workspace& workspace, const std::string& appDirectory,
                           const std::string& path) {
    StartWorkspace(workspace, appDirectory);
    std::string folder;
    std::string name;
    SplitPath(path, folder, name);
    if (folder.empty()) {
        folder = std::string(".") + kPathSeparator;
    }
    LoadIntoWorkspace(workspace, folder, name);
}

} // namespace velmora::cli
