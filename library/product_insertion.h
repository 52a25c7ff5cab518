#pragma once

// Inserting nodes from the product library. Each product is rebuilt from its EDS file as a
// new node is (ImportEdsPdos with the EDS's own PDO counts), and the stored configuration is
// then laid over it:
// - each PDO the EDS describes takes the stored settings and mappings (and Used and the
//   five-value block) of the stored PDO with the same direction and PdoNumber; a PDO the EDS
//   describes and the product does not keep its fresh state;
// - a stored PDO that the EDS no longer describes is reported, not invented;
// - the parameters, ParameterCount, Configured, ParameterFolderExpanded, the reserved word
//   and the time-outs are the stored ones;
// - the COB-IDs follow the paste of a node (PasteNode): every PDO takes the default COB-ID of
//   the new node number, a "Disabilitato" PDO keeps its own, and a default already used in
//   the network refuses the insertion;
// - a PDO left unconfigured gets the mode "Non Configurato" (capital C), and every PDO of
//   the node, OwnerSlot = the new slot.

#include "eds/node_creation.h"

#include <string>
#include <vector>

namespace velmora {

class NetworkTree;

// One product to insert, at slot (0..500).
struct ProductPlacement {
    const Node* Product = nullptr;
    int Slot = -1;
};

enum class InsertionStatus {
    Inserted,
    EdsMissing,   // the product's EDS is not in the EDS folder
    SlotOccupied, // the slot holds a node, or an earlier product of the same insertion
    CobIdInUse,   // a new default COB-ID is used by a PDO of the network
};

struct InsertionOutcome {
    InsertionStatus Status = InsertionStatus::Inserted;
    // The refusal: "Eds non trovato:" + the EDS file (a message box titled "Errore"),
    // "Il nodo N è già occupato da NAME", or the two lines of the COB-ID conflict.
    std::string Title;
    std::string Line1;
    std::string Line2;
    // What an insertion that went through reports: node creation's "Errore numero di pdo
    // RX" and the stored PDOs the EDS no longer describes.
    std::vector<ImportMessage> Messages;

    bool Inserted() const { return Status == InsertionStatus::Inserted; }
};

// The message box title of a refused insertion.
inline constexpr const char* kInsertionErrorTitle = "Errore";

// The slots of count copies placed from slot first on: first itself, then the next slots
// above the previous one that are free in the network and not in taken (the slots of
// earlier placements). Fewer than count when slot 500 is passed.
std::vector<int> SuccessiveFreeSlots(const Network& network, int first, int count,
                                     const std::vector<int>& taken = {});

// Inserts the placements in order, all or nothing. First every product's EDS file
// (EdsName + ".eds", its name matched regardless of case) must be in the EDS folder and every
// slot free and named once; then CollapseOnRebuild is set to 1 and the nodes are created,
// each counted in NodeCount. A refusal, or a RuntimeError (an EDS that cannot be read), leaves
// the network and the collapse flag as they were.
InsertionOutcome InsertProducts(const NodeImport& target, NetworkTree& tree,
                                const std::vector<ProductPlacement>& placements);

} // namespace velmora
