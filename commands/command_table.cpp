#include "commands/command_table.h"

namespace velmora {

std::optional<Command> CommandForKey(int key) {
    for (const ToolbarButton& button : kToolbar) {
        if (button.Key == key) {
            return button.Runs;
        }
    }
    return std::nullopt;
}

const MenuItem* MenuItemFor(Command command) {
    for (const MenuItem& item : kMenuItems) {
        if (item.Runs == command) {
            return &item;
        }
    }
    return nullptr;
}

} // namespace velmora
