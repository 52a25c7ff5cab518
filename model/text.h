#pragma once

// Text rules shared by every part of the core: the case changes and the trimming that the
// system's rules name, and character positions counted on UTF-8 text.

#include <cstddef>
#include <string>
#include <string_view>

namespace velmora {

// Lower-cases the ASCII letters and the letters of Windows-1252 (À-Þ except ×, Š, Œ, Ž, Ÿ);
// every other character is kept.
std::string LowerCase(std::string_view text);
// The reverse of LowerCase: a-z, à-þ except ÷, š, œ, ž, ÿ become upper case.
std::string UpperCase(std::string_view text);

// Removes blanks (spaces only; tabs are content) at both ends, or at one end.
std::string_view Trim(std::string_view text);
std::string_view TrimLeft(std::string_view text);
std::string_view TrimRight(std::string_view text);

// Number of characters (code points) of UTF-8 text.
std::size_t CharCount(std::string_view text);
// Byte offset of character number `chars` (0-based); the text's size when it has fewer.
std::size_t CharOffset(std::string_view text, std::size_t chars);
// `count` characters from character `first` (0-based); shorter at the end of the text.
std::string_view CharSlice(std::string_view text, std::size_t first,
                           std::size_t count = std::string_view::npos);

// Decimal text of a whole number, without padding.
std::string DecimalText(long long value);
// Upper-case hexadecimal digits of a number, without prefix or leading zeros; a negative
// value is written as its two's complement word: 16 bits when it fits ("FFFF" for -1),
// else 32 bits.
std::string HexText(long long value);

} // namespace velmora
