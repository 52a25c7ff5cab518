#include "export/channel_analysis.h"
#include "model/runtime_error.h"
#include "presenters/export_settings_dialog.h"
#include "presenters/timeout_dialog.h"
#include "session/export_commands.h"
#include "session/workspace.h"
#include "support/network_builder.h"
#include "support/temp_dir.h"
#include "support/window_fakes.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

// Two fast TX PDOs in slot 0, exported to dir/linea.cop.
Workspace ExportWorkspace(const test::TempDir& dir) {
    Workspace workspace;
    workspace.AppDirectory = dir.Path();
    workspace.Net = test::EmptyNetwork(dir.Path());
    test::AddNode(workspace.Net, 0, 2, 0, "Fast");
    workspace.Net.ExportPath = dir.File("linea.cop");
    return workspace;
}

TEST(ExportCommands, ExportToControllerGatesAndWrites) {
    test::TempDir dir;
    Workspace workspace = ExportWorkspace(dir);
    ChannelDialogState dialog;
    EXPECT_EQ(ExportToController(workspace, dialog).Status, ExportStatus::Written);
    EXPECT_EQ(dialog.Layout, ChannelDialogLayout::Tall);
    EXPECT_EQ(workspace.Net.ExportExtension, "cop");
    const std::string written = test::ReadFileBytes(dir.File("linea.cop"));
    EXPECT_TRUE(written.starts_with("NODO,1\r\n"));

    // Refused above the limit: the existing file stays as it was.
    workspace.Net.MaxFastPdo() = 1;
    workspace.Net.NodeAt(0).repetitions = 9;
    EXPECT_EQ(ExportToController(workspace, dialog).Status, ExportStatus::Refused);
    EXPECT_EQ(test::ReadFileBytes(dir.File("linea.cop")), written);

    // A file that cannot be written whole is reported instead of the OK line, and the one
    // there keeps what it held (here a PCFG mask with no character stops the writing).
    workspace.Net.MaxFastPdo() = 10;
    std::int16_t& mask = workspace.Net.NodeAt(0).PdoAt(1).Settings.Pcfg;
    mask = 0x7FFF;
    const ExportOutcome failed = ExportToController(workspace, dialog);
    EXPECT_EQ(failed.Status, ExportStatus::NotWritten);
    EXPECT_NE(failed.Reason.find(dir.File("linea.cop")), std::string::npos) << failed.Reason;
    EXPECT_EQ(dialog.Message, "Salvataggio file ORV non riuscito");
    EXPECT_EQ(dialog.Colour, MessageColour::Red);
    EXPECT_EQ(test::ReadFileBytes(dir.File("linea.cop")), written);
    EXPECT_EQ(dir.Names(), std::vector<std::string>{"linea.cop"});
    mask = 0;

    // No export path: nothing happens; the caller shows the message.
    workspace.Net.ExportPath.clear();
    ChannelDialogState untouched;
    EXPECT_EQ(ExportToController(workspace, untouched).Status, ExportStatus::NoFileName);
    EXPECT_FALSE(untouched.Visible);

    // "Test PDO": the same check in the short layout, nothing written.
    EXPECT_TRUE(TestPdo(workspace, untouched));
    EXPECT_FALSE(untouched.MessageVisible());
    EXPECT_TRUE(untouched.ShowsAllowed);
}

TEST(ExportCommands, FinalFileAndSettingsDialog) {
    test::TempDir dir;
    Workspace workspace = ExportWorkspace(dir);
    workspace.Net.MaxFastPdo() = 0; // no channel check on this path
    test::RecordingViewer viewer;
    EXPECT_TRUE(ShowFinalFile(workspace, viewer).Complete);
    EXPECT_EQ(viewer.opened, std::vector<std::string>{dir.Path() + "/Dummy.$$$"});
    EXPECT_TRUE(test::ReadFileBytes(viewer.opened[0]).starts_with("NODO,1\r\n"));
    ViewTextFile(workspace.Net, viewer, "");
    EXPECT_EQ(viewer.opened.back(), dir.Path() + "/none.cop");
    // A copy that cannot be written leaves the last one, which is not opened.
    const std::string last = test::ReadFileBytes(dir.File("Dummy.$$$"));
    workspace.Net.NodeAt(0).PdoAt(1).Settings.Pcfg = 0x7FFF;
    EXPECT_FALSE(ShowFinalFile(workspace, viewer).Complete);
    EXPECT_EQ(viewer.opened.size(), 2u);
    EXPECT_EQ(test::ReadFileBytes(dir.File("Dummy.$$$")), last);

    ExportSettingsDialog dialog(workspace);
    EXPECT_EQ(dialog.MaxFastPdoText(), "0");
    EXPECT_EQ(workspace.Modified, kTrue);
    // Reading the settings leaves the extension without its dot for the next new network.
    NewNetwork(workspace.Net, dir.Path());
    EXPECT_EQ(workspace.Net.DefaultFilePath(), dir.Path() + "/nonecop");

    EXPECT_THROW(dialog.Save("99999"), RuntimeError);
    EXPECT_EQ(workspace.Net.MaxFastPdo(), 10);
    EXPECT_FALSE(workspace.Net.DefaultFilePath().empty());
    dialog.Save("3.5x"); // read up to the first non-number, rounded
    EXPECT_EQ(workspace.Net.MaxFastPdo(), 4);
    EXPECT_EQ(workspace.Net.DefaultFilePath(), "");
    EXPECT_EQ(workspace.Net.ExportExtension, ".cop");
}

TEST(ExportCommands, TimeoutDialog) {
    Network network = test::EmptyNetwork();
    network.NodeAt(3).repetitions = -2;
    TimeoutDialog dialog(network, "PARTIMEOUT@3");
    EXPECT_EQ(dialog.Title(), "Par. di TimeOut su nodo 4");
    EXPECT_EQ(dialog.RepetitionsText(), "-2");
    EXPECT_EQ(dialog.RepetitionTimeText(), "0");

    const auto ok = [&](const char* repetitions, const char* time) {
        dialog.Ok(repetitions, time);
        const Node& node = network.NodeAt(3);
        return std::to_string(node.repetitions) + "," + std::to_string(node.repetitionTime);
    };
    EXPECT_EQ(ok("3", "100"), "3,100");
    EXPECT_EQ(ok("3.5x", "-3.5"), "4,-4"); // read up to the first non-number, rounded
    EXPECT_THROW(ok("5", "99999"), RuntimeError);
    EXPECT_EQ(network.NodeAt(3).repetitions, 4); // the overflow stored nothing
}

} // namespace
} // namespace velmora
