#include "pdo/node_paste.h"

#include "model/network.h"
#include "model/runtime_error.h"
#include "model/transmission_mode.h"
#include "pdo/cob_id.h"

#include <string>
#include <vector>

namespace velmora {

PasteResult PasteNode(Network& network, const Node& source, int newSlot) {
    if (network.NodeAt(newSlot).InUse != 0) {
        throw RuntimeError(ErrorCode::InvalidArgument,
                           "lo slot " + std::to_string(newSlot) + " è già occupato");
    }
    const int pdoCount = source.TxPdoCount + source.RxPdoCount;
    std::vector<std::string> defaults;
    PasteResult result;
    for (int p = 0; p < pdoCount; ++p) {
        const Pdo& pdo = source.PdoAt(p);
        defaults.push_back(ComputeDefaultCobId(pdo.Direction, newSlot, pdo.PdoNumber));
        const CobIdOwner owner = FindCobId(network, defaults.back());
        if (owner.Found != 0) {
            AlertRequest alert;
            alert.Source = "mainWin";
            alert.Line1 = CobIdConflictLine1(defaults.back());
            alert.Line2 = CobIdConflictLine2(owner);
            result.Alert = alert;
            break;
        }
    }

    Node& node = network.NodeAt(newSlot);
    node = source;
    node.PdoAt(0).OwnerSlot = static_cast<std::int16_t>(newSlot);
    if (result.Alert) {
        ClearNode(network, newSlot);
        return result;
    }
    for (int p = 0; p < pdoCount; ++p) {
        Pdo& pdo = node.PdoAt(p);
        pdo.OwnerSlot = static_cast<std::int16_t>(newSlot);
        pdo.DefaultCobId = defaults[static_cast<std::size_t>(p)];
        // The capital-C test is the copy routine's own; it never sees the stored spelling.
        const std::string& mode = pdo.Settings.Mode;
        if (mode != TransmissionMode::Disabled && mode != TransmissionMode::NotConfiguredCapital) {
            pdo.Settings.CobId = pdo.DefaultCobId;
        }
    }
    ++network.NodeCount;
    result.Pasted = true;
    return result;
}

} // namespace velmora
