#include "model/network.h"

#include "model/paths.h"
#include "model/runtime_error.h"
#include "model/transmission_mode.h"

namespace velmora {

std::string PdoName(const Pdo& pdo) {
    return "pdo_" + pdo.Direction + std::to_string(pdo.PdoNumber + 1);
}

PdoMapping& PdoSettings::MappingAt(int k) {
    CheckIndex(k, 0, kLastMapping, "Mappatura");
    return Mappings[static_cast<std::size_t>(k)];
}

const PdoMapping& PdoSettings::MappingAt(int k) const {
    CheckIndex(k, 0, kLastMapping, "Mappatura");
    return Mappings[static_cast<std::size_t>(k)];
}

Pdo& Node::PdoAt(int p) {
    CheckIndex(p, 0, kLastPdo, "Pdo");
    return Pdos[static_cast<std::size_t>(p)];
}

const Pdo& Node::PdoAt(int p) const {
    CheckIndex(p, 0, kLastPdo, "Pdo");
    return Pdos[static_cast<std::size_t>(p)];
}

NodeParameter& Node::ParameterAt(int k) {
    CheckIndex(k, 0, kLastParameter, "Parametro");
    return Parameters[static_cast<std::size_t>(k)];
}

const NodeParameter& Node::ParameterAt(int k) const {
    CheckIndex(k, 0, kLastParameter, "Parametro");
    return Parameters[static_cast<std::size_t>(k)];
}

NodeTable::NodeTable() : nodes_(std::make_unique<std::array<Node, kSize>>()) {}

NodeTable::NodeTable(const NodeTable& other)
    : nodes_(std::make_unique<std::array<Node, kSize>>(*other.nodes_)) {}

NodeTable& NodeTable::operator=(const NodeTable& other) {
    if (this != &other) {
        *nodes_ = *other.nodes_;
    }
    return *this;
}

NodeTable::~NodeTable() = default;

Node& NodeTable::At(int slot) {
    CheckIndex(slot, 0, kLastSlot, "Slot");
    return (*nodes_)[static_cast<std::size_t>(slot)];
}

const Node& NodeTable::At(int slot) const {
    CheckIndex(slot, 0, kLastSlot, "Slot");
    return (*nodes_)[static_cast<std::size_t>(slot)];
}

bool NodeTable::operator==(const NodeTable& other) const {
    return *nodes_ == *other.nodes_;
}

void ClearNode(Network& network, int slot) {
    Node& node = network.NodeAt(slot);
    node.TxPdoCount = 0;
    node.RxPdoCount = 0;
    node.ParameterCount = 0;
    node.Configured = 0;
    node.Expanded = 0;
    node.ParameterFolderExpanded = 0;
    node.InUse = 0;
    node.EdsName.clear();
    // The last PDO, mapping and parameter entries are left as they are, on purpose.
    for (int p = 0; p < kLastPdo; ++p) {
        Pdo& pdo = node.PdoAt(p);
        pdo.Used = 0;
        pdo.Settings.Mode = TransmissionMode::NotConfigured;
        pdo.Settings.CobId = "0";
        pdo.Settings.EventTime = "0";
        pdo.Settings.InhibitTime = "0";
        pdo.Settings.Comm = "0";
        pdo.Direction = PdoDirection::None;
        pdo.PdoNumber = -1;
        pdo.OwnerSlot = -1;
        pdo.Note.clear();
        for (int k = 0; k < kLastMapping; ++k) {
            pdo.Settings.MappingAt(k).Used = 0;
        }
    }
    for (int k = 0; k < kLastParameter; ++k) {
        NodeParameter& parameter = node.ParameterAt(k);
        parameter.Used = 0;
        parameter.ObjectIndex.clear();
        parameter.SubIndex.clear();
        parameter.ByteCount.clear();
        parameter.Value.clear();
    }
}

void NewNetwork(Network& network, std::string_view appDirectory) {
    network.NodeCount = 0;
    network.FileName = "Senza nome.eds";
    network.Saved = 0;
    network.ChannelCheck = kTrue;
    for (int slot = 0; slot < kLastSlot; ++slot) {
        ClearNode(network, slot);
    }
    network.DefaultFilePath() =
        std::string(appDirectory) + kPathSeparator + "none" + network.ExportExtension;
    network.MaxFastPdo() = 10;
}

const std::string& CurrentFileName(const Network& network) {
    return network.FileName;
}

void SetExportExtension(Network& network) {
    network.ExportExtension = kExportExtension;
}

void ReadExportSettings(Network& network) {
    network.ExportExtension = kExportExtension.substr(1);
}

} // namespace velmora
