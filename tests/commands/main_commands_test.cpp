#include "commands/main_commands.h"
#include "session/workspace.h"
#include "support/app_fixture.h"
#include "support/recording_help.h"
#include "support/scripted_alerts.h"
#include "support/scripted_dialogs.h"
#include "support/window_fakes.h"

#include <filesystem>

#include <gtest/gtest.h>

namespace velmora {
namespace {

using Kind = DialogRequest::Kind;
namespace Pos = ToolbarPosition;

class MainWindow : public ::testing::Test {
protected:
    MainWindow() : main_(app_.Ws(), dialogs_, alerts_, viewer_, help_) {
        test::NoSettings settings;
        main_.StartUp(settings, "", app_.AppDir() + "/log.txt");
    }

    // Two drives in slots 4 and 9, the second with three parameters, and the tree rebuilt.
    void TwoNodes() {
        app_.AddDrive(4);
        Node& node = app_.AddDrive(9);
        for (int k = 0; k < 3; ++k) {
            node.ParameterAt(k) = {"p" + std::to_string(k), "6060", "0", "1",
                                   std::to_string(k),       kTrue};
        }
        node.ParameterCount = 3;
        main_.RebuildTree();
    }

    int ItemWithKey(std::string_view key) const { return test::ItemWithKey(main_.Tree(), key); }

    test::AppFixture app_;
    test::ScriptedDialogs dialogs_;
    test::ScriptedAlerts alerts_;
    test::RecordingViewer viewer_;
    test::RecordingHelp help_;
    MainCommands main_;
};

TEST_F(MainWindow, ToolbarDispatchesByKeyNotByPosition) {
    EXPECT_EQ(main_.ClickButton(Pos::PrintFile), DialogRequest{}); // key 5 runs nothing
    EXPECT_TRUE(dialogs_.shown.empty());
    // "Aggiungi nodo da LIB" has key 13: the library insertion.
    EXPECT_EQ(main_.ClickButton(Pos::AddNodeFromLibrary).Dialog, Kind::TakeFromLibrary);
    EXPECT_EQ(main_.ClickButton(Pos::EditLibrary).Dialog, Kind::EditLibrary);
    EXPECT_EQ(main_.Execute(Command::SaveToLibrary), DialogRequest{}); // no node selected
    EXPECT_EQ(alerts_.shown.back().Source, "MainWin");
    EXPECT_EQ(main_.ClickButton(Pos::AddNodeFromEds).Dialog, Kind::AddNode);
    EXPECT_EQ(main_.ClickButton(Pos::ExportToOrv).Dialog, Kind::None); // no name: a message
    EXPECT_EQ(dialogs_.shown.back(),
              "Inform: Nome file non definito | Assegna un nome al file prima di esportarlo");
}

TEST_F(MainWindow, NodeCommandsFollowTheNetworkAndTheSelection) {
    EXPECT_FALSE(main_.IsEnabled(Command::ModifyNode) || main_.IsButtonEnabled(Pos::SelectNode));
    EXPECT_FALSE(main_.IsEnabled(Command::FileSave)); // until New, Load or Save as
    main_.Execute(Command::FileNew);
    EXPECT_TRUE(main_.IsEnabled(Command::FileSave));

    TwoNodes();
    main_.SelectItem(ItemWithKey("4@drive"));
    EXPECT_EQ(main_.RemoveCaption(), "Rimuovi Nodo");
    EXPECT_TRUE(main_.IsEnabled(Command::ModifyNode) && main_.IsButtonEnabled(Pos::RemoveNode) &&
                main_.IsButtonEnabled(Pos::SelectNode));
    EXPECT_FALSE(main_.IsEnabled(Command::ConfigurePdo));
    EXPECT_FALSE(main_.IsButtonEnabled(Pos::ReplicateNode)); // nothing copied yet
    EXPECT_NE(main_.InfoText().find("Nodo 5: drive"), std::string::npos);

    main_.SelectItem(ItemWithKey("TX1@4"));
    EXPECT_EQ(main_.Execute(Command::ConfigurePdo), (DialogRequest{Kind::PdoEditor, 4, 1}));
    EXPECT_TRUE(main_.IsEnabled(Command::SaveToLibrary));
    EXPECT_EQ(main_.Execute(Command::SaveToLibrary), (DialogRequest{Kind::SaveToLibrary, 4}));

    // A parameter: its own commands; removing it moves the later ones down and empties the
    // entry they leave, where the export stops.
    main_.SelectItem(ItemWithKey("0@9"));
    EXPECT_EQ(main_.RemoveCaption(), "Rimuovi parametro");
    EXPECT_FALSE(main_.IsButtonEnabled(Pos::RemoveNode) || main_.IsButtonEnabled(Pos::SelectNode));
    EXPECT_EQ(app_.Ws().Net.SelectedParameter.Name, "p0");
    main_.Execute(Command::Remove);
    const Node& node = app_.Ws().Net.NodeAt(9);
    EXPECT_EQ(node.ParameterCount, 2);
    EXPECT_EQ(node.Parameters[0].Name + node.Parameters[1].Name, "p1p2");
    EXPECT_EQ(node.Parameters[2], NodeParameter{});
    EXPECT_EQ(main_.Tree().Caption(0), "Senza nome (modificato)");

    // Removing every node resets the commands as NewNetwork does.
    main_.SelectItem(ItemWithKey("4@drive"));
    main_.Execute(Command::Remove);
    EXPECT_EQ(main_.NodeCountText(), "1");
    main_.SelectItem(ItemWithKey("9@drive"));
    EXPECT_TRUE(main_.IsButtonEnabled(Pos::SelectNode));
    main_.Execute(Command::Remove);
    EXPECT_EQ(main_.Tree().Size(), 0);
    EXPECT_FALSE(main_.IsEnabled(Command::ModifyNode));
    EXPECT_FALSE(main_.IsButtonEnabled(Pos::SelectNode)); // marked, then rebuilt
}

TEST_F(MainWindow, DoubleClickOpensTheItemsEditorOrExplainsWhatToDo) {
    TwoNodes();
    EXPECT_EQ(main_.ActivateItem(ItemWithKey("RX0@4")), (DialogRequest{Kind::PdoEditor, 4, 2}));
    EXPECT_EQ(main_.ActivateItem(ItemWithKey("2@9")),
              (DialogRequest{Kind::ParameterEditor, 9, 2}));
    EXPECT_EQ(main_.ActivateItem(ItemWithKey("9@drive@Can_netParameter")),
              (DialogRequest{Kind::NewParameter, 9}));
    EXPECT_EQ(main_.ActivateItem(ItemWithKey("4@drive")), (DialogRequest{Kind::ModifyNode, 4}));
    EXPECT_EQ(app_.Ws().Modified, kTrue);
    EXPECT_TRUE(alerts_.shown.empty());

    EXPECT_EQ(main_.ActivateItem(0), DialogRequest{});  // the root has no node
    EXPECT_EQ(main_.ActivateItem(-1), DialogRequest{}); // nothing selected
    ASSERT_EQ(alerts_.shown.size(), 2u);
    EXPECT_EQ(alerts_.shown[0],
              BlockingAlert("MainWin",
                            "Selezionare un elemento dalla treeView e scegliere un azione ",
                            "oppure fare doppio click sull'elemento desiderato"));
    EXPECT_TRUE(main_.WindowEnabled());

    // The time-out dialog: the tree is rebuilt as it opens; storing the values and closing it
    // neither rebuild the tree nor mark the configuration modified.
    app_.Ws().Net.NodeAt(4).repetitions = 3;
    EXPECT_EQ(main_.ActivateItem(ItemWithKey("PARTIMEOUT@4")), (DialogRequest{Kind::Timeout, 4}));
    EXPECT_EQ(main_.Tree().Caption(ItemWithKey("PARTIMEOUT@4")), "CFG_TIMEOUT(3,0)");
    app_.Ws().Modified = 0;
    const std::string root(main_.Tree().Caption(0));
    app_.Ws().Net.NodeAt(4).repetitions = 7;
    main_.DialogClosed({Kind::Timeout, 4}, true);
    EXPECT_EQ(main_.Tree().Caption(ItemWithKey("PARTIMEOUT@4")), "CFG_TIMEOUT(3,0)");
    EXPECT_EQ(main_.Tree().Caption(0), root);
    EXPECT_EQ(app_.Ws().Modified, 0);
}

TEST_F(MainWindow, CopyMarksTheConfigurationAndEnablesPaste) {
    TwoNodes();
    main_.SelectItem(ItemWithKey("RX0@4"));
    main_.Execute(Command::CopyNode); // not a node: explained, nothing copied
    EXPECT_EQ(alerts_.shown.size(), 1u);
    EXPECT_EQ(main_.CopiedSlot(), -1);

    main_.SelectItem(ItemWithKey("4@drive"));
    main_.Execute(Command::CopyNode);
    EXPECT_EQ(main_.CopiedSlot(), 4);
    EXPECT_EQ(app_.Ws().Modified, kTrue);
    EXPECT_TRUE(main_.IsButtonEnabled(Pos::ReplicateNode));
    EXPECT_EQ(main_.ClickButton(Pos::ReplicateNode), (DialogRequest{Kind::PasteNode, 4}));

    main_.Execute(Command::Remove); // the copied node goes: nothing left to paste
    main_.SelectItem(ItemWithKey("9@drive"));
    EXPECT_FALSE(main_.IsButtonEnabled(Pos::ReplicateNode));
}

TEST_F(MainWindow, AddingAnEdsCopiesItIntoTheEdsFolder) {
    test::TempDir elsewhere;
    test::WriteFileBytes(elsewhere.File("Valve.EDS"), test::kDriveEds);
    dialogs_.fileAnswers = {std::nullopt, elsewhere.File("Valve.EDS")};
    main_.Execute(Command::AddEds);
    EXPECT_TRUE(app_.Ws().EdsFiles.empty());
    main_.Execute(Command::AddEds);
    EXPECT_EQ(dialogs_.shown[0], "Open: Carica configurazione ...");
    EXPECT_EQ(app_.Ws().EdsFiles, std::vector<std::string>{"Valve.EDS"});
    EXPECT_TRUE(std::filesystem::exists(app_.AppDir() + "/eds/Valve.EDS"));
}

TEST_F(MainWindow, SavingANamedConfigurationExportsAndShowsTheChannelDialog) {
    TwoNodes();
    const std::string folder = app_.AppDir() + "/";
    dialogs_.fileAnswers = {folder + "linea.nodi"};
    EXPECT_EQ(main_.Execute(Command::FileSaveAs).Dialog, Kind::None); // Save as: no export
    EXPECT_EQ(main_.Tree().Caption(0), "linea. (salvato)");

    EXPECT_EQ(main_.Execute(Command::FileSave).Dialog, Kind::ChannelDialog);
    EXPECT_TRUE(std::filesystem::exists(folder + "linea.cop"));
    EXPECT_EQ(app_.Ws().ChannelDialog.Message, "Salvataggio file ORV  OK");
    EXPECT_EQ(main_.Tree().Caption(0), "linea (salvato)");

    // A change keeps the file's name, but every caption says modified until the next save
    // or load: the mark's, then the rebuild's that follows it, and any later rebuild's.
    main_.SelectItem(ItemWithKey("0@9"));
    main_.Execute(Command::Remove);
    EXPECT_EQ(app_.Ws().Net.Saved, kTrue);
    EXPECT_EQ(main_.Tree().Caption(0), "linea. (modificato)");
    main_.RebuildTree();
    EXPECT_EQ(main_.Tree().Caption(0), "linea. (modificato)");
    dialogs_.fileAnswers = {folder + "linea.nodi"};
    main_.Execute(Command::FileLoad);
    EXPECT_EQ(main_.Tree().Caption(0), "linea. (salvato)");
    EXPECT_EQ(app_.Ws().Net.NodeAt(9).ParameterCount, 3);

    // A run-time error stops the command and is shown; the program goes on.
    std::filesystem::remove(folder + "linea.nodi");
    std::filesystem::create_directory(folder + "linea.nodi");
    EXPECT_EQ(main_.Execute(Command::FileSave), DialogRequest{});
    ASSERT_FALSE(dialogs_.shown.empty());
    EXPECT_EQ(dialogs_.shown.back().rfind("Error: ", 0), 0u);
}

} // namespace
} // namespace velmora
