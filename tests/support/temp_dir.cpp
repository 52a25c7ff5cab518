#include "support/temp_dir.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

namespace velmora::test {

TempDir::TempDir() {
    std::random_device random;
    const auto base = std::filesystem::temp_directory_path();
    for (;;) {
        auto candidate = base / ("velmora-test-" + std::to_string(random()));
        if (std::filesystem::create_directory(candidate)) {
            path_ = candidate.string();
            return;
        }
    }
}

TempDir::~TempDir() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::string TempDir::File(const std::string& name) const {
    return path_ + "/" + name;
}

std::vector<std::string> TempDir::Names() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(path_)) {
        names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::string ReadFileBytes(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

void WriteFileBytes(const std::string& path, const std::string& bytes) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

} // namespace velmora::test
