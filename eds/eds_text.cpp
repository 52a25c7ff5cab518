#include "eds/eds_text.h"

#include "model/numeric.h"
#include "model/text.h"

#include <limits>

namespace velmora {

namespace {

constexpr std::int32_t kEdsOverflow = std::numeric_limits<std::int32_t>::max();

// A conversion that does not fit 32 bits takes the reader's overflow value.
std::int32_t ClampDecimal(double value) {
    const double rounded = RoundHalfEven(value);
    if (!(rounded >= -2147483648.0 && rounded <= 2147483647.0)) {
        return kEdsOverflow;
    }
    return static_cast<std::int32_t>(rounded);
}

// The text without its last UTF-8 character.
std::string_view DropLastChar(std::string_view text) {
    if (text.empty()) {
        return text;
    }
    std::size_t end = text.size() - 1;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) {
        --end;
    }
    return text.substr(0, end);
}

} // namespace

std::int32_t ReadEdsHex(std::string_view text) {
    const std::uint64_t value = ReadHex(text);
    return value > static_cast<std::uint64_t>(kEdsOverflow) ? kEdsOverflow
                                                            : static_cast<std::int32_t>(value);
}

std::string_view PrepareEdsLine(std::string_view line, std::string& out) {
    line = Trim(line);
    out.resize(line.size());
    for (std::size_t i = 0; i < line.size(); ++i) {
        const auto byte = static_cast<unsigned char>(line[i]);
        if (byte >= 0x80) {
            out = LowerCase(line);
            break;
        }
        out[i] = static_cast<char>(byte >= 'A' && byte <= 'Z' ? byte + 32 : byte);
    }
    return out;
}

EdsSectionName ParsePreparedSectionName(std::string_view text) {
    EdsSectionName result;
    const auto open = text.find('[');
    if (open != std::string_view::npos) {
        text.remove_prefix(open + 1);
    }
    if (text.find(']') != std::string_view::npos) {
        // The last character goes, whatever it is: after "[1000]\t" the "]" stays.
        text = DropLastChar(text);
    }
    const std::size_t from = CharOffset(text, 2);
    const std::size_t sub = from < text.size() ? text.find("sub", from) : std::string_view::npos;
    if (sub == std::string_view::npos) {
        const std::size_t length = CharCount(text);
        if (length == 0 || length > 4) {
            return result;
        }
        result.index = ReadEdsHex(text);
        return result;
    }
    result.index = ReadEdsHex(text.substr(0, sub));
    result.subIndex = ReadEdsHex(text.substr(sub + 3));
    return result;
}

std::string_view PreparedValue(std::string_view text) {
    auto cut = text.find('=');
    if (cut != std::string_view::npos) {
        text.remove_prefix(cut + 1);
    }
    cut = text.find('[');
    if (cut != std::string_view::npos) {
        text.remove_prefix(cut + 1);
    }
    if (text.find(']') != std::string_view::npos) {
        text = DropLastChar(text);
    }
    return text;
}

std::int32_t ParsePreparedNumber(std::string_view prepared, bool isHex) {
    const std::string_view value = PreparedValue(prepared);
    const auto prefix = value.find("0x");
    if (prefix != std::string_view::npos) {
        return ReadEdsHex(value.substr(prefix + 2));
    }
    if (!isHex) {
        return ClampDecimal(ReadNumber(value));
    }
    return ReadEdsHex(value);
}

EdsSectionName ParseEdsSectionName(std::string_view line) {
    std::string buffer;
    return ParsePreparedSectionName(PrepareEdsLine(line, buffer));
}

std::int32_t ParseEdsNumber(std::string_view line, bool isHex) {
    std::string buffer;
    return ParsePreparedNumber(PrepareEdsLine(line, buffer), isHex);
}

std::string ParseEdsText(std::string_view line) {
    std::string buffer;
    return std::string(PreparedValue(PrepareEdsLine(line, buffer)));
}

} // namespace velmora
