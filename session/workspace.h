#pragma once

// The state that lives as long as the program: the network, the channel analysis, the EDS
// object table, the application folder and the configuration's modified mark. The GUI and
// velmora-cli each own one Workspace and pass it, or the parts of it an operation needs, to
// the core.

#include "eds/eds_object_table.h"
#include "eds/node_creation.h"
#include "export/channel_analysis.h"
#include "export/channel_counters.h"
#include "model/network.h"

#include <cstdint>
#include <string>
#include <vector>

namespace velmora {

struct Workspace {
    // The application folder, without a trailing separator. It holds eds/, lib/, help/ and
    // receives "Dummy.$$$" and "prova".
    std::string AppDirectory;
    Network Net;
    ChannelCounters Channels;
    // What the channel dialog ("Controllo Canali") shows; like the dialog, it keeps its
    // content between analyses.
    ChannelDialogState ChannelDialog;
    // -1 while the network has changes that are not on disk.
    std::int16_t Modified = 0;
    // The last EDS file loaded; every operation that needs a node's EDS loads it again.
    EdsObjectTable Eds;
    // The "*.eds" files of the EDS folder, as the add-node dialog offers them.
    std::vector<std::string> EdsFiles;

    // The application folder followed by "/eds/".
    std::string EdsDirectory() const;
    // The network, EDS table and EDS folder, as node creation takes them.
    NodeImport ForNodeImport() { return {Net, Eds, EdsDirectory()}; }
};

// A fresh workspace as start-up leaves it: the application folder set, the export extension
// set (SetExportExtension), an empty network.
void StartWorkspace(Workspace& workspace, const std::string& appDirectory);

// Loads the configuration file directory + name into the network (LoadConfiguration, whose
// errors propagate) and recounts the channel counters from it.
void LoadIntoWorkspace(Workspace& workspace, const std::string& directory,
                       const std::string& name);

} // namespace velmora
