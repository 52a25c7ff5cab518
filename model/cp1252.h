#pragma once

// The one text codec at the file boundary. Every file Velmora reads or writes holds
// Windows-1252 text, while all text inside the program is UTF-8. The five bytes that
// Windows-1252 leaves undefined map to the C1 controls of the same value and back, so a
// file read and written again keeps every byte.

#include <cstddef>
#include <string>
#include <string_view>

namespace velmora {

// True when text holds only ASCII, which reads the same in both encodings. Written without
// an early exit so that the compiler can vectorise it.
inline bool IsAscii(std::string_view text) {
    unsigned char seen = 0;
    for (char c : text) {
        seen |= static_cast<unsigned char>(c);
    }
    return seen < 0x80;
}

// Decodes Windows-1252 bytes into UTF-8. Never fails.
std::string Cp1252ToUtf8(std::string_view bytes);

// Encodes UTF-8 text into Windows-1252. A character that Windows-1252 cannot hold, and every
// byte of a malformed UTF-8 sequence, becomes "?".
std::string Utf8ToCp1252(std::string_view text);

// Number of bytes Utf8ToCp1252(text) would produce, without building it.
std::size_t Cp1252Size(std::string_view text);

} // namespace velmora
