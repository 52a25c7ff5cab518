#include "cli/json_writer.h"

#include "model/numeric.h"

#include <cmath>
#include <cstdio>

namespace velmora::cli {

JsonWriter::JsonWriter(std::ostream& out, bool pretty) : out_(out), pretty_(pretty) {}

void JsonWriter::NewLine() {
    if (!pretty_) {
        return;
    }
    out_ << '\n';
    for (std::size_t i = 0; i < hasItems_.size(); ++i) {
        out_ << "  ";
    }
}

void JsonWriter::BeforeValue() {
    if (afterKey_) {
        afterKey_ = false;
        return;
    }
    if (!hasItems_.empty()) {
        if (hasItems_.back()) {
            out_ << (pretty_ ? "," : ", ");
        }
        hasItems_.back() = true;
        NewLine();
    }
}

JsonWriter& JsonWriter::BeginObject() {
    BeforeValue();
    out_ << '{';
    hasItems_.push_back(false);
    return *this;
}

JsonWriter& JsonWriter::End(char closer) {
    const bool had = hasItems_.back();
    hasItems_.pop_back();
    if (had) {
        NewLine();
    }
    out_ << closer;
    return *this;
}

JsonWriter& JsonWriter::EndObject() {
    return End('}');
}

JsonWriter& JsonWriter::BeginArray() {
    BeforeValue();
    out_ << '[';
    hasItems_.push_back(false);
    return *this;
}

JsonWriter& JsonWriter::EndArray() {
    return End(']');
}

JsonWriter& JsonWriter::Key(std::string_view name) {
    BeforeValue();
    Quoted(name);
    out_ << ": ";
    afterKey_ = true;
    return *this;
}

JsonWriter& JsonWriter::String(std::string_view utf8) {
    BeforeValue();
    Quoted(utf8);
    return *this;
}

void JsonWriter::Quoted(std::string_view utf8) {
    out_ << '"';
    for (char c : utf8) {
        switch (c) {
        case '"':
            out_ << "\\\"";
            break;
        case '\\':
            out_ << "\\\\";
            break;
        case '\n':
            out_ << "\\n";
            break;
        case '\r':
            out_ << "\\r";
            break;
        case '\t':
            out_ << "\\t";
            break;
        default:
            if (static_cast<unsigned char>(c) < 0x20) {
                char escaped[8];
                std::snprintf(escaped, sizeof escaped, "\\u%04x", static_cast<unsigned>(c));
                out_ << escaped;
            } else {
                out_ << c;
            }
        }
    }
    out_ << '"';
}

JsonWriter& JsonWriter::Int(long long value) {
    BeforeValue();
    out_ << value;
    return *this;
}

JsonWriter& JsonWriter::Bool(bool value) {
    BeforeValue();
    out_ << (value ? "true" : "false");
    return *this;
}

JsonWriter& JsonWriter::Double(double value) {
    BeforeValue();
    out_ << (std::isfinite(value) ? FormatGeneral(value) : std::string("null"));
    return *this;
}

void JsonWriter::Finish() {
    out_ << '\n';
}

} // namespace velmora::cli
