#include "cli/cli.h"
#include "model/workspace.h"
#include "storage/configuration_file.h"
#include "support/temp_dir.h"

#include <filesystem>
#include <sstream>

#include <gtest/gtest.h>

namespace velmora::cli {
namespace {

// An EDS with TX PDOs at k = 0..tx-1 and RX PDOs at k = 0..rx-1, each mapping Statusword.
std::string Eds(int tx, int rx) {
    std::string text = "[6041]\nParameterName=Statusword\nObjectType=0x7\n";
    const char* digits = "0123456789ABCDEF";
    for (int k = 0; k < tx + rx; ++k) {
        const int n = k < tx ? k : k - tx;
        const std::string hex{digits[n / 16], digits[n % 16]};
        const std::string comm = (k < tx ? "18" : "14") + hex;
        const std::string map = (k < tx ? "1A" : "16") + hex;
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
        std::ostringstream out;
        std::ostringstream errors;
        const int status = cli::Run({"--app-dir", QString::fromStdString(app_.Path()), "build",
                                     QString::fromStdString(app_.File("scenario.json")), "-o",
                                     QString::fromStdString(app_.File("out.nodi"))},
                                    "/opt/velmora", out, errors);
        out_ = out.str();
        err_ = errors.str();
        return status;
    }

    Workspace Loaded() {
        Workspace workspace;
        workspace.AppDirectory = app_.Path();
        workspace.Net.ExportExtension = ".cop";
        LoadConfiguration(workspace, app_.Folder(), "out.nodi");
        return workspace;
    }

    test::TempDir app_;
    std::string out_;
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

    const Node& node = network.NodeAt(4);
    EXPECT_EQ(node.EdsName, "drive");
    EXPECT_EQ(node.Configured, kTrue);
    EXPECT_EQ(node.repetitions, 3);
    EXPECT_EQ(node.repetitionTime, 100);
    const Pdo& tx1 = node.PdoAt(1);
    EXPECT_EQ(tx1.Used, kTrue);
    EXPECT_EQ(tx1.Settings.Mode, "Fast");
    EXPECT_EQ(tx1.Settings.EventTime, "10");
    EXPECT_EQ(tx1.Settings.Pcfg, 3);
    EXPECT_EQ(tx1.Settings.MappingCount, 1);
    EXPECT_EQ(tx1.Settings.Mappings[0], (PdoMapping{"Posizione", "6064", "0", "32", kTrue}));
    EXPECT_EQ(tx1.Settings.Mappings[1], PdoMapping{});
    const Pdo& rx0 = node.PdoAt(2);
    EXPECT_EQ(rx0.Settings.Mode, "Manual");
    EXPECT_EQ(rx0.Settings.CobId, " 205");   // stored as given
    EXPECT_EQ(rx0.Settings.MappingCount, 1); // the default mapping is kept
    EXPECT_EQ(rx0.Settings.Mappings[0].Vcb, "statusword");
    EXPECT_EQ(node.PdoAt(0).Used, 0); // not named, not touched
    EXPECT_EQ(node.ParameterCount, 1);
    EXPECT_EQ(node.Parameters[0],
              (NodeParameter{"Modes of operation", "6060", "0", "1", "1", kTrue}));
    EXPECT_EQ(network.NodeAt(0).EdsName, "DRIVE");
    EXPECT_EQ(network.NodeAt(0).Configured, 0);
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
    struct Case {
        const char* scenario;
        const char* message;
    };
    const Case cases[] = {
        {R"({"nodes": [{"node": 5, "eds": "drive.eds"}, {"node": 5, "eds": "drive.eds"}]})",
         "Il nodo 5 è già occupato da drive"},
        {R"({"nodes": [{"node": 2, "eds": "nothere.eds"}]})", "Eds non trovato:nothere.eds"},
        {R"({"nodes": [{"node": 502, "eds": "drive.eds"}]})", "nodes[0].node"},
        {R"({"nodes": [{"node": "1", "eds": "drive.eds"}]})", "nodes[0].node"},
        {R"({"nodes": [{"node": 1}]})", "\"eds\""},
        {R"({"nodes": [{"node": 1, "eds": "drive.eds", "pdos": {"TX2": {}}}]})", "TX2"},
        {R"({"nodes": [{"node": 1, "eds": "drive.eds", "pdos": {"RX0": {"mode": 3}}}]})", "mode"},
        {R"({"nodes": [{"node": 1, "eds": "drive.eds", "pdos": {"RX0": {"mappings":
            [["a","1","0","8"],["a","1","0","8"],["a","1","0","8"],["a","1","0","8"],
             ["a","1","0","8"],["a","1","0","8"],["a","1","0","8"],["a","1","0","8"],
             ["a","1","0","8"],["a","1","0","8"],["a","1","0","8"],["a","1","0","8"]]}}}]})",
         "al massimo 11"},
        {R"({"nodes": [{"node": 1, "eds": "drive.eds", "timeout": [1]}]})", "timeout"},
        {R"({"nodes": [{"node": 1, "eds": "drive.eds", "parameters": [["a"]]}]})",
         "parameters[0]"},
        {R"({"nodes": [{"node": 1, "eds": "drive.eds", "colour": "red"}]})", "colour"},
        {R"({"max_fast_pdo": -1})", "max_fast_pdo"},
        {R"([1, 2])", "oggetto JSON"},
        {R"({"nodes": [)", "JSON non valido"},
    };
    for (const Case& c : cases) {
        std::filesystem::remove(app_.File("out.nodi"));
        EXPECT_EQ(Build(c.scenario), kExitFailure) << c.scenario;
        EXPECT_EQ(err_.rfind("velmora-cli: ", 0), 0u) << err_;
        EXPECT_NE(err_.find(c.message), std::string::npos) << c.scenario << "\n" << err_;
        EXPECT_FALSE(std::filesystem::exists(app_.File("out.nodi"))) << c.scenario;
    }

    std::ostringstream out;
    std::ostringstream errors;
    EXPECT_EQ(cli::Run({"build", "scenario.json"}, "/opt/velmora", out, errors), kExitFailure);
    EXPECT_NE(errors.str().find("-o"), std::string::npos);
}

} // namespace
} // namespace velmora::cli
