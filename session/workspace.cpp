#include "session/workspace.h"

#include "export/channel_counters.h"
#include "model/paths.h"
#include "storage/configuration_file.h"

namespace velmora {

std::string Workspace::EdsDirectory() const {
    return AppDirectory + kPathSeparator + "eds" + kPathSeparator;
}

void StartWorkspace(Workspace& workspace, const std::string& appDirectory) {
    workspace.AppDirectory = appDirectory;
    SetExportExtension(workspace.Net);
    NewNetwork(workspace.Net, appDirectory);
}

void LoadIntoWorkspace(Workspace& workspace, const std::string& directory,
                       const std::string& name) {
    LoadConfiguration(workspace.Net, workspace.AppDirectory, directory, name);
    RecountAfterLoad(workspace.Net, workspace.Channels);
}

} // namespace velmora
