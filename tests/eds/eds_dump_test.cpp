#include "eds/eds_dump.h"
#include "eds/eds_object_table.h"
#include "eds/eds_reader.h"
#include "model/runtime_error.h"
#include "support/temp_dir.h"

#include <sstream>
#include <string>

#include <gtest/gtest.h>

namespace velmora {
namespace {

TEST(EdsDump, RecordsOf46Bytes) {
    EdsObjectTable table;
    std::istringstream in("[1000]\nParameterName=D\nAccessType=ro\nDefaultValue=1\n"
                          "[1001]\nParameterName=A name far too long for the record\n");
    LoadEds(table, in);

    test::TempDir dir;
    try {
        WriteEdsDump(table, dir.Path());
        FAIL() << "no error";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Code(), ErrorCode::BadRecordLength);
    }
    // Records 1 to 3 (the empty object, entries 1 and 2) were written before the error.
    const std::string bytes = test::ReadFileBytes(dir.File("prova"));
    ASSERT_EQ(bytes.size(), 3 * kEdsDumpRecordLength);
    EXPECT_EQ(bytes.substr(0, 46), std::string(46, '\0'));

    // Entry 1, never read: texts "", "", "", then limits 0, 0, 0, 999999999, "0", "0".
    std::string unread(8, '\0');
    unread += std::string(12, '\0') + std::string("\xFF\xC9\x9A\x3B", 4);
    unread += std::string("\x01\x00"
                          "0"
                          "\x01\x00"
                          "0",
                          6) +
              std::string(6, '\0');
    unread.resize(46, '\0');
    EXPECT_EQ(bytes.substr(46, 46), unread);

    std::string device("\x04\x00"
                       "4096"
                       "\x02\x00"
                       "-1"
                       "\xFF\xFF"
                       "\x01\x00"
                       "d",
                       15);
    device += std::string(12, '\0') + std::string("\xFF\xC9\x9A\x3B", 4);
    device += std::string("\x02\x00"
                          "ro"
                          "\x01\x00"
                          "1",
                          7) +
              std::string(6, '\0');
    device.resize(46, '\0');
    EXPECT_EQ(bytes.substr(92, 46), device);
}

} // namespace
} // namespace velmora
