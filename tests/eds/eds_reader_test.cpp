#include "eds/eds_object_table.h"
#include "eds/eds_reader.h"
#include "eds/eds_text.h"
#include "model/runtime_error.h"
#include "model/text.h"
#include "support/temp_dir.h"

#include <sstream>
#include <string>
#include <tuple>
#include <utility>

#include <gtest/gtest.h>

namespace velmora {
namespace {

void Load(EdsObjectTable& table, const std::string& text) {
    std::istringstream in(text);
    LoadEds(table, in);
}

// n filler key lines, as found in real sections.
std::string Filler(int n) {
    std::string text;
    for (int i = 0; i < n; ++i) {
        text += "Denotation=\n";
    }
    return text;
}

TEST(EdsText, SectionNames) {
    const std::tuple<const char*, std::int32_t, std::int32_t> cases[] = {
        {"[1A00]", 0x1A00, -1},
        {"  [1A00SUB1F]  ", 0x1A00, 0x1F},
        {"[FileInfo]", -1, -1},
        {"[ffff]", 0xFFFF, -1}, // hexadecimal is read unsigned
        {"[]", -1, -1},
        // Only the last character is dropped: a tab after "]" leaves "1000]", five characters.
        {"[1000]\t", -1, -1},
        // No "[" is needed: short key lines and lines with "sub" are sections too; "sub" is
        // searched from the third character on.
        {"a=1", 0xA, -1},
        {"xsub1", -1, -1},
        {"xxsub1", 0, 1},
        {"[123456789sub1]", 2147483647, 1},
    };
    for (const auto& [line, index, subIndex] : cases) {
        const EdsSectionName name = ParseEdsSectionName(line);
        EXPECT_EQ(name.index, index) << line;
        EXPECT_EQ(name.subIndex, subIndex) << line;
    }
}

TEST(EdsText, Numbers) {
    const std::pair<const char*, std::int32_t> cases[] = {
        {"HighLimit=4294967296", 2147483647}, // overflow rule
        {"LowLimit=0xFFFFFFFF", 2147483647},  // read unsigned, then too large
        {"LowLimit=-2147483649", 2147483647},
        {"LowLimit=-2147483648", -2147483648},
        {"DefaultValue=$NODEID+0x180", 384}, // text before "0x" is discarded
        {"x=2.5", 2},                        // halves go to the even neighbour
        {"x=3.5", 4},
        {"x=[12]", 12},
        {"x=\t12", 0}, // a tab before the number is not skipped
        {"x=ff", 0},   // decimal unless told otherwise
        {"12", 12},    // no "=": the whole line
    };
    for (const auto& [line, value] : cases) {
        EXPECT_EQ(ParseEdsNumber(line, false), value) << line;
    }
    EXPECT_EQ(ParseEdsNumber("x=ff", true), 255);
}

TEST(EdsText, Texts) {
    EXPECT_EQ(ParseEdsText("ParameterName= TPDO1 Mapping "), " tpdo1 mapping");
    EXPECT_EQ(ParseEdsText("a=b=c"), "b=c");
    EXPECT_EQ(ParseEdsText("Name=x [y]"), "y");
    EXPECT_EQ(ParseEdsText("Name=Città È]"), "città è"); // a character, not a byte
}

TEST(EdsReader, StoresSectionsFromPositionTwo) {
    EdsObjectTable table;
    Load(table, "[FileInfo]\nFileName=x.eds\n\n"
                "[1000]\nParameterName=Device Type\nObjectType=0x7\nDataType=0x0007\n"
                "AccessType=RO\nDefaultValue=0x00020192\nPDOMapping=0\nDenotation=x\n\n"
                "[1018sub1]\nParameterName=Vendor ID\nLowLimit=-5\nHighLimit=100\n"
                "ObjFlags=0x1\nSubNumber=0xFFFF\nPDOMapping=1\n"
                "DefaultValue=1\nDefaultValue=2\n"); // a later line overwrites
    ASSERT_EQ(GetEdsObjectCount(table), 3);

    EXPECT_EQ(GetEdsObject(table, 0), EdsObject{}); // never written
    EXPECT_EQ(GetEdsObject(table, 1), UnreadEdsObject());

    // Fields in order: texts of index and sub-index, IsMainObject, name, ObjectType,
    // DataType, LowLimit, HighLimit (999999999 when absent), AccessType, DefaultValue,
    // PdoMapping, ObjFlags, SubNumber (narrowed to 16 bits).
    EXPECT_EQ(GetEdsObject(table, 2), (EdsObject{"4096", "-1", -1, "device type", 7, 7, 0,
                                                 999999999, "ro", "0x00020192", 0, "", 0}));
    EXPECT_EQ(GetEdsObject(table, 3),
              (EdsObject{"4120", "1", 0, "vendor id", 0, 0, -5, 100, "0", "2", -1, "0x1", -1}));
    EXPECT_THROW(GetEdsObject(table, 4001), RuntimeError);
    EXPECT_THROW(GetEdsObject(table, -1), RuntimeError);

    // A second load wipes what the first one stored.
    Load(table, "[2000]\nParameterName=Other\n");
    EXPECT_EQ(GetEdsObjectCount(table), 2);
    EXPECT_EQ(GetEdsObject(table, 3), UnreadEdsObject());
}

TEST(EdsReader, OuterLoopLeniencyAndGranularity) {
    EdsObjectTable table;
    // "abc=1" (five characters, no "sub") is not a section; an object section's own lines
    // are never looked at as section names or for granularity.
    Load(table, "[DeviceInfo]\nGRANULARITY=0x10\nabc=1\n\n[1000]\nGranularity=4\n");
    ASSERT_EQ(GetEdsObjectCount(table), 2);
    EXPECT_EQ(table.EdsGranularity(), 16);
    Load(table, "[1000]\n");
    EXPECT_EQ(table.EdsGranularity(), 16); // kept across loads
}

TEST(EdsReader, AHeaderEndsTheSectionAndIsThenReadAsOneWhateverEndsTheLines) {
    EdsObjectTable table;
    // [1001] ends [1000]'s list and is then processed as a section of its own; [1002] on the
    // very last line is never processed. CR LF, LF, lone CR, mixed; a last line without an
    // end; "\n\r" is two ends.
    for (const char* text : {"[1000]\r\nParameterName=A\r\n[1001]\r\nParameterName=B\r\n[1002]",
                             "[1000]\n\rParameterName=A\n[1001]\nParameterName=B\n[1002]\n",
                             "[1000]\rParameterName=A\r[1001]\r\nParameterName=B\r[1002]\r"}) {
        Load(table, text);
        ASSERT_EQ(GetEdsObjectCount(table), 3);
        EXPECT_EQ(GetEdsObject(table, 2).ParameterName, "a");
        EXPECT_EQ(GetEdsObject(table, 3).ParameterName, "b");
    }
    // A header that the outer loop reads itself is processed, even on the last line.
    Load(table, "junk line here\n[1000]");
    EXPECT_EQ(GetEdsObjectCount(table), 2);
}

TEST(EdsReader, SectionOfMoreThanHundredLinesIsASubscriptError) {
    EdsObjectTable table;
    // 99 key lines and the header that ends the list: 100 lines, accepted.
    Load(table, "[1000]\n" + Filler(98) + "ParameterName=Full\n[1001]\n");
    EXPECT_EQ(GetEdsObject(table, 2).ParameterName, "full");

    try {
        Load(table, "[1000]\n[2000]\nParameterName=Long\n" + Filler(99) + "[3000]\n");
        FAIL() << "no error";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Code(), ErrorCode::SubscriptOutOfRange);
        EXPECT_NE(std::string(error.what()).find("[2000] supera le 100 righe (riga 103)"),
                  std::string::npos);
    }
    // The entry that failed stays stored, without its keys.
    ASSERT_EQ(GetEdsObjectCount(table), 3);
    EXPECT_EQ(GetEdsObject(table, 3).ParameterName, "");
}

TEST(EdsReader, TableHoldsAtMost3999Sections) {
    std::string text;
    for (int i = 0; i < 3999; ++i) {
        text += "[" + std::to_string(1000 + i) + "sub1]\n";
    }
    EdsObjectTable table;
    Load(table, text + "[9999]\n");
    EXPECT_EQ(GetEdsObjectCount(table), 4000);
    EXPECT_EQ(GetEdsObject(table, 4000).IndexText, std::to_string(0x4998));

    EXPECT_THROW(Load(table, text + "[9999]\n[9998]\n"), RuntimeError);
    EXPECT_EQ(GetEdsObjectCount(table), 4000);
}

TEST(EdsReader, FindEdsObjectFirstMatchWins) {
    EdsObjectTable table;
    Load(table, "[1800sub0]\nParameterName=Count\n[1800]\nParameterName=Main\n"
                "[1800sub2]\nParameterName=First\n[1800sub2]\nParameterName=Second\n");

    // Sub-index -1 does not compare sub-indexes: the first entry of the index wins.
    EXPECT_EQ(FindEdsObject(table, 0x1800, -1).Object.ParameterName, "count");
    EXPECT_EQ(FindEdsObject(table, 0x1800, 2).Object.ParameterName, "first");

    // Entry 1 is empty, its texts read as 0: index 0 sub-index 0 finds it.
    EdsObjectMatch match = FindEdsObject(table, 0, 0);
    EXPECT_TRUE(match.Found);
    EXPECT_EQ(match.Object, UnreadEdsObject());

    match = FindEdsObject(table, 0x1801, -1);
    EXPECT_FALSE(match.Found);
    EXPECT_EQ(match.Object, EdsObject{});
}

TEST(EdsReader, CountEdsPdos) {
    EdsObjectTable table;
    std::string text;
    // 18 TX PDOs, 0x1800..0x1811: only 17 lie within the counted range.
    for (int k = 0; k < 18; ++k) {
        text += "[" + HexText(0x1800 + k) + "sub2]\n[" + HexText(0x1A00 + k) + "sub0]\n";
    }
    // RX needs only some entry of 0x14xx and of 0x16xx.
    text += "[1400sub1]\n[1600sub0]\n[1401]\n[1602]\n";
    Load(table, text);
    const EdsPdoCounts counts = CountEdsPdos(table);
    EXPECT_EQ(counts.txCount, 17);
    EXPECT_EQ(counts.rxCount, 1);

    // TX needs sub-index 2 of the communication object.
    Load(table, "[1800]\n[1A00]\n[1801sub1]\n[1A01]\n");
    EXPECT_EQ(CountEdsPdos(table).txCount, 0);
}

TEST(EdsReader, LoadsByNameFromTheEdsFolderAndDecodesWindows1252) {
    test::TempDir dir;
    test::WriteFileBytes(dir.File("Drive.EDS"), "[1000]\nParameterName=Velocit\xC8 \x80\n");
    EdsObjectTable table;
    LoadEds(table, dir.Folder(), "drive"); // ".eds" added, case ignored
    EXPECT_EQ(GetEdsObject(table, 2).ParameterName, "velocit\xC3\xA8 \xE2\x82\xAC");
    LoadEds(table, dir.Folder(), "DRIVE.eds");
    EXPECT_EQ(GetEdsObjectCount(table), 2);

    try {
        LoadEds(table, dir.Folder(), "missing.eds");
        FAIL() << "no error";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Code(), ErrorCode::FileNotFound);
    }
    EXPECT_EQ(GetEdsObjectCount(table), 2); // untouched
}

} // namespace
} // namespace velmora
