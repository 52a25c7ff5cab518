#pragma once

// Fixed-length records as the configuration file and the "prova" dump store them: fields in
// declaration order, packed, little-endian; a string is a 16-bit unsigned length and that
// many Windows-1252 bytes; the rest of the record is zero filler. A field that would run past
// the record's end is the BadRecordLength run-time error, raised before anything is written
// or read out of bounds.

#include <cstdint>
#include <string>
#include <string_view>

namespace velmora {

class RecordWriter {
public:
    explicit RecordWriter(std::size_t recordLength);

    void Field(std::string_view utf8);
    void Field(std::int16_t value);
    void Field(std::int32_t value);

    // The whole record, filler included.
    const std::string& Bytes() const { return buffer_; }
    std::size_t Used() const { return position_; }
    // Back to an all-zero record.
    void Reset();

private:
    char* Reserve(std::size_t count);

    std::string buffer_;
    std::size_t position_ = 0;
};

class RecordReader {
public:
    // Reads from record, which must stay alive while the reader is used.
    explicit RecordReader(std::string_view record);

    void Field(std::string& utf8);
    void Field(std::int16_t& value);
    void Field(std::int32_t& value);

private:
    const char* Take(std::size_t count);

    std::string_view record_;
    std::size_t position_ = 0;
};

} // namespace velmora
