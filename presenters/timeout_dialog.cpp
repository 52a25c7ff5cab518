#include "presenters/timeout_dialog.h"

#include "export/node_timeouts.h"
#include "model/network.h"
#include "model/numeric.h"
#include "model/text.h"
#include "tree/network_tree.h"

namespace velmora {

TimeoutDialog::TimeoutDialog(Network& network, std::string_view key)
    : network_(network), slot_(SlotAfterAt(key)) {
    const NodeTimeout timeout = GetNodeTimeout(network_, slot_);
    title_ = std::string(TimeoutTexts::TitlePrefix) + DecimalText(slot_ + 1);
    repetitionsText_ = DecimalText(timeout.repetitions);
    repetitionTimeText_ = DecimalText(timeout.repetitionTime);
}

void TimeoutDialog::Ok(std::string_view repetitions, std::string_view repetitionTime) {
    const std::int16_t count = ToInt16(ReadNumber(repetitions));
    const std::int16_t time = ToInt16(ReadNumber(repetitionTime));
    SetNodeTimeout(network_, slot_, count, time);
}

} // namespace velmora
