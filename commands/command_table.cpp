#include "commands/command_table.h"

namespace velmora {

std::optional<Command> CommandForKey(int key) {
    switch (key) {
    case 1:
        return Command::FileNew;
    case 2:
        return Command::FileLoad;
    case 3:
        return Command::FileSave;
    case 4:
        return Command::ShowFinalFile;
    case 6:
        return Command::AddNode;
    case 7:
        return Command::ModifyNode;
    case 8:
        return Command::Remove;
    case 9:
        return Command::CopyNode;
    case 10:
        return Command::PasteNode;
    case 11:
        return Command::ExportToOrv;
    case 12:
        return Command::SaveToLibrary;
    case 13:
        return Command::TakeFromLibrary;
    case 14:
        return Command::EditLibrary;
    default:
        return std::nullopt; // key 5, "Stampa file di configurazione", does nothing
    }
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
