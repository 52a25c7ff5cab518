#pragma once

// COB-IDs across the network: the default COB-ID of a PDO and the search for the PDO that
// already uses a COB-ID. COB-IDs are held as text of bare hexadecimal digits.

#include <cstdint>
#include <string>
#include <string_view>

namespace velmora {

struct Network;

inline constexpr int kMinCobId = 0x180; // 384
inline constexpr int kMaxCobId = 0x57F; // 1407

// The CANopen pre-defined COB-ID of PDO k of the node in slot s, in upper-case hexadecimal:
// 0x181 + s + 0x100 * k for "TX", 0x201 + s + 0x100 * k for any other direction ("185" for
// TX 0 of slot 4, "305" for RX 1). No range check: from k = 4 on it lies above 0x57F.
std::string ComputeDefaultCobId(std::string_view direction, int nodeSlot, int pdoNumber);

// The PDO found by FindCobId.
struct CobIdOwner {
    std::int16_t Found = 0;    // -1 when a PDO was found
    std::string NodeName;      // the owning node's EdsName
    std::int16_t NodeSlot = 0; // its slot (node number - 1)
    std::string PdoKind;       // the PDO's Direction
    std::string PdoNumberText; // the PDO's position in its node's list, counted from 1

    bool operator==(const CobIdOwner&) const = default;
};

// The first used PDO whose CobId text equals cobIdText exactly (case included: "1a0" is not
// "1A0"). Slots are walked from 0 until NodeCount nodes in use have been seen; of those,
// only nodes with Configured set are searched, and of each only the PDOs below twice its
// RxPdoCount: on a node with more TX than RX PDOs the last ones are never compared, as the
// system always did. A NodeCount larger than the nodes in use walks past slot 500, the
// SubscriptOutOfRange error.
CobIdOwner FindCobId(const Network& network, std::string_view cobIdText);

// The two alert lines of a COB-ID already in use: "Il CobId X è già " and
// "assegnato al pdo KIND N di NAME (NODE)".
std::string CobIdConflictLine1(std::string_view cobIdText);
std::string CobIdConflictLine2(const CobIdOwner& owner);

} // namespace velmora
