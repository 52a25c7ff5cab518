#pragma once

// The in-memory CANopen network: a fixed table of 501 node slots (slot s holds node number
// s + 1) and the configuration-wide settings. Every other part of the program reads and
// writes these records directly; the configuration file stores them as they are.
//
// Records are plain structs with the system's field names and exact widths. Flags are 16-bit
// words, -1 true and 0 false, any non-zero read as true. Arrays have fixed inclusive bounds
// and are reached through checked accessors: an index outside them is the
// SubscriptOutOfRange run-time error.

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace velmora {

inline constexpr int kLastSlot = 500;      // slots 0..500
inline constexpr int kLastPdo = 50;        // PDOs 0..50 of a node
inline constexpr int kLastMapping = 10;    // mappings 0..10 of a PDO
inline constexpr int kLastParameter = 100; // parameters 0..100 of a node

inline constexpr std::int16_t kTrue = -1;
inline constexpr std::int16_t kFalse = 0;

struct PdoMapping {
    std::string Vcb; // the controller variable bound to the mapped object
    std::string ObjectIndex;
    std::string SubIndex;
    std::string Length; // bits
    std::int16_t Used = 0;

    bool operator==(const PdoMapping&) const = default;
};

struct PdoSettings {
    std::string CobId;
    std::string EventTime;
    std::string InhibitTime;
    std::string Comm;
    std::string Mode;
    std::string Bytes;
    std::int16_t Pcfg = 0; // field flags: 1 COB-ID, 2 Comm, 4 Inhibit, 8 Event, 16 RTR
    // MappingCount and Mappings travel together as the mapping table.
    std::int16_t MappingCount = 0;
    std::array<PdoMapping, kLastMapping + 1> Mappings{};

    PdoMapping& MappingAt(int k);
    const PdoMapping& MappingAt(int k) const;

    bool operator==(const PdoSettings&) const = default;
};

// The five 16-bit values after PdoNumber, always copied as one block. It has the shape of the
// decoded field flags; only the fifth, NoMapping, is read: when set, the export reports no
// mapped objects.
struct PdoFlagBlock {
    std::int16_t CobId = 0;
    std::int16_t Comm = 0;
    std::int16_t Inhibit = 0;
    std::int16_t Event = 0;
    std::int16_t NoMapping = 0;

    bool operator==(const PdoFlagBlock&) const = default;
};

struct Pdo {
    std::string DefaultCobId;
    std::int16_t Used = 0;
    std::string Note;      // EdsName of the owning node
    std::string Direction; // "TX", "RX" or "NOTYPE"
    std::int16_t OwnerSlot = 0;
    std::int16_t PdoNumber = 0; // 0-based within its direction
    PdoFlagBlock Block;
    PdoSettings Settings;

    bool operator==(const Pdo&) const = default;
};

// The PDO's name as the tree, the PDO editor and the information panel show it: "pdo_", the
// direction and the 1-based number within it ("pdo_TX1").
std::string PdoName(const Pdo& pdo);

struct NodeParameter {
    std::string Name;
    std::string ObjectIndex;
    std::string SubIndex;
    std::string ByteCount;
    std::string Value;
    std::int16_t Used = 0;

    bool operator==(const NodeParameter&) const = default;
};

struct Node {
    std::string EdsName;
    std::int16_t TxPdoCount = 0;
    std::int16_t RxPdoCount = 0;
    std::int16_t ParameterCount = 0;
    std::int16_t Configured = 0;
    std::int16_t Expanded = 0;
    std::int16_t ParameterFolderExpanded = 0;
    std::int16_t InUse = 0;
    std::array<Pdo, kLastPdo + 1> Pdos{};
    std::array<NodeParameter, kLastParameter + 1> Parameters{};
    std::int32_t Reserved = 0; // stored in the file, never given a meaning
    std::int16_t repetitions = 0;
    std::int16_t repetitionTime = 0; // milliseconds

    Pdo& PdoAt(int p);
    const Pdo& PdoAt(int p) const;
    NodeParameter& ParameterAt(int k);
    const NodeParameter& ParameterAt(int k) const;

    bool operator==(const Node&) const = default;
};

// The 501 node slots, kept on the heap (a full table is some tens of megabytes).
class NodeTable {
public:
    static constexpr int kSize = kLastSlot + 1;

    NodeTable();
    NodeTable(const NodeTable& other);
    NodeTable& operator=(const NodeTable& other);
    NodeTable(NodeTable&&) noexcept = default;
    NodeTable& operator=(NodeTable&&) noexcept = default;
    ~NodeTable();

    Node& At(int slot);
    const Node& At(int slot) const;

    bool operator==(const NodeTable& other) const;

private:
    std::unique_ptr<std::array<Node, kSize>> nodes_;
};

struct Network {
    NodeTable Nodes;
    std::string FileName;
    std::string Directory; // ends with the directory separator
    std::int16_t NodeCount = 0;
    std::int16_t Saved = 0;
    // Record 2 of the configuration file: its EdsName holds DefaultFilePath and its
    // TxPdoCount holds MaxFastPdo; every other field stays empty or zero.
    Node ExportSettings;
    std::string ExportExtension; // see kExportExtension
    std::string ExportPath;
    std::int16_t ChannelCheck = 0;
    NodeParameter SelectedParameter;

    Node& NodeAt(int slot) { return Nodes.At(slot); }
    const Node& NodeAt(int slot) const { return Nodes.At(slot); }

    std::string& DefaultFilePath() { return ExportSettings.EdsName; }
    const std::string& DefaultFilePath() const { return ExportSettings.EdsName; }
    std::int16_t& MaxFastPdo() { return ExportSettings.TxPdoCount; }
    std::int16_t MaxFastPdo() const { return ExportSettings.TxPdoCount; }

    bool operator==(const Network&) const = default;
};

// Resets one slot (0..500) to the free state. Only the fields its rule lists change: PDO 50,
// mapping 10 of every PDO and parameter 100 are left untouched on purpose, and so are Bytes,
// DefaultCobId, the flag block, Pcfg, MappingCount, the mapping texts, parameter names, the
// reserved word and the time-outs.
void ClearNode(Network& network, int slot);

// Empties the network: no nodes, the name "Senza nome.eds", not saved, channel check on,
// slots 0..499 cleared (slot 500 is not), DefaultFilePath = appDirectory + "/none" +
// ExportExtension and MaxFastPdo 10. The rest of the export settings keeps what it held.
void NewNetwork(Network& network, std::string_view appDirectory);

const std::string& CurrentFileName(const Network& network);

// The export file's extension. A configuration's ExportPath always ends in it; start-up and
// the export settings dialog's Save set ExportExtension to it (SetExportExtension).
inline constexpr std::string_view kExportExtension = ".cop";
void SetExportExtension(Network& network);
// Every reading of the export settings (by the export, the viewer command, "Test PDO" and
// the settings dialog) sets ExportExtension to "cop", without its dot: the next new
// configuration's DefaultFilePath then ends in "nonecop". Kept on purpose.
void ReadExportSettings(Network& network);

} // namespace velmora
