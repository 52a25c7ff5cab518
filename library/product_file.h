#pragma once

// The product file (".libs"): one configured node kept in the product library for reuse.
// It is two records of the configuration file's Node layout, 15304 bytes each, written and
// read by the same record writer and validated reader:
//   record 1, the format mark: EdsName holds "Velmora libreria" and TxPdoCount the format
//             number (1); every other field empty or zero;
//   record 2, the node: the Node record as it stood in the network (EdsName without
//             extension, counts, every PDO with its settings and mappings, the parameters,
//             the reserved word and the time-outs).
// A file is accepted only whole: exactly two records, the mark and format number as above
// (the rest of record 1 is ignored, as a record's filler is), the node record passing the
// validated reader, a node in use with an EDS name and counts within the records' bounds. Anything
// else is refused with the file's path and the reason; nothing is half-read.

#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>

namespace velmora {

struct Node;

inline constexpr std::string_view kProductExtension = ".libs";
inline constexpr std::string_view kProductMark = "Velmora libreria";
inline constexpr std::int16_t kProductFormat = 1;

// What the library's lists show of a product without reading it whole into a Node.
struct ProductSummary {
    std::string EdsName; // as the node holds it, without extension
    std::int16_t TxPdoCount = 0;
    std::int16_t RxPdoCount = 0;
    std::int16_t ParameterCount = 0;

    // The EDS file the product is built from: EdsName + ".eds".
    std::string EdsFile() const;

    bool operator==(const ProductSummary&) const = default;
};

// The two records of a product file for node. A record longer than 15304 bytes is the
// BadRecordLength error.
std::string ProductFileBytes(const Node& node);

// Checks bytes as a product file and reads its node into node (node is left untouched when
// the file is refused). path only names the file in the messages. A refusal is a
// RuntimeError whose text holds path and the reason: BadRecordLength for a file that is not
// exactly two records long or a field running past its record, UnsupportedFormat for a
// missing mark or another format number, InvalidArgument for a node out of use, without EDS
// name, or with counts outside 0..51 PDOs (TX and RX together) or 0..101 parameters.
void ReadProductFile(std::string_view bytes, const std::string& path, Node& node);

// The same checks, returning only the summary (no Node is built).
ProductSummary ReadProductSummary(std::string_view bytes, const std::string& path);

// The content of the file at path into bytes (whose storage is reused), up to one byte more
// than a product holds; FileNotFound when it cannot be opened.
void ReadProductBytes(const std::string& path, std::string& bytes);

// Writes bytes as the file at path, replacing it whole (FileWriter): a failure leaves the
// file that was there as it was and is a RuntimeError naming path and the reason.
void WriteProductBytes(const std::string& path, std::string_view bytes);

} // namespace velmora
