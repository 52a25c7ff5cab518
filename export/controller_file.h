#pragma once

// The controller export file (".cop"): the text file ORV reads to configure the CANopen
// network. For each node in use, in slot order: "NODO,", "CFGTO,", its PDO blocks and its
// parameters. Lines end with CR LF, are indented with 0, 8, 16, 24 or 32 blanks and hold
// Windows-1252 text. The writer reads the network and never changes it.
//
// Any error met while writing (a stream that fails, a NodeCount larger than the nodes in use,
// a PDO or mapping index past its table, a PCFG character beyond code 255) ends the writing
// quietly: on a stream the lines before it stay written, while a file is not replaced at all
// and keeps what it held. The result says whether the whole file was written.

#include "model/file_writer.h"

#include <iosfwd>
#include <string>

namespace velmora {

struct Network;

struct ControllerFileResult {
    bool Complete = true; // the whole network was written
    std::string Reason;   // why it was not, when it was not; for a file, naming the file
};

// Writes the network to out.
ControllerFileResult WriteControllerFile(const Network& network, std::ostream& out);

// Replaces the file prefix + fileName (callers pass an empty prefix and a full path) through
// files with the whole network. When that fails, the file keeps what it held.
ControllerFileResult WriteControllerFile(const Network& network, const std::string& prefix,
                                         const std::string& fileName,
                                         const FileWriter& files = FileWriter());

} // namespace velmora
