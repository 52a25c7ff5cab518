#include "model/cp1252.h"
#include "model/numeric.h"
#include "model/runtime_error.h"
#include "model/text.h"

#include <cmath>

#include <gtest/gtest.h>

namespace velmora {
namespace {

TEST(Cp1252, EveryByteRoundTripsAndUnencodableTextBecomesQuestionMarks) {
    std::string all;
    for (int b = 0; b < 256; ++b) {
        all += static_cast<char>(b);
    }
    EXPECT_EQ(Utf8ToCp1252(Cp1252ToUtf8(all)), all);
    EXPECT_EQ(Cp1252ToUtf8("\x80\xE8\x81"), "\xE2\x82\xAC\xC3\xA8\xC2\x81"); // € è U+0081
    EXPECT_EQ(Utf8ToCp1252("a\xE2\x86\x92z"), "a?z");                        // → has no byte
    EXPECT_EQ(Utf8ToCp1252("\xC3"), "?");                                    // cut sequence
    EXPECT_EQ(Utf8ToCp1252("\xC0\xAF"), "??");                               // overlong "/"
    EXPECT_EQ(Cp1252Size("\xF0\x9F\x98\x80!"), 2u);                          // emoji + "!"
}

TEST(Text, CaseTrimAndCharacterPositions) {
    EXPECT_EQ(LowerCase("TPDO1 ÀÉ×ÞŠŒŽŸß"), "tpdo1 àé×þšœžÿß");
    EXPECT_EQ(UpperCase("velocità ÷ œuvre ÿ"), "VELOCITÀ ÷ ŒUVRE Ÿ");
    EXPECT_EQ(Trim("  a b  "), "a b");
    EXPECT_EQ(Trim("\ta\t"), "\ta\t"); // tabs are content
    EXPECT_EQ(CharCount("così"), 4u);
    EXPECT_EQ(CharSlice("àbcdè", 1, 3), "bcd");
    EXPECT_EQ(CharSlice("ab", 5, 2), "");
    EXPECT_EQ(HexText(0x18A), "18A");
    EXPECT_EQ(HexText(-1), "FFFF");
}

TEST(Numeric, StandardReadingStopsAtTheFirstCharacterThatEndsANumber) {
    const std::pair<const char*, double> cases[] = {
        {"12abc", 12}, {"", 0},        {"1.5", 1.5}, {"  -7", -7}, {"1 2", 1},    {"1\t2", 1},
        {"- 5", 0},    {"2e3x", 2000}, {"2e+", 2},   {".5", 0.5},  {"1e-999", 0},
    };
    for (const auto& [text, value] : cases) {
        EXPECT_EQ(ReadNumber(text), value) << text;
    }
    EXPECT_TRUE(std::isinf(ReadNumber("1e999")));
    EXPECT_EQ(ParseDecimal(" 16 "), 16.0);
    EXPECT_EQ(ParseDecimal("-1.5e1"), -15.0);
    for (const char* notANumber : {"12abc", "", "x", "\t8", "."}) {
        EXPECT_EQ(ParseDecimal(notANumber), std::nullopt) << notANumber;
    }
}

TEST(Numeric, HexReadingIsUnsignedAndConversionsRoundHalvesToEven) {
    EXPECT_EQ(ReadHex("FFFF"), 65535u);
    EXPECT_EQ(ReadHex("1a00sub"), 0x1A00u);
    EXPECT_EQ(ReadHex("g1"), 0u);
    EXPECT_EQ(ReadHex(std::string(40, 'F')), UINT64_MAX);
    EXPECT_THROW(HexToInt16("8000"), RuntimeError);

    EXPECT_EQ(ToInt16(2.5), 2);
    EXPECT_EQ(ToInt16(3.5), 4);
    EXPECT_EQ(ToInt16(-2.5), -2);
    EXPECT_EQ(ToInt16(-32768), -32768);
    EXPECT_THROW(ToInt16(32767.5), RuntimeError); // rounds to 32768
    EXPECT_THROW(ToInt32(ReadNumber("1e999")), RuntimeError);
    try {
        ToInt16(99999);
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Code(), ErrorCode::Overflow);
    }
}

TEST(Numeric, GeneralFormatDropsTrailingZeros) {
    EXPECT_EQ(FormatGeneral(0.016 * 17 + 0.086 * 3), "0.53");
    EXPECT_EQ(FormatGeneral(4 * (0.016 * 9 + 0.086 * 2)), "1.264");
    EXPECT_EQ(FormatGeneral(2.0), "2");
    EXPECT_EQ(FormatGeneral(0.5, ','), "0,5");
    EXPECT_EQ(StandardNumberText(0), " 0");
    EXPECT_EQ(StandardNumberText(-3), "-3");
}

} // namespace
} // namespace velmora
