#pragma once

// The EDS object table: one entry per object section of the last EDS file loaded, and the
// look-ups on it. It is process-wide state (one per Workspace) that every load wipes and
// refills; nothing relies on an earlier load.
//
// Positions run 0..4000. A load stores its first object section at position 2, its last at
// EdsObjectCount; position 1 is an always-empty entry that every search visits first, and
// position 0 is never written. Both are kept as they are on purpose.

#include <cstdint>
#include <string>
#include <vector>

namespace velmora {

inline constexpr int kLastEdsObject = 4000;

// One object section ([1800] or [1800sub2]). A default-constructed EdsObject is the empty
// one that a failed look-up returns: texts empty, numbers 0.
struct EdsObject {
    std::string IndexText;    // the index as decimal text ("6144" for [1800])
    std::string SubIndexText; // decimal text, "-1" for a main object section
    std::int16_t IsMainObject = 0;
    std::string ParameterName; // lower-cased
    std::int32_t ObjectType = 0;
    std::int32_t DataType = 0;
    std::int32_t LowLimit = 0;
    std::int32_t HighLimit = 0;
    std::string AccessType;   // lower-cased ("ro", "rw", ...)
    std::string DefaultValue; // lower-cased text, never evaluated ("$nodeid+0x180")
    std::int16_t PdoMapping = 0;
    std::string ObjFlags;
    std::int16_t SubNumber = 0;

    bool operator==(const EdsObject&) const = default;
};

// What an entry holds before its section's keys are read: HighLimit 999999999, AccessType
// and DefaultValue "0", everything else empty or 0.
EdsObject UnreadEdsObject();

struct EdsObjectMatch {
    EdsObject Object; // the empty EdsObject when not found
    bool Found = false;
};

struct EdsPdoCounts {
    std::int16_t rxCount = 0;
    std::int16_t txCount = 0;
};

class EdsObjectTable {
public:
    // Every entry empty, EdsObjectCount 0, EdsGranularity 0.
    EdsObjectTable();

    // Entry at position 0..4000; outside is the SubscriptOutOfRange error.
    const EdsObject& At(int position) const;
    std::int16_t EdsObjectCount() const { return count_; }
    // The last "Granularity=" value read by any load since the table was made.
    std::int32_t EdsGranularity() const { return granularity_; }

    // The first position in 1..EdsObjectCount whose index reads as index and, unless
    // subIndex is -1, whose sub-index reads as subIndex; 0 when there is none.
    int FindPosition(std::int32_t index, std::int16_t subIndex) const;

    // The loader's side. BeginLoad sets EdsObjectCount to 1 and resets entries 1..4000 to
    // UnreadEdsObject() (entry 0 is left alone). AddSection takes the next position (past
    // 4000 is the SubscriptOutOfRange error, the count then staying at 4000) and stores
    // the section's index texts; StoreSectionKeys fills that entry's key fields (4..13)
    // from keys.
    void BeginLoad();
    void AddSection(std::int32_t index, std::int32_t subIndex);
    void StoreSectionKeys(EdsObject&& keys);
    void SetGranularity(std::int32_t value) { granularity_ = value; }

private:
    std::vector<EdsObject> objects_; // positions 0..4000
    // The index and sub-index texts of each position read as numbers, for the look-ups.
    std::vector<std::int32_t> indexNumbers_;
    std::vector<std::int32_t> subNumbers_;
    std::int16_t count_ = 0;
    std::int32_t granularity_ = 0;
    // Positions above this one hold UnreadEdsObject(); a fresh table holds empty entries.
    int dirtyUpTo_ = kLastEdsObject;
};

// The look-ups of the system, by their names.

// A copy of the entry at position 0..4000; outside is the SubscriptOutOfRange error.
EdsObject GetEdsObject(const EdsObjectTable& table, int position);
std::int16_t GetEdsObjectCount(const EdsObjectTable& table);
// The first entry from position 1 up that matches (see FindPosition). With subIndex -1 the
// sub-index is not compared: the first entry of the index wins, main object or not.
EdsObjectMatch FindEdsObject(const EdsObjectTable& table, std::int32_t index,
                             std::int16_t subIndex);
// The PDOs the loaded EDS describes. TX: each i in 0x1800..0x1810 whose sub-index 2 and
// whose 0x1A00-range mapping object (i + 0x200) are both present; RX: each i in
// 0x1400..0x1410 whose main entry and i + 0x200 are both present. The asymmetry and the
// bound are the system's rule: PDOs above 0x1810/0x1410 are not counted.
EdsPdoCounts CountEdsPdos(const EdsObjectTable& table);

} // namespace velmora
