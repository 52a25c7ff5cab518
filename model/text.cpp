#include "model/text.h"

#include "model/cp1252.h"

#include <cstdio>

namespace velmora {

namespace {

// Two-byte sequences of the Latin-1 block are C3 xx (U+00C0..U+00FF) and C5 xx for
// Š š Œ œ Ž ž Ÿ; C3 BF is ÿ.
template <bool ToLower> std::string ChangeCase(std::string_view text) {
    std::string out(text);
    const bool ascii = IsAscii(text);
    for (std::size_t i = 0; i < out.size(); ++i) {
        auto c = static_cast<unsigned char>(out[i]);
        if (c < 0x80) {
            if (ToLower && c >= 'A' && c <= 'Z') {
                out[i] = static_cast<char>(c + 32);
            } else if (!ToLower && c >= 'a' && c <= 'z') {
                out[i] = static_cast<char>(c - 32);
            }
            continue;
        }
        if (ascii || i + 1 >= out.size()) {
            continue;
        }
        auto& next = reinterpret_cast<unsigned char&>(out[i + 1]);
        if (c == 0xC3) {
            // U+00C0..U+00DE map to U+00E0..U+00FE, except × (U+00D7) and ÷ (U+00F7).
            if (ToLower && next >= 0x80 && next <= 0x9E && next != 0x97) {
                next = static_cast<unsigned char>(next + 0x20);
            } else if (!ToLower && next >= 0xA0 && next <= 0xBE && next != 0xB7) {
                next = static_cast<unsigned char>(next - 0x20);
            } else if (!ToLower && next == 0xBF) {
                out.replace(i, 2, "\xC5\xB8"); // ÿ -> Ÿ (U+0178)
            }
            ++i;
        } else if (c == 0xC5) {
            if (ToLower && (next == 0xA0 || next == 0x92 || next == 0xBD)) {
                next = static_cast<unsigned char>(next + 1); // Š Œ Ž
            } else if (!ToLower && (next == 0xA1 || next == 0x93 || next == 0xBE)) {
                next = static_cast<unsigned char>(next - 1); // š œ ž
            } else if (ToLower && next == 0xB8) {
                out.replace(i, 2, "\xC3\xBF"); // Ÿ -> ÿ
            }
            ++i;
        }
    }
    return out;
}

} // namespace

std::string LowerCase(std::string_view text) {
    return ChangeCase<true>(text);
}

std::string UpperCase(std::string_view text) {
    return ChangeCase<false>(text);
}

std::string_view TrimLeft(std::string_view text) {
    const auto first = text.find_first_not_of(' ');
    return first == std::string_view::npos ? std::string_view() : text.substr(first);
}

std::string_view TrimRight(std::string_view text) {
    const auto last = text.find_last_not_of(' ');
    return last == std::string_view::npos ? std::string_view() : text.substr(0, last + 1);
}

std::string_view Trim(std::string_view text) {
    return TrimRight(TrimLeft(text));
}

std::size_t CharCount(std::string_view text) {
    std::size_t count = 0;
    for (unsigned char c : text) {
        if ((c & 0xC0) != 0x80) {
            ++count;
        }
    }
    return count;
}

std::size_t CharOffset(std::string_view text, std::size_t chars) {
    std::size_t seen = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if ((static_cast<unsigned char>(text[i]) & 0xC0) != 0x80) {
            if (seen == chars) {
                return i;
            }
            ++seen;
        }
    }
    return text.size();
}

std::string_view CharSlice(std::string_view text, std::size_t first, std::size_t count) {
    const std::size_t begin = CharOffset(text, first);
    const std::string_view rest = text.substr(begin);
    if (count == std::string_view::npos) {
        return rest;
    }
    return rest.substr(0, CharOffset(rest, count));
}

std::string DecimalText(long long value) {
    return std::to_string(value);
}

std::string HexText(long long value) {
    if (value < 0 && value >= -32768) {
        value &= 0xFFFF;
    } else if (value < 0) {
        value &= 0xFFFFFFFFLL;
    }
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%llX", static_cast<unsigned long long>(value));
    return buffer;
}

} // namespace velmora
