#include "model/runtime_error.h"
#include "storage/record_io.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

TEST(RecordIo, FieldsArePackedLittleEndianWithCp1252Strings) {
    RecordWriter writer(16);
    writer.Field(std::string_view("è€"));
    writer.Field(std::int16_t{-2});
    writer.Field(std::int32_t{0x01020304});
    EXPECT_EQ(writer.Bytes(),
              std::string("\x02\x00\xE8\x80\xFE\xFF\x04\x03\x02\x01\0\0\0\0\0\0", 16));

    RecordReader reader(writer.Bytes());
    std::string text;
    std::int16_t word = 0;
    std::int32_t number = 0;
    reader.Field(text);
    reader.Field(word);
    reader.Field(number);
    EXPECT_EQ(text, "è€");
    EXPECT_EQ(word, -2);
    EXPECT_EQ(number, 0x01020304);
}

TEST(RecordIo, AReusedWriterZeroesWhatTheLongerRecordLeft) {
    RecordWriter writer(12);
    writer.Field(std::string_view("abcdefgh"));
    EXPECT_EQ(writer.Bytes().substr(0, 10), std::string("\x08\0abcdefgh", 10));
    writer.Reset();
    writer.Field(std::int16_t{7});
    EXPECT_EQ(writer.Bytes(), std::string("\x07\0\0\0\0\0\0\0\0\0\0\0", 12));
}

TEST(RecordIo, FieldsPastTheEndAreBadRecordLength) {
    RecordWriter writer(5);
    writer.Field(std::int16_t{1});
    EXPECT_THROW(writer.Field(std::int32_t{1}), RuntimeError);
    EXPECT_THROW(writer.Field(std::string_view("abcd")), RuntimeError);
    writer.Field(std::string_view("a")); // exactly fills the record

    const std::string claimsTooMuch("\x09\0abc", 5);
    RecordReader reader(claimsTooMuch);
    std::string text;
    try {
        reader.Field(text);
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Code(), ErrorCode::BadRecordLength);
    }
    RecordReader empty("");
    std::int16_t word = 0;
    EXPECT_THROW(empty.Field(word), RuntimeError);
}

} // namespace
} // namespace velmora
