#include "export/channel_analysis.h"
#include "model/runtime_error.h"
#include "support/network_builder.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

using test::AddMapping;
using test::AddNode;
using test::EmptyNetwork;

TEST(ChannelAnalysis, FramesBytesAndTime) {
    Network network = EmptyNetwork();
    AddNode(network, 0, 3, 3, "Fast").Configured = 0; // never saved in the editor: not counted
    ChannelCounters counters;
    ChannelDialogState dialog;
    EXPECT_TRUE(AnalyseChannels(network, 0, counters, dialog));
    EXPECT_EQ(counters, (ChannelCounters{0, 0, 0, 0, 2, 9, 0}));
    EXPECT_EQ(dialog.TimeLine(), "0.316 (msec)");
    EXPECT_EQ(dialog.BitRate, "500");
    RecomputeTime(125, counters, dialog); // four times the 500 kbit/s figure
    EXPECT_EQ(dialog.TimeLine(), "1.264 (msec)");
    EXPECT_EQ(dialog.BitRate, "125");
    EXPECT_THROW(RecomputeTime(0, counters, dialog), RuntimeError);

    // A slow group costs the same whatever its size: 2 frames and 8 bytes for TX, 1 and 8
    // for RX. Only the exact text "Slow" counts.
    AddNode(network, 1, 10, 1, "Slow").PdoAt(0).Settings.Mode = "slow";
    AnalyseChannels(network, 10, counters, dialog);
    EXPECT_EQ(counters, (ChannelCounters{9, 1, 0, 0, 2 + 2 + 1, 9 + 8 + 8, 0}));

    // One fast PDO with 64 mapped bits: 0.016 x 17 + 0.086 x 3 ms.
    network = EmptyNetwork();
    AddMapping(AddNode(network, 5, 1, 0, "Fast").PdoAt(0), "v", "6064", "0", "64");
    AnalyseChannels(network, 10, counters, dialog);
    EXPECT_EQ(counters.frames, 3);
    EXPECT_EQ(counters.bytes, 17);
    EXPECT_EQ(dialog.TimeLine(','), "0,53 (msec)");
}

TEST(ChannelAnalysis, WalksFollowDirectionAndNodeCount) {
    Network network = EmptyNetwork();
    AddNode(network, 3, 2, 2, "Fast").PdoAt(2).Direction = "NOTYPE"; // hides the RX PDOs
    AddNode(network, 4, 25, 26, "Fast"); // every entry: the walk ends at the table's end
    ChannelCounters counters;
    CountChannels(network, network.NodeCount, counters);
    EXPECT_EQ(counters.txFast, 27);
    EXPECT_EQ(counters.rxFast, 26);
    try {
        CountChannels(network, 3, counters); // more than in use: past slot 500
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Code(), ErrorCode::SubscriptOutOfRange);
    }
}

TEST(ChannelAnalysis, FastBytesRoundAtEveryStep) {
    Network network = EmptyNetwork();
    Node& node = AddNode(network, 0, 0, 1, "Fast");
    Pdo& pdo = node.PdoAt(0);
    ChannelCounters counters;
    const auto fastBytes = [&](const std::vector<std::string>& lengths) {
        pdo.Settings.MappingCount = 0;
        pdo.Settings.Mappings = {};
        for (const std::string& length : lengths) {
            AddMapping(pdo, "v", "6000", "0", length);
        }
        SumFastBytes(network, counters);
        return counters.fastBytes;
    };
    // Halves to even after every mapping: 1.5 -> 2, then 2.5 -> 2 three times.
    EXPECT_EQ(fastBytes({"12", "4", "4", "4"}), 2);
    EXPECT_EQ(fastBytes({" 16 ", "1e1", "-8"}), 2);
    EXPECT_EQ(fastBytes(std::vector<std::string>(11, "8")), 11);
    try {
        fastBytes({"12abc"});
        ADD_FAILURE();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Code(), ErrorCode::TypeMismatch);
    }
    EXPECT_THROW(fastBytes({"1e9"}), RuntimeError); // past a 16-bit count

    // The first unused mapping ends the walk; the entry walk is checked against the table.
    fastBytes({"16", "16", "16"});
    pdo.Settings.Mappings[1].Used = 0;
    SumFastBytes(network, counters);
    EXPECT_EQ(counters.fastBytes, 2);
    node.RxPdoCount = 52;
    EXPECT_THROW(SumFastBytes(network, counters), RuntimeError);
}

TEST(ChannelAnalysis, LimitAndWarning) {
    Network network = EmptyNetwork();
    AddNode(network, 0, 6, 4, "Fast");
    ChannelCounters counters;
    ChannelDialogState dialog;
    // Ten fast PDOs with a maximum of 10: the export is allowed...
    ShowChannelDialog(AnalyseChannels(network, 10, counters, dialog), counters, dialog);
    EXPECT_TRUE(dialog.Visible && dialog.ShowsAllowed && !dialog.ShowsRefused);
    EXPECT_EQ(dialog.Message, "Salvataggio file ORV ...");
    EXPECT_EQ(dialog.Colour, MessageColour::Blue);
    EXPECT_EQ(dialog.TxFast, 6);

    // ...but saving the tenth already warns.
    EXPECT_TRUE(OnPdoModeSaved(network, "TX", "Fast", counters, dialog));
    EXPECT_EQ(dialog.Caption, "Analisi canali della rete");
    EXPECT_TRUE(dialog.ShowsRefused);
    EXPECT_EQ(dialog.Message, "Impossibile esportare");
    EXPECT_EQ(dialog.Colour, MessageColour::Red);
    network.NodeAt(0).PdoAt(9).Settings.Mode = "Slow";
    EXPECT_FALSE(OnPdoModeSaved(network, "RX", "Slow", counters, dialog));
    network.ChannelCheck = 0;
    network.MaxFastPdo() = 0;
    EXPECT_FALSE(OnPdoModeSaved(network, "RX", "Fast", counters, dialog));

    AddNode(network, 1, 2, 0, "Fast"); // eleven: refused at export
    EXPECT_FALSE(AnalyseChannels(network, 10, counters, dialog));
}

} // namespace
} // namespace velmora
