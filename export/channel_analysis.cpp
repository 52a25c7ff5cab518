#include "export/channel_analysis.h"

#include "model/network.h"
#include "model/network_walk.h"
#include "model/numeric.h"
#include "model/runtime_error.h"
#include "model/text.h"
#include "model/transmission_mode.h"

namespace velmora {

namespace {

std::int16_t Sum16(long long value, const char* what) {
    if (value > INT16_MAX || value < INT16_MIN) {
        throw RuntimeError(ErrorCode::Overflow, what);
    }
    return static_cast<std::int16_t>(value);
}

// Calls visit(node) for each configured node among the first nodeCount in-use slots.
template <typename Visit>
void ForEachConfiguredNode(const Network& network, int nodeCount, Visit visit) {
    ForEachNodeInUse(network, nodeCount, [&visit](int, const Node& node) {
        if (node.Configured != 0) {
            visit(node);
        }
    });
}

double TimeMs(const ChannelCounters& counters, int bitRateKbit) {
    const double byteTime = 8.0 / bitRateKbit;
    const double frameTime = 43.0 / bitRateKbit;
    return byteTime * counters.bytes + frameTime * counters.frames;
}

} // namespace

std::string ChannelDialogState::TimeLine(char decimalSeparator) const {
    return FormatGeneral(TimeMs, decimalSeparator) + " (msec)";
}

void CountChannels(const Network& network, int nodeCount, ChannelCounters& counters) {
    counters.txSlow = 0;
    counters.rxSlow = 0;
    counters.txFast = 0;
    counters.rxFast = 0;
    ForEachConfiguredNode(network, nodeCount,
                          [&counters](const Node& node) { CountNodeModes(node, counters); });
}

void SumFastBytes(const Network& network, ChannelCounters& counters) {
    counters.fastBytes = 0;
    ForEachConfiguredNode(network, network.NodeCount, [&counters](const Node& node) {
        const int pdoCount = node.TxPdoCount + node.RxPdoCount;
        for (int j = 0; j < pdoCount; ++j) {
            const PdoSettings& settings = node.PdoAt(j).Settings;
            if (settings.Mode != TransmissionMode::Fast || settings.MappingCount <= 0) {
                continue;
            }
            // MappingCount is not consulted again: the used flags alone end the walk.
            for (int k = 0; k <= kLastMapping && settings.Mappings[k].Used != 0; ++k) {
                const std::string& length = settings.Mappings[k].Length;
                const auto bits = ParseDecimal(length);
                if (!bits) {
                    throw RuntimeError(ErrorCode::TypeMismatch,
                                       "lunghezza di mappatura \"" + length + "\"");
                }
                // Rounded at every step, halves to even: three 4-bit mappings give 0 bytes.
                counters.fastBytes = ToInt16(*bits / 8.0 + counters.fastBytes);
            }
        }
    });
}

bool AnalyseChannels(const Network& network, std::int16_t maxFast, ChannelCounters& counters,
                     ChannelDialogState& dialog) {
    CountChannels(network, network.NodeCount, counters);
    // A slow TX group costs 2 frames and 8 bytes, a slow RX group 1 frame and 8 bytes,
    // however many slow PDOs there are; every cycle carries 2 frames and 9 bytes.
    counters.frames = Sum16(static_cast<long long>(counters.txFast) + counters.rxFast +
                                (counters.txSlow >= 1 ? 2 : 0) + (counters.rxSlow > 0 ? 1 : 0) + 2,
                            "frames");
    SumFastBytes(network, counters);
    counters.bytes = Sum16((counters.txSlow >= 1 ? 8LL : 0LL) + counters.fastBytes +
                               (counters.rxSlow > 0 ? 8 : 0) + 9,
                           "bytes");
    dialog.TimeMs = TimeMs(counters, kDefaultBitRate);
    dialog.BitRate = DecimalText(kDefaultBitRate);
    const std::int16_t fast =
        Sum16(static_cast<long long>(counters.txFast) + counters.rxFast, "PDO fast");
    return fast <= maxFast;
}

void RecomputeTime(int bitRateKbit, const ChannelCounters& counters, ChannelDialogState& dialog) {
    if (bitRateKbit <= 0) {
        throw RuntimeError(ErrorCode::InvalidArgument,
                           "velocità di trasmissione " + DecimalText(bitRateKbit));
    }
    dialog.TimeMs = TimeMs(counters, bitRateKbit);
    dialog.BitRate = DecimalText(bitRateKbit);
}

void ShowChannelDialog(bool allowed, const ChannelCounters& counters, ChannelDialogState& dialog) {
    dialog.TxFast = counters.txFast;
    dialog.TxSlow = counters.txSlow;
    dialog.RxFast = counters.rxFast;
    dialog.RxSlow = counters.rxSlow;
    dialog.ShowsAllowed = allowed;
    dialog.ShowsRefused = !allowed;
    dialog.Message = allowed ? ChannelTexts::Saving : ChannelTexts::CannotExport;
    dialog.Colour = allowed ? MessageColour::Blue : MessageColour::Red;
    dialog.Visible = true;
}

bool OnPdoModeSaved(const Network& network, std::string_view /*direction*/,
                    std::string_view /*mode*/, ChannelCounters& counters,
                    ChannelDialogState& dialog) {
    // The direction and mode only chose a counter to bump before the recount discarded it.
    CountChannels(network, network.NodeCount, counters);
    const long long fast = static_cast<long long>(counters.txFast) + counters.rxFast;
    if (fast >= network.MaxFastPdo() && network.ChannelCheck != 0) {
        dialog.Caption = ChannelTexts::WarningCaption;
        ShowChannelDialog(false, counters, dialog);
        return true;
    }
    return false;
}

} // namespace velmora
