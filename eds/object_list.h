#pragma once

// The node's EDS objects as the mapping and parameter editors offer them in their object
// chooser: every entry of the loaded EDS table except the empty ones and the headers of
// records and arrays, with the item text the chooser shows and the length the editors
// propose from the object's data type.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

class EdsObjectTable;

inline constexpr int kLastListedObject = 3500; // entries 0..3500

struct ListedObject {
    std::string Name; // the EDS ParameterName, as the reader keeps it (lower-case)
    std::int32_t ObjectType = 0;
    std::int32_t DataType = 0;
    std::int32_t Index = 0;
    std::int32_t SubIndex = -1; // -1 for a main object
    std::string DefaultValue;
    bool PdoMappable = false;
    bool Writable = false; // false when the access type is "ro"

    bool operator==(const ListedObject&) const = default;
};

// The first item of both choosers.
inline constexpr const char* kChooseObjectItem = "Scegli un parametro";

// Builds the list from the loaded table, positions 1..EdsObjectCount in order. An entry is
// left out when its index text is empty, or when its object type is not 7 (a simple
// variable) and its sub-index is -1 or less. More than 3501 listed entries is the
// SubscriptOutOfRange error.
std::vector<ListedObject> BuildObjectList(const EdsObjectTable& table);

// "[" index " sub " sub-index "] " name, or "[" index "] " name for a negative sub-index;
// both numbers in upper-case hexadecimal without leading zeros ("[6064 sub 0] position").
std::string ObjectItemText(const ListedObject& object);

// The name a chooser text stands for: the text from the second character after its first
// "]" ("[6064 sub 0] position actual value" gives "position actual value"; the blank after
// "]" is dropped, whatever character it is); a text without "]" as it is.
std::string NameFromChooserText(std::string_view text);

// The byte count the editors propose for a data type (the number the EDS gives, e.g. 7 for
// 0x0007): the program's own table, pairs and gaps included; 0 for a type not in it.
int BytesForDataType(std::int32_t dataType);

} // namespace velmora
