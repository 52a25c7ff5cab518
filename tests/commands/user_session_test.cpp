// A user's session from start to export, driven through the presenters the windows use:
// the main window's commands, the add-node dialog, the PDO editor, the parameter editor.

#include "commands/main_commands.h"
#include "presenters/add_node_dialog.h"
#include "presenters/parameter_editor.h"
#include "presenters/pdo_editor.h"
#include "session/workspace.h"
#include "support/app_fixture.h"
#include "support/recording_help.h"
#include "support/scripted_alerts.h"
#include "support/scripted_dialogs.h"
#include "support/window_fakes.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

using Kind = DialogRequest::Kind;
using test::ItemWithKey;

TEST(UserSession, FromAnEmptyNetworkToTheExportFile) {
    test::AppFixture app;
    app.WriteEds("drive.eds", test::kDriveEds);
    test::ScriptedDialogs dialogs;
    test::ScriptedAlerts alerts;
    test::RecordingViewer viewer;
    test::RecordingHelp help;
    MainCommands main(app.Ws(), dialogs, alerts, viewer, help);
    test::NoSettings settings;
    main.StartUp(settings, app.AppDir() + "/impianto.ovp", app.AppDir() + "/log.txt");

    // Add node 5 from the drive's EDS.
    const DialogRequest addNode = main.ClickButton(ToolbarPosition::AddNodeFromEds);
    ASSERT_EQ(addNode.Dialog, Kind::AddNode);
    AddNodeDialog add(app.Ws(), alerts, dialogs);
    add.Open("");
    add.SelectProduct(0);
    add.NumberText() = "5";
    ASSERT_TRUE(add.Ok().NetworkChanged);
    main.DialogClosed(addNode, true);
    EXPECT_EQ(main.Tree().Caption(0), "impianto. (modificato)");
    EXPECT_EQ(main.NodeCountText(), "1");

    // Its first TX PDO becomes a fast PDO with its default COB-ID.
    const DialogRequest pdo = main.ActivateItem(ItemWithKey(main.Tree(), "TX0@4"));
    ASSERT_EQ(pdo, (DialogRequest{Kind::PdoEditor, 4, 0}));
    PdoEditor editor(app.Ws(), alerts, dialogs, help, pdo.Slot, pdo.Index);
    editor.ChooseMode("Fast");
    ASSERT_TRUE(editor.Save().Saved);
    main.DialogClosed(pdo, true);
    EXPECT_EQ(main.Tree().Caption(ItemWithKey(main.Tree(), "TX0@4")), "pdo_TX1 (Fast)");

    // A parameter, added from the "Parameter" folder.
    const DialogRequest parameter =
        main.ActivateItem(ItemWithKey(main.Tree(), "4@drive@Can_netParameter"));
    ASSERT_EQ(parameter, (DialogRequest{Kind::NewParameter, 4}));
    ParameterEditor parameters(app.Ws(), alerts, dialogs);
    ASSERT_TRUE(parameters.OpenParameterEditor(4, app.Ws().Net.NodeAt(4).ParameterCount, "new"));
    parameters.PickObject(16); // [6060] modes of operation
    parameters.Fields().ValueText = "1";
    ASSERT_TRUE(parameters.SaveParameter().NetworkChanged);
    main.DialogClosed(parameter, true);
    EXPECT_EQ(main.Tree().Caption(ItemWithKey(main.Tree(), "0@4")), "modes of operation (1)");

    // Save writes impianto.nodi beside the project and exports impianto.cop.
    EXPECT_EQ(main.Execute(Command::FileSave).Dialog, Kind::ChannelDialog);
    EXPECT_EQ(app.Ws().ChannelDialog.Message, "Salvataggio file ORV  OK");
    EXPECT_EQ(app.Ws().ChannelDialog.TxFast, 1);
    const std::string exported = test::ReadFileBytes(app.AppDir() + "/impianto.cop");
    EXPECT_TRUE(exported.starts_with("NODO,5\r\n        CFGTO,0,0\r\n        PDO,TX,1\r\n"
                                     "                COB-ID,h185\r\n"))
        << exported;
    EXPECT_TRUE(exported.ends_with("        NPAR,1\r\n                OBJ,h6060,0\r\n"
                                   "                NBYTE,1\r\n                VAL,1\r\n"));
    EXPECT_EQ(app.Ws().Modified, 0);
    EXPECT_TRUE(alerts.shown.empty());
    EXPECT_TRUE(dialogs.shown.empty());
}

} // namespace
} // namespace velmora
