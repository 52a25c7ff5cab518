#include "model/cp1252.h"
#include "model/numeric.h"
#include "model/runtime_error.h"
#include "model/text.h"

#include <cmath>

#include <gtest/gtest.h>

namespace velmora {
namespace {

TEST(Cp1252, EveryByteRoundTripsThroughUtf8) {
    std::string all;
    for (int b = 0; b < 256; ++b) {
        all += static_cast<char>(b);
    }
    const std::string utf8 = Cp1252ToUtf8(all);
    EXPECT_EQ(Utf8ToCp1252(utf8), all);
    EXPECT_EQ(Cp1252Size(utf8), 256u);
    EXPECT_EQ(Cp1252ToUtf8("\x80\xE8\x81"), "\xE2\x82\xAC\xC3\xA8\xC2\x81"); // € è U+0081
}

TEST(Cp1252, UnencodableAndMalformedTextBecomesQuestionMarks) {
    EXPECT_EQ(Utf8ToCp1252("a\xE2\x86\x92z"), "a?z");   // → has no byte
    EXPECT_EQ(Utf8ToCp1252("\xC3"), "?");               // cut sequence
    EXPECT_EQ(Utf8ToCp1252("\xFF\xFE"), "??");          // not UTF-8 at all
    EXPECT_EQ(Utf8ToCp1252("\xF0\x9F\x98\x80!"), "?!"); // emoji
    EXPECT_EQ(Utf8ToCp1252("\xC0\xAF"), "??");          // overlong "/"
    EXPECT_EQ(Cp1252Size("\xF0\x9F\x98\x80!"), 2u);
}

TEST(Text, CaseChangesCoverWindows1252LettersOnly) {
    EXPECT_EQ(LowerCase("ParameterName=TPDO1 Mapping"), "parametername=tpdo1 mapping");
    EXPECT_EQ(LowerCase("ÀÉÖ×ÞŠŒŽŸß"), "àéö×þšœžÿß");
    EXPECT_EQ(UpperCase("velocità ÷ œuvre ÿ"), "VELOCITÀ ÷ ŒUVRE Ÿ");
    EXPECT_EQ(UpperCase(LowerCase("ÀÁÂÃÄÅÆÇÈÉÊËÌÍÎÏÐÑÒÓÔÕÖØÙÚÛÜÝÞ")),
              "ÀÁÂÃÄÅÆÇÈÉÊËÌÍÎÏÐÑÒÓÔÕÖØÙÚÛÜÝÞ");
}

TEST(Text, TrimRemovesBlanksButKeepsTabs) {
    EXPECT_EQ(Trim("  a b  "), "a b");
    EXPECT_EQ(Trim("\ta\t"), "\ta\t");
    EXPECT_EQ(Trim("   "), "");
    EXPECT_EQ(TrimLeft("  x "), "x ");
    EXPECT_EQ(TrimRight("  x "), "  x");
}

TEST(Text, CharacterPositionsCountCharactersNotBytes) {
    EXPECT_EQ(CharCount("così"), 4u);
    EXPECT_EQ(CharSlice("àbcdè", 1, 3), "bcd");
    EXPECT_EQ(CharSlice("àbcdè", 4), "è");
    EXPECT_EQ(CharSlice("ab", 5, 2), "");
    EXPECT_EQ(HexText(0x18A), "18A");
    EXPECT_EQ(HexText(-1), "FFFF");
}

TEST(Numeric, StandardReadingStopsAtTheFirstCharacterThatEndsANumber) {
    EXPECT_EQ(ReadNumber("12abc"), 12);
    EXPECT_EQ(ReadNumber(""), 0);
    EXPECT_EQ(ReadNumber("1.5"), 1.5);
    EXPECT_EQ(ReadNumber("  -7"), -7);
    EXPECT_EQ(ReadNumber("1 2"), 1);
    EXPECT_EQ(ReadNumber("1\t2"), 1);
    EXPECT_EQ(ReadNumber("- 5"), 0);
    EXPECT_EQ(ReadNumber("2e3x"), 2000);
    EXPECT_EQ(ReadNumber("2e"), 2);
    EXPECT_EQ(ReadNumber("2e+"), 2);
    EXPECT_EQ(ReadNumber(".5"), 0.5);
    EXPECT_EQ(ReadNumber("abc"), 0);
    EXPECT_TRUE(std::isinf(ReadNumber("1e999")));
    EXPECT_EQ(ReadNumber("1e-999"), 0);
}

TEST(Numeric, HexReadingIsUnsignedAndStopsAtTheFirstNonDigit) {
    EXPECT_EQ(ReadHex("FFFF"), 65535u);
    EXPECT_EQ(ReadHex("1A00sub"), 0x1A00u);
    EXPECT_EQ(ReadHex("1a0"), 0x1A0u);
    EXPECT_EQ(ReadHex(""), 0u);
    EXPECT_EQ(ReadHex("g1"), 0u);
    EXPECT_EQ(ReadHex(std::string(40, 'F')), UINT64_MAX);
    EXPECT_EQ(HexToInt16("57F"), 0x57F);
    EXPECT_THROW(HexToInt16("8000"), RuntimeError);
}

TEST(Numeric, ConversionRoundsHalvesToEvenAndChecksTheRange) {
    EXPECT_EQ(ToInt16(2.5), 2);
    EXPECT_EQ(ToInt16(3.5), 4);
    EXPECT_EQ(ToInt16(-2.5), -2);
    EXPECT_EQ(ToInt16(32767.4), 32767);
    EXPECT_EQ(ToInt16(-32768), -32768);
    try {
        ToInt16(99999);
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Code(), ErrorCode::Overflow);
    }
    EXPECT_THROW(ToInt16(32767.5), RuntimeError); // rounds to 32768
    EXPECT_THROW(ToInt32(2147483648.0), RuntimeError);
    EXPECT_THROW(ToInt32(ReadNumber("1e999")), RuntimeError);
}

TEST(Numeric, StrictDecimalAcceptsOneNumberWithBlanksAround) {
    EXPECT_EQ(ParseDecimal(" 16 "), 16.0);
    EXPECT_EQ(ParseDecimal("-1.5e1"), -15.0);
    EXPECT_EQ(ParseDecimal("12abc"), std::nullopt);
    EXPECT_EQ(ParseDecimal(""), std::nullopt);
    EXPECT_EQ(ParseDecimal("x"), std::nullopt);
    EXPECT_EQ(ParseDecimal("\t8"), std::nullopt);
    EXPECT_EQ(ParseDecimal("."), std::nullopt);
}

TEST(Numeric, GeneralFormatDropsTrailingZeros) {
    EXPECT_EQ(FormatGeneral(0.016 * 17 + 0.086 * 3), "0.53");
    EXPECT_EQ(FormatGeneral(0.016 * 9 + 0.086 * 2), "0.316");
    EXPECT_EQ(FormatGeneral(4 * (0.016 * 9 + 0.086 * 2)), "1.264");
    EXPECT_EQ(FormatGeneral(2.0), "2");
    EXPECT_EQ(FormatGeneral(0.0), "0");
    EXPECT_EQ(FormatGeneral(0.5, ','), "0,5");
    EXPECT_EQ(StandardNumberText(0), " 0");
    EXPECT_EQ(StandardNumberText(-3), "-3");
}

} // namespace
} // namespace velmora
