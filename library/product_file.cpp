#include "library/product_file.h"

#include "model/file_writer.h"
#include "model/network.h"
#include "model/paths.h"
#include "model/runtime_error.h"
#include "storage/configuration_file.h"
#include "storage/record_io.h"

#include <fstream>
#include <iterator>

namespace velmora {

namespace {

inline constexpr std::size_t kRecord = kConfigurationRecordLength;

[[noreturn]] void Refuse(ErrorCode code, const std::string& path, const std::string& reason) {
    throw RuntimeError(code, path + ": " + reason);
}

// The leading fields of a Node-layout record; a field running past the record is the
// BadRecordLength error.
struct RecordHead {
    std::string EdsName;
    std::int16_t TxPdoCount = 0;
    std::int16_t RxPdoCount = 0;
    std::int16_t ParameterCount = 0;
    std::int16_t InUse = 0;
};

RecordHead ReadHead(std::string_view record) {
    RecordReader reader(record);
    RecordHead head;
    std::int16_t ignored = 0;
    reader.Field(head.EdsName);
    reader.Field(head.TxPdoCount);
    reader.Field(head.RxPdoCount);
    reader.Field(head.ParameterCount);
    reader.Field(ignored); // Configured
    reader.Field(ignored); // Expanded
    reader.Field(ignored); // ParameterFolderExpanded
    reader.Field(head.InUse);
    return head;
}

// Every check of a product file; returns the node record, which passed the validator.
std::string_view CheckedNodeRecord(std::string_view bytes, const std::string& path,
                                   RecordHead& head) {
    if (bytes.size() != 2 * kRecord) {
        Refuse(ErrorCode::BadRecordLength, path,
               bytes.size() < 2 * kRecord
                   ? "file troncato (" + std::to_string(bytes.size()) + " byte invece di " +
                         std::to_string(2 * kRecord) + ")"
                   : "dati in più dopo i " + std::to_string(2 * kRecord) + " byte del prodotto");
    }
    const std::string_view markRecord = bytes.substr(0, kRecord);
    const std::string_view nodeRecord = bytes.substr(kRecord);
    // Only the mark's own fields are read; the rest of record 1 is ignored, as filler is.
    RecordHead mark;
    try {
        mark = ReadHead(markRecord);
    } catch (const RuntimeError&) {
        Refuse(ErrorCode::UnsupportedFormat, path, "non è un prodotto della libreria");
    }
    if (mark.EdsName != kProductMark) {
        Refuse(ErrorCode::UnsupportedFormat, path, "non è un prodotto della libreria");
    }
    if (mark.TxPdoCount != kProductFormat) {
        Refuse(ErrorCode::UnsupportedFormat, path,
               "prodotto nel formato " + std::to_string(mark.TxPdoCount) +
                   ", questa versione legge il formato " + std::to_string(kProductFormat));
    }
    try {
        ValidateNodeRecord(nodeRecord);
    } catch (const RuntimeError&) {
        Refuse(ErrorCode::BadRecordLength, path,
               "record del nodo danneggiato (un campo supera i " + std::to_string(kRecord) +
                   " byte del record)");
    }
    head = ReadHead(nodeRecord);
    if (head.InUse == 0 || head.EdsName.empty()) {
        Refuse(ErrorCode::InvalidArgument, path, "il record non contiene un nodo");
    }
    if (head.TxPdoCount < 0 || head.RxPdoCount < 0 ||
        head.TxPdoCount + head.RxPdoCount > kLastPdo + 1) {
        Refuse(ErrorCode::InvalidArgument, path,
               "numero di PDO non valido (TX " + std::to_string(head.TxPdoCount) + ", RX " +
                   std::to_string(head.RxPdoCount) + ")");
    }
    if (head.ParameterCount < 0 || head.ParameterCount > kLastParameter + 1) {
        Refuse(ErrorCode::InvalidArgument, path,
               "numero di parametri non valido (" + std::to_string(head.ParameterCount) + ")");
    }
    return nodeRecord;
}

} // namespace

std::string ProductSummary::EdsFile() const {
    return EdsName + ".eds";
}

std::string ProductFileBytes(const Node& node) {
    RecordWriter writer(kRecord);
    Node mark;
    mark.EdsName = kProductMark;
    mark.TxPdoCount = kProductFormat;
    WriteNodeRecord(writer, mark);
    std::string bytes = writer.Bytes();
    writer.Reset();
    WriteNodeRecord(writer, node);
    bytes += writer.Bytes();
    return bytes;
}

void ReadProductFile(std::string_view bytes, const std::string& path, Node& node) {
    RecordHead head;
    const std::string_view record = CheckedNodeRecord(bytes, path, head);
    RecordReader reader(record);
    ReadNodeRecord(reader, node);
}

ProductSummary ReadProductSummary(std::string_view bytes, const std::string& path) {
    RecordHead head;
    CheckedNodeRecord(bytes, path, head);
    return {std::move(head.EdsName), head.TxPdoCount, head.RxPdoCount, head.ParameterCount};
}

void ReadProductBytes(const std::string& path, std::string& bytes) {
    std::ifstream file(ToFsPath(path), std::ios::binary);
    if (!file || !IsExistingFile(path)) {
        throw RuntimeError(ErrorCode::FileNotFound, path);
    }
    // A product is two records; reading stops one byte past them, enough to tell that a
    // longer file is too long, so a huge foreign file is never read whole.
    bytes.resize(2 * kRecord + 1);
    file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    bytes.resize(static_cast<std::size_t>(file.gcount()));
    if (file.bad()) {
        throw RuntimeError(ErrorCode::PathFileAccess, "lettura di " + path);
    }
}

void WriteProductBytes(const std::string& path, std::string_view bytes) {
    FileWriter().Replace(path, [bytes](std::ostream& out) {
        out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    });
}

} // namespace velmora
