#pragma once

// Writing a whole file so that a failure never damages the file already there. The content
// goes to a new file in the target's folder, named after the target ("rete.nodi.tmp-XXXXXX");
// only when all of it is written, flushed and synced to the disk does one rename put it in
// the target's place. Any failure removes the new file and leaves the target as it was.
// Every file the program writes whole goes through here: the configuration file, the export
// file and its viewing copy, the "prova" dump, the product library's files.

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <limits>
#include <string>

namespace velmora {

class FileWriter {
public:
    // Writes to the disk without a limit of its own.
    FileWriter() = default;

    // A writer whose new files refuse every byte past the first `bytes`, as a full disk does.
    static FileWriter FullAfter(std::uintmax_t bytes);

    // Replaces path with what fill writes to the stream it is given; a link at path is
    // followed, and the file it names is replaced. An existing file must be writable, and
    // keeps its permissions.
    // When the new file cannot be created, fill throws a RuntimeError, or a write, the sync
    // or the rename fails, the new file is removed, path keeps its bytes, and a RuntimeError
    // with the failure's code names path, the reason and what became of path: "il file
    // precedente non è stato modificato", or "il file non è stato creato" when there was none.
    void Replace(const std::string& path, const std::function<void(std::ostream&)>& fill) const;

private:
    std::uintmax_t capacity_ = std::numeric_limits<std::uintmax_t>::max();
};

} // namespace velmora
