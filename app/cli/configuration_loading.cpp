#include "cli/configuration_loading.h"

#include "model/paths.h"
#include "model/workspace.h"
#include "storage/configuration_file.h"

namespace velmora::cli {

void StartWorkspace(Workspace& workspace, const std::string& appDirectory) {
    workspace.AppDirectory = appDirectory;
    workspace.Net.ExportExtension = ".cop";
    NewNetwork(workspace.Net, appDirectory);
}

void LoadConfigurationFile(Workspace& workspace, const std::string& appDirectory,
                           const std::string& path) {
    StartWorkspace(workspace, appDirectory);
    std::string folder;
    std::string name;
    SplitPath(path, folder, name);
    if (folder.empty()) {
        folder = std::string(".") + kPathSeparator;
    }
    LoadConfiguration(workspace, folder, name);
}

} // namespace velmora::cli
