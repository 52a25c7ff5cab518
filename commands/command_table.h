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

// Toolbar positions, counted from the left starting at 1.
namespace ToolbarPosition {
inline constexpr int NewConfiguration = 1;
inline constexpr int LoadConfiguration = 2;
inline constexpr int SaveConfiguration = 3;
inline constexpr int ViewFile = 4;
inline constexpr int PrintFile = 5;
inline constexpr int AddNodeFromEds = 6;
inline constexpr int AddNodeFromLibrary = 7;
inline constexpr int ModifyNode = 8;
inline constexpr int RemoveNode = 9;
inline constexpr int SelectNode = 10;    // the copy command; NewNetwork disables it
inline constexpr int ReplicateNode = 11; // the paste command
inline constexpr int ExportToOrv = 12;
inline constexpr int ExportToLibrary = 13;
inline constexpr int EditLibrary = 14;
inline constexpr int First = NewConfiguration;
inline constexpr int Last = EditLibrary;
} // namespace ToolbarPosition

struct ToolbarButton {
    int Position;
    std::string_view ToolTip;
    int Key;
    std::optional<Command> Runs; // none for key 5
};

inline constexpr std::array<ToolbarButton, ToolbarPosition::Last> kToolbar = {{
    {ToolbarPosition::NewConfiguration, "Nuova configurazione", 1, Command::FileNew},
    {ToolbarPosition::LoadConfiguration, "Carica configurazione", 2, Command::FileLoad},
    {ToolbarPosition::SaveConfiguration, "Salva configurazione", 3, Command::FileSave},
    {ToolbarPosition::ViewFile, "Guarda file di configurazione", 4, Command::ShowFinalFile},
    {ToolbarPosition::PrintFile, "Stampa file di configurazione", 5, std::nullopt},
    {ToolbarPosition::AddNodeFromEds, "Aggiungi nodo da Eds", 6, Command::AddNode},
    {ToolbarPosition::AddNodeFromLibrary, "Aggiungi nodo da LIB", 13, Command::TakeFromLibrary},
    {ToolbarPosition::ModifyNode, "Modifica nodo", 7, Command::ModifyNode},
    {ToolbarPosition::RemoveNode, "Rimuovi nodo", 8, Command::Remove},
    {ToolbarPosition::SelectNode, "Seleziona nodo", 9, Command::CopyNode},
    {ToolbarPosition::ReplicateNode, "Replica nodo", 10, Command::PasteNode},
    {ToolbarPosition::ExportToOrv, "Esporta a ORV", 11, Command::ExportToOrv},
    {ToolbarPosition::ExportToLibrary, "Esporta in libreria", 12, Command::SaveToLibrary},
    {ToolbarPosition::EditLibrary, "Modifica libreria", 14, Command::EditLibrary},
}};

// The command a toolbar key runs; nullopt for a key that matches no command (5).
std::optional<Command> CommandForKey(int key);

// The menu item that runs command; nullopt for the toolbar-only export.
const MenuItem* MenuItemFor(Command command);

} // namespace velmora
