#include "export/channel_analysis.h"
#include "export/controller_export.h"
#include "export/export_settings_dialog.h"
#include "export/text_viewer.h"
#include "export/timeout_dialog.h"
#include "model/runtime_error.h"
#include "model/user_dialogs.h"
#include "model/workspace.h"
#include "storage/configuration_file.h"
#include "support/network_builder.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

using test::AddNode;
using test::EmptyNetwork;

class RecordingDialogs : public UserDialogs {
public:
    std::vector<std::string> shown; // "title|text"

    void Inform(const std::string& title, const std::string& text) override {
        shown.push_back(title + "|" + text);
    }
    bool AskYesNo(const std::string&, const std::string&) override { return false; }
    std::optional<std::string> ChooseFileToOpen(const std::string&,
                                                const std::vector<FileFilter>&) override {
        return std::nullopt;
    }
    std::optional<std::string> ChooseFileToSave(const std::string&,
                                                const std::vector<FileFilter>&) override {
        return std::nullopt;
    }
};

class RecordingViewer : public TextViewer {
public:
    std::vector<std::string> opened;
    void Open(const std::string& path) override { opened.push_back(path); }
};

Workspace ExportWorkspace(const test::TempDir& dir) {
    Workspace workspace;
    workspace.AppDirectory = dir.Path();
    workspace.Net = EmptyNetwork(dir.Path());
    AddNode(workspace.Net, 0, 2, 0, "Fast");
    workspace.Net.ExportPath = dir.File("linea.cop");
    return workspace;
}

TEST(ExportCommands, ExportToControllerGatesAndWrites) {
    test::TempDir dir;
    Workspace workspace = ExportWorkspace(dir);
    RecordingDialogs dialogs;
    ChannelDialogState dialog;

    ExportOutcome outcome = ExportToController(workspace, dialog, dialogs);
    EXPECT_EQ(outcome.Status, ExportStatus::Written);
    EXPECT_EQ(dialog.Message, "Salvataggio file ORV  OK");
    EXPECT_EQ(dialog.Colour, MessageColour::Blue);
    EXPECT_EQ(dialog.Layout, ChannelDialogLayout::Tall);
    EXPECT_EQ(workspace.Net.ExportExtension, "cop");
    const std::string written = test::ReadFileBytes(dir.File("linea.cop"));
    EXPECT_TRUE(written.starts_with("NODO,1\r\n"));

    // Refused above the limit: the existing file stays as it was.
    workspace.Net.MaxFastPdo() = 1;
    workspace.Net.NodeAt(3).repetitions = 9;
    outcome = ExportToController(workspace, dialog, dialogs);
    EXPECT_EQ(outcome.Status, ExportStatus::Refused);
    EXPECT_EQ(dialog.Message, "Impossibile esportare");
    EXPECT_TRUE(dialog.ShowsRefused);
    EXPECT_EQ(test::ReadFileBytes(dir.File("linea.cop")), written);

    // A file that cannot be written: reported instead of the OK line.
    workspace.Net.MaxFastPdo() = 10;
    workspace.Net.ExportPath = dir.File("missing/linea.cop");
    outcome = ExportToController(workspace, dialog, dialogs);
    EXPECT_EQ(outcome.Status, ExportStatus::NotWritten);
    EXPECT_FALSE(outcome.Reason.empty());
    EXPECT_EQ(dialog.Message, "Salvataggio file ORV non riuscito");
    EXPECT_EQ(dialog.Colour, MessageColour::Red);
    EXPECT_TRUE(dialogs.shown.empty());

    // No export path: the message box and nothing else.
    workspace.Net.ExportPath.clear();
    ChannelDialogState untouched;
    outcome = ExportToController(workspace, untouched, dialogs);
    EXPECT_EQ(outcome.Status, ExportStatus::NoFileName);
    EXPECT_EQ(dialogs.shown,
              std::vector<std::string>{
                  "Nome file non definito|Assegna un nome al file prima di esportarlo"});
    EXPECT_FALSE(untouched.Visible);

    // "Test PDO": the same check in the short layout, nothing written.
    EXPECT_TRUE(TestPdo(workspace, untouched));
    EXPECT_EQ(untouched.Layout, ChannelDialogLayout::Short);
    EXPECT_FALSE(untouched.MessageVisible());
    EXPECT_TRUE(untouched.ShowsAllowed);
}

TEST(ExportCommands, FinalFileAndViewer) {
    test::TempDir dir;
    Workspace workspace = ExportWorkspace(dir);
    workspace.Net.MaxFastPdo() = 0; // no channel check on this path
    RecordingViewer viewer;
    EXPECT_TRUE(ShowFinalFile(workspace, viewer).Complete);
    const std::string path = dir.Path() + "/Dummy.$$$";
    EXPECT_EQ(viewer.opened, std::vector<std::string>{path});
    EXPECT_TRUE(test::ReadFileBytes(path).starts_with("NODO,1\r\n"));

    ViewTextFile(workspace.Net, viewer, "");
    EXPECT_EQ(viewer.opened.back(), dir.Path() + "/none.cop");
}

TEST(ExportCommands, SettingsDialog) {
    test::TempDir dir;
    Workspace workspace = ExportWorkspace(dir);
    ExportSettingsDialog dialog(workspace);
    EXPECT_EQ(dialog.MaxFastPdoText(), "10");
    EXPECT_EQ(workspace.Modified, kTrue);
    // Reading the settings leaves the extension without its dot for the next new network.
    NewNetwork(workspace.Net, dir.Path());
    EXPECT_EQ(workspace.Net.DefaultFilePath(), dir.Path() + "/nonecop");

    EXPECT_THROW(dialog.Save("99999"), RuntimeError);
    EXPECT_EQ(workspace.Net.MaxFastPdo(), 10);
    EXPECT_FALSE(workspace.Net.DefaultFilePath().empty());
    for (const auto& [text, stored] :
         {std::pair{"12abc", 12}, std::pair{"2.5", 2}, std::pair{"3.5", 4}, std::pair{"x", 0}}) {
        dialog.Save(text);
        EXPECT_EQ(workspace.Net.MaxFastPdo(), stored) << text;
    }
    EXPECT_EQ(workspace.Net.DefaultFilePath(), "");
    EXPECT_EQ(workspace.Net.ExportExtension, ".cop");
}

TEST(ExportCommands, TimeoutDialog) {
    test::TempDir dir;
    Workspace workspace = ExportWorkspace(dir);
    workspace.Net.NodeAt(3).repetitions = -2;
    TimeoutDialog dialog(workspace.Net, "PARTIMEOUT@3");
    EXPECT_EQ(dialog.Title(), "Par. di TimeOut su nodo 4");
    EXPECT_EQ(dialog.RepetitionsText(), "-2");
    EXPECT_EQ(dialog.RepetitionTimeText(), "0");

    dialog.Ok("3", "100");
    EXPECT_EQ(workspace.Net.NodeAt(3).repetitions, 3);
    EXPECT_EQ(workspace.Net.NodeAt(3).repetitionTime, 100);
    EXPECT_EQ(workspace.Modified, 0);
    dialog.Ok("12abc", "");
    EXPECT_EQ(workspace.Net.NodeAt(3).repetitions, 12);
    EXPECT_EQ(workspace.Net.NodeAt(3).repetitionTime, 0);
    dialog.Ok("2.5", "-3.5");
    EXPECT_EQ(workspace.Net.NodeAt(3).repetitions, 2);
    EXPECT_EQ(workspace.Net.NodeAt(3).repetitionTime, -4);

    // An overflow in either field stores nothing.
    try {
        dialog.Ok("5", "99999");
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Code(), ErrorCode::Overflow);
    }
    EXPECT_EQ(workspace.Net.NodeAt(3).repetitions, 2);
    EXPECT_THROW(TimeoutDialog(workspace.Net, "PARTIMEOUT@501"), RuntimeError);
}

TEST(ExportCommands, ExportPathRules) {
    EXPECT_EQ(DeriveExportPath("D:\\x\\", "a.nodi"), "D:\\x\\a.cop");
    EXPECT_EQ(DeriveExportPath("D:\\x\\", "a.cfg"), "D:\\x\\.cop");
    EXPECT_THROW(DeriveExportPath("D:\\x\\", "a.no"), RuntimeError);
}

} // namespace
} // namespace velmora
