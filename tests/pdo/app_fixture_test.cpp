#include "support/app_fixture.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

// The fixture's drive is what the editor tests rely on: pin down its shape once.
TEST(AppFixture, TheDriveHasTwoTxAndOneRxPdoWithDefaultMappings) {
    test::AppFixture app;
    const Node& node = app.AddDrive(4);
    EXPECT_EQ(node.TxPdoCount, 2);
    EXPECT_EQ(node.RxPdoCount, 1);
    EXPECT_EQ(app.Ws().Net.NodeCount, 1);
    EXPECT_EQ(node.PdoAt(0).DefaultCobId, "185");
    EXPECT_EQ(node.PdoAt(1).DefaultCobId, "285");
    EXPECT_EQ(node.PdoAt(2).DefaultCobId, "205");
    const PdoSettings& tx0 = node.PdoAt(0).Settings;
    ASSERT_EQ(tx0.MappingCount, 2);
    EXPECT_EQ(tx0.Mappings[0].Vcb, "statusword");
    EXPECT_EQ(tx0.Mappings[1].ObjectIndex, "6064");
    EXPECT_EQ(tx0.Mappings[1].Length, "32");
    EXPECT_EQ(node.PdoAt(2).Settings.Mappings[0].Vcb, "controlword");
    EXPECT_EQ(app.Ws().EdsFiles, std::vector<std::string>{"drive.eds"});
}

} // namespace
} // namespace velmora
