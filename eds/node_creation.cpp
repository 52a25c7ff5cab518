#include "eds/node_creation.h"

#include "eds/eds_object_table.h"
#include "eds/eds_reader.h"
#include "eds/eds_text.h"
#include "model/numeric.h"
#include "model/text.h"
#include "model/transmission_mode.h"
#include "pdo/cob_id.h"

namespace velmora {

namespace {

// PDOs are looked for at k = 0..10 only, although CountEdsPdos counts up to 0x1810/0x1410.
inline constexpr int kPdoWalkLimit = 11;

ImportMessage PdoCountError() {
    return {"Import Error", "Errore numero di pdo RX"};
}

// One direction's walk; false when it stopped at k = 11 with PDOs still missing.
bool WalkPdos(const NodeImport& target, int slot, std::string_view direction,
              std::int32_t communicationBase, int count, int firstPosition) {
    const EdsObjectTable& table = target.Eds;
    int created = 0;
    for (int k = 0; created < count; ++k) {
        if (k == kPdoWalkLimit) {
            return false;
        }
        if (table.FindPosition(communicationBase + k, -1) != 0 &&
            table.FindPosition(communicationBase + 0x200 + k, -1) != 0) {
            CreatePdoFromEds(target, slot, firstPosition + created, k, direction);
            ++created;
        }
    }
    return true;
}

} // namespace

std::vector<ImportMessage> AddNodeFromEds(const NodeImport& target, const std::string& edsName,
                                          int slot) {
    LoadEds(target.Eds, target.EdsDirectory, edsName);
    const EdsPdoCounts counts = CountEdsPdos(target.Eds);
    return ImportEdsPdos(target, edsName, counts.txCount, counts.rxCount, slot);
}

std::vector<ImportMessage> ImportEdsPdos(const NodeImport& target, const std::string& edsName,
                                         int txCount, int rxCount, int slot) {
    Node& node = target.Net.NodeAt(slot);
    node.EdsName = edsName.substr(0, edsName.find('.'));
    node.ParameterCount = 0;
    node.RxPdoCount = ToInt16(rxCount);
    node.TxPdoCount = ToInt16(txCount);
    node.InUse = kTrue;
    node.Expanded = kTrue;
    // The configuration file puts a node back into the slot named here, PDOs or not.
    node.PdoAt(0).OwnerSlot = static_cast<std::int16_t>(slot);

    std::vector<ImportMessage> messages;
    if (!WalkPdos(target, slot, PdoDirection::Tx, 0x1800, txCount, 0)) {
        messages.push_back(PdoCountError());
    }
    if (!WalkPdos(target, slot, PdoDirection::Rx, 0x1400, rxCount, txCount)) {
        messages.push_back(PdoCountError());
    }
    return messages;
}

void CreatePdoFromEds(const NodeImport& target, int slot, int position, int k,
                      std::string_view direction) {
    Node& node = target.Net.NodeAt(slot);
    Pdo& pdo = node.PdoAt(position);
    pdo.Direction = std::string(direction);
    pdo.OwnerSlot = static_cast<std::int16_t>(slot);
    pdo.PdoNumber = ToInt16(k);
    pdo.Note = node.EdsName;
    pdo.DefaultCobId = ComputeDefaultCobId(pdo.Direction, pdo.OwnerSlot, pdo.PdoNumber);
    // The five values returned with the default COB-ID are all 0, so NoMapping stays clear
    // and the export lists the PDO's mappings.
    pdo.Block = PdoFlagBlock{};

    const DefaultMapping mapping =
        DefaultMappingFromEds(target, node.EdsName + ".eds", direction, k);
    pdo.Settings.MappingCount = mapping.MappingCount;
    pdo.Settings.Mappings = mapping.Mappings;
}

DefaultMapping DefaultMappingFromEds(const NodeImport& target, const std::string& edsFileName,
                                     std::string_view direction, int k) {
    EdsObjectTable& table = target.Eds;
    LoadEds(table, target.EdsDirectory, edsFileName);
    const std::string prefix = direction == PdoDirection::Tx ? "1a0" : "160";
    const std::int32_t mappingIndex = ReadEdsHex(prefix + DecimalText(k));

    std::int32_t n =
        ParseEdsNumber(FindEdsObject(table, mappingIndex, 0).Object.DefaultValue, false);
    n = n < 0 ? 0 : (n > kLastMapping + 1 ? kLastMapping + 1 : n);

    DefaultMapping mapping;
    mapping.MappingCount = static_cast<std::int16_t>(n);
    std::string previousName;
    int repeat = 0;
    for (int i = 1; i <= n; ++i) {
        const std::string value =
            FindEdsObject(table, mappingIndex, static_cast<std::int16_t>(i)).Object.DefaultValue;
        PdoMapping& entry = mapping.Mappings[static_cast<std::size_t>(i - 1)];
        entry.ObjectIndex = std::string(CharSlice(value, 2, 4));
        const std::int32_t subIndex = ReadEdsHex(CharSlice(value, 6, 2));
        entry.SubIndex = DecimalText(subIndex);
        entry.Length = DecimalText(ReadEdsHex(CharSlice(value, 8)));
        entry.Used = kTrue;

        const std::int32_t objectIndex = ReadEdsHex(entry.ObjectIndex);
        const EdsObjectMatch first = FindEdsObject(table, objectIndex, -1);
        const std::string name =
            first.Object.ObjectType == 7
                ? first.Object.ParameterName
                : FindEdsObject(table, objectIndex, static_cast<std::int16_t>(subIndex))
                      .Object.ParameterName;
        if (i > 1 && name == previousName) {
            entry.Vcb = name + " #" + StandardNumberText(repeat);
            ++repeat;
        } else {
            entry.Vcb = name;
            repeat = 0;
        }
        previousName = name;
    }
    return mapping;
}

} // namespace velmora
