#pragma once

// A small JSON writer that keeps keys in the order they are written (QJsonObject sorts them,
// and velmora-cli's output is read by scripts that rely on the documented order).

#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace velmora::cli {

class JsonWriter {
public:
    // pretty: one value per line, indented by two blanks a level.
    explicit JsonWriter(std::ostream& out, bool pretty = true);

    JsonWriter& BeginObject();
    JsonWriter& EndObject();
    JsonWriter& BeginArray();
    JsonWriter& EndArray();
    JsonWriter& Key(std::string_view name);

    JsonWriter& String(std::string_view utf8);
    JsonWriter& Int(long long value);
    JsonWriter& Bool(bool value);
    JsonWriter& Double(double value);

    // Key and value in one call.
    template <typename Value> JsonWriter& Field(std::string_view name, const Value& value) {
        Key(name);
        return Write(value);
    }

    // Ends the document with a newline.
    void Finish();

private:
    JsonWriter& Write(std::string_view value) { return String(value); }
    JsonWriter& Write(const std::string& value) { return String(value); }
    JsonWriter& Write(const char* value) { return String(value); }
    JsonWriter& Write(bool value) { return Bool(value); }
    JsonWriter& Write(double value) { return Double(value); }
    JsonWriter& Write(std::int16_t value) { return Int(value); }
    JsonWriter& Write(std::int32_t value) { return Int(value); }
    JsonWriter& Write(long long value) { return Int(value); }
    JsonWriter& Write(std::size_t value) { return Int(static_cast<long long>(value)); }

    JsonWriter& End(char closer);
    void Quoted(std::string_view utf8);
    void BeforeValue();
    void NewLine();

    std::ostream& out_;
    bool pretty_;
    std::vector<bool> hasItems_; // one per open object or array
    bool afterKey_ = false;
};

} // namespace velmora::cli
