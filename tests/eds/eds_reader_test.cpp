#include "eds/eds_object_table.h"
#include "eds/eds_reader.h"
#include "eds/eds_text.h"
#include "model/runtime_error.h"
#include "model/text.h"
#include "support/temp_dir.h"

#include <sstream>
#include <string>

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
    struct Case {
        const char* line;
        std::int32_t index;
        std::int32_t subIndex;
    };
    const Case cases[] = {
        {"[1A00]", 0x1A00, -1},
        {"[1a00sub3]", 0x1A00, 3},
        {"  [1A00SUB1F]  ", 0x1A00, 0x1F},
        {"[FileInfo]", -1, -1},
        {"[ffff]", 0xFFFF, -1}, // hexadecimal is read unsigned
        {"[]", -1, -1},
        {"", -1, -1},
        // Only the last character is dropped: a tab after "]" leaves "1000]", five characters.
        {"[1000]\t", -1, -1},
        // No "[" is needed: short key lines and lines with "sub" are sections too.
        {"a=1", 0xA, -1},
        {"Description=Subindex", 0xDE, 0},
        // "sub" is searched from the third character on.
        {"xsub1", -1, -1},
        {"xxsub1", 0, 1},
        {"sub1", 0, -1},
        {"[123456789sub1]", 2147483647, 1},
    };
    for (const Case& c : cases) {
        const EdsSectionName name = ParseEdsSectionName(c.line);
        EXPECT_EQ(name.index, c.index) << c.line;
        EXPECT_EQ(name.subIndex, c.subIndex) << c.line;
    }
}

TEST(EdsText, Numbers) {
    struct Case {
        const char* line;
        bool isHex;
        std::int32_t value;
    };
    const Case cases[] = {
        {"HighLimit=0x7FFFFFFF", false, 2147483647},
        {"HighLimit=4294967296", false, 2147483647}, // overflow rule
        {"LowLimit=0xFFFFFFFF", false, 2147483647},  // read unsigned, then too large
        {"LowLimit=-2147483649", false, 2147483647},
        {"LowLimit=-2147483648", false, -2147483648},
        {"DefaultValue=$NODEID+0x180", false, 384},
        {"x=abc0x10", false, 16}, // text before "0x" is discarded
        {"DataType=0x0007", false, 7},
        {"x=12abc", false, 12},
        {"x=", false, 0},
        {"x= 12", false, 12}, // blanks before the number are skipped
        {"x=\t12", false, 0}, // a tab is not
        {"x=1 2", false, 1},  // a blank inside ends the number
        {"x=2.5", false, 2},  // halves go to the even neighbour
        {"x=3.5", false, 4},
        {"x=1e3", false, 1000},
        {"x=1e", false, 1},
        {"x=1e99", false, 2147483647},
        {"x=[12]", false, 12},
        {"x=ff", true, 255},
        {"x=ff", false, 0},
        {"12", false, 12}, // no "=": the whole line
    };
    for (const Case& c : cases) {
        EXPECT_EQ(ParseEdsNumber(c.line, c.isHex), c.value) << c.line;
    }
}

TEST(EdsText, Texts) {
    EXPECT_EQ(ParseEdsText("ParameterName=TPDO1 Mapping"), "tpdo1 mapping");
    EXPECT_EQ(ParseEdsText("DefaultValue=$NODEID+0x180"), "$nodeid+0x180");
    EXPECT_EQ(ParseEdsText("ParameterName= Spaced "), " spaced");
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
    EXPECT_EQ(GetEdsObject(table, 4), UnreadEdsObject());

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
    EXPECT_EQ(GetEdsObject(table, 2).ParameterName, "other");
    EXPECT_EQ(GetEdsObject(table, 3), UnreadEdsObject());
}

TEST(EdsReader, HeaderEndsSectionAndIsPending) {
    EdsObjectTable table;
    // [1001] ends [1000]'s list (its keys are read with it) and is then processed as a
    // section of its own; [1002] on the very last line is never processed.
    Load(table, "[1000]\nParameterName=A\n[1001]\nParameterName=B\n[1002]");
    ASSERT_EQ(GetEdsObjectCount(table), 3);
    EXPECT_EQ(GetEdsObject(table, 2).ParameterName, "a");
    EXPECT_EQ(GetEdsObject(table, 3).IndexText, "4097");
    EXPECT_EQ(GetEdsObject(table, 3).ParameterName, "b");

    // A header that is the last line of the whole file ends the list and stops the load.
    Load(table, "[1000]\r\nParameterName=A\r\n[1001]\r\n");
    EXPECT_EQ(GetEdsObjectCount(table), 2);

    // A header that the outer loop reads itself is processed, even on the last line; its
    // entry has nothing read.
    Load(table, "junk line here\n[1000]");
    EXPECT_EQ(GetEdsObjectCount(table), 2);
    EXPECT_EQ(GetEdsObject(table, 2).HighLimit, 999999999);
}

TEST(EdsReader, OuterLoopLeniencyAndGranularity) {
    EdsObjectTable table;
    Load(table, "[DeviceInfo]\nGranularity=8\nabc=1\nOrderCode=x\n\n[1000]\nGranularity=4\n");
    // "abc=1" (five characters, no "sub") is not a section; an object section's own lines
    // are never looked at as section names or for granularity.
    ASSERT_EQ(GetEdsObjectCount(table), 2);
    EXPECT_EQ(table.EdsGranularity(), 8);

    Load(table, "[Comments]\nLines=1\nab=1\n[1000]\n");
    // "ab=1" (four characters) is taken for an object section with index 0xAB; its list
    // ends at the [1000] header, which is the file's last line and is not processed.
    ASSERT_EQ(GetEdsObjectCount(table), 2);
    EXPECT_EQ(GetEdsObject(table, 2).IndexText, "171");
    EXPECT_EQ(table.EdsGranularity(), 8); // kept across loads

    Load(table, "[DeviceInfo]\nGRANULARITY=0x10\n");
    EXPECT_EQ(table.EdsGranularity(), 16);
}

TEST(EdsReader, LineEndings) {
    EdsObjectTable table;
    // CR LF, LF, lone CR, mixed; a last line without an end; "\n\r" is two ends.
    for (const char* text : {"[1000]\r\nParameterName=A\r\n[1001]\r\nParameterName=B",
                             "[1000]\n\rParameterName=A\n[1001]\nParameterName=B\n",
                             "[1000]\rParameterName=A\r[1001]\r\nParameterName=B\r"}) {
        Load(table, text);
        ASSERT_EQ(GetEdsObjectCount(table), 3);
        EXPECT_EQ(GetEdsObject(table, 2).ParameterName, "a");
        EXPECT_EQ(GetEdsObject(table, 3).ParameterName, "b");
    }
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
        EXPECT_NE(std::string(error.what()).find("[2000]"), std::string::npos);
        EXPECT_NE(std::string(error.what()).find("riga 103"), std::string::npos);
    }
    // The entry that failed stays stored, without its keys.
    ASSERT_EQ(GetEdsObjectCount(table), 3);
    EXPECT_EQ(GetEdsObject(table, 3).IndexText, "8192");
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
    EdsObjectMatch match = FindEdsObject(table, 0x1800, -1);
    EXPECT_TRUE(match.Found);
    EXPECT_EQ(match.Object.ParameterName, "count");
    EXPECT_EQ(FindEdsObject(table, 0x1800, 2).Object.ParameterName, "first");

    // Entry 1 is empty, its texts read as 0: index 0 sub-index 0 finds it.
    match = FindEdsObject(table, 0, 0);
    EXPECT_TRUE(match.Found);
    EXPECT_EQ(match.Object, UnreadEdsObject());

    match = FindEdsObject(table, 0x1801, -1);
    EXPECT_FALSE(match.Found);
    EXPECT_EQ(match.Object, EdsObject{});
    EXPECT_EQ(match.Object.HighLimit, 0);
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

TEST(EdsReader, DecodesWindows1252) {
    EdsObjectTable table;
    Load(table, "[1000]\nParameterName=Velocit\xC8 \x80\n");
    EXPECT_EQ(GetEdsObject(table, 2).ParameterName, "velocit\xC3\xA8 \xE2\x82\xAC");
}

TEST(EdsReader, LoadsByNameFromTheEdsFolder) {
    test::TempDir dir;
    test::WriteFileBytes(dir.File("Drive.EDS"), "[1000]\nParameterName=Drive\n");
    EdsObjectTable table;
    LoadEds(table, dir.Folder(), "drive"); // ".eds" added, case ignored
    EXPECT_EQ(GetEdsObject(table, 2).ParameterName, "drive");
    LoadEds(table, dir.Folder(), "DRIVE.eds");
    EXPECT_EQ(GetEdsObjectCount(table), 2);

    try {
        LoadEds(table, dir.Folder(), "missing.eds");
        FAIL() << "no error";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Code(), ErrorCode::FileNotFound);
    }
    EXPECT_EQ(GetEdsObjectCount(table), 2); // untouched
    EXPECT_EQ(EdsPath("/e/", "x"), "/e/x.eds");
    EXPECT_EQ(EdsPath("/e/", "x.dcf"), "/e/x.dcf");
}

} // namespace
} // namespace velmora
