#include "cli/load_configuration.h"

#include "cli/cli.h"
#include "model/paths.h"
#include "model/workspace.h"
#include "storage/configuration_file.h"

namespace velmora::cli {

void LoadConfigurationFile(const std::string& path, Workspace& workspace, const Context& context) {
    workspace.AppDirectory = context.appDirectory;
    workspace.Net.ExportExtension = ".cop";
    std::string folder;
    std::string name;
    SplitPath(path, folder, name);
    if (folder.empty()) {
        folder = std::string(".") + kPathSeparator;
    }
    LoadConfiguration(workspace, folder, name);
}

} // namespace velmora::cli
