#include "cli/cli.h"
#include "cli_runner.h"
#include "session/workspace.h"
#include "storage/configuration_file.h"
#include "support/app_fixture.h"
#include "support/temp_dir.h"

#include <filesystem>

#include <gtest/gtest.h>

namespace velmora::cli {
namespace {

// An application folder with eds/drive.eds and lib/, and linea.nodi holding the drive as
// node 5 with its first TX PDO Fast.
class CliLib : public ::testing::Test {
protected:
    CliLib() {
        Node& drive = app_.AddDrive(4);
        drive.Configured = kTrue;
        drive.PdoAt(0).Used = kTrue;
        drive.PdoAt(0).Settings.Mode = "Fast";
        drive.PdoAt(0).Settings.CobId = "185";
        SaveConfiguration(app_.Ws().Net, Folder(), "linea.nodi");
    }

    std::string Folder() const { return app_.AppDir() + "/"; }
    std::string File(const std::string& name) const { return Folder() + name; }
    test::CliOutcome Lib(std::vector<std::string> args) {
        args.insert(args.begin(), {"--app-dir", app_.AppDir(), "lib"});
        return test::RunCli(args);
    }
    void ExpectRefused(const std::vector<std::string>& args, const std::string& message) {
        const test::CliOutcome outcome = Lib(args);
        EXPECT_EQ(outcome.status, kExitFailure) << message;
        EXPECT_EQ(outcome.out, "");
        EXPECT_EQ(outcome.err, "velmora-cli: " + message + "\n");
    }

    test::AppFixture app_;
};

TEST_F(CliLib, SavesListsAndInsertsProducts) {
    EXPECT_EQ(Lib({"list"}).out, "");
    EXPECT_EQ(Lib({"list", "--json"}).out, "{\"categories\": []}\n");

    const std::string config = File("linea.nodi");
    EXPECT_EQ(Lib({"save", config, "--node", "5", "--category", "Azionamenti"}).status, kExitOk);
    ExpectRefused({"save", config, "--node", "5", "--category", "Azionamenti"},
                  "Il prodotto \"drive\" esiste già nella categoria \"Azionamenti\"");
    EXPECT_EQ(
        Lib({"save", config, "--node", "5", "--category", "Azionamenti", "--replace"}).status,
        kExitOk);
    EXPECT_EQ(Lib({"save", config, "--node", "5", "--category", "I-O", "--name", "Asse X"}).status,
              kExitOk);
    ExpectRefused({"save", config, "--node", "6", "--category", "I-O"},
                  "il nodo 6 non è nella configurazione");
    ExpectRefused({"save", config, "--node", "502", "--category", "I-O"},
                  "lib: --node deve essere un numero da 1 a 501");

    test::CliOutcome listed = Lib({"list"});
    EXPECT_EQ(listed.status, kExitOk);
    EXPECT_EQ(listed.out, "Azionamenti\n  drive\nI-O\n  Asse X\n");
    EXPECT_EQ(Lib({"list", "--json"}).out,
              "{\"categories\": [{\"name\": \"Azionamenti\", \"products\": [{\"name\": \"drive\", "
              "\"eds\": \"drive.eds\", \"tx\": 2, \"rx\": 1, \"parameters\": 0}]}, "
              "{\"name\": \"I-O\", \"products\": [{\"name\": \"Asse X\", \"eds\": \"drive.eds\", "
              "\"tx\": 2, \"rx\": 1, \"parameters\": 0}]}]}\n");

    // Inserted as node 10 into a copy; the configuration itself is not changed.
    const std::string before = test::ReadFileBytes(config);
    const test::CliOutcome inserted = Lib({"insert", config, "--category", "I-O", "--name",
                                           "Asse X", "--node", "10", "-o", File("out.nodi")});
    EXPECT_EQ(inserted.status, kExitOk) << inserted.err;
    EXPECT_EQ(inserted.err + inserted.out, "");
    EXPECT_EQ(test::ReadFileBytes(config), before);
    Workspace out;
    StartWorkspace(out, app_.AppDir());
    LoadIntoWorkspace(out, Folder(), "out.nodi");
    EXPECT_EQ(out.Net.NodeCount, 2);
    EXPECT_EQ(out.Net.NodeAt(9).PdoAt(0).Settings.Mode + out.Net.NodeAt(9).PdoAt(0).Settings.CobId,
              "Fast18A");
    EXPECT_EQ(out.Net.NodeAt(9).PdoAt(1).Settings.Mode, "Non Configurato");

    // Without -o the configuration itself receives the node; refusals write nothing.
    EXPECT_EQ(
        Lib({"insert", config, "--category", "I-O", "--name", "Asse X", "--node", "11"}).status,
        kExitOk);
    const std::string after = test::ReadFileBytes(config);
    EXPECT_NE(after, before);
    ExpectRefused({"insert", config, "--category", "I-O", "--name", "Asse X", "--node", "5"},
                  "Il nodo 5 è già occupato da drive");
    ExpectRefused({"insert", config, "--category", "I-O", "--name", "Asse Y", "--node", "12"},
                  "Il prodotto \"Asse Y\" non esiste nella categoria \"I-O\"");
    std::filesystem::remove(File("eds/drive.eds"));
    ExpectRefused({"insert", config, "--category", "I-O", "--name", "Asse X", "--node", "12"},
                  "Eds non trovato:drive.eds");
    EXPECT_EQ(test::ReadFileBytes(config), after);
}

TEST_F(CliLib, RemovesAndRefusesBadNamesDamagedFilesAndBadUsage) {
    const std::string config = File("linea.nodi");
    ASSERT_EQ(Lib({"save", config, "--node", "5", "--category", "I-O"}).status, kExitOk);
    ExpectRefused({"remove", "--category", "I-O"}, "La categoria \"I-O\" non è vuota");
    EXPECT_EQ(Lib({"remove", "--category", "I-O", "--name", "drive"}).status, kExitOk);
    EXPECT_EQ(Lib({"remove", "--category", "I-O"}).status, kExitOk);
    EXPECT_FALSE(std::filesystem::exists(File("lib/I-O")));
    ExpectRefused({"save", config, "--node", "5", "--category", "../fuori"},
                  "Nome della categoria non valido (\"../fuori\"): non può cominciare con \".\"");
    ExpectRefused({"remove", "--category", "I-O", "--name", "a/b"},
                  "Nome del prodotto non valido (\"a/b\"): non può contenere \"/\"");

    // A damaged product is named with its reason; the others are still listed.
    ASSERT_EQ(Lib({"save", config, "--node", "5", "--category", "I-O"}).status, kExitOk);
    const std::string damaged = File("lib/I-O/rotto.libs");
    test::WriteFileBytes(damaged, "rotto");
    const test::CliOutcome listed = Lib({"list"});
    EXPECT_EQ(listed.status, kExitFailure);
    EXPECT_EQ(listed.out, "I-O\n  drive\n");
    EXPECT_TRUE(listed.err.starts_with("velmora-cli: ")) << listed.err;
    EXPECT_NE(listed.err.find(damaged + ": file troncato"), std::string::npos) << listed.err;
    const test::CliOutcome insert =
        Lib({"insert", config, "--category", "I-O", "--name", "rotto", "--node", "9"});
    EXPECT_EQ(insert.status, kExitFailure);
    EXPECT_NE(insert.err.find(damaged + ": file troncato"), std::string::npos) << insert.err;

    using Args = std::vector<std::string>;
    for (const Args& bad : {Args{}, Args{"bogus"}, Args{"list", "x"}, Args{"save", config},
                            Args{"insert", config, "--node", "3", "--category", "I-O"},
                            Args{"remove", "--name", "drive"}}) {
        const test::CliOutcome outcome = Lib(bad);
        EXPECT_EQ(outcome.status, kExitFailure) << outcome.err;
        EXPECT_EQ(outcome.err.find('\n'), outcome.err.size() - 1) << outcome.err;
    }
    EXPECT_EQ(Lib({"--help"}).status, kExitOk);
    EXPECT_NE(Lib({"save", "--help"}).out.find("lib save CONFIG.nodi"), std::string::npos);
}

} // namespace
} // namespace velmora::cli
