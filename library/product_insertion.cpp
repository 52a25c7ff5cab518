#include "library/product_insertion.h"

#include "eds/eds_object_table.h"
#include "eds/eds_reader.h"
#include "model/network.h"
#include "model/paths.h"
#include "model/runtime_error.h"
#include "model/text.h"
#include "model/transmission_mode.h"
#include "pdo/node_paste.h"
#include "tree/network_tree.h"

#include <algorithm>
#include <memory>

namespace velmora {

namespace {

bool IsPdoDirection(std::string_view direction) {
    return direction == PdoDirection::Tx || direction == PdoDirection::Rx;
}

bool EdsIsThere(const NodeImport& target, const std::string& edsFile) {
    return IsExistingFile(ResolveNameIgnoringCase(EdsPath(target.EdsDirectory, edsFile)));
}

// Rebuilds the product in slot from its EDS and lays the stored configuration over it; the
// slot is then in use but not yet counted, and its COB-IDs are still to be chosen.
void BuildFromEds(const NodeImport& target, const Node& stored, int slot,
                  std::vector<ImportMessage>& messages) {
    Network& network = target.Net;
    ClearNode(network, slot);
    const std::string edsFile = stored.EdsName + ".eds";
    LoadEds(target.Eds, target.EdsDirectory, edsFile);
    const EdsPdoCounts counts = CountEdsPdos(target.Eds);
    for (ImportMessage& message :
         ImportEdsPdos(target, edsFile, counts.txCount, counts.rxCount, slot)) {
        messages.push_back(std::move(message));
    }

    Node& node = network.NodeAt(slot);
    const int storedCount = stored.TxPdoCount + stored.RxPdoCount;
    std::vector<bool> applied(static_cast<std::size_t>(std::max(storedCount, 0)), false);
    for (int p = 0; p < node.TxPdoCount + node.RxPdoCount; ++p) {
        Pdo& pdo = node.PdoAt(p);
        if (!IsPdoDirection(pdo.Direction)) {
            continue; // counted by the EDS but not created: node creation has reported it
        }
        for (int q = 0; q < storedCount; ++q) {
            const Pdo& kept = stored.PdoAt(q);
            if (!applied[static_cast<std::size_t>(q)] && kept.Direction == pdo.Direction &&
                kept.PdoNumber == pdo.PdoNumber) {
                pdo.Used = kept.Used;
                pdo.Block = kept.Block;
                pdo.Settings = kept.Settings;
                applied[static_cast<std::size_t>(q)] = true;
                break;
            }
        }
    }
    for (int q = 0; q < storedCount; ++q) {
        const Pdo& kept = stored.PdoAt(q);
        if (!applied[static_cast<std::size_t>(q)] && IsPdoDirection(kept.Direction)) {
            messages.push_back({"Libreria", "Il pdo_" + kept.Direction +
                                                DecimalText(kept.PdoNumber + 1) +
                                                " del prodotto non è descritto da " + edsFile +
                                                ": la sua configurazione non è stata inserita"});
        }
    }

    node.Configured = stored.Configured;
    node.ParameterFolderExpanded = stored.ParameterFolderExpanded;
    node.ParameterCount = stored.ParameterCount;
    node.Parameters = stored.Parameters;
    node.Reserved = stored.Reserved;
    node.repetitions = stored.repetitions;
    node.repetitionTime = stored.repetitionTime;
}

// Inserts one product; false (with the conflict in outcome) when a COB-ID is in use.
bool InsertProduct(const NodeImport& target, const Node& stored, int slot,
                   InsertionOutcome& outcome) {
    Network& network = target.Net;
    BuildFromEds(target, stored, slot, outcome.Messages);

    // The paste places the built node and chooses its COB-IDs, searching the network as it
    // was before this node: the slot is freed again first.
    const auto built = std::make_unique<Node>(std::move(network.NodeAt(slot)));
    ClearNode(network, slot);
    const PasteResult pasted = PasteNode(network, *built, slot);
    if (!pasted.Pasted) {
        outcome.Status = InsertionStatus::CobIdInUse;
        outcome.Title = kInsertionErrorTitle;
        outcome.Line1 = pasted.Alert->Line1;
        outcome.Line2 = pasted.Alert->Line2;
        return false;
    }
    Node& node = network.NodeAt(slot);
    for (int p = 0; p < node.TxPdoCount + node.RxPdoCount; ++p) {
        std::string& mode = node.PdoAt(p).Settings.Mode;
        if (TransmissionMode::IsNotConfigured(mode)) {
            mode = TransmissionMode::NotConfiguredCapital;
        }
    }
    return true;
}

} // namespace

std::vector<int> SuccessiveFreeSlots(const Network& network, int first, int count,
                                     const std::vector<int>& taken) {
    std::vector<int> slots;
    for (int slot = first; slot <= kLastSlot && static_cast<int>(slots.size()) < count; ++slot) {
        if (slots.empty() || (network.NodeAt(slot).InUse == 0 &&
                              std::find(taken.begin(), taken.end(), slot) == taken.end())) {
            slots.push_back(slot);
        }
    }
    return slots;
}

InsertionOutcome InsertProducts(const NodeImport& target, NetworkTree& tree,
                                const std::vector<ProductPlacement>& placements) {
    Network& network = target.Net;
    InsertionOutcome outcome;
    for (const ProductPlacement& placement : placements) {
        const std::string edsFile = placement.Product->EdsName + ".eds";
        if (placement.Product->EdsName.empty() || !EdsIsThere(target, edsFile)) {
            outcome.Status = InsertionStatus::EdsMissing;
            outcome.Title = kInsertionErrorTitle;
            outcome.Line1 = "Eds non trovato:" + edsFile;
            return outcome;
        }
    }
    for (std::size_t i = 0; i < placements.size(); ++i) {
        const int slot = placements[i].Slot;
        const Node& occupant = network.NodeAt(slot);
        std::string holder = occupant.InUse != 0 ? occupant.EdsName : std::string();
        for (std::size_t j = 0; holder.empty() && j < i; ++j) {
            if (placements[j].Slot == slot) {
                holder = placements[j].Product->EdsName;
            }
        }
        if (!holder.empty()) {
            outcome.Status = InsertionStatus::SlotOccupied;
            outcome.Title = kInsertionErrorTitle;
            outcome.Line1 = "Il nodo " + DecimalText(slot + 1) + " è già occupato da " + holder;
            return outcome;
        }
    }

    // Everything below is undone when it does not go through.
    std::vector<Node> backups;
    backups.reserve(placements.size());
    for (const ProductPlacement& placement : placements) {
        backups.push_back(network.NodeAt(placement.Slot));
    }
    const std::int16_t nodeCount = network.NodeCount;
    const std::int16_t collapse = tree.CollapseOnRebuild();
    const auto restore = [&] {
        for (std::size_t i = 0; i < placements.size(); ++i) {
            network.NodeAt(placements[i].Slot) = std::move(backups[i]);
        }
        network.NodeCount = nodeCount;
        tree.SetCollapseOnRebuild(collapse);
    };

    tree.SetCollapseOnRebuild(1);
    try {
        for (const ProductPlacement& placement : placements) {
            if (!InsertProduct(target, *placement.Product, placement.Slot, outcome)) {
                outcome.Messages.clear();
                restore();
                return outcome;
            }
        }
    } catch (...) {
        restore();
        throw;
    }
    return outcome;
}

} // namespace velmora
