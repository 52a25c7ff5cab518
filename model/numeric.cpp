#include "model/numeric.h"

#include "model/runtime_error.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace velmora {

namespace {

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

int HexDigit(char c) {
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    if (c >= 'a' && c <= 'f') {
        return c - 'a' + 10;
    }
    if (c >= 'A' && c <= 'F') {
        return c - 'A' + 10;
    }
    return -1;
}

// Length of the decimal number at the start of text (after any sign), or 0 when there is
// none. Leading blanks are not part of it.
std::size_t ScanNumber(std::string_view text, bool& hasDigits) {
    std::size_t i = 0;
    hasDigits = false;
    if (i < text.size() && (text[i] == '+' || text[i] == '-')) {
        ++i;
    }
    while (i < text.size() && IsDigit(text[i])) {
        ++i;
        hasDigits = true;
    }
    if (i < text.size() && text[i] == '.') {
        ++i;
        while (i < text.size() && IsDigit(text[i])) {
            ++i;
            hasDigits = true;
        }
    }
    if (hasDigits && i < text.size() && (text[i] == 'e' || text[i] == 'E')) {
        std::size_t j = i + 1;
        if (j < text.size() && (text[j] == '+' || text[j] == '-')) {
            ++j;
        }
        if (j < text.size() && IsDigit(text[j])) {
            while (j < text.size() && IsDigit(text[j])) {
                ++j;
            }
            i = j;
        }
    }
    return i;
}

// Locale-independent: the GUI runs under the user's locale, where strtod may expect ",".
double Convert(std::string_view number) {
    if (!number.empty() && number.front() == '+') {
        number.remove_prefix(1);
    }
    double value = 0.0;
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
    if (error == std::errc::result_out_of_range) {
        // Too large reads as infinity, too small as zero.
        const bool negative = !number.empty() && number.front() == '-';
        const auto exponent = number.find_first_of("eE");
        const std::string_view mantissa = number.substr(0, exponent);
        const std::string_view whole = mantissa.substr(0, mantissa.find('.'));
        const bool tiny = exponent != std::string_view::npos
                              ? exponent + 1 < number.size() && number[exponent + 1] == '-'
                              : whole.find_first_of("123456789") == std::string_view::npos;
        if (tiny) {
            return negative ? -0.0 : 0.0;
        }
        return negative ? -std::numeric_limits<double>::infinity()
                        : std::numeric_limits<double>::infinity();
    }
    (void)end;
    return value;
}

} // namespace

double ReadNumber(std::string_view text) {
    std::size_t start = 0;
    while (start < text.size() && text[start] == ' ') {
        ++start;
    }
    text.remove_prefix(start);
    bool hasDigits = false;
    const std::size_t length = ScanNumber(text, hasDigits);
    return hasDigits ? Convert(text.substr(0, length)) : 0.0;
}

std::uint64_t ReadHex(std::string_view text) {
    std::uint64_t value = 0;
    for (char c : text) {
        const int digit = HexDigit(c);
        if (digit < 0) {
            break;
        }
        if (value > (std::numeric_limits<std::uint64_t>::max() >> 4)) {
            return std::numeric_limits<std::uint64_t>::max();
        }
        value = (value << 4) | static_cast<std::uint64_t>(digit);
    }
    return value;
}

std::optional<double> ParseDecimal(std::string_view text) {
    std::size_t start = 0;
    while (start < text.size() && text[start] == ' ') {
        ++start;
    }
    text.remove_prefix(start);
    bool hasDigits = false;
    const std::size_t length = ScanNumber(text, hasDigits);
    if (!hasDigits) {
        return std::nullopt;
    }
    for (std::size_t i = length; i < text.size(); ++i) {
        if (text[i] != ' ') {
            return std::nullopt;
        }
    }
    return Convert(text.substr(0, length));
}

double RoundHalfEven(double value) {
    if (!std::isfinite(value)) {
        return value;
    }
    const double floor = std::floor(value);
    const double diff = value - floor;
    if (diff < 0.5) {
        return floor;
    }
    if (diff > 0.5) {
        return floor + 1.0;
    }
    return std::fmod(floor, 2.0) == 0.0 ? floor : floor + 1.0;
}

std::int16_t ToInt16(double value) {
    const double rounded = RoundHalfEven(value);
    if (!(rounded >= -32768.0 && rounded <= 32767.0)) {
        throw RuntimeError(ErrorCode::Overflow, FormatGeneral(value));
    }
    return static_cast<std::int16_t>(rounded);
}

std::int32_t ToInt32(double value) {
    const double rounded = RoundHalfEven(value);
    if (!(rounded >= -2147483648.0 && rounded <= 2147483647.0)) {
        throw RuntimeError(ErrorCode::Overflow, FormatGeneral(value));
    }
    return static_cast<std::int32_t>(rounded);
}

std::int16_t HexToInt16(std::string_view text) {
    const std::uint64_t value = ReadHex(text);
    if (value > 32767) {
        throw RuntimeError(ErrorCode::Overflow, "&H" + std::string(text));
    }
    return static_cast<std::int16_t>(value);
}

std::string FormatGeneral(double value, char decimalSeparator) {
    if (value == 0.0) {
        return "0";
    }
    char buffer[64];
    const auto result =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, 15);
    std::string text(buffer, result.ptr);
    for (char& c : text) {
        if (c == '.') {
            c = decimalSeparator;
        } else if (c == 'e') {
            c = 'E';
        }
    }
    return text;
}

std::string StandardNumberText(long long value) {
    return value < 0 ? std::to_string(value) : " " + std::to_string(value);
}

} // namespace velmora
