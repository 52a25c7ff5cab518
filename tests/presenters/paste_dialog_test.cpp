#include "model/runtime_error.h"
#include "pdo/node_paste.h"
#include "presenters/paste_dialog.h"
#include "support/app_fixture.h"
#include "support/scripted_alerts.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

TEST(PasteDialog, PastesWithNewCobIdsOrAbandonsOnAConflict) {
    test::AppFixture app;
    test::ScriptedAlerts alerts;
    PasteDialog dialog{app.Ws(), alerts};
    Network& net = app.Ws().Net;
    Node& drive = app.AddDrive(4);
    drive.Configured = kTrue;
    drive.PdoAt(0).Used = kTrue;
    drive.PdoAt(0).Settings = {"182", "0", "0", "0", "Fast", "0", 1}; // slot 1's TX 1 default
    drive.PdoAt(1).Settings.Mode = "Non Configurato";
    drive.PdoAt(2).Settings.Mode = "Disabilitato";
    const auto okWith = [&](const char* number) {
        dialog.NumberText() = number;
        return dialog.Ok();
    };

    ASSERT_TRUE(dialog.Open(4));
    EXPECT_EQ(dialog.Prompt(), "Impostare il numero nodo per il prodotto  drive");
    EXPECT_EQ(okWith("5"), DialogResult{});
    EXPECT_EQ(alerts.shown.back().Source + alerts.shown.back().Line1,
              "incollaWinIl nodo 5 è già occupato da drive");
    EXPECT_EQ(okWith("x"), DialogResult{});

    // New default COB-IDs, except for "Disabilitato" and, by the copy routine's own
    // capital-C test, "Non Configurato".
    EXPECT_EQ(okWith("8"), (DialogResult{true, true}));
    const Node& pasted = net.NodeAt(7);
    EXPECT_EQ(pasted.PdoAt(0).Settings.CobId, "188");
    EXPECT_EQ(pasted.PdoAt(1).Settings.CobId + " " + pasted.PdoAt(2).Settings.CobId, "0 0");
    EXPECT_EQ(pasted.PdoAt(2).DefaultCobId, "208");
    EXPECT_EQ(pasted.PdoAt(2).OwnerSlot, 7);
    EXPECT_EQ(net.NodeCount, 2);

    // Slot 1's TX 1 default is taken: the paste is abandoned.
    EXPECT_EQ(okWith("2"), (DialogResult{false, true}));
    EXPECT_EQ(alerts.shown.back(),
              (AlertRequest{"mainWin", "Il CobId 182 è già ", "assegnato al pdo TX 1 di drive (5)",
                            "", false, false, ""}));
    EXPECT_EQ(net.NodeAt(1).InUse, 0);
    EXPECT_EQ(net.NodeCount, 2);
    EXPECT_THROW(PasteNode(net, drive, 7), RuntimeError); // an occupied slot

    // A run-time error (here the COB-ID search running past slot 500) passes, nothing pasted.
    ++net.NodeCount;
    const Network before = net;
    EXPECT_THROW(okWith("3"), RuntimeError);
    EXPECT_TRUE(net == before);
    --net.NodeCount;

    EXPECT_FALSE(dialog.Open(-1)); // nothing copied
    EXPECT_FALSE(dialog.Open(1));  // the copied node removed since
    EXPECT_EQ(alerts.shown.back().Line1, "Nessun nodo da incollare:");
}

} // namespace
} // namespace velmora
