#include "model/cp1252.h"

#include <array>
#include <cstdint>

namespace velmora {

namespace {

// Code points of the bytes 0x80..0x9F; the five undefined bytes map to themselves.
constexpr std::array<char32_t, 32> kHighControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

void AppendUtf8(std::string& out, char32_t cp) {
    if (cp < 0x80) {
        out += static_cast<char>(cp);
    } else if (cp < 0x800) {
        out += static_cast<char>(0xC0 | (cp >> 6));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else {
        out += static_cast<char>(0xE0 | (cp >> 12));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    }
}

// Reads one UTF-8 sequence at text[pos]; advances pos. Returns -1 for a malformed byte
// (pos then moves past that single byte).
long NextCodePoint(std::string_view text, std::size_t& pos) {
    const auto lead = static_cast<unsigned char>(text[pos]);
    if (lead < 0x80) {
        ++pos;
        return lead;
    }
    int extra = 0;
    char32_t cp = 0;
    char32_t min = 0;
    if ((lead & 0xE0) == 0xC0) {
        extra = 1;
        cp = lead & 0x1F;
        min = 0x80;
    } else if ((lead & 0xF0) == 0xE0) {
        extra = 2;
        cp = lead & 0x0F;
        min = 0x800;
    } else if ((lead & 0xF8) == 0xF0) {
        extra = 3;
        cp = lead & 0x07;
        min = 0x10000;
    } else {
        ++pos;
        return -1;
    }
    if (pos + static_cast<std::size_t>(extra) >= text.size()) {
        ++pos;
        return -1;
    }
    for (int i = 1; i <= extra; ++i) {
        const auto c = static_cast<unsigned char>(text[pos + i]);
        if ((c & 0xC0) != 0x80) {
            ++pos;
            return -1;
        }
        cp = (cp << 6) | (c & 0x3F);
    }
    if (cp < min || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) {
        ++pos;
        return -1;
    }
    pos += extra + 1;
    return static_cast<long>(cp);
}

int EncodeCodePoint(long cp) {
    if (cp < 0) {
        return '?';
    }
    if (cp < 0x80 || (cp >= 0xA0 && cp <= 0xFF)) {
        return static_cast<int>(cp);
    }
    for (std::size_t i = 0; i < kHighControls.size(); ++i) {
        if (kHighControls[i] == static_cast<char32_t>(cp)) {
            return static_cast<int>(0x80 + i);
        }
    }
    return '?';
}

} // namespace

std::string Cp1252ToUtf8(std::string_view bytes) {
    if (IsAscii(bytes)) {
        return std::string(bytes);
    }
    std::string out;
    out.reserve(bytes.size() + bytes.size() / 2);
    for (unsigned char c : bytes) {
        if (c < 0x80) {
            out += static_cast<char>(c);
        } else if (c < 0xA0) {
            AppendUtf8(out, kHighControls[c - 0x80]);
        } else {
            AppendUtf8(out, c);
        }
    }
    return out;
}

std::string Utf8ToCp1252(std::string_view text) {
    if (IsAscii(text)) {
        return std::string(text);
    }
    std::string out;
    out.reserve(text.size());
    std::size_t pos = 0;
    while (pos < text.size()) {
        out += static_cast<char>(EncodeCodePoint(NextCodePoint(text, pos)));
    }
    return out;
}

std::size_t Cp1252Size(std::string_view text) {
    std::size_t count = 0;
    std::size_t pos = 0;
    while (pos < text.size()) {
        if (static_cast<unsigned char>(text[pos]) < 0x80) {
            ++pos;
        } else {
            NextCodePoint(text, pos);
        }
        ++count;
    }
    return count;
}

} // namespace velmora
