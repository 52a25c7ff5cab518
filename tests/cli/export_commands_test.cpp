#include "cli/cli.h"
#include "cli_runner.h"
#include "storage/configuration_file.h"
#include "support/network_builder.h"
#include "support/temp_dir.h"

#include <filesystem>

#include <gtest/gtest.h>

namespace velmora {
namespace {

using test::RunCli;

// The worked example of the export saved as dir/linea.nodi, with the given fast-PDO limit.
std::string SaveWorkedExample(const test::TempDir& dir, std::int16_t maxFast = 10) {
    Network network = test::WorkedExampleNetwork();
    network.MaxFastPdo() = maxFast;
    SaveConfiguration(network, dir.Folder(), "linea.nodi");
    return dir.File("linea.nodi");
}

TEST(CliExport, WritesTheControllerFileOrRefuses) {
    test::TempDir dir;
    const std::string config = SaveWorkedExample(dir);
    test::CliOutcome result = RunCli({"export", config});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, "Salvataggio file ORV  OK\n");
    EXPECT_EQ(test::ReadFileBytes(dir.File("linea.cop")),
              test::ReadFileBytes(VELMORA_TEST_DATA_DIR "/export/worked_example.cop"));

    const std::string unwritable = dir.File("manca/altro.cop");
    result = RunCli({"export", config, "-o", unwritable});
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(result.err.starts_with("velmora-cli: ")) << result.err;
    EXPECT_NE(result.err.find(unwritable + ": "), std::string::npos) << result.err;

    SaveWorkedExample(dir, 0);
    result = RunCli({"export", config, "-o", dir.File("rifiutato.cop")});
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.err, "velmora-cli: Impossibile esportare\n");
    EXPECT_FALSE(std::filesystem::exists(dir.File("rifiutato.cop")));
}

TEST(CliExport, AFullDiskLeavesTheExistingFileAsItWas) {
    test::TempDir dir;
    const std::string config = SaveWorkedExample(dir);
    test::WriteFileBytes(dir.File("linea.cop"), "vecchio");
    const test::CliOutcome result =
        test::RunCliWithFileSizeLimit({"export", config}, "/opt/velmora", 100);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err,
              "velmora-cli: Errore di accesso al percorso/file: " + dir.File("linea.cop") +
                  ": scrittura del file non riuscita (File too large): il file "
                  "precedente non è stato modificato\n");
    EXPECT_EQ(test::ReadFileBytes(dir.File("linea.cop")), "vecchio");
    EXPECT_EQ(dir.Names(), (std::vector<std::string>{"linea.cop", "linea.nodi"}));
}

TEST(CliCheck, PrintsTheChannelDialog) {
    test::TempDir dir;
    const std::string config = SaveWorkedExample(dir);
    // One fast TX PDO of 48 bits and one slow RX PDO: 4 frames, 23 bytes.
    test::CliOutcome result = RunCli({"check", config});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, "TX FAST   totali : 1\n"
                          "TX SLOW  totali : 0\n"
                          "RX FAST   totali : 0\n"
                          "RX SLOW  totali : 1\n"
                          "Tempo 0.712 (msec)\n"
                          "BAUD RATE          : 500\n"
                          "NUMERO PDO OK\n");
    result = RunCli({"check", config, "--baud", "1000", "--json"});
    EXPECT_EQ(result.out, "{\"tx_fast\": 1, \"tx_slow\": 0, \"rx_fast\": 0, \"rx_slow\": 1, "
                          "\"frames\": 4, \"bytes\": 23, \"fast_bytes\": 6, \"bit_rate\": 1000, "
                          "\"time_ms\": 0.356, \"max_fast_pdo\": 10, \"allowed\": true}\n");
    EXPECT_EQ(RunCli({"check", config, "--baud", "300"}).status, 1);

    SaveWorkedExample(dir, 0);
    result = RunCli({"check", config, "--baud", "125"});
    EXPECT_EQ(result.status, 3);
    EXPECT_TRUE(result.out.ends_with("Tempo 2.848 (msec)\nBAUD RATE          : 125\n"
                                     "TROPPI PDO TX FAST\n"));
}

TEST(CliShow, PrintsTheTree) {
    test::TempDir dir;
    test::CliOutcome result = RunCli({"show", SaveWorkedExample(dir)});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, "master\tlinea. (salvato)\n"
                          "  4@drive.eds\tdrive.eds (5)\n"
                          "    PARTIMEOUT@4\tCFG_TIMEOUT(3,100)\n"
                          "    TX0@4\tpdo_TX1 (Fast)\n"
                          "    TX1@4\tpdo_TX2 (Disabilitato)\n"
                          "    RX0@4\tpdo_RX1 (Slow)\n"
                          "    4@drive.eds@Can_netParameter\tParameter\n"
                          "      0@4\tModes of operation (1)\n");
}

} // namespace
} // namespace velmora
