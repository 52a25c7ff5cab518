#include "model/file_writer.h"
#include "model/runtime_error.h"
#include "support/temp_dir.h"

#include <filesystem>
#include <functional>
#include <ostream>
#include <stdexcept>
#include <unistd.h>
#include <utility>

#include <gtest/gtest.h>

namespace velmora {
namespace {

using test::ReadFileBytes;
using test::TempDir;
using test::WriteFileBytes;
namespace fs = std::filesystem;

TEST(FileWriter, ReplacesTheTargetWholeAndLeavesNoOtherFile) {
    TempDir dir;
    // Single characters, short pieces and one piece larger than any buffer, in one file.
    std::string expected;
    const std::string large(300000, 'L');
    FileWriter().Replace(dir.File("a.nodi"), [&](std::ostream& out) {
        for (int i = 0; i < 70000; ++i) {
            out.put(static_cast<char>('a' + i % 26));
            expected += static_cast<char>('a' + i % 26);
        }
        out << "pezzo";
        out.write(large.data(), static_cast<std::streamsize>(large.size()));
        out << "fine";
    });
    EXPECT_EQ(ReadFileBytes(dir.File("a.nodi")), expected + "pezzo" + large + "fine");
    EXPECT_EQ(dir.Names(), std::vector<std::string>{"a.nodi"});

    // An existing file keeps its permissions; a link stays a link to the replaced file.
    fs::permissions(dir.File("a.nodi"), fs::perms::owner_read | fs::perms::owner_write);
    fs::create_symlink(dir.File("a.nodi"), dir.File("link.nodi"));
    FileWriter().Replace(dir.File("link.nodi"), [](std::ostream& out) { out << "nuovo"; });
    EXPECT_EQ(ReadFileBytes(dir.File("a.nodi")), "nuovo");
    EXPECT_TRUE(fs::is_symlink(dir.File("link.nodi")));
    EXPECT_EQ(fs::status(dir.File("a.nodi")).permissions(),
              fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(dir.Names(), (std::vector<std::string>{"a.nodi", "link.nodi"}));
}

TEST(FileWriter, AFailureLeavesTheTargetAsItWasAndNoNewFile) {
    TempDir dir;
    const std::string path = dir.File("a.nodi");
    WriteFileBytes(path, "vecchio");
    const auto failure = [&](const FileWriter& files, const std::string& target,
                             const std::function<void(std::ostream&)>& fill) {
        try {
            files.Replace(target, fill);
        } catch (const RuntimeError& error) {
            return std::make_pair(error.Code(), std::string(error.what()));
        }
        return std::make_pair(ErrorCode::InvalidArgument, std::string("nessun errore"));
    };
    const auto sixBytes = [](std::ostream& out) { out << "abcdef"; };

    // The disk is full after three bytes.
    EXPECT_EQ(failure(FileWriter::FullAfter(3), path, sixBytes),
              std::make_pair(ErrorCode::PathFileAccess,
                             "Errore di accesso al percorso/file: " + path +
                                 ": scrittura del file non riuscita (No space left on device): "
                                 "il file precedente non è stato modificato"));
    // The writer stops with its own error, after the stream refused its bytes or not.
    const auto tooLong = [](std::ostream& out) {
        out << std::string(100000, 'x') << std::flush;
        if (!out) {
            throw RuntimeError(ErrorCode::PathFileAccess, "scrittura del record non riuscita");
        }
        throw RuntimeError(ErrorCode::BadRecordLength, "record troppo lungo");
    };
    EXPECT_EQ(failure(FileWriter(), path, tooLong),
              std::make_pair(ErrorCode::BadRecordLength,
                             "Lunghezza record non valida: " + path +
                                 ": record troppo lungo: il file precedente non è stato "
                                 "modificato"));
    EXPECT_EQ(failure(FileWriter::FullAfter(70000), path, tooLong).second,
              "Errore di accesso al percorso/file: " + path +
                  ": scrittura del record non riuscita (No space left on device): il file "
                  "precedente non è stato modificato");
    EXPECT_THROW(FileWriter().Replace(path, [](std::ostream&) { throw std::logic_error("x"); }),
                 std::logic_error);
    EXPECT_EQ(ReadFileBytes(path), "vecchio");
    EXPECT_EQ(dir.Names(), std::vector<std::string>{"a.nodi"});

    // Without a file before, none is left after.
    const std::string message =
        failure(FileWriter::FullAfter(0), dir.File("b.nodi"), sixBytes).second;
    EXPECT_TRUE(message.ends_with(": il file non è stato creato")) << message;
    // A folder that does not exist, and a folder in the target's place.
    const std::string missing = dir.File("manca/a.nodi");
    EXPECT_EQ(failure(FileWriter(), missing, sixBytes).second,
              "Errore di accesso al percorso/file: " + missing +
                  ": impossibile creare il file nuovo (No such file or directory): il file non "
                  "è stato creato");
    // A file that may not be written (root may write any).
    fs::permissions(path, fs::perms::owner_read);
    if (geteuid() != 0) {
        EXPECT_EQ(failure(FileWriter(), path, sixBytes).first, ErrorCode::PathFileAccess);
    }
    fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write);
    fs::create_directory(dir.File("cartella"));
    EXPECT_EQ(failure(FileWriter(), dir.File("cartella"), sixBytes).first,
              ErrorCode::PathFileAccess);
    EXPECT_TRUE(fs::is_directory(dir.File("cartella")));
    EXPECT_EQ(dir.Names(), (std::vector<std::string>{"a.nodi", "cartella"}));
}

} // namespace
} // namespace velmora
