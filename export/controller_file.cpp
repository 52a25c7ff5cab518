#include "export/controller_file.h"

#include "model/cp1252.h"
#include "model/network.h"
#include "model/network_walk.h"
#include "model/runtime_error.h"
#include "model/text.h"
#include "model/transmission_mode.h"

#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstring>
#include <ostream>
#include <string_view>

namespace velmora {

namespace {

// Raised when the stream refuses to take more bytes; code is errno at that moment.
struct StreamFailed {
    int code;
};

// Builds lines in a Windows-1252 buffer and hands it to the stream in large pieces.
class LineWriter {
public:
    explicit LineWriter(std::ostream& out) : out_(out) { buffer_.reserve(kFlushSize + 4096); }

    LineWriter& Indent(std::size_t blanks) {
        buffer_.append(blanks, ' ');
        return *this;
    }
    // ASCII literals of the file's grammar.
    LineWriter& Word(std::string_view ascii) {
        buffer_ += ascii;
        return *this;
    }
    // A text of the network, written as stored.
    LineWriter& Text(std::string_view utf8) {
        for (unsigned char c : utf8) {
            if (c >= 0x80) {
                buffer_ += Utf8ToCp1252(utf8);
                return *this;
            }
        }
        buffer_ += utf8;
        return *this;
    }
    LineWriter& Number(long long value) {
        char digits[24];
        const auto result = std::to_chars(digits, digits + sizeof digits, value);
        buffer_.append(digits, result.ptr);
        return *this;
    }
    LineWriter& Byte(char byte) {
        buffer_ += byte;
        return *this;
    }
    void End() {
        buffer_ += "\r\n";
        if (buffer_.size() >= kFlushSize) {
            Flush();
        }
    }
    void Flush() {
        out_.write(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
        buffer_.clear();
        if (!out_) {
            throw StreamFailed{errno};
        }
    }

private:
    static constexpr std::size_t kFlushSize = 1 << 20;
    std::ostream& out_;
    std::string buffer_;
};

// One PCFG digit: 0..9 give "0".."9", 10 gives ":", 11..15 give "A".."E"; there is no "F",
// the controller reads the program's own mapping.
char PcfgCharacter(int digit) {
    const int code = digit <= 10 ? 48 + digit : 54 + digit;
    if (code < 0 || code > 255) {
        throw RuntimeError(ErrorCode::InvalidArgument,
                           "carattere PCFG " + DecimalText(code) + " fuori da 0..255");
    }
    return static_cast<char>(static_cast<unsigned char>(code));
}

void WritePdo(LineWriter& w, const Pdo& pdo) {
    const PdoSettings& settings = pdo.Settings;
    const bool disabled = settings.Mode == TransmissionMode::Disabled;
    w.Indent(8).Word("PDO,").Text(pdo.Direction).Word(",").Number(pdo.PdoNumber + 1).End();
    w.Indent(16).Word("COB-ID,h").Text(settings.CobId).End();
    w.Indent(16).Word("MODO,");
    if (disabled) {
        w.Text(TransmissionMode::Manual);
    } else {
        w.Text(settings.Mode);
    }
    w.End();
    w.Indent(16).Word("BYTE,");
    if (Trim(settings.Bytes).empty()) {
        w.Word("0");
    } else {
        w.Text(settings.Bytes); // untrimmed
    }
    w.End();
    const int mask = settings.Pcfg;
    const char high = PcfgCharacter(static_cast<int>(std::floor(mask / 16.0)));
    const char low = PcfgCharacter(mask & 15);
    w.Indent(16).Word("PCFG,h").Byte(high).Byte(low).End();
    w.Indent(24).Word("COMM,").Text(settings.Comm).End();
    w.Indent(24).Word("INH_TIME,").Text(settings.InhibitTime).End();
    w.Indent(24).Word("EVENT_TIME,").Text(settings.EventTime).End();
    w.Indent(16).Word("NMAP,");
    if (disabled || pdo.Block.NoMapping != 0) {
        w.Word("0");
    } else {
        w.Number(settings.MappingCount);
    }
    w.End();
    // NoMapping is not consulted here: a PDO with it set still lists its mappings. Mapping k
    // is read only once k < MappingCount holds.
    for (int k = 0; !disabled && k < settings.MappingCount && settings.MappingAt(k).Used != 0;
         ++k) {
        const PdoMapping& mapping = settings.Mappings[static_cast<std::size_t>(k)];
        w.Indent(24).Word("VCB,").Text(mapping.Vcb).End();
        w.Indent(32).Word("OBJECT,h").Text(mapping.ObjectIndex).Word(",");
        w.Text(mapping.SubIndex).End();
        w.Indent(32).Word("LEN,").Text(mapping.Length).End();
    }
}

void WriteNode(LineWriter& w, const Node& node, int slot) {
    w.Word("NODO,").Number(slot + 1).End();
    w.Indent(8).Word("CFGTO,").Number(node.repetitions).Word(",");
    w.Number(node.repetitionTime).End();
    // The walk stops at twice the TX count, not TX + RX: the controller expects it, so a node
    // with more RX than TX PDOs loses its last RX PDOs.
    const int bound = 2 * node.TxPdoCount;
    for (int j = 0; j < bound; ++j) {
        const Pdo& pdo = node.PdoAt(j);
        if (pdo.Used != 0) {
            WritePdo(w, pdo);
        }
    }
    w.Indent(8).Word("NPAR,").Number(node.ParameterCount).End();
    // The first entry not in use ends the list, whatever NPAR says.
    for (int p = 0; p <= kLastParameter && node.Parameters[p].Used != 0; ++p) {
        const NodeParameter& parameter = node.Parameters[p];
        w.Indent(16).Word("OBJ,h").Text(parameter.ObjectIndex).Word(",");
        w.Text(parameter.SubIndex).End();
        w.Indent(16).Word("NBYTE,").Text(parameter.ByteCount).End();
        w.Indent(16).Word("VAL,").Text(parameter.Value).End();
    }
}

// The nodes in use, in slot order, until NodeCount of them are written.
void WriteNodes(const Network& network, LineWriter& w) {
    ForEachNodeInUse(network, network.NodeCount,
                     [&w](int slot, const Node& node) { WriteNode(w, node, slot); });
}

} // namespace

ControllerFileResult WriteControllerFile(const Network& network, std::ostream& out) {
    LineWriter w(out);
    ControllerFileResult result;
    errno = 0;
    try {
        try {
            WriteNodes(network, w);
        } catch (const RuntimeError& error) {
            result = {false, error.what()};
        }
        w.Flush();
    } catch (const StreamFailed& failure) {
        const char* reason =
            failure.code != 0 ? std::strerror(failure.code) : "scrittura interrotta";
        result = {false,
                  RuntimeError::Describe(ErrorCode::PathFileAccess) + std::string(": ") + reason};
    }
    return result;
}

ControllerFileResult WriteControllerFile(const Network& network, const std::string& prefix,
                                         const std::string& fileName, const FileWriter& files) {
    try {
        files.Replace(prefix + fileName, [&](std::ostream& out) {
            LineWriter w(out);
            try {
                WriteNodes(network, w);
                w.Flush();
            } catch (const StreamFailed&) {
                throw RuntimeError(ErrorCode::PathFileAccess, "scrittura del file non riuscita");
            }
        });
    } catch (const RuntimeError& error) {
        return {false, error.what()};
    }
    return {};
}

} // namespace velmora
