#include "storage/record_io.h"

#include "model/cp1252.h"
#include "model/runtime_error.h"

#include <cstring>

namespace velmora {

namespace {

[[noreturn]] void TooLong(std::size_t length) {
    throw RuntimeError(ErrorCode::BadRecordLength,
                       "i campi superano i " + std::to_string(length) + " byte del record");
}

} // namespace

RecordWriter::RecordWriter(std::size_t recordLength) : buffer_(recordLength, '\0') {}

const std::string& RecordWriter::Bytes() {
    if (dirtyEnd_ > position_) {
        std::memset(buffer_.data() + position_, 0, dirtyEnd_ - position_);
    }
    dirtyEnd_ = position_;
    return buffer_;
}

void RecordWriter::Overrun() const {
    TooLong(buffer_.size());
}

void RecordWriter::Field(std::string_view utf8) {
    if (IsAscii(utf8)) {
        WriteString(utf8);
    } else {
        WriteString(Utf8ToCp1252(utf8));
    }
}

void RecordWriter::WriteString(std::string_view bytes) {
    if (bytes.size() > 0xFFFF) {
        TooLong(buffer_.size());
    }
    char* at = Reserve(2 + bytes.size());
    at[0] = static_cast<char>(bytes.size() & 0xFF);
    at[1] = static_cast<char>(bytes.size() >> 8);
    std::memcpy(at + 2, bytes.data(), bytes.size());
}

RecordReader::RecordReader(std::string_view record) : record_(record) {}

void RecordReader::Overrun() const {
    TooLong(record_.size());
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

} // namespace velmora
