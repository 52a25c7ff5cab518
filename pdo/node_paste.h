#pragma once

// Pasting a copied node into another slot. The copy gets, PDO by PDO, the default COB-IDs of
// its new slot; a default that another PDO of the network already uses abandons the paste.

#include "pdo/alert.h"

#include <optional>

namespace velmora {

struct Network;
struct Node;

struct PasteResult {
    bool Pasted = false;
    // The conflict alert (source "mainWin") when the paste was abandoned.
    std::optional<AlertRequest> Alert;
};

// Fills newSlot (0..500, which must be free, else the InvalidArgument error) with a copy of
// source and counts it in NodeCount. Every PDO of its TX and RX lists gets the
// ComputeDefaultCobId of its direction, the new slot and its PdoNumber as DefaultCobId, and
// that value is searched with FindCobId in the network as it was before the paste. When
// all are free, each PDO keeps the source's configuration with the new default as CobId,
// except a "Disabilitato" PDO, which keeps its COB-ID ("Non Configurato" with a capital C
// keeps it too; the stored "Non configurato" never matches that test, so an unconfigured
// PDO gets the new default). Every PDO of the lists, and PDO 0, gets newSlot as OwnerSlot.
// On the first default in use the slot is cleared again (ClearNode), NodeCount is left as it
// was and the result carries the alert "Il CobId X è già " / "assegnato al pdo ...".
PasteResult PasteNode(Network& network, const Node& source, int newSlot);

} // namespace velmora
