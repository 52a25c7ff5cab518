#include "storage/configuration_file.h"

#include "model/network.h"
#include "model/network_walk.h"
#include "model/numeric.h"
#include "model/paths.h"
#include "model/runtime_error.h"
#include "model/text.h"
#include "storage/node_fields.h"
#include "storage/record_io.h"

#include <filesystem>
#include <fstream>
#include <system_error>
#include <vector>

namespace velmora {

namespace {

// The record bytes of each field, for RecordWriter (with a const Node) and RecordReader alike.
template <typename Io> struct RecordFields : FieldsOnly {
    Io& io;
    template <typename Value> void Field(std::string_view, Value& value) { io.Field(value); }
};

// Walks a record's fields with the reader's bounds checks and keeps only the slot the record
// belongs to: the OwnerSlot of its PDO 0, which is the first field of that name.
class RecordValidator : public FieldsOnly {
public:
    explicit RecordValidator(RecordReader& reader) : reader_(reader) {}

    void Field(std::string_view, const std::string& text) { reader_.Skip(text); }
    void Field(std::string_view, std::int32_t number) { reader_.Skip(number); }
    void Field(std::string_view name, std::int16_t word) {
        if (slotSeen_) {
            reader_.Skip(word);
            return;
        }
        reader_.Field(word);
        if (name == "OwnerSlot") {
            slot_ = word;
            slotSeen_ = true;
        }
    }

    // The OwnerSlot of PDO 0, checked against 0..500.
    int OwnerSlot() const {
        CheckIndex(slot_, 0, kLastSlot, "Slot del record");
        return slot_;
    }

private:
    RecordReader& reader_;
    std::int16_t slot_ = -1;
    bool slotSeen_ = false;
};

// A run-time error of record r of path, named so in the message.
[[noreturn]] void BadRecord(const std::string& path, int r, const RuntimeError& error) {
    throw RuntimeError(error.Code(),
                       path + ", record " + std::to_string(r) + ": " + error.Detail());
}

// Checks that every field of record r lies within its bytes, and returns the OwnerSlot of its
// PDO 0 checked against 0..500 when the record holds a node.
int ValidateRecord(const std::string& path, int r, std::string_view record, bool node) {
    static const Node shape;
    try {
        RecordReader reader(record);
        RecordValidator validator(reader);
        VisitNodeFields(validator, shape);
        return node ? validator.OwnerSlot() : 0;
    } catch (const RuntimeError& error) {
        BadRecord(path, r, error);
    }
}

void WriteRecord(std::ostream& out, RecordWriter& writer, const Node& node) {
    writer.Reset();
    WriteNodeRecord(writer, node);
    const std::string& bytes = writer.Bytes();
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!out) {
        throw RuntimeError(ErrorCode::PathFileAccess, "scrittura del record non riuscita");
    }
}

// Opens path for binary reading; a missing file or a folder is a RuntimeError.
std::ifstream OpenForReading(const std::string& path) {
    std::error_code error;
    const auto fsPath = ToFsPath(path);
    if (std::filesystem::is_directory(fsPath, error)) {
        throw RuntimeError(ErrorCode::PathFileAccess, path + " è una cartella");
    }
    std::ifstream file(fsPath, std::ios::binary);
    if (!file) {
        throw RuntimeError(ErrorCode::FileNotFound, path);
    }
    return file;
}

// Reads one whole record; false when fewer bytes remain.
bool ReadRecord(std::istream& file, std::string& record) {
    record.resize(kConfigurationRecordLength);
    file.read(record.data(), static_cast<std::streamsize>(record.size()));
    const auto got = static_cast<std::size_t>(file.gcount());
    record.resize(got);
    return got == kConfigurationRecordLength;
}

bool HasFormatMark(const Node& record) {
    return ReadNumber(record.Parameters[3].Value) == 1.0 &&
           ReadNumber(record.Parameters[4].Value) == 1.0 &&
           ReadNumber(record.Parameters[5].Value) == 0.0;
}

[[noreturn]] void Truncated(const std::string& path, int r, std::size_t got) {
    throw RuntimeError(ErrorCode::BadRecordLength,
                       path + ", record " + std::to_string(r) + ": record incompleto (" +
                           std::to_string(got) + " byte su " +
                           std::to_string(kConfigurationRecordLength) + ")");
}

// Reads a record that has passed ValidateRecord into node.
void ApplyRecord(std::string_view record, Node& node) {
    RecordReader reader(record);
    ReadNodeRecord(reader, node);
}

} // namespace

void ValidateNodeRecord(std::string_view record) {
    static const Node shape;
    RecordReader reader(record);
    RecordValidator validator(reader);
    VisitNodeFields(validator, shape);
}

void WriteNodeRecord(RecordWriter& writer, const Node& node) {
    RecordFields<RecordWriter> fields{{}, writer};
    VisitNodeFields(fields, node);
}

void WriteConfiguration(const Network& network, std::ostream& out) {
    RecordWriter writer(kConfigurationRecordLength);
    Node mark;
    mark.Parameters[3].Value = "1";
    mark.Parameters[4].Value = "1";
    mark.Parameters[5].Value = "0";
    WriteRecord(out, writer, mark);
    WriteRecord(out, writer, network.ExportSettings);

    // A NodeCount larger than the nodes in use runs the walk past slot 500, which NodeAt
    // refuses.
    ForEachNodeInUse(network, network.NodeCount,
                     [&](int, const Node& node) { WriteRecord(out, writer, node); });
}

void ReadNodeRecord(RecordReader& reader, Node& node) {
    RecordFields<RecordReader> fields{{}, reader};
    VisitNodeFields(fields, node);
}

void SaveConfiguration(Network& network, const std::string& directory, const std::string& name,
                       const FileWriter& files) {
    const bool renamed = !directory.empty();
    const std::string path = renamed ? directory + name : network.Directory + network.FileName;
    // The name already ends in ".nodi", so this removes a "name.nodi.nodi" left behind; the
    // target itself is replaced whole below.
    std::error_code ignored;
    std::filesystem::remove(ToFsPath(path + ".nodi"), ignored);

    files.Replace(path, [&](std::ostream& out) { WriteConfiguration(network, out); });
    if (renamed) {
        network.Directory = directory;
        network.FileName = name;
    }
    network.Saved = kTrue;
}

std::int16_t IsCurrentFormat(const std::string& path) {
    std::ifstream file = OpenForReading(path);
    return IsCurrentFormat(file);
}

std::int16_t IsCurrentFormat(std::istream& in) {
    std::string record;
    ReadRecord(in, record);
    Node mark;
    try {
        RecordReader reader(record);
        ReadNodeRecord(reader, mark);
    } catch (const RuntimeError&) {
        return 0; // too short to hold the mark
    }
    return HasFormatMark(mark) ? 1 : 0;
}

std::string DeriveExportPath(const std::string& directory, const std::string& name) {
    const std::size_t length = CharCount(name);
    if (length < 5) {
        throw RuntimeError(ErrorCode::InvalidArgument,
                           "nome di configurazione troppo corto: \"" + name + "\"");
    }
    return directory + std::string(CharSlice(name, 0, length - 5)) + std::string(kExportExtension);
}

void SetConfigurationName(Network& network, const std::string& directory,
                          const std::string& name) {
    network.Directory = directory;
    network.FileName = name;
    network.ExportPath = DeriveExportPath(directory, name);
}

void LoadConfiguration(Network& network, const std::string& appDirectory,
                       const std::string& directory, const std::string& name) {
    std::ifstream file = OpenForReading(directory + name);
    LoadConfiguration(network, appDirectory, file, directory, name);
}

void LoadConfiguration(Network& network, const std::string& appDirectory, std::istream& in,
                       const std::string& directory, const std::string& name) {
    const std::string path = directory + name;
    if (IsCurrentFormat(in) != 1) {
        throw RuntimeError(ErrorCode::UnsupportedFormat,
                           "il file " + path +
                               " non è una configurazione nel formato attuale e non può "
                               "essere caricato");
    }
    const std::string exportPath = DeriveExportPath(directory, name);

    // Every record is read and checked before the network changes. A later record of a slot
    // replaces an earlier one whole, so only the last of each slot is kept.
    in.clear();
    in.seekg(0);
    std::string settings;
    for (int r = 1; r <= 2; ++r) {
        if (!ReadRecord(in, settings)) {
            Truncated(path, r, settings.size());
        }
    }
    ValidateRecord(path, 2, settings, false);
    std::vector<std::string> slots(kLastSlot + 1);
    std::string record;
    int nodesRead = 0;
    while (ReadRecord(in, record)) {
        const int r = nodesRead + 3;
        const int slot = ValidateRecord(path, r, record, true);
        if (nodesRead == INT16_MAX) {
            throw RuntimeError(ErrorCode::Overflow, path + ": troppi record");
        }
        ++nodesRead;
        slots[static_cast<std::size_t>(slot)].swap(record);
    }
    if (!record.empty()) {
        Truncated(path, nodesRead + 3, record.size());
    }

    // Nothing below can fail.
    NewNetwork(network, appDirectory);
    network.ExportPath = exportPath;
    ApplyRecord(settings, network.ExportSettings);
    for (int slot = 0; slot <= kLastSlot; ++slot) {
        const std::string& stored = slots[static_cast<std::size_t>(slot)];
        if (!stored.empty()) {
            ApplyRecord(stored, network.NodeAt(slot));
        }
    }
    network.NodeCount = static_cast<std::int16_t>(nodesRead);
    network.Saved = kTrue;
    network.Directory = directory;
    network.FileName = name;
}

} // namespace velmora
