#pragma once

// The start of every velmora-cli command that reads a ".nodi" file: the workspace in the
// state the program's start-up leaves it in, then the file loaded as the GUI's "Carica" does.

#include <string>

namespace velmora {
struct Workspace;
}

namespace velmora::cli {

// Sets the application folder and the export extension of a fresh workspace, empties the
// network and loads path (split at its last separator; a bare name is read from "./").
// Errors of the core propagate as RuntimeError.
void LoadConfigurationFile(Workspace& workspace, const std::string& appDirectory,
                           const std::string& path);

} // namespace velmora::cli
