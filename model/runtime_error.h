#pragma once

// The one exception type of the core: "a run-time error that stops the command".
// The GUI catches it at the command boundary and shows it in a message box; velmora-cli
// prints it and exits 1. The network keeps whatever the command had changed before it was
// raised, except that a failed load leaves the network, and a failed save the file on disk,
// as they were.

#include <cstdint>
#include <stdexcept>
#include <string>

namespace velmora {

enum class ErrorCode {
    SubscriptOutOfRange, // an index outside a record array's bounds
    Overflow,            // a number that does not fit its field
    FileNotFound,        // a file that cannot be opened for reading
    PathFileAccess,      // a file that cannot be created, written, or is a folder
    BadRecordLength,     // a record that does not fit its fixed length
    InvalidArgument,     // an argument outside what an operation accepts
    TypeMismatch,        // a text that must be a number is not one
    UnsupportedFormat,   // a file this version cannot read
};

class RuntimeError : public std::runtime_error {
public:
    RuntimeError(ErrorCode code, const std::string& detail);

    ErrorCode Code() const noexcept { return code_; }
    // The message without the text of the code.
    const std::string& Detail() const noexcept { return detail_; }
    // The Italian text of the code alone, without the detail.
    static const char* Describe(ErrorCode code) noexcept;

private:
    ErrorCode code_;
    std::string detail_;
};

// Throws SubscriptOutOfRange unless first <= index <= last.
inline void CheckIndex(long long index, long long first, long long last, const char* what) {
    if (index < first || index > last) {
        throw RuntimeError(ErrorCode::SubscriptOutOfRange,
                           std::string(what) + " " + std::to_string(index) + " fuori da " +
                               std::to_string(first) + ".." + std::to_string(last));
    }
}

} // namespace velmora
