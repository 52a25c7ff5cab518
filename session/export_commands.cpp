#include "session/export_commands.h"

#include "export/channel_analysis.h"
#include "interfaces/text_viewer.h"
#include "model/network.h"
#include "model/paths.h"
#include "session/workspace.h"

namespace velmora {

namespace {

// Steps shared by the export and "Test PDO": analyse and show the verdict.
bool CheckChannels(Workspace& workspace, ChannelDialogState& dialog, ChannelDialogLayout layout) {
    dialog.Layout = layout;
    const bool allowed =
        AnalyseChannels(workspace.Net, workspace.Net.MaxFastPdo(), workspace.Channels, dialog);
    ShowChannelDialog(allowed, workspace.Channels, dialog);
    return allowed;
}

} // namespace

ExportOutcome ExportToController(Workspace& workspace, ChannelDialogState& dialog) {
    ReadExportSettings(workspace.Net);
    ExportOutcome outcome;
    outcome.Path = workspace.Net.ExportPath;
    if (outcome.Path.empty()) {
        outcome.Status = ExportStatus::NoFileName;
        return outcome;
    }
    if (!CheckChannels(workspace, dialog, ChannelDialogLayout::Tall)) {
        outcome.Status = ExportStatus::Refused;
        return outcome;
    }
    const ControllerFileResult written = WriteControllerFile(workspace.Net, "", outcome.Path);
    if (written.Complete) {
        outcome.Status = ExportStatus::Written;
        dialog.Message = ChannelTexts::Saved;
        dialog.Colour = MessageColour::Blue;
    } else {
        outcome.Status = ExportStatus::NotWritten;
        outcome.Reason = written.Reason;
        dialog.Message = ChannelTexts::NotSaved;
        dialog.Colour = MessageColour::Red;
    }
    return outcome;
}

bool TestPdo(Workspace& workspace, ChannelDialogState& dialog) {
    ReadExportSettings(workspace.Net);
    return CheckChannels(workspace, dialog, ChannelDialogLayout::Short);
}

std::string FinalFilePath(const std::string& appDirectory) {
    return appDirectory + kPathSeparator + std::string(ExportTexts::FinalFileName);
}

ControllerFileResult ShowFinalFile(Workspace& workspace, TextViewer& viewer) {
    ReadExportSettings(workspace.Net);
    const std::string path = FinalFilePath(workspace.AppDirectory);
    ControllerFileResult result = WriteControllerFile(workspace.Net, "", path);
    if (result.Complete) {
        ViewTextFile(workspace.Net, viewer, path);
    }
    return result;
}

void ViewTextFile(const Network& network, TextViewer& viewer, const std::string& path) {
    viewer.Open(path.empty() ? network.DefaultFilePath() : path);
}

} // namespace velmora
