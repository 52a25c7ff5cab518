#pragma once

// A fresh folder under the system's temporary folder, removed with everything in it when the
// object goes away. Paths are UTF-8 texts ending without a separator.

#include <string>
#include <vector>

namespace velmora::test {

class TempDir {
public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    const std::string& Path() const { return path_; }
    // Path() + "/" + name.
    std::string File(const std::string& name) const;
    // Path() + "/", as the system's folders end.
    std::string Folder() const { return path_ + "/"; }
    // The names of the entries in the folder, sorted.
    std::vector<std::string> Names() const;

private:
    std::string path_;
};

// Whole content of a file as bytes; empty when it cannot be read.
std::string ReadFileBytes(const std::string& path);
// Writes bytes to a file, replacing it.
void WriteFileBytes(const std::string& path, const std::string& bytes);

} // namespace velmora::test
