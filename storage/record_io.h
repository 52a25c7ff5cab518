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
    void Field(std::int16_t value) {
        const auto word = static_cast<std::uint16_t>(value);
        char* at = Reserve(2);
        at[0] = static_cast<char>(word & 0xFF);
        at[1] = static_cast<char>(word >> 8);
    }
    void Field(std::int32_t value) {
        const auto word = static_cast<std::uint32_t>(value);
        char* at = Reserve(4);
        for (int i = 0; i < 4; ++i) {
            at[i] = static_cast<char>((word >> (8 * i)) & 0xFF);
        }
    }

    // The whole record: the fields written since the last Reset, then zero filler.
    const std::string& Bytes();
    std::size_t Used() const { return position_; }
    // Starts a new record.
    void Reset() { position_ = 0; }

private:
    char* Reserve(std::size_t count) {
        if (count > buffer_.size() - position_) {
            Overrun();
        }
        char* at = buffer_.data() + position_;
        position_ += count;
        return at;
    }
    [[noreturn]] void Overrun() const;
    void WriteString(std::string_view bytes);

    std::string buffer_;
    std::size_t position_ = 0;
    std::size_t dirtyEnd_ = 0; // bytes past position_ up to here still hold an older record
};

class RecordReader {
public:
    // Reads from record, which must stay alive while the reader is used.
    explicit RecordReader(std::string_view record);

    void Field(std::string& utf8);
    void Field(std::int16_t& value) {
        const auto* at = reinterpret_cast<const unsigned char*>(Take(2));
        value = static_cast<std::int16_t>(static_cast<std::uint16_t>(at[0] | (at[1] << 8)));
    }
    void Field(std::int32_t& value) {
        const auto* at = reinterpret_cast<const unsigned char*>(Take(4));
        value = static_cast<std::int32_t>(
            static_cast<std::uint32_t>(at[0]) | (static_cast<std::uint32_t>(at[1]) << 8) |
            (static_cast<std::uint32_t>(at[2]) << 16) | (static_cast<std::uint32_t>(at[3]) << 24));
    }

private:
    const char* Take(std::size_t count) {
        if (count > record_.size() - position_) {
            Overrun();
        }
        const char* at = record_.data() + position_;
        position_ += count;
        return at;
    }
    [[noreturn]] void Overrun() const;

    std::string_view record_;
    std::size_t position_ = 0;
};

} // namespace velmora
