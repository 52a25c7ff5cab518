#pragma once

// Loading the configuration file a command names, as the GUI's start-up and load do.

#include <string>

namespace velmora {
struct Workspace;
}

namespace velmora::cli {

struct Context;

// Sets the workspace's application folder from the context and ExportExtension to ".cop",
// then loads path with LoadConfiguration (a path without a folder is read from "./").
// Failures are RuntimeErrors.
void LoadConfigurationFile(const std::string& path, Workspace& workspace, const Context& context);

} // namespace velmora::cli
