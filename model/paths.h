#pragma once

// Paths as the system composes and splits them. Composing uses the platform's separator;
// splitting accepts both "\" and "/", so a Windows path read from a project file or a
// command line splits the same way on every platform.

#include <filesystem>
#include <string>
#include <string_view>

namespace velmora {

#ifdef _WIN32
inline constexpr char kPathSeparator = '\\';
#else
inline constexpr char kPathSeparator = '/';
#endif

inline bool IsPathSeparator(char c) {
    return c == '\\' || c == '/';
}

// Position of the last "\" or "/" of path, or npos.
std::size_t LastSeparator(std::string_view path);

// Splits a path at its last separator into the folder (separator included) and the file
// name. Without a separator the folder is empty.
void SplitPath(std::string_view path, std::string& folder, std::string& name);

// The path as it exists on disk: path itself when it exists, else the one entry of its
// folder whose name equals its file name ignoring ASCII case (as Windows matches names);
// path unchanged when neither exists.
std::string ResolveNameIgnoringCase(const std::string& path);

// Conversions between the program's UTF-8 path texts and the file system's paths.
std::filesystem::path ToFsPath(std::string_view utf8);
std::string FromFsPath(const std::filesystem::path& path);

// True when path names an existing regular file (or a link to one).
bool IsExistingFile(const std::string& path);

} // namespace velmora
