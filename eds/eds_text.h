#pragma once

// The three text rules of the EDS reader, also used by the editors that list EDS objects:
// recognising an object section by its name, reading a key's value as a number, and
// reading it as text. They work line by line on UTF-8 text and never fail: what does not
// read as a number gives 0, and a number too large for 32 bits gives 2147483647.

#include <cstdint>
#include <string>
#include <string_view>

namespace velmora {

struct EdsSectionName {
    std::int32_t index = -1;    // -1: not an object section
    std::int32_t subIndex = -1; // -1: a main object section
};

// The object index and sub-index named by a line. The line is lower-cased and trimmed, cut
// after its first "[" and, when it holds a "]", shortened by its last character. A text of
// one to four characters, or one with "sub" from its third character on, names an object
// section: the parts before and after "sub" are read as hexadecimal. Everything else gives
// (-1, -1). The rule does not ask for a "[": a key line of four characters or fewer, or with
// "sub" in it, names a section too; the reader relies on that leniency.
EdsSectionName ParseEdsSectionName(std::string_view line);

// The value of a key line as a 32-bit number. The line is lower-cased and trimmed; the
// value is what follows the first "=", then what follows the first "[", without the last
// character when a "]" remains. A value holding "0x" is read as hexadecimal from after the
// first "0x", whatever precedes it ("$nodeid+0x180" gives 384). Otherwise it is read as a
// decimal number (isHex false, "12abc" gives 12) or as hexadecimal digits (isHex true).
// Hexadecimal is read unsigned; any value outside the 32-bit range gives 2147483647.
std::int32_t ParseEdsNumber(std::string_view line, bool isHex);

// The value of a key line as text, cut as ParseEdsNumber cuts it: lower-case, after the
// first "=" and "[", without a closing character.
std::string ParseEdsText(std::string_view line);

// The same rules on a line that is already lower-cased and trimmed (the reader prepares
// each line once).
EdsSectionName ParsePreparedSectionName(std::string_view prepared);
std::int32_t ParsePreparedNumber(std::string_view prepared, bool isHex);
std::string_view PreparedValue(std::string_view prepared);

// Lower-cases (LowerCase) and trims a line into out, reusing its storage; returns the
// trimmed view into out.
std::string_view PrepareEdsLine(std::string_view line, std::string& out);

// Hexadecimal digits as the reader reads them: unsigned, above 2147483647 gives 2147483647.
std::int32_t ReadEdsHex(std::string_view text);

} // namespace velmora
