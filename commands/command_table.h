#pragma once

// The main window's commands: the menu bar (menus, item names, captions with their access
// keys) and the toolbar (tool tips and button keys). A toolbar click is dispatched by the
// button's key, not by its position, so the seventh button (key 13) runs the library
// insertion and the fifth (key 5) runs nothing.

#include <array>
#include <optional>
#include <string_view>

namespace velmora {

enum class Command {
    FileNew,
    FileLoad,
    FileSave,
    FileSaveAs,
    AddEds,
    FileQuit,
    AddNode,
    ModifyNode,
    Remove,
    CopyNode,
    PasteNode,
    ConfigurePdo,
    AddParameter,
    ModifyParameter,
    TestPdo,
    ShowFinalFile,
    ExportSettings,
    SaveToLibrary,
    EditLibrary,
    TakeFromLibrary,
    HelpContents,
    About,
    ExportToOrv, // toolbar only
};
inline constexpr int kCommandCount = static_cast<int>(Command::ExportToOrv) + 1;

struct MenuItem {
    std::string_view Menu;
    std::string_view Name;
    std::string_view Caption; // "&" marks the access key
    Command Runs;
};

inline constexpr std::array<std::string_view, 5> kMenus = {"File", "Modifica", "Opzioni",
                                                           "&Libreria", "Help"};

inline constexpr std::array<MenuItem, 22> kMenuItems = {{
    {"File", "mnFileNew", "&Nuovo", Command::FileNew},
    {"File", "mnFileLoad", "C&arica ", Command::FileLoad},
    {"File", "mnFileSave", "&Salva", Command::FileSave},
    {"File", "sname", "Salva con nome", Command::FileSaveAs},
    {"File", "eds", "Aggiungi nuovo eds", Command::AddEds},
    {"File", "mnFileQuit", "&Esci", Command::FileQuit},
    {"Modifica", "aggiungi", "&Aggiungi nodo", Command::AddNode},
    {"Modifica", "modifica", "Modifica nodo", Command::ModifyNode},
    {"Modifica", "mnModificaRemove", "&Rimuovi nodo", Command::Remove},
    {"Modifica", "memorizza", "Copia nodo", Command::CopyNode},
    {"Modifica", "scrivi", "Incolla nodo", Command::PasteNode},
    {"Modifica", "pdoConf", "Configura pdo", Command::ConfigurePdo},
    {"Modifica", "addP", "Aggiungi parametro", Command::AddParameter},
    {"Modifica", "modP", "Modifica parametro", Command::ModifyParameter},
    {"Opzioni", "testPDO", "Test PDO ", Command::TestPdo},
    {"Opzioni", "mnVisualizzaView", "Mostra file finale ", Command::ShowFinalFile},
    {"Opzioni", "cfgfile", "Configurazione", Command::ExportSettings},
    {"&Libreria", "Salva_lib", "Salva nodo in libreria", Command::SaveToLibrary},
    {"&Libreria", "Mod_lib", "Modifica nodo in libreria", Command::EditLibrary},
    {"&Libreria", "Prendi_lib", "Prendi nodo da libreria", Command::TakeFromLibrary},
    {"Help", "InfoLinea", "Guida in linea", Command::HelpContents},
    {"Help", "Info", "Informazioni su Velmora", Command::About},
}};

struct ToolbarButton {
    int Position; // from the left, starting at 1
    std::string_view ToolTip;
    int Key;
};

inline constexpr std::array<ToolbarButton, 14> kToolbar = {{
    {1, "Nuova configurazione", 1},
    {2, "Carica configurazione", 2},
    {3, "Salva configurazione", 3},
    {4, "Guarda file di configurazione", 4},
    {5, "Stampa file di configurazione", 5},
    {6, "Aggiungi nodo da Eds", 6},
    {7, "Aggiungi nodo da LIB", 13},
    {8, "Modifica nodo", 7},
    {9, "Rimuovi nodo", 8},
    {10, "Seleziona nodo", 9},
    {11, "Replica nodo", 10},
    {12, "Esporta a ORV", 11},
    {13, "Esporta in libreria", 12},
    {14, "Modifica libreria", 14},
}};

// The command a toolbar key runs; nullopt for a key that matches no command (5).
std::optional<Command> CommandForKey(int key);

// The menu item that runs command; nullopt for the toolbar-only export.
const MenuItem* MenuItemFor(Command command);

} // namespace velmora
