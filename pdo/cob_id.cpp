#include "pdo/cob_id.h"

#include "model/network.h"
#include "model/network_walk.h"
#include "model/text.h"
#include "model/transmission_mode.h"

namespace velmora {

std::string ComputeDefaultCobId(std::string_view direction, int nodeSlot, int pdoNumber) {
    const long long base = direction == PdoDirection::Tx ? 0x181 : 0x201;
    return HexText(base + nodeSlot + 0x100LL * pdoNumber);
}

CobIdOwner FindCobId(const Network& network, std::string_view cobIdText) {
    CobIdOwner owner;
    ForEachNodeInUse(network, network.NodeCount, [&](int slot, const Node& node) {
        if (node.Configured == 0) {
            return true;
        }
        // Twice the RX count, not TX + RX: the rule as it always was, kept on purpose.
        const int last = 2 * node.RxPdoCount;
        for (int p = 0; p < last; ++p) {
            const Pdo& pdo = node.PdoAt(p);
            if (pdo.Used != 0 && pdo.Settings.CobId == cobIdText) {
                owner.Found = -1;
                owner.NodeName = node.EdsName;
                owner.NodeSlot = static_cast<std::int16_t>(slot);
                owner.PdoKind = pdo.Direction;
                owner.PdoNumberText = DecimalText(p + 1);
                return false; // the first match ends the whole search
            }
        }
        return true;
    });
    return owner;
}

std::string CobIdConflictLine1(std::string_view cobIdText) {
    return "Il CobId " + std::string(cobIdText) + " è già ";
}

std::string CobIdConflictLine2(const CobIdOwner& owner) {
    return "assegnato al pdo " + owner.PdoKind + " " + owner.PdoNumberText + " di " +
           owner.NodeName + " (" + DecimalText(owner.NodeSlot + 1) + ")";
}

} // namespace velmora
