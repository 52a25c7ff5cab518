#include "interfaces/configuration_host.h"
#include "interfaces/settings_store.h"
#include "model/project_path.h"
#include "model/runtime_error.h"
#include "session/configuration_session.h"
#include "session/workspace.h"
#include "storage/configuration_file.h"
#include "support/scripted_dialogs.h"
#include "support/temp_dir.h"

#include <filesystem>

#include <gtest/gtest.h>

namespace velmora {
namespace {

using test::ReadFileBytes;

// The main window as the session sees it: a tree that has items while nodes exist.
class FakeHost : public ConfigurationHost {
public:
    explicit FakeHost(const Workspace& workspace) : workspace_(workspace) {}

    void NetworkEmptied() override {
        treeHasItems = false;
        fileCommandEnabled = false;
        ++emptied;
    }
    void RebuildTree() override {
        treeHasItems = workspace_.Net.NodeCount > 0;
        ++rebuilds;
    }
    bool TreeHasItems() const override { return treeHasItems; }
    void ShowRootCaption(const std::string& caption) override { rootCaption = caption; }
    void ChangeMarked() override { ++changes; }
    void EnableFileCommand() override { fileCommandEnabled = true; }
    void ExportToController() override { ++exports; }

    bool treeHasItems = false;
    bool fileCommandEnabled = false;
    std::string rootCaption;
    int emptied = 0;
    int rebuilds = 0;
    int changes = 0;
    int exports = 0;

private:
    const Workspace& workspace_;
};

class FakeSettings : public SettingsStore {
public:
    void Write(const std::string& section, const std::string& key,
               const std::string& value) override {
        written += section + "/" + key + "=" + value + ";";
    }
    std::string written;
};

class Session : public ::testing::Test {
protected:
    Session() : host_(workspace_), session_(workspace_, dialogs_, host_) {
        workspace_.AppDirectory = app_.Path();
        std::filesystem::create_directory(app_.File("eds"));
        test::WriteFileBytes(app_.File("eds/Drive.EDS"), "");
        test::WriteFileBytes(app_.File("eds/io.eds"), "");
        test::WriteFileBytes(app_.File("eds/notes.txt"), "");
    }

    void StartUp(const std::string& commandLine) {
        session_.StartUp(settings_, commandLine, app_.File("log.txt"));
    }

    // A change the user makes: a node appears, the change is marked, the tree rebuilt.
    void AddNode(int slot) {
        Node& node = workspace_.Net.NodeAt(slot);
        node.InUse = kTrue;
        node.EdsName = "drive";
        node.PdoAt(0).OwnerSlot = static_cast<std::int16_t>(slot);
        ++workspace_.Net.NodeCount;
        session_.MarkModified();
        host_.RebuildTree();
    }

    test::TempDir app_;
    test::TempDir project_;
    Workspace workspace_;
    test::ScriptedDialogs dialogs_;
    FakeHost host_;
    FakeSettings settings_;
    ConfigurationSession session_;
};

TEST(ProjectPath, SplitsTheOrvProjectPathInBothSeparatorStyles) {
    test::TempDir dir;
    const std::string trace = dir.File("log.txt");
    EXPECT_EQ(ProjectName("C:\\prj\\demo.ovp", trace), "demo");
    EXPECT_EQ(ProjectDirectory("C:\\prj\\demo.ovp"), "C:\\prj\\");
    EXPECT_EQ(ProjectName("/home/u/prj/demo.ovp", trace), "demo");
    EXPECT_EQ(ProjectDirectory("/home/u/prj/demo.ovp"), "/home/u/prj/");
    EXPECT_EQ(ProjectName("demo.ovp", trace), "demo");
    EXPECT_EQ(ProjectDirectory("demo.ovp"), "");
    EXPECT_EQ(ProjectName("C:\\a.ovp\\b.ovp", trace), "a");
    EXPECT_EQ(ProjectName("C:\\prj\\demo.nodi", trace), "");
    EXPECT_EQ(ProjectDirectory("C:\\prj\\demo.nodi"), "");
    EXPECT_EQ(ReadFileBytes(trace), "demo\r\ndemo\r\ndemo\r\na\r\n");
}

TEST_F(Session, StartWithAProjectWhoseConfigurationDoesNotExistYet) {
    StartUp(project_.Folder() + "demo.ovp");

    const Network& network = workspace_.Net;
    EXPECT_EQ(network.NodeCount, 0);
    EXPECT_EQ(network.FileName, "demo.nodi");
    EXPECT_EQ(network.Directory, project_.Folder());
    EXPECT_EQ(network.ExportPath, project_.Folder() + "demo.cop");
    EXPECT_EQ(network.Saved, kTrue);
    EXPECT_EQ(network.ExportExtension, ".cop");
    EXPECT_EQ(network.DefaultFilePath(), app_.Path() + "/none.cop");
    EXPECT_EQ(workspace_.Modified, 0);
    EXPECT_EQ(ReadFileBytes(app_.File("log.txt")), "demo\r\n");
    EXPECT_EQ(settings_.written, "Generali/Path=" + app_.Path() + ";");
    EXPECT_EQ(workspace_.EdsFiles, (std::vector<std::string>{"Drive.EDS", "io.eds"}));
    EXPECT_TRUE(host_.fileCommandEnabled);
    EXPECT_FALSE(host_.treeHasItems);

    // The first Save after a change writes straight there, then exports.
    AddNode(4);
    EXPECT_TRUE(session_.HasUnsavedChanges());
    session_.Save();
    EXPECT_FALSE(session_.HasUnsavedChanges());
    EXPECT_TRUE(dialogs_.shown.empty());
    EXPECT_EQ(ReadFileBytes(project_.File("demo.nodi")).size(), 3 * kConfigurationRecordLength);
    EXPECT_EQ(host_.rootCaption, "demo (salvato)");
    EXPECT_EQ(host_.exports, 1);
    EXPECT_EQ(workspace_.Modified, 0);
}

TEST_F(Session, StartWithAProjectWhoseConfigurationExistsLoadsIt) {
    StartUp(project_.Folder() + "demo.ovp");
    AddNode(9);
    session_.Save();

    Workspace restarted;
    restarted.AppDirectory = app_.Path();
    FakeHost host(restarted);
    ConfigurationSession session(restarted, dialogs_, host);
    session.StartUp(settings_, project_.Folder() + "demo.ovp", app_.File("log.txt"));
    EXPECT_EQ(restarted.Net.NodeCount, 1);
    EXPECT_EQ(restarted.Net.NodeAt(9).EdsName, "drive");
    EXPECT_EQ(restarted.Net.FileName, "demo.nodi");
    EXPECT_EQ(restarted.Net.Saved, kTrue);
    EXPECT_TRUE(host.treeHasItems);
    EXPECT_EQ(restarted.Modified, 0);
}

TEST_F(Session, CommandLinesWithoutAProjectFolderAreIgnored) {
    StartUp("demo.ovp");
    EXPECT_EQ(workspace_.Net.FileName, "Senza nome.eds");
    EXPECT_EQ(workspace_.Net.Saved, 0);
    EXPECT_EQ(ReadFileBytes(app_.File("log.txt")), "demo\r\n");
    EXPECT_TRUE(host_.fileCommandEnabled); // the command line was not empty

    Workspace plain;
    plain.AppDirectory = app_.Path();
    FakeHost host(plain);
    ConfigurationSession session(plain, dialogs_, host);
    session.StartUp(settings_, "", app_.File("log.txt"));
    EXPECT_FALSE(host.fileCommandEnabled);
    EXPECT_EQ(plain.Net.FileName, "Senza nome.eds");
}

TEST_F(Session, ABrokenConfigurationAtStartUpIsReportedAndTheProgramGoesOn) {
    test::WriteFileBytes(project_.File("demo.nodi"), "not a configuration");
    StartUp(project_.Folder() + "demo.ovp");
    ASSERT_EQ(dialogs_.shown.size(), 1u);
    EXPECT_EQ(dialogs_.shown[0].rfind("Error: ", 0), 0u);
    EXPECT_EQ(workspace_.Modified, 0);
    EXPECT_TRUE(host_.fileCommandEnabled);
}

TEST_F(Session, QuitWithUnsavedChangesOnAnUnnamedConfigurationOpensSaveAs) {
    StartUp("");
    AddNode(0);
    dialogs_.yesNoAnswers = {true};
    dialogs_.fileAnswers = {std::nullopt};
    session_.Quit();
    EXPECT_EQ(dialogs_.shown,
              (std::vector<std::string>{"YesNo: Dati non salvati | Dati non salvati, salvare ?",
                                        "Save: Salvaconfigurazione ..."}));

    // Answering with a name saves there and reads the file back.
    dialogs_.shown.clear();
    dialogs_.yesNoAnswers = {true};
    dialogs_.fileAnswers = {project_.Folder() + "impianto.nodi"};
    session_.Quit();
    EXPECT_EQ(workspace_.Net.FileName, "impianto.nodi");
    EXPECT_EQ(workspace_.Net.NodeCount, 1);
    EXPECT_EQ(workspace_.Modified, 0);
    EXPECT_EQ(host_.exports, 0); // Save as does not export

    // Nothing unsaved: no question.
    dialogs_.shown.clear();
    session_.Quit();
    EXPECT_TRUE(dialogs_.shown.empty());

    // Answering No saves nothing.
    AddNode(1);
    dialogs_.yesNoAnswers = {false};
    const std::string before = ReadFileBytes(project_.File("impianto.nodi"));
    session_.Quit();
    EXPECT_EQ(ReadFileBytes(project_.File("impianto.nodi")), before);
}

TEST_F(Session, CancelledDialogsAndAnEmptyTreeChangeNothing) {
    StartUp(project_.Folder() + "demo.ovp");
    session_.Save(); // no tree items: nothing to save
    EXPECT_FALSE(std::filesystem::exists(project_.File("demo.nodi")));

    session_.New(); // unnamed again
    AddNode(3);
    const Network before = workspace_.Net;
    dialogs_.fileAnswers = {std::nullopt, std::nullopt};
    session_.Save(); // unnamed: falls into Save as
    session_.Load();
    EXPECT_EQ(workspace_.Net, before);
    EXPECT_EQ(workspace_.Modified, kTrue);
    EXPECT_EQ(dialogs_.shown, (std::vector<std::string>{"Save: Salvaconfigurazione ...",
                                                        "Open: Carica configurazione ..."}));
}

TEST_F(Session, LoadReplacesTheNetworkAndNewEmptiesIt) {
    StartUp("");
    AddNode(7);
    dialogs_.fileAnswers = {project_.Folder() + "a.nodi"};
    ASSERT_TRUE(session_.SaveAs());
    session_.New();
    EXPECT_EQ(workspace_.Net.NodeAt(7).InUse, 0);
    EXPECT_EQ(workspace_.Net.FileName, "Senza nome.eds");
    EXPECT_TRUE(host_.fileCommandEnabled);

    // Loading drops the changes made since; Modified stays, so Quit still asks.
    AddNode(2);
    dialogs_.fileAnswers = {project_.Folder() + "a.nodi"};
    session_.Load();
    EXPECT_FALSE(session_.HasUnsavedChanges());
    EXPECT_EQ(workspace_.Modified, kTrue);
    EXPECT_EQ(workspace_.Net.NodeAt(7).EdsName, "drive");
    EXPECT_EQ(workspace_.Net.ExportPath, project_.Folder() + "a.cop");
    EXPECT_TRUE(host_.treeHasItems);

    // A file that fails half-way surfaces as the run-time error naming it; the network and
    // the tree stay as they were.
    const std::string bytes = ReadFileBytes(project_.File("a.nodi"));
    test::WriteFileBytes(project_.File("b.nodi"), bytes.substr(0, bytes.size() - 1));
    dialogs_.fileAnswers = {project_.Folder() + "b.nodi"};
    const Network before = workspace_.Net;
    const int rebuilds = host_.rebuilds;
    try {
        session_.Load();
        FAIL() << "no error";
    } catch (const RuntimeError& error) {
        EXPECT_NE(std::string(error.what()).find(project_.File("b.nodi")), std::string::npos);
    }
    EXPECT_TRUE(workspace_.Net == before);
    EXPECT_EQ(host_.rebuilds, rebuilds);
}

TEST_F(Session, AFailedSaveKeepsTheFileTheNameAndTheMarks) {
    StartUp(project_.Folder() + "demo.ovp");
    AddNode(4);
    session_.Save();
    const std::string saved = ReadFileBytes(project_.File("demo.nodi"));

    // Node 10's record does not fit its 15304 bytes: the save stops after node 5's record.
    AddNode(9);
    workspace_.Net.NodeAt(9).Parameters[0].Value = std::string(7000, 'v');
    const auto failedSave = [&] {
        try {
            session_.Save();
            ADD_FAILURE() << "no error";
        } catch (const RuntimeError& error) {
            const std::string message = error.what();
            EXPECT_NE(message.find(project_.File("demo.nodi") +
                                   ": i campi superano i 15304 byte del record: il file "
                                   "precedente non è stato modificato"),
                      std::string::npos)
                << message;
        }
        EXPECT_EQ(ReadFileBytes(project_.File("demo.nodi")), saved);
        EXPECT_EQ(project_.Names(), std::vector<std::string>{"demo.nodi"});
        EXPECT_EQ(workspace_.Modified, kTrue);
        EXPECT_EQ(host_.exports, 1); // no export after a failed save
    };
    failedSave();
    EXPECT_EQ(host_.rootCaption, "demo (modificato)");

    // Unnamed, Save falls into Save as: the name stays, and so does the unsaved state.
    session_.New();
    AddNode(9);
    workspace_.Net.NodeAt(9).Parameters[0].Value = std::string(7000, 'v');
    dialogs_.fileAnswers = {project_.Folder() + "demo.nodi"};
    failedSave();
    EXPECT_EQ(workspace_.Net.Saved, 0);
    EXPECT_EQ(workspace_.Net.FileName, "Senza nome.eds");
    EXPECT_TRUE(session_.HasUnsavedChanges());
}

} // namespace
} // namespace velmora
