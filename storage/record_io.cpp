#include "storage/record_io.h"

#include "model/cp1252.h"
#include "model/runtime_error.h"

#include <cstring>

namespace velmora {

namespace {

bool IsAscii(std::string_view text) {
    for (unsigned char c : text) {
        if (c >= 0x80) {
            return false;
        }
    }
    return true;
}

[[noreturn]] void TooLong(std::size_t length) {
    throw RuntimeError(ErrorCode::BadRecordLength,
                       "i campi superano i " + std::to_string(length) + " byte del record");
}

} // namespace

RecordWriter::RecordWriter(std::size_t recordLength) : buffer_(recordLength, '\0') {}

void RecordWriter::Reset() {
    std::memset(buffer_.data(), 0, position_);
    position_ = 0;
}

char* RecordWriter::Reserve(std::size_t count) {
    if (count > buffer_.size() - position_) {
        TooLong(buffer_.size());
    }
    char* at = buffer_.data() + position_;
    position_ += count;
    return at;
}

void RecordWriter::Field(std::string_view utf8) {
    std::string encoded;
    std::string_view bytes = utf8;
    if (!IsAscii(utf8)) {
        encoded = Utf8ToCp1252(utf8);
        bytes = encoded;
    }
    if (bytes.size() > 0xFFFF) {
        TooLong(buffer_.size());
    }
    Field(static_cast<std::int16_t>(static_cast<std::uint16_t>(bytes.size())));
    if (!bytes.empty()) {
        std::memcpy(Reserve(bytes.size()), bytes.data(), bytes.size());
    }
}

void RecordWriter::Field(std::int16_t value) {
    const auto word = static_cast<std::uint16_t>(value);
    char* at = Reserve(2);
    at[0] = static_cast<char>(word & 0xFF);
    at[1] = static_cast<char>(word >> 8);
}

void RecordWriter::Field(std::int32_t value) {
    const auto word = static_cast<std::uint32_t>(value);
    char* at = Reserve(4);
    for (int i = 0; i < 4; ++i) {
        at[i] = static_cast<char>((word >> (8 * i)) & 0xFF);
    }
}

RecordReader::RecordReader(std::string_view record) : record_(record) {}

const char* RecordReader::Take(std::size_t count) {
    if (count > record_.size() - position_) {
        TooLong(record_.size());
    }
    const char* at = record_.data() + position_;
    position_ += count;
    return at;
}

void RecordReader::Field(std::string& utf8) {
    std::int16_t length = 0;
    Field(length);
    const auto count = static_cast<std::uint16_t>(length);
    const std::string_view bytes(Take(count), count);
    if (IsAscii(bytes)) {
        utf8.assign(bytes);
    } else {
        utf8 = Cp1252ToUtf8(bytes);
    }
}

void RecordReader::Field(std::int16_t& value) {
    const auto* at = reinterpret_cast<const unsigned char*>(Take(2));
    value = static_cast<std::int16_t>(static_cast<std::uint16_t>(at[0] | (at[1] << 8)));
}

void RecordReader::Field(std::int32_t& value) {
    const auto* at = reinterpret_cast<const unsigned char*>(Take(4));
    std::uint32_t word = 0;
    for (int i = 3; i >= 0; --i) {
        word = (word << 8) | at[i];
    }
    value = static_cast<std::int32_t>(word);
}

} // namespace velmora
