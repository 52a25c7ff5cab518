#include "export/channel_analysis.h"
#include "model/network.h"
#include "model/runtime_error.h"
#include "support/network_builder.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

using test::AddMapping;
using test::AddNode;
using test::EmptyNetwork;

struct Analysis {
    bool allowed;
    ChannelCounters counters;
    ChannelDialogState dialog;
};

Analysis Analyse(const Network& network, std::int16_t maxFast = 10) {
    Analysis result{};
    result.allowed = AnalyseChannels(network, maxFast, result.counters, result.dialog);
    return result;
}

TEST(ChannelAnalysis, FramesBytesAndTime) {
    Network network = EmptyNetwork();
    // A node whose PDOs were never saved in the editor counts nowhere.
    AddNode(network, 0, 3, 3, "Fast").Configured = 0;
    Analysis empty = Analyse(network, 0);
    EXPECT_TRUE(empty.allowed);
    EXPECT_EQ(empty.counters, (ChannelCounters{0, 0, 0, 0, 2, 9, 0}));
    EXPECT_EQ(empty.dialog.TimeLine(), "0.316 (msec)");
    EXPECT_EQ(empty.dialog.BitRate, "500");
    EXPECT_FALSE(Analyse(network, -1).allowed);

    // Slow groups cost the same whatever their size: 2 frames and 8 bytes for TX, 1 and 8
    // for RX. Manual, Disabilitato and Non configurato count nowhere.
    Node& node = AddNode(network, 1, 10, 1, "Slow");
    node.PdoAt(0).Settings.Mode = "Manual";
    node.PdoAt(1).Settings.Mode = "Disabilitato";
    node.PdoAt(2).Settings.Mode = "Non configurato";
    node.PdoAt(3).Settings.Mode = "slow";
    Analysis slow = Analyse(network);
    EXPECT_EQ(slow.counters, (ChannelCounters{6, 1, 0, 0, 2 + 2 + 1, 9 + 8 + 8, 0}));

    // One fast PDO with 64 mapped bits: 3 frames, 17 bytes, 0.016 x 17 + 0.086 x 3 ms.
    network = EmptyNetwork();
    AddMapping(AddNode(network, 5, 1, 0, "Fast").PdoAt(0), "v", "6064", "0", "64");
    Analysis fast = Analyse(network);
    EXPECT_EQ(fast.counters.frames, 3);
    EXPECT_EQ(fast.counters.bytes, 17);
    EXPECT_EQ(fast.dialog.TimeLine(), "0.53 (msec)");
    EXPECT_EQ(fast.dialog.TimeLine(','), "0,53 (msec)");

    // Another bit rate recomputes the time from the stored counts only.
    RecomputeTime(125, fast.counters, fast.dialog);
    EXPECT_EQ(fast.dialog.TimeLine(), "2.12 (msec)"); // four times the 500 kbit/s figure
    EXPECT_EQ(fast.dialog.BitRate, "125");
    RecomputeTime(125, empty.counters, empty.dialog);
    EXPECT_EQ(empty.dialog.TimeLine(), "1.264 (msec)");
    EXPECT_THROW(RecomputeTime(0, fast.counters, fast.dialog), RuntimeError);
}

TEST(ChannelAnalysis, WalksFollowDirectionAndNodeCount) {
    Network network = EmptyNetwork();
    Node& node = AddNode(network, 3, 2, 2, "Fast");
    // A gap in the directions hides the later PDOs from the count.
    node.PdoAt(2).Direction = "NOTYPE";
    ChannelCounters counters;
    CountChannels(network, network.NodeCount, counters);
    EXPECT_EQ(counters.txFast, 2);
    EXPECT_EQ(counters.rxFast, 0);

    // Every entry in use: the walk ends at the end of the table.
    AddNode(network, 4, 25, 26, "Fast");
    CountChannels(network, network.NodeCount, counters);
    EXPECT_EQ(counters.txFast, 27);
    EXPECT_EQ(counters.rxFast, 26);

    // Only the first nodeCount in-use slots are seen; more than exist runs past slot 500.
    CountChannels(network, 1, counters);
    EXPECT_EQ(counters.txFast, 2);
    try {
        CountChannels(network, 3, counters);
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Code(), ErrorCode::SubscriptOutOfRange);
    }
}

TEST(ChannelAnalysis, FastBytesRoundAtEveryStep) {
    Network one = EmptyNetwork();
    Pdo& pdo = AddNode(one, 0, 0, 1, "Fast").PdoAt(0);
    const auto fastBytes = [&one, &pdo](std::initializer_list<const char*> lengths) {
        pdo.Settings.MappingCount = 0;
        pdo.Settings.Mappings = {};
        for (const char* length : lengths) {
            AddMapping(pdo, "v", "6000", "0", length);
        }
        ChannelCounters counters;
        SumFastBytes(one, counters);
        return counters.fastBytes;
    };
    EXPECT_EQ(fastBytes({"4", "4", "4"}), 0); // 0.5 rounds to 0 each time
    EXPECT_EQ(fastBytes({"12", "4"}), 2);     // 1.5 -> 2, then 2.5 -> 2
    EXPECT_EQ(fastBytes({" 16 ", "1e1", "-8"}), 2);
    EXPECT_EQ(fastBytes({"8", "8", "8", "8", "8", "8", "8", "8", "8", "8", "8"}), 11);
    for (const char* bad : {"", "x", "12abc", "0x10"}) {
        try {
            fastBytes({"8", bad});
            ADD_FAILURE() << bad;
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.Code(), ErrorCode::TypeMismatch) << bad;
        }
    }
    EXPECT_THROW(fastBytes({"1e9"}), RuntimeError); // past a 16-bit count

    // The first unused mapping ends the walk; MappingCount only has to be above 0. The entry
    // walk is bounded by TxPdoCount + RxPdoCount, checked against the table.
    Network network = EmptyNetwork();
    Node& node = AddNode(network, 0, 1, 1, "Fast");
    AddMapping(node.PdoAt(0), "v", "6000", "0", "16");
    AddMapping(node.PdoAt(0), "v", "6000", "0", "16");
    node.PdoAt(0).Settings.Mappings[1].Used = 0;
    node.PdoAt(0).Settings.Mappings[2] = {"v", "6000", "0", "16", kTrue};
    ChannelCounters counters;
    SumFastBytes(network, counters);
    EXPECT_EQ(counters.fastBytes, 2);
    node.RxPdoCount = 51;
    EXPECT_THROW(SumFastBytes(network, counters), RuntimeError);
}

TEST(ChannelAnalysis, LimitAndWarning) {
    Network network = EmptyNetwork();
    AddNode(network, 0, 6, 4, "Fast");
    ChannelCounters counters;
    ChannelDialogState dialog;
    // Ten fast PDOs with a maximum of 10: the export is allowed...
    EXPECT_TRUE(AnalyseChannels(network, 10, counters, dialog));
    ShowChannelDialog(true, counters, dialog);
    EXPECT_TRUE(dialog.Visible);
    EXPECT_TRUE(dialog.ShowsAllowed);
    EXPECT_FALSE(dialog.ShowsRefused);
    EXPECT_EQ(dialog.Message, "Salvataggio file ORV ...");
    EXPECT_EQ(dialog.Colour, MessageColour::Blue);
    EXPECT_EQ(dialog.TxFast, 6);
    EXPECT_EQ(dialog.RxFast, 4);
    EXPECT_EQ(dialog.Caption, "Analisi canali della rete : ");

    // ...but saving the tenth already warns.
    ChannelDialogState warning;
    EXPECT_TRUE(OnPdoModeSaved(network, "TX", "Fast", counters, warning));
    EXPECT_EQ(warning.Caption, "Analisi canali della rete");
    EXPECT_TRUE(warning.ShowsRefused);
    EXPECT_EQ(warning.Message, "Impossibile esportare");
    EXPECT_EQ(warning.Colour, MessageColour::Red);

    network.NodeAt(0).PdoAt(9).Settings.Mode = "Slow";
    ChannelDialogState quiet;
    EXPECT_FALSE(OnPdoModeSaved(network, "RX", "Slow", counters, quiet));
    EXPECT_FALSE(quiet.Visible);
    network.ChannelCheck = 0;
    network.MaxFastPdo() = 0;
    EXPECT_FALSE(OnPdoModeSaved(network, "RX", "Fast", counters, quiet));

    // An eleventh fast PDO is refused at export.
    AddNode(network, 1, 2, 0, "Fast");
    EXPECT_FALSE(AnalyseChannels(network, 10, counters, dialog));
}

} // namespace
} // namespace velmora
