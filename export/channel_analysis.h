#pragma once

// The channel analysis: counts the fast and slow PDOs per direction, estimates the bus time
// of one fast cycle at a bit rate, and enforces the limit on fast PDOs that gates the export.
// Its result is the content of the channel dialog ("Controllo Canali"), kept here as data
// that the dialog and velmora-cli both render.
//
// Counting functions write into the network-wide ChannelCounters; a 16-bit sum past 32767
// is the Overflow run-time error, which stops the analysis.

#include "export/channel_counters.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace velmora {

struct Network;

namespace ChannelTexts {
inline constexpr std::string_view Title = "Controllo Canali";
inline constexpr std::string_view TxFastLabel = "TX FAST   totali :";
inline constexpr std::string_view TxSlowLabel = "TX SLOW  totali :";
inline constexpr std::string_view RxFastLabel = "RX FAST   totali :";
inline constexpr std::string_view RxSlowLabel = "RX SLOW  totali :";
inline constexpr std::string_view TimeLabel = "Tempo";
inline constexpr std::string_view BitRateLabel = "BAUD RATE          :";
inline constexpr std::string_view Caption = "Analisi canali della rete : ";
inline constexpr std::string_view WarningCaption = "Analisi canali della rete";
inline constexpr std::string_view Allowed = "NUMERO PDO OK";
inline constexpr std::string_view Refused = "TROPPI PDO TX FAST";
inline constexpr std::string_view Saving = "Salvataggio file ORV ...";
inline constexpr std::string_view Saved = "Salvataggio file ORV  OK";
inline constexpr std::string_view CannotExport = "Impossibile esportare";
// Shown instead of Saved when the export file could not be written completely.
inline constexpr std::string_view NotSaved = "Salvataggio file ORV non riuscito";
} // namespace ChannelTexts

// The bit rates the dialog offers, in kbit/s.
inline constexpr int kChannelBitRates[] = {125, 250, 500, 1000};
inline constexpr int kDefaultBitRate = 500;

// Tall: the export's layout, with the message line; Short: "Test PDO", without it.
enum class ChannelDialogLayout { Tall, Short };
// Red and blue of the standard 16-colour palette.
enum class MessageColour { Blue, Red };

// Everything the channel dialog shows. It lives as long as the program, like the dialog:
// a field keeps its value until an operation below changes it.
struct ChannelDialogState {
    bool Visible = false;
    ChannelDialogLayout Layout = ChannelDialogLayout::Tall;
    // The four totals.
    std::int16_t TxFast = 0;
    std::int16_t TxSlow = 0;
    std::int16_t RxFast = 0;
    std::int16_t RxSlow = 0;
    // Which of the two verdict indicators is shown.
    bool ShowsAllowed = false;
    bool ShowsRefused = false;
    // The message line, visible only in the tall layout.
    std::string Message;
    MessageColour Colour = MessageColour::Blue;
    std::string Caption{ChannelTexts::Caption};
    // The estimated time of one fast cycle in milliseconds and the bit rate it was computed
    // for, as the bit-rate box shows it.
    double TimeMs = 0.0;
    std::string BitRate;

    bool MessageVisible() const { return Layout == ChannelDialogLayout::Tall; }
    // The time line: the general number format (at most 15 significant digits, no trailing
    // zeros) with the given decimal separator, followed by " (msec)": "0.53 (msec)".
    std::string TimeLine(char decimalSeparator = '.') const;
};

// Resets txSlow, rxSlow, txFast and rxFast, then walks the slots from 0 until nodeCount
// in-use slots have been seen; of each configured node it walks the PDO entries from 0 while
// the direction is "TX", then on while it is "RX", counting the modes "Fast" and "Slow"
// (exact texts). The direction walks end at the end of the 51-entry table. A nodeCount larger
// than the in-use slots runs the walk past slot 500: the SubscriptOutOfRange error.
void CountChannels(const Network& network, int nodeCount, ChannelCounters& counters);

// fastBytes = the bytes of the fast PDOs of the configured nodes (NodeCount-bounded walk as
// above): for PDO entries j < TxPdoCount + RxPdoCount in mode "Fast" with a MappingCount above
// 0, each used mapping from entry 0 (the walk ends at the first unused one or at the end of
// the table) adds its Length / 8, rounded half-even at every step. A Length that is not
// wholly a decimal number is the TypeMismatch error; an entry index past 50 is the
// SubscriptOutOfRange error.
void SumFastBytes(const Network& network, ChannelCounters& counters);

// Runs CountChannels (with NodeCount) and SumFastBytes, computes frames and bytes, the time
// at 500 kbit/s and sets the bit-rate box to "500". Returns whether txFast + rxFast <=
// maxFast (equality is allowed).
bool AnalyseChannels(const Network& network, std::int16_t maxFast, ChannelCounters& counters,
                     ChannelDialogState& dialog);

// Recomputes the time from the stored frames and bytes for another bit rate (kbit/s, above
// 0, else the InvalidArgument error); the counts are not recomputed.
void RecomputeTime(int bitRateKbit, const ChannelCounters& counters, ChannelDialogState& dialog);

// Fills the four totals and the verdict (indicator and message line) and shows the dialog.
void ShowChannelDialog(bool allowed, const ChannelCounters& counters, ChannelDialogState& dialog);

// The hook the PDO editor calls after saving a PDO. Recounts the channels; when txFast +
// rxFast has reached MaxFastPdo (already at the limit, while the export is refused only
// above it) and ChannelCheck is set, it shows the dialog in the refused state with the
// caption "Analisi canali della rete" and returns true. Otherwise it returns false: the
// caller re-enables the main window and brings it to the front.
bool OnPdoModeSaved(const Network& network, std::string_view direction, std::string_view mode,
                    ChannelCounters& counters, ChannelDialogState& dialog);

} // namespace velmora
