#include "model/paths.h"

#include <system_error>

namespace velmora {

namespace {

bool EqualsIgnoringAsciiCase(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) {
        return false;
    }
    for (std::size_t i = 0; i < a.size(); ++i) {
        char x = a[i];
        char y = b[i];
        if (x >= 'A' && x <= 'Z') {
            x = static_cast<char>(x + 32);
        }
        if (y >= 'A' && y <= 'Z') {
            y = static_cast<char>(y + 32);
        }
        if (x != y) {
            return false;
        }
    }
    return true;
}

} // namespace

std::size_t LastSeparator(std::string_view path) {
    return path.find_last_of("\\/");
}

void SplitPath(std::string_view path, std::string& folder, std::string& name) {
    const std::size_t cut = LastSeparator(path);
    if (cut == std::string_view::npos) {
        folder.clear();
        name = std::string(path);
        return;
    }
    folder = std::string(path.substr(0, cut + 1));
    name = std::string(path.substr(cut + 1));
}

std::string ResolveNameIgnoringCase(const std::string& path) {
    namespace fs = std::filesystem;
    std::error_code error;
    if (fs::exists(ToFsPath(path), error)) {
        return path;
    }
    std::string folder;
    std::string name;
    SplitPath(path, folder, name);
    const fs::path dir = folder.empty() ? fs::path(".") : ToFsPath(folder);
    for (fs::directory_iterator it(dir, error), end; !error && it != end; it.increment(error)) {
        const std::string candidate = FromFsPath(it->path().filename());
        if (EqualsIgnoringAsciiCase(candidate, name)) {
            return folder + candidate;
        }
    }
    return path;
}

std::filesystem::path ToFsPath(std::string_view utf8) {
    return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

std::string FromFsPath(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return std::string(text.begin(), text.end());
}

bool IsExistingFile(const std::string& path) {
    std::error_code error;
    return std::filesystem::is_regular_file(ToFsPath(path), error);
}

} // namespace velmora
