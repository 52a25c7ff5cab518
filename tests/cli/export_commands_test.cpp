#include "cli/cli.h"
#include "storage/configuration_file.h"
#include "support/network_builder.h"
#include "support/temp_dir.h"

#include <filesystem>
#include <sstream>

#include <gtest/gtest.h>

namespace velmora {
namespace {

struct CliResult {
    int status;
    std::string out;
    std::string err;
};

CliResult RunCli(const QStringList& args, const std::string& appDir = "/app") {
    std::ostringstream out;
    std::ostringstream err;
    const int status = cli::Run(args, appDir, out, err);
    return {status, out.str(), err.str()};
}

QStringList Args(std::initializer_list<std::string> args) {
    QStringList list;
    for (const std::string& arg : args) {
        list << QString::fromStdString(arg);
    }
    return list;
}

// Saves network as dir/linea.nodi and returns the path.
std::string SaveNodi(const test::TempDir& dir, Network& network) {
    SaveConfiguration(network, dir.Folder(), "linea.nodi");
    return dir.File("linea.nodi");
}

TEST(CliExport, WritesTheControllerFileOrRefuses) {
    test::TempDir dir;
    Network network = test::WorkedExampleNetwork();
    const std::string config = SaveNodi(dir, network);
    const std::string golden =
        test::ReadFileBytes(VELMORA_TEST_DATA_DIR "/export/worked_example.cop");

    CliResult result = RunCli(Args({"export", config}));
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, "Salvataggio file ORV  OK\n");
    EXPECT_EQ(test::ReadFileBytes(dir.File("linea.cop")), golden);

    result = RunCli(Args({"export", config, "-o", dir.File("altro.cop")}));
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(test::ReadFileBytes(dir.File("altro.cop")), golden);

    result = RunCli(Args({"export", config, "-o", dir.File("manca/altro.cop")}));
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(result.err.starts_with("velmora-cli: " + dir.File("manca/altro.cop") + ": "))
        << result.err;

    result = RunCli(Args({"export", config, "-o", ""}));
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "velmora-cli: Assegna un nome al file prima di esportarlo\n");

    network.MaxFastPdo() = 0;
    SaveNodi(dir, network);
    result = RunCli(Args({"export", config, "-o", dir.File("rifiutato.cop")}));
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.err, "velmora-cli: Impossibile esportare\n");
    EXPECT_FALSE(std::filesystem::exists(dir.File("rifiutato.cop")));

    EXPECT_EQ(RunCli(Args({"export", dir.File("nessuno.nodi")})).status, 1);
    EXPECT_EQ(RunCli(Args({"export"})).status, 1);
    result = RunCli(Args({"export", "--help"}));
    EXPECT_EQ(result.status, 0);
    EXPECT_TRUE(result.out.starts_with("Uso: velmora-cli export CONFIG.nodi"));
}

TEST(CliCheck, PrintsTheChannelDialog) {
    test::TempDir dir;
    Network network = test::WorkedExampleNetwork();
    const std::string config = SaveNodi(dir, network);

    // One fast TX PDO of 48 bits and one slow RX PDO: 4 frames, 23 bytes.
    CliResult result = RunCli(Args({"check", config}));
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, "TX FAST   totali : 1\n"
                          "TX SLOW  totali : 0\n"
                          "RX FAST   totali : 0\n"
                          "RX SLOW  totali : 1\n"
                          "Tempo 0.712 (msec)\n"
                          "BAUD RATE          : 500\n"
                          "NUMERO PDO OK\n");

    result = RunCli(Args({"check", config, "--baud", "1000", "--json"}));
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, "{\"tx_fast\": 1, \"tx_slow\": 0, \"rx_fast\": 0, \"rx_slow\": 1, "
                          "\"frames\": 4, \"bytes\": 23, \"fast_bytes\": 6, \"bit_rate\": 1000, "
                          "\"time_ms\": 0.356, \"max_fast_pdo\": 10, \"allowed\": true}\n");

    EXPECT_EQ(RunCli(Args({"check", config, "--baud", "300"})).status, 1);

    network.MaxFastPdo() = 0;
    SaveNodi(dir, network);
    result = RunCli(Args({"check", config, "--baud", "125"}));
    EXPECT_EQ(result.status, 3);
    EXPECT_TRUE(result.out.ends_with("Tempo 2.848 (msec)\nBAUD RATE          : 125\n"
                                     "TROPPI PDO TX FAST\n"))
        << result.out;
}

TEST(CliShow, PrintsTheTree) {
    test::TempDir dir;
    Network network = test::WorkedExampleNetwork();
    const std::string config = SaveNodi(dir, network);
    CliResult result = RunCli(Args({"show", config}));
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, "master\tlinea. (salvato)\n"
                          "  4@drive.eds\tdrive.eds (5)\n"
                          "    PARTIMEOUT@4\tCFG_TIMEOUT(3,100)\n"
                          "    TX0@4\tpdo_TX1 (Fast)\n"
                          "    TX1@4\tpdo_TX2 (Disabilitato)\n"
                          "    RX0@4\tpdo_RX1 (Slow)\n"
                          "    4@drive.eds@Can_netParameter\tParameter\n"
                          "      0@4\tModes of operation (1)\n");

    network = test::EmptyNetwork();
    SaveNodi(dir, network);
    result = RunCli(Args({"show", config}));
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, "");
}

} // namespace
} // namespace velmora
