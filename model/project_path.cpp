#include "model/project_path.h"

#include "model/cp1252.h"
#include "model/paths.h"

#include <fstream>

namespace velmora {

namespace {

// Position of the first ".ovp" and of the nearest separator before it (npos for none).
bool FindProject(std::string_view commandLine, std::size_t& extension, std::size_t& separator) {
    extension = commandLine.find(".ovp");
    if (extension == std::string_view::npos) {
        return false;
    }
    separator = commandLine.substr(0, extension).find_last_of("\\/");
    return true;
}

} // namespace

std::string ProjectName(std::string_view commandLine, const std::string& traceFile) {
    std::size_t extension = 0;
    std::size_t separator = 0;
    if (!FindProject(commandLine, extension, separator)) {
        return "";
    }
    const std::size_t begin = separator == std::string_view::npos ? 0 : separator + 1;
    std::string name(commandLine.substr(begin, extension - begin));
    // A trace line on every start with a project path; nothing ever reads it.
    std::ofstream trace(ToFsPath(traceFile), std::ios::app | std::ios::binary);
    trace << Utf8ToCp1252(name) << "\r\n";
    return name;
}

std::string ProjectDirectory(std::string_view commandLine) {
    std::size_t extension = 0;
    std::size_t separator = 0;
    if (!FindProject(commandLine, extension, separator) || separator == std::string_view::npos) {
        return "";
    }
    return std::string(commandLine.substr(0, separator + 1));
}

} // namespace velmora
