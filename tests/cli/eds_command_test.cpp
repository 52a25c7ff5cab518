#include "cli/cli.h"
#include "cli_runner.h"
#include "support/temp_dir.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <gtest/gtest.h>

namespace velmora::cli {
namespace {

TEST(EdsCommand, PrintsTheObjectTable) {
    test::TempDir dir;
    test::WriteFileBytes(dir.File("Drive.EDS"),
                         "[DeviceInfo]\r\nGranularity=8\r\n\r\n[1000]\r\nParameterName=Device "
                         "Type\r\nObjectType=0x7\r\nDataType=0x0007\r\nAccessType=ro\r\n"
                         "DefaultValue=0x00020192\r\nPDOMapping=0\r\n\r\n"
                         "[1800sub2]\r\nParameterName=Tipo \xE8\r\nHighLimit=0xFF\r\n"
                         "[1A00]\r\nSubNumber=3\r\n");
    const test::CliOutcome outcome = test::RunCli({"eds", dir.File("drive")});
    ASSERT_EQ(outcome.status, kExitOk) << outcome.err;
    EXPECT_EQ(outcome.err, "");

    // Keys in the documented order.
    const char* keys[] = {
        "\"object_count\"", "\"granularity\"", "\"tx_pdo_count\"", "\"rx_pdo_count\"",
        "\"objects\"",      "\"position\"",    "\"index\"",        "\"sub_index\"",
        "\"is_main\"",      "\"name\"",        "\"object_type\"",  "\"data_type\"",
        "\"low_limit\"",    "\"high_limit\"",  "\"access_type\"",  "\"default_value\"",
        "\"pdo_mapping\"",  "\"obj_flags\"",   "\"sub_number\""};
    std::size_t at = 0;
    for (const char* key : keys) {
        const std::size_t found = outcome.out.find(key, at);
        ASSERT_NE(found, std::string::npos) << key;
        at = found;
    }

    const QJsonObject root =
        QJsonDocument::fromJson(QByteArray::fromStdString(outcome.out)).object();
    EXPECT_EQ(root["object_count"].toInt(), 4);
    EXPECT_EQ(root["granularity"].toInt(), 8);
    EXPECT_EQ(root["tx_pdo_count"].toInt(), 1);
    const QJsonArray objects = root["objects"].toArray();
    ASSERT_EQ(objects.size(), 4); // from position 1, the always-empty entry
    EXPECT_EQ(objects[0].toObject()["high_limit"].toInt(), 999999999);
    const QJsonObject device = objects[1].toObject();
    EXPECT_EQ(device["index"].toString(), "4096");
    EXPECT_TRUE(device["is_main"].toBool());
    EXPECT_FALSE(device["pdo_mapping"].toBool());
    EXPECT_EQ(objects[2].toObject()["name"].toString(), QString::fromUtf8("tipo è"));
}

TEST(EdsCommand, ErrorsAreOneLine) {
    test::TempDir dir;
    using Args = std::vector<std::string>;
    for (const Args& bad :
         {Args{"eds"}, Args{"eds", dir.File("missing.eds")}, Args{"eds", dir.Path()}}) {
        const test::CliOutcome outcome = test::RunCli(bad);
        EXPECT_EQ(outcome.status, kExitFailure) << bad.back();
        EXPECT_EQ(outcome.err.find('\n'), outcome.err.size() - 1) << outcome.err;
    }
}

} // namespace
} // namespace velmora::cli
