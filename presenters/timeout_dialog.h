#pragma once

// The logic of the time-out dialog ("Par. di TimeOut su nodo N"), opened from a node's
// time-out item in the network tree: it shows the node's repetitions and time per repetition
// and stores what the user typed on "Ok". The widget copies the texts in and out.
//
// Run-time errors (RuntimeError) propagate to the caller, the command boundary.

#include <cstdint>
#include <string>
#include <string_view>

namespace velmora {

struct Network;

namespace TimeoutTexts {
inline constexpr std::string_view TitlePrefix = "Par. di TimeOut su nodo ";
inline constexpr std::string_view RepetitionsLabel = "Numero Ripetizioni";
inline constexpr std::string_view RepetitionTimeLabel = "Tempo per ripetizioni";
inline constexpr std::string_view UnitLabel = "ms";
} // namespace TimeoutTexts

class TimeoutDialog {
public:
    // Opens the dialog for the node named by a time-out key ("PARTIMEOUT@3": the number after
    // the first "@"). A slot outside 0..500 is the SubscriptOutOfRange error.
    TimeoutDialog(Network& network, std::string_view key);

    int Slot() const { return slot_; }
    // "Par. di TimeOut su nodo " followed by the node number (slot + 1).
    const std::string& Title() const { return title_; }
    // The initial field texts: the stored values as plain decimal text.
    const std::string& RepetitionsText() const { return repetitionsText_; }
    const std::string& RepetitionTimeText() const { return repetitionTimeText_; }

    // "Ok": each text is read by its leading number (no number gives 0, "12abc" gives 12),
    // rounded half-even and stored with SetNodeTimeout. A value outside -32768..32767 is the
    // Overflow error and nothing is stored. Negative values are stored as they are. The
    // configuration is not marked modified and the tree is not refreshed.
    void Ok(std::string_view repetitions, std::string_view repetitionTime);

private:
    Network& network_;
    int slot_;
    std::string title_;
    std::string repetitionsText_;
    std::string repetitionTimeText_;
};

} // namespace velmora
