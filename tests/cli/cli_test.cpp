#include "cli/cli.h"
#include "cli_runner.h"
#include "storage/configuration_file.h"
#include "support/network_builder.h"
#include "support/temp_dir.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <gtest/gtest.h>

namespace velmora::cli {
namespace {

TEST(Cli, GeneralRulesForHelpAndErrors) {
    const test::CliOutcome help = test::RunCli({"--help"});
    EXPECT_EQ(help.status, kExitOk);
    EXPECT_NE(help.out.find("dump"), std::string::npos);
    EXPECT_EQ(help.err, "");

    using Args = std::vector<std::string>;
    for (const Args& bad : {Args{}, Args{"nonsense"}, Args{"--bogus", "dump"}, Args{"dump"},
                            Args{"dump", "/no.nodi"}}) {
        const test::CliOutcome outcome = test::RunCli(bad);
        EXPECT_EQ(outcome.status, kExitFailure) << bad.size();
        EXPECT_EQ(outcome.out, "");
        // One line, prefixed with the tool's name.
        EXPECT_EQ(outcome.err.rfind("velmora-cli: ", 0), 0u) << outcome.err;
        EXPECT_EQ(outcome.err.find('\n'), outcome.err.size() - 1) << outcome.err;
    }
    EXPECT_EQ(test::RunCli({"dump", "--help"}).status, kExitOk);
}

TEST(Cli, DumpShowsEveryFieldOfTheNodesInUse) {
    test::TempDir dir;
    Network network = test::EmptyNetwork("/opt/velmora");
    Node& node = test::AddNode(network, 4, 0, 0, "Slow", "azionamento_è");
    node.PdoAt(0).Settings.Mappings[10].Vcb = "ultimo \"var\"";
    node.repetitionTime = 250;
    SaveConfiguration(network, dir.Folder(), "rete.nodi");

    const test::CliOutcome outcome =
        test::RunCli({"--app-dir", dir.Path(), "dump", dir.File("rete.nodi")});
    ASSERT_EQ(outcome.status, kExitOk) << outcome.err;
    QJsonParseError error;
    const QJsonObject dump =
        QJsonDocument::fromJson(QByteArray::fromStdString(outcome.out), &error).object();
    ASSERT_EQ(error.error, QJsonParseError::NoError);
    EXPECT_EQ(dump["FileName"].toString(), "rete.nodi");
    EXPECT_EQ(dump["ExportPath"].toString().toStdString(), dir.Folder() + "rete.cop");
    EXPECT_EQ(dump["DefaultFilePath"].toString(), "/opt/velmora/none.cop"); // from record 2
    const QJsonArray nodes = dump["Nodes"].toArray();
    ASSERT_EQ(nodes.size(), 1);
    const QJsonObject first = nodes[0].toObject();
    EXPECT_EQ(first["Slot"].toInt(), 4);
    EXPECT_EQ(first["EdsName"].toString(), QString::fromUtf8("azionamento_è"));
    EXPECT_EQ(first["repetitionTime"].toInt(), 250);
    EXPECT_EQ(first["Pdos"].toArray().size(), 51);
    EXPECT_EQ(first["Parameters"].toArray().size(), 101);
    const QJsonArray mappings =
        first["Pdos"].toArray()[0].toObject()["Settings"].toObject()["Mappings"].toArray();
    EXPECT_EQ(mappings[10].toObject()["Vcb"].toString(), "ultimo \"var\"");
    // Configuration-wide fields come first, in the documented order.
    EXPECT_LT(outcome.out.find("\"FileName\""), outcome.out.find("\"Directory\""));
    EXPECT_LT(outcome.out.find("\"NodeCount\""), outcome.out.find("\"DefaultFilePath\""));
    EXPECT_LT(outcome.out.find("\"MaxFastPdo\""), outcome.out.find("\"ExportPath\""));
}

} // namespace
} // namespace velmora::cli
