#include "eds/eds_reader.h"

#include "eds/eds_object_table.h"
#include "eds/eds_text.h"
#include "model/cp1252.h"
#include "model/paths.h"
#include "model/runtime_error.h"
#include "model/text.h"

#include <cstring>
#include <filesystem>
#include <fstream>
#include <istream>
#include <string_view>
#include <system_error>
#include <utility>

namespace velmora {

namespace {

inline constexpr int kSectionLineLimit = 100;

// Lines of the whole text, ended by CR LF, LF or a lone CR.
class LineSource {
public:
    explicit LineSource(std::string_view text) : text_(text) {}

    bool AtEnd() const { return position_ >= text_.size(); }
    long LineNumber() const { return lineNumber_; }

    std::string_view Next() {
        const std::size_t begin = position_;
        const std::size_t rest = text_.size() - begin;
        const char* start = text_.data() + begin;
        // The line ends at the first LF or CR, whichever comes first.
        const auto* lf = static_cast<const char*>(std::memchr(start, '\n', rest));
        const std::size_t limit = lf != nullptr ? static_cast<std::size_t>(lf - start) : rest;
        const auto* cr = static_cast<const char*>(std::memchr(start, '\r', limit));
        const std::size_t length = cr != nullptr ? static_cast<std::size_t>(cr - start) : limit;
        position_ = begin + length + 1;
        if (cr != nullptr && length + 1 < rest && start[length + 1] == '\n') {
            ++position_;
        }
        ++lineNumber_;
        return text_.substr(begin, length);
    }

private:
    std::string_view text_;
    std::size_t position_ = 0;
    long lineNumber_ = 0;
};

enum KeyBit : unsigned {
    kParameterName = 1u << 0,
    kObjectType = 1u << 1,
    kDataType = 1u << 2,
    kLowLimit = 1u << 3,
    kHighLimit = 1u << 4,
    kAccessType = 1u << 5,
    kDefaultValue = 1u << 6,
    kPdoMapping = 1u << 7,
    kObjFlags = 1u << 8,
    kSubNumber = 1u << 9,
};

// The keys whose names occur anywhere in the line, found in one pass over it.
unsigned FindKeys(std::string_view line) {
    unsigned found = 0;
    const std::size_t size = line.size();
    auto at = [&](std::size_t i, std::string_view key) {
        return size - i >= key.size() && line.compare(i, key.size(), key) == 0;
    };
    for (std::size_t i = 0; i < size; ++i) {
        switch (line[i]) {
        case 'p':
            if (at(i, "parametername")) {
                found |= kParameterName;
            } else if (at(i, "pdomapping")) {
                found |= kPdoMapping;
            }
            break;
        case 'o':
            if (at(i, "objecttype")) {
                found |= kObjectType;
            } else if (at(i, "objflags")) {
                found |= kObjFlags;
            }
            break;
        case 'd':
            if (at(i, "datatype")) {
                found |= kDataType;
            } else if (at(i, "defaultvalue")) {
                found |= kDefaultValue;
            }
            break;
        case 'l':
            if (at(i, "lowlimit")) {
                found |= kLowLimit;
            }
            break;
        case 'h':
            if (at(i, "highlimit")) {
                found |= kHighLimit;
            }
            break;
        case 'a':
            if (at(i, "accesstype")) {
                found |= kAccessType;
            }
            break;
        case 's':
            if (at(i, "subnumber")) {
                found |= kSubNumber;
            }
            break;
        default:
            break;
        }
    }
    return found;
}

// Each key is tested on its own: a line naming two keys sets both fields.
void ParseSectionKeys(std::string_view line, EdsObject& keys) {
    const unsigned found = FindKeys(line);
    if (found == 0) {
        return;
    }
    if (found & kParameterName) {
        keys.ParameterName = PreparedValue(line);
    }
    if (found & kObjectType) {
        keys.ObjectType = ParsePreparedNumber(line, false);
    }
    if (found & kDataType) {
        keys.DataType = ParsePreparedNumber(line, false);
    }
    if (found & kLowLimit) {
        keys.LowLimit = ParsePreparedNumber(line, false);
    }
    if (found & kHighLimit) {
        keys.HighLimit = ParsePreparedNumber(line, false);
    }
    if (found & kAccessType) {
        keys.AccessType = PreparedValue(line);
    }
    if (found & kDefaultValue) {
        keys.DefaultValue = PreparedValue(line);
    }
    if (found & kPdoMapping) {
        keys.PdoMapping = ParsePreparedNumber(line, false) != 0 ? -1 : 0;
    }
    if (found & kObjFlags) {
        keys.ObjFlags = PreparedValue(line);
    }
    if (found & kSubNumber) {
        // Narrowed to 16 bits: the low word, two's complement (0xFFFF gives -1).
        const auto low = static_cast<std::uint16_t>(
            static_cast<std::uint32_t>(ParsePreparedNumber(line, false)) & 0xFFFFu);
        keys.SubNumber = static_cast<std::int16_t>(low);
    }
}

std::string SectionText(const EdsSectionName& name) {
    std::string text = "[" + HexText(name.index);
    if (name.subIndex != -1) {
        text += "sub" + HexText(name.subIndex);
    }
    return text + "]";
}

std::string Where(long lineNumber, const std::string& source) {
    std::string text = "riga " + std::to_string(lineNumber);
    if (!source.empty()) {
        text += " di " + source;
    }
    return text;
}

void LoadText(EdsObjectTable& table, std::string_view text, const std::string& source) {
    table.BeginLoad();
    LineSource lines(text);
    std::string line; // the current line, lower-cased and trimmed
    bool pending = false;
    while (!lines.AtEnd()) {
        if (!pending) {
            PrepareEdsLine(lines.Next(), line);
        }
        pending = false;
        const EdsSectionName name = ParsePreparedSectionName(line);
        if (line.find("granularity=") != std::string::npos) {
            table.SetGranularity(ParsePreparedNumber(line, false));
        }
        if (name.index < 0) {
            continue;
        }
        if (table.EdsObjectCount() >= kLastEdsObject) {
            throw RuntimeError(ErrorCode::SubscriptOutOfRange,
                               "il file EDS ha più di " + std::to_string(kLastEdsObject - 1) +
                                   " sezioni di oggetti (" + Where(lines.LineNumber(), source) +
                                   ")");
        }
        table.AddSection(name.index, name.subIndex);

        EdsObject keys = UnreadEdsObject();
        int listed = 0;
        while (!lines.AtEnd()) {
            const std::string_view raw = lines.Next();
            if (++listed > kSectionLineLimit) {
                throw RuntimeError(ErrorCode::SubscriptOutOfRange,
                                   "la sezione " + SectionText(name) + " supera le " +
                                       std::to_string(kSectionLineLimit) + " righe (" +
                                       Where(lines.LineNumber(), source) + ")");
            }
            PrepareEdsLine(raw, line);
            ParseSectionKeys(line, keys);
            if (!line.empty() && line.front() == '[') {
                break;
            }
        }
        table.StoreSectionKeys(std::move(keys));
        // The line that ended the section is the next one the outer loop looks at, unless
        // the file ends here: a header on the last line is never processed.
        pending = true;
    }
}

bool IsAscii(std::string_view bytes) {
    std::size_t i = 0;
    for (; i + 8 <= bytes.size(); i += 8) {
        std::uint64_t word;
        std::memcpy(&word, bytes.data() + i, 8);
        if ((word & 0x8080808080808080ull) != 0) {
            return false;
        }
    }
    for (; i < bytes.size(); ++i) {
        if (static_cast<unsigned char>(bytes[i]) >= 0x80) {
            return false;
        }
    }
    return true;
}

void LoadBytes(EdsObjectTable& table, const std::string& bytes, const std::string& source) {
    if (IsAscii(bytes)) {
        LoadText(table, bytes, source);
    } else {
        LoadText(table, Cp1252ToUtf8(bytes), source);
    }
}

std::string ReadAll(std::istream& in) {
    std::string bytes;
    // Streams that can tell their size are read in one piece.
    const std::istream::pos_type start = in.tellg();
    if (start != std::istream::pos_type(-1) && in.seekg(0, std::ios::end)) {
        const std::istream::pos_type end = in.tellg();
        in.seekg(start);
        if (end != std::istream::pos_type(-1) && end > start) {
            bytes.resize(static_cast<std::size_t>(end - start));
            in.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
            bytes.resize(static_cast<std::size_t>(in.gcount()));
        }
    }
    in.clear(in.rdstate() & ~std::ios::failbit);
    char chunk[4096];
    while (in) {
        in.read(chunk, sizeof chunk);
        bytes.append(chunk, static_cast<std::size_t>(in.gcount()));
    }
    return bytes;
}

} // namespace

std::string EdsPath(const std::string& edsDirectory, const std::string& name) {
    if (name.find('.') != std::string::npos) {
        return edsDirectory + name;
    }
    return edsDirectory + name + ".eds";
}

void LoadEds(EdsObjectTable& table, const std::string& edsDirectory, const std::string& name) {
    const std::string path = ResolveNameIgnoringCase(EdsPath(edsDirectory, name));
    const auto fsPath = ToFsPath(path);
    std::error_code error;
    if (std::filesystem::is_directory(fsPath, error)) {
        throw RuntimeError(ErrorCode::PathFileAccess, path + " è una cartella");
    }
    std::ifstream file(fsPath, std::ios::binary);
    if (!file) {
        throw RuntimeError(ErrorCode::FileNotFound, path);
    }
    LoadBytes(table, ReadAll(file), path);
}

void LoadEds(EdsObjectTable& table, std::istream& in) {
    LoadBytes(table, ReadAll(in), "");
}

} // namespace velmora
