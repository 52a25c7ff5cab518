#pragma once

// Reading numbers out of text and turning them into the fixed-width fields of the records.
//
// The standard numeric reading takes blanks, a sign, digits, a decimal point and an exponent
// and stops at the first character that cannot continue a number ("12abc" gives 12, "" gives
// 0). The hexadecimal reading ("&h" + text) takes hexadecimal digits up to the first other
// character and reads them unsigned ("FFFF" gives 65535). Conversion to an integer rounds
// halves to the even neighbour.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace velmora {

// Standard numeric reading. Blanks are skipped only before the sign; a blank or tab after it
// ends the number; an exponent is e/E, an optional sign and at least one digit. A value too
// large for a double reads as infinity.
double ReadNumber(std::string_view text);

// Hexadecimal reading of "&h" + text. Saturates at UINT64_MAX for absurdly long input.
std::uint64_t ReadHex(std::string_view text);

// The whole text must be one decimal number: optional blanks, sign, digits, point, exponent,
// optional blanks, nothing else. Empty or anything else gives nullopt.
std::optional<double> ParseDecimal(std::string_view text);

// Rounds to the nearest integer, halves to the even neighbour (2.5 -> 2, 3.5 -> 4).
double RoundHalfEven(double value);

// Rounds half-even and narrows; a value outside the field's range (or not a number) is the
// Overflow run-time error.
std::int16_t ToInt16(double value);
std::int32_t ToInt32(double value);
// The hexadecimal reading of text, narrowed to a 16-bit signed field: above 32767 is the
// Overflow run-time error.
std::int16_t HexToInt16(std::string_view text);

// The general number format: at most 15 significant digits, no trailing zeros, the given
// decimal separator ("0.53", "0.316", "2").
std::string FormatGeneral(double value, char decimalSeparator = '.');

// The standard number-to-text conversion of a whole number: non-negative numbers get a
// leading blank (" 0", " 12", "-3").
std::string StandardNumberText(long long value);

} // namespace velmora
