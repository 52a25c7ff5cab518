#include "storage/configuration_file.h"

#include "model/network.h"
#include "model/numeric.h"
#include "model/paths.h"
#include "model/runtime_error.h"
#include "model/text.h"
#include "storage/record_io.h"

#include <filesystem>
#include <fstream>
#include <system_error>

namespace velmora {

namespace {

// One definition of the field order for both directions: Io is RecordWriter with a const
// Node, or RecordReader with a mutable one.
template <typename Io, typename NodeRef> void VisitNode(Io& io, NodeRef& node) {
    io.Field(node.EdsName);
    io.Field(node.TxPdoCount);
    io.Field(node.RxPdoCount);
    io.Field(node.ParameterCount);
    io.Field(node.Configured);
    io.Field(node.Expanded);
    io.Field(node.ParameterFolderExpanded);
    io.Field(node.InUse);
    for (auto& pdo : node.Pdos) {
        io.Field(pdo.DefaultCobId);
        io.Field(pdo.Used);
        io.Field(pdo.Note);
        io.Field(pdo.Direction);
        io.Field(pdo.OwnerSlot);
        io.Field(pdo.PdoNumber);
        io.Field(pdo.Block.CobId);
        io.Field(pdo.Block.Comm);
        io.Field(pdo.Block.Inhibit);
        io.Field(pdo.Block.Event);
        io.Field(pdo.Block.NoMapping);
        auto& settings = pdo.Settings;
        io.Field(settings.CobId);
        io.Field(settings.EventTime);
        io.Field(settings.InhibitTime);
        io.Field(settings.Comm);
        io.Field(settings.Mode);
        io.Field(settings.Bytes);
        io.Field(settings.Pcfg);
        io.Field(settings.MappingCount);
        for (auto& mapping : settings.Mappings) {
            io.Field(mapping.Vcb);
            io.Field(mapping.ObjectIndex);
            io.Field(mapping.SubIndex);
            io.Field(mapping.Length);
            io.Field(mapping.Used);
        }
    }
    for (auto& parameter : node.Parameters) {
        io.Field(parameter.Name);
        io.Field(parameter.ObjectIndex);
        io.Field(parameter.SubIndex);
        io.Field(parameter.ByteCount);
        io.Field(parameter.Value);
        io.Field(parameter.Used);
    }
    io.Field(node.Reserved);
    io.Field(node.repetitions);
    io.Field(node.repetitionTime);
}

// Walks a record's fields and stores nothing. Only string lengths are read, each after a
// check that it lies inside the record; numbers just advance the position, which is checked
// against the record's end at the next string and once at the end. The result is the same as
// a walk with the reader's per-field checks, at a fraction of the cost.
struct RecordValidator {
    std::string_view record;
    std::size_t position = 0;

    void Field(const std::string&) {
        if (position + 2 > record.size()) {
            Overrun();
        }
        const auto* at = reinterpret_cast<const unsigned char*>(record.data() + position);
        position += 2 + static_cast<std::size_t>(at[0] | (at[1] << 8));
    }
    void Field(std::int16_t) { position += 2; }
    void Field(std::int32_t) { position += 4; }
    void End() const {
        if (position > record.size()) {
            Overrun();
        }
    }
    [[noreturn]] void Overrun() const {
        throw RuntimeError(ErrorCode::BadRecordLength,
                           "i campi superano i " + std::to_string(record.size()) +
                               " byte del record");
    }
};

// The slot a node record belongs to: the OwnerSlot of its PDO 0, checked against 0..500.
// The record must have passed the validator.
int OwnerSlotOf(std::string_view record) {
    RecordReader reader(record);
    std::string text;
    std::int16_t word = 0;
    reader.Field(text); // EdsName
    for (int i = 0; i < 7; ++i) {
        reader.Field(word);
    }
    reader.Field(text); // DefaultCobId
    reader.Field(word); // Used
    reader.Field(text); // Note
    reader.Field(text); // Direction
    reader.Field(word); // OwnerSlot
    CheckIndex(word, 0, kLastSlot, "Slot del record");
    return word;
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

[[noreturn]] void Truncated(const std::string& path) {
    throw RuntimeError(ErrorCode::BadRecordLength, path + ": record incompleto");
}

} // namespace

void WriteNodeRecord(RecordWriter& writer, const Node& node) {
    VisitNode(writer, node);
}

void WriteConfiguration(const Network& network, std::ostream& out) {
    RecordWriter writer(kConfigurationRecordLength);
    Node mark;
    mark.Parameters[3].Value = "1";
    mark.Parameters[4].Value = "1";
    mark.Parameters[5].Value = "0";
    WriteRecord(out, writer, mark);
    WriteRecord(out, writer, network.ExportSettings);

    // The walk stops when NodeCount nodes are written; a NodeCount larger than the nodes in
    // use runs it past slot 500, which NodeAt refuses.
    int written = 0;
    for (int slot = 0; written != network.NodeCount; ++slot) {
        const Node& node = network.NodeAt(slot);
        if (node.InUse != 0) {
            ++written;
            WriteRecord(out, writer, node);
        }
    }
}

void ReadNodeRecord(RecordReader& reader, Node& node) {
    VisitNode(reader, node);
}

void ValidateNodeRecord(std::string_view record) {
    static const Node shape;
    RecordValidator validator{record};
    VisitNode(validator, shape);
    validator.End();
}

void SaveConfiguration(Network& network, const std::string& directory, const std::string& name) {
    if (!directory.empty()) {
        network.Directory = directory;
        network.FileName = name;
    }
    const std::string path = network.Directory + network.FileName;
    // The name already ends in ".nodi", so this removes a "name.nodi.nodi" left behind;
    // truncating the target below is what empties it.
    std::error_code ignored;
    std::filesystem::remove(ToFsPath(path + ".nodi"), ignored);

    std::ofstream file(ToFsPath(path), std::ios::binary | std::ios::trunc);
    if (!file) {
        throw RuntimeError(ErrorCode::PathFileAccess, path);
    }
    WriteConfiguration(network, file);
    file.close();
    if (!file) {
        throw RuntimeError(ErrorCode::PathFileAccess, "scrittura di " + path);
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
    return directory + std::string(CharSlice(name, 0, length - 5)) + ".cop";
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
    NewNetwork(network, appDirectory);
    network.ExportPath = DeriveExportPath(directory, name);

    in.clear();
    in.seekg(0);
    std::string record;
    for (int r = 1; r <= 2; ++r) {
        if (!ReadRecord(in, record)) {
            Truncated(path);
        }
        RecordReader reader(record);
        ReadNodeRecord(reader, network.ExportSettings);
    }

    // Each record is checked whole before it replaces its slot, so a bad record leaves the
    // slot as it was; reading straight into the slot avoids copying a whole node.
    int nodesRead = 0;
    while (ReadRecord(in, record)) {
        ValidateNodeRecord(record);
        RecordReader reader(record);
        ReadNodeRecord(reader, network.NodeAt(OwnerSlotOf(record)));
        if (nodesRead == INT16_MAX) {
            throw RuntimeError(ErrorCode::Overflow, path + ": troppi record");
        }
        ++nodesRead;
    }
    if (!record.empty()) {
        Truncated(path);
    }
    network.NodeCount = static_cast<std::int16_t>(nodesRead);
    network.Saved = kTrue;
    network.Directory = directory;
    network.FileName = name;
}

} // namespace velmora
