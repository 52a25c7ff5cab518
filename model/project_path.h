#pragma once

// The controller project path that ORV may pass on the command line ("C:\prj\demo.ovp"):
// the configuration then lives beside the project, under the project's name.

#include <string>
#include <string_view>

namespace velmora {

// The project's base name: the text between the last separator ("\" or "/") before the first
// ".ovp" and that ".ovp"; empty without ".ovp". When it is not empty it is also appended as
// one line to traceFile (created if missing; a failure to write it is ignored).
std::string ProjectName(std::string_view commandLine, const std::string& traceFile);

// The command line up to and including the last separator before the first ".ovp"; empty
// without ".ovp" or without such a separator.
std::string ProjectDirectory(std::string_view commandLine);

} // namespace velmora
