#pragma once

// The commands that produce the controller export file: "Esporta a ORV" (gated by the
// channel check), "Mostra file finale" (a scratch copy opened in the text viewer) and
// "Test PDO" (the channel check alone). They return what happened, and the channel dialog's
// content, for the GUI and velmora-cli to show.

#include "export/controller_file.h"

#include <string>
#include <string_view>

namespace velmora {

struct Network;
struct Workspace;
struct ChannelDialogState;
class TextViewer;

namespace ExportTexts {
inline constexpr std::string_view NoNameTitle = "Nome file non definito";
inline constexpr std::string_view NoNameText = "Assegna un nome al file prima di esportarlo";
inline constexpr std::string_view FinalFileName = "Dummy.$$$";
} // namespace ExportTexts

enum class ExportStatus {
    NoFileName, // ExportPath is empty: nothing happened; the caller shows ExportTexts::NoName*
    Refused,    // more fast PDOs than MaxFastPdo: nothing written
    Written,    // the whole file was written
    NotWritten, // the file could not be written whole; an existing one keeps what it held
};

struct ExportOutcome {
    ExportStatus Status = ExportStatus::Written;
    std::string Path;   // the export path
    std::string Reason; // for NotWritten: the message, naming the file
};

// "Esporta a ORV". With an empty ExportPath it stops at once (NoFileName: the caller shows
// "Nome file non definito"). Otherwise it prepares the channel dialog in its tall layout, runs
// AnalyseChannels with MaxFastPdo and shows the dialog; when allowed it writes ExportPath and sets
// the message line to "Salvataggio file ORV  OK" in blue, or, when the file could not be written
// completely, to "Salvataggio file ORV non riuscito" in red.
ExportOutcome ExportToController(Workspace& workspace, ChannelDialogState& dialog);

// "Test PDO": the channel check of the export with the dialog in its short layout (no
// message line); nothing is written. Returns whether the export would be allowed.
bool TestPdo(Workspace& workspace, ChannelDialogState& dialog);

// The scratch copy's path: the application folder followed by "/Dummy.$$$".
std::string FinalFilePath(const std::string& appDirectory);

// "Mostra file finale": writes the scratch copy without any channel check (replacing the
// last one), then opens it with ViewTextFile. When it cannot be written, the last copy stays
// as it was and is not opened: the caller reports the result's Reason.
ControllerFileResult ShowFinalFile(Workspace& workspace, TextViewer& viewer);

// Opens path in the text viewer; an empty path opens DefaultFilePath instead.
void ViewTextFile(const Network& network, TextViewer& viewer, const std::string& path);

} // namespace velmora
