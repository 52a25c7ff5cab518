#include "cli/cli.h"
#include "cli_runner.h"
#include "model/text.h"
#include "session/workspace.h"
#include "storage/configuration_file.h"
#include "support/temp_dir.h"

#include <filesystem>

#include <gtest/gtest.h>

namespace velmora::cli {
namespace {

// An EDS with TX PDOs at k = 0..tx-1 and RX PDOs at k = 0..rx-1, each mapping Statusword.
std::string Eds(int tx, int rx) {
    std::string text = "[6041]\nParameterName=Statusword\nObjectType=0x7\n";
    for (int k = 0; k < tx + rx; ++k) {
        const int index = k < tx ? 0x1800 + k : 0x1400 + k - tx;
        const std::string comm = HexText(index);
        const std::string map = HexText(index + 0x200);
        text += "[" + comm + "]\n[" + comm + "sub2]\n[" + map + "]\n[" + map +
                "sub0]\nDefaultValue=1\n[" + map + "sub1]\nDefaultValue=0x60410010\n";
    }
    return text;
}

class BuildCommand : public ::testing::Test {
protected:
    BuildCommand() {
        std::filesystem::create_directory(app_.File("eds"));
        test::WriteFileBytes(app_.File("eds/drive.eds"), Eds(2, 2));
        test::WriteFileBytes(app_.File("eds/Big.EDS"), Eds(12, 1));
    }

    int Build(const std::string& scenario) {
        test::WriteFileBytes(app_.File("scenario.json"), scenario);
        const test::CliOutcome outcome =
            test::RunCli({"--app-dir", app_.Path(), "build", app_.File("scenario.json"), "-o",
                          app_.File("out.nodi")});
        err_ = outcome.err;
        return outcome.status;
    }

    Workspace Loaded() {
        Workspace workspace;
        workspace.AppDirectory = app_.Path();
        workspace.Net.ExportExtension = ".cop";
        LoadIntoWorkspace(workspace, app_.Folder(), "out.nodi");
        return workspace;
    }

    test::TempDir app_;
    std::string err_;
};

TEST_F(BuildCommand, BuildsWhatTheScenarioDescribes) {
    ASSERT_EQ(Build(R"({"max_fast_pdo": 4, "nodes": [
        {"node": 5, "eds": "drive.eds", "timeout": [3, 100],
         "pdos": {"TX1": {"mode": "Fast", "cob_id": "285", "bytes": "4", "comm": "1",
                          "inhibit": "0", "event": "10", "pcfg": 3,
                          "mappings": [["Posizione", "6064", "0", "32"]]},
                  "RX0": {"mode": "Manuale", "cob_id": " 205"}},
         "parameters": [["Modes of operation", "6060", "0", "1", "1"]]},
        {"node": 1, "eds": "DRIVE.eds"}]})"),
              kExitOk)
        << err_;
    EXPECT_EQ(err_, "");
    const Workspace loaded = Loaded();
    const Network& network = loaded.Net;
    EXPECT_EQ(network.NodeCount, 2);
    EXPECT_EQ(network.MaxFastPdo(), 4);
    EXPECT_EQ(network.NodeAt(0).EdsName, "DRIVE"); // as named, without ".eds"
    EXPECT_EQ(network.NodeAt(0).Configured, 0);    // nothing edited

    const Node& node = network.NodeAt(4);
    EXPECT_EQ(node.Configured, kTrue);
    EXPECT_EQ(node.repetitions, 3);
    EXPECT_EQ(node.repetitionTime, 100);
    PdoSettings tx1{"285", "10", "0", "1", "Fast", "4", 3, 1};
    tx1.Mappings[0] = {"Posizione", "6064", "0", "32", kTrue}; // in place of the default ones
    EXPECT_EQ(node.PdoAt(1).Settings, tx1);
    EXPECT_EQ(node.PdoAt(1).Used, kTrue);
    EXPECT_EQ(node.PdoAt(0).Used, 0); // not named, not touched
    const PdoSettings& rx0 = node.PdoAt(2).Settings;
    EXPECT_EQ(rx0.Mode, "Manual");
    EXPECT_EQ(rx0.CobId, " 205");   // stored as given
    EXPECT_EQ(rx0.MappingCount, 1); // the default mapping is kept
    EXPECT_EQ(node.ParameterCount, 1);
    EXPECT_EQ(node.Parameters[0],
              (NodeParameter{"Modes of operation", "6060", "0", "1", "1", kTrue}));
}

TEST_F(BuildCommand, AFullDiskLeavesTheExistingFileAsItWas) {
    test::WriteFileBytes(app_.File("scenario.json"),
                         R"({"nodes": [{"node": 5, "eds": "drive.eds"}]})");
    test::WriteFileBytes(app_.File("out.nodi"), "vecchio");
    // Record 1 fits, record 2 does not.
    const test::CliOutcome outcome =
        test::RunCliWithFileSizeLimit({"--app-dir", app_.Path(), "build",
                                       app_.File("scenario.json"), "-o", app_.File("out.nodi")},
                                      "/opt/velmora", 20000);
    EXPECT_EQ(outcome.status, kExitFailure);
    EXPECT_EQ(outcome.err,
              "velmora-cli: Errore di accesso al percorso/file: " + app_.File("out.nodi") +
                  ": scrittura del record non riuscita (File too large): il file "
                  "precedente non è stato modificato\n");
    EXPECT_EQ(test::ReadFileBytes(app_.File("out.nodi")), "vecchio");
    EXPECT_EQ(app_.Names(), (std::vector<std::string>{"eds", "out.nodi", "scenario.json"}));
}

TEST_F(BuildCommand, EmptyScenarioAndImportWarning) {
    ASSERT_EQ(Build(R"({"max_fast_pdo": 7})"), kExitOk) << err_;
    EXPECT_EQ(test::ReadFileBytes(app_.File("out.nodi")).size(), 2 * kConfigurationRecordLength);
    EXPECT_EQ(Loaded().Net.MaxFastPdo(), 7);

    ASSERT_EQ(Build(R"({"nodes": [{"node": 3, "eds": "big.eds"}]})"), kExitOk) << err_;
    EXPECT_NE(err_.find("velmora-cli: Import Error: Errore numero di pdo RX"), std::string::npos)
        << err_;
    EXPECT_EQ(Loaded().Net.NodeAt(2).TxPdoCount, 12);
}

TEST_F(BuildCommand, RefusesBadScenarios) {
    // Node 1 from drive.eds with one more field.
    const auto node1 = [](const std::string& field) {
        return R"({"nodes": [{"node": 1, "eds": "drive.eds", )" + field + "}]}";
    };
    const std::pair<std::string, const char*> cases[] = {
        {R"({"nodes": [{"node": 5, "eds": "drive.eds"}, {"node": 5, "eds": "drive.eds"}]})",
         "Il nodo 5 è già occupato da drive"},
        {R"({"nodes": [{"node": 2, "eds": "nothere.eds"}]})", "Eds non trovato:nothere.eds"},
        {R"({"nodes": [{"node": 502, "eds": "drive.eds"}]})", "nodes[0].node"},
        {R"({"nodes": [{"node": 1}]})", "\"eds\""},
        {node1(R"("pdos": {"TX2": {}})"), "TX2"},
        {node1(R"("pdos": {"RX0": {"mode": 3}})"), "mode"},
        {node1(R"("pdos": {"RX0": {"mappings": [[],[],[],[],[],[],[],[],[],[],[],[]]}})"),
         "al massimo 11"},
        {node1(R"("timeout": [1])"), "timeout"},
        {node1(R"("parameters": [["a"]])"), "parameters[0]"},
        {node1(R"("colour": "red")"), "colour"},
        {R"({"max_fast_pdo": -1})", "max_fast_pdo"},
        {R"([1, 2])", "oggetto JSON"},
        {R"({"nodes": [)", "JSON non valido"},
    };
    for (const auto& [scenario, message] : cases) {
        std::filesystem::remove(app_.File("out.nodi"));
        EXPECT_EQ(Build(scenario), kExitFailure) << scenario;
        EXPECT_NE(err_.find(message), std::string::npos) << scenario << "\n" << err_;
        EXPECT_FALSE(std::filesystem::exists(app_.File("out.nodi"))) << scenario;
    }

    const test::CliOutcome noOutput = test::RunCli({"build", "scenario.json"});
    EXPECT_EQ(noOutput.status, kExitFailure);
    EXPECT_NE(noOutput.err.find("-o"), std::string::npos);
}

} // namespace
} // namespace velmora::cli
