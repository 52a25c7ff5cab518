#include "eds/eds_object_table.h"
#include "eds/eds_reader.h"
#include "model/runtime_error.h"
#include "storage/eds_dump.h"
#include "support/temp_dir.h"

#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace velmora {
namespace {

// Fields as the record rules write them: little-endian numbers, texts after a 16-bit length.
std::string Le(long long value, int bytes) {
    std::string out;
    for (int i = 0; i < bytes; ++i) {
        out += static_cast<char>((value >> (8 * i)) & 0xFF);
    }
    return out;
}
std::string Text(const std::string& text) {
    return Le(static_cast<long long>(text.size()), 2) + text;
}

// Entries 1 and 2 (index 1000 and its sub-index) fit their records; entry 3, when there,
// does not.
EdsObjectTable Table(bool withLongName) {
    EdsObjectTable table;
    std::string text = "[1000]\nParameterName=D\nObjectType=0x7\nDataType=5\nLowLimit=1\n"
                       "AccessType=ro\nDefaultValue=1\nObjFlags=3\nSubNumber=2\n";
    if (withLongName) {
        text += "[1001]\nParameterName=A name far too long for the record\n";
    }
    std::istringstream in(text);
    LoadEds(table, in);
    return table;
}

TEST(EdsDump, RecordsOf46BytesInFieldOrderUpToTheFirstThatDoesNotFit) {
    std::ostringstream out;
    try {
        WriteEdsDump(Table(true), out);
        FAIL() << "no error";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Code(), ErrorCode::BadRecordLength);
    }
    // Records 1 to 3 (the empty object, entries 1 and 2) were written before the error.
    const std::string bytes = out.str();
    ASSERT_EQ(bytes.size(), 3 * kEdsDumpRecordLength);
    EXPECT_EQ(bytes.substr(0, 46), std::string(46, '\0'));
    // Index and sub-index texts, IsMainObject, name, ObjectType, DataType, LowLimit,
    // HighLimit, AccessType, DefaultValue, PdoMapping, ObjFlags, SubNumber, zero filler.
    EXPECT_EQ(bytes.substr(92), Text("4096") + Text("-1") + Le(-1, 2) + Text("d") + Le(7, 4) +
                                    Le(5, 4) + Le(1, 4) + Le(999999999, 4) + Text("ro") +
                                    Text("1") + Le(0, 2) + Text("3") + Le(2, 2) + '\0');
}

TEST(EdsDump, AFailedDumpLeavesTheLastOneAsItWas) {
    test::TempDir dir;
    test::WriteFileBytes(dir.File("prova"), "vecchio");
    EXPECT_THROW(WriteEdsDump(Table(true), dir.Path()), RuntimeError);
    const EdsObjectTable table = Table(false);
    try {
        WriteEdsDump(table, dir.Path(), FileWriter::FullAfter(100));
        FAIL() << "no error";
    } catch (const RuntimeError& error) {
        EXPECT_NE(std::string(error.what()).find(dir.File("prova")), std::string::npos);
    }
    EXPECT_EQ(test::ReadFileBytes(dir.File("prova")), "vecchio");
    EXPECT_EQ(dir.Names(), std::vector<std::string>{"prova"});

    WriteEdsDump(table, dir.Path());
    EXPECT_EQ(test::ReadFileBytes(dir.File("prova")).size(), 3 * kEdsDumpRecordLength);
    EXPECT_EQ(dir.Names(), std::vector<std::string>{"prova"});
}

} // namespace
} // namespace velmora
