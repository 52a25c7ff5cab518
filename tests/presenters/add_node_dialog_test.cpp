#include "model/runtime_error.h"
#include "model/transmission_mode.h"
#include "presenters/add_node_dialog.h"
#include "support/app_fixture.h"
#include "support/scripted_alerts.h"
#include "support/scripted_dialogs.h"

#include <filesystem>

#include <gtest/gtest.h>

namespace velmora {
namespace {

// One RX PDO; and one TX PDO counted at 0x180B, beyond the eleven the import looks at. The
// reader keeps a section only when another one follows: hence the closing [FFFF].
const char* const kIoEds = "[1400]\n[1600]\n[1600sub0]\nDefaultValue=0\n[FFFF]\n";
const char* const kFarTxEds = "[180B]\n[180Bsub2]\n[1A0B]\n[FFFF]\n";

struct AddNodeDialogTest : ::testing::Test {
    test::AppFixture app;
    test::ScriptedAlerts alerts;
    test::ScriptedDialogs dialogs;
    AddNodeDialog dialog{app.Ws(), alerts, dialogs};
    Network& net = app.Ws().Net;

    DialogResult OkWith(const std::string& number) {
        dialog.NumberText() = number;
        return dialog.Ok();
    }
};

TEST(AddNodeNumbers, OnlyWholeNumbersFromOneTo501) {
    EXPECT_EQ(ParseNodeNumber(" 0501 "), 501);
    for (const char* bad : {"", "0", "502", "99999999999999999999", "5a", "-5", "5.0"}) {
        EXPECT_EQ(ParseNodeNumber(bad), std::nullopt) << bad;
    }
}

TEST_F(AddNodeDialogTest, AddsANodeOrRefusesWithAnAlert) {
    app.WriteEds("drive.eds", test::kDriveEds);
    app.WriteEds("Far.EDS", kFarTxEds);
    dialog.Open("");
    EXPECT_EQ(dialog.Products(), (std::vector<std::string>{"Far", "drive"}));
    EXPECT_EQ(OkWith("5"), DialogResult{});
    EXPECT_EQ(alerts.shown.back().Line1, "Selezionare un prodotto dalla lista");
    dialog.SelectProduct(1);
    EXPECT_EQ(OkWith("502"), DialogResult{});
    EXPECT_EQ(alerts.shown.back().Line2, "inserire un numero da 1 a 501");
    EXPECT_EQ(OkWith("5"), (DialogResult{true, true}));
    EXPECT_EQ(net.NodeAt(4).EdsName, "drive");

    dialog.SelectProduct(0);
    EXPECT_EQ(OkWith("5"), DialogResult{});
    EXPECT_EQ(alerts.shown.back(), (AlertRequest{"addWin", "Il nodo 5 è già occupato da drive", "",
                                                 "", true, false, ""}));
    EXPECT_EQ(OkWith("6"), (DialogResult{true, true}));
    EXPECT_EQ(dialogs.shown, std::vector<std::string>{"Inform: Import Error | Errore numero di "
                                                      "pdo RX"});
    EXPECT_EQ(net.NodeCount, 2);
}

TEST_F(AddNodeDialogTest, AnEdsThatCannotBeReadPassesItsErrorAndChangesNothing) {
    app.AddDrive(4);
    app.WriteEds("io.eds", kIoEds);
    std::filesystem::remove(app.AppDir() + "/eds/io.eds"); // still listed
    const Network before = net;
    dialog.Open("");
    dialog.SelectProduct(1);
    EXPECT_THROW(OkWith("6"), RuntimeError);
    dialog.Open("mod", 4);
    dialog.SelectProduct(1);
    EXPECT_THROW(OkWith("6"), RuntimeError); // rebuilt in another slot
    EXPECT_THROW(OkWith("5"), RuntimeError); // rebuilt in place, after ClearNode
    EXPECT_TRUE(dialogs.shown.empty());
    EXPECT_TRUE(net == before);
}

TEST_F(AddNodeDialogTest, TheChosenProductIsDescribedFromItsEds) {
    // Keys of [DeviceInfo] only, in any case; the values trimmed and read as Windows-1252.
    app.WriteEds("dev.eds", std::string("[FileInfo]\r\nProductName=File\r\n"
                                        "[DEVICEINFO]\r\n vendorname = Ditta \xC8 \r\n"
                                        "ProductName=Motore\r\n") +
                                kIoEds);
    app.AddDrive(4);
    const std::int16_t loaded = app.Ws().Eds.EdsObjectCount();
    dialog.Open("");
    EXPECT_EQ(dialog.Description(), std::nullopt);
    dialog.SelectProduct(0);
    ASSERT_TRUE(dialog.Description().has_value());
    EXPECT_EQ(dialog.Description()->Text(),
              "Costruttore: Ditta \u00C8\nProdotto: Motore\nPDO TX: 0   PDO RX: 1");
    dialog.SelectProduct(1);
    EXPECT_EQ(dialog.Description(), (ProductDescription{"", "", 2, 1}));
    EXPECT_EQ(app.Ws().Eds.EdsObjectCount(), loaded); // the import's table is not touched
    dialog.SelectProduct(-1);
    EXPECT_EQ(dialog.Description(), std::nullopt);

    dialog.Open("mod", 4);
    EXPECT_EQ(dialog.Description(), (ProductDescription{"", "", 2, 1}));

    // A listed EDS that is gone, or one too long to load, is described by nothing.
    std::string tooLong = "[1000]\n";
    for (int i = 0; i < 100; ++i) {
        tooLong += "ParameterName=x\n";
    }
    app.WriteEds("long.eds", tooLong + "[FFFF]\n");
    std::filesystem::remove(app.AppDir() + "/eds/dev.eds"); // still listed
    dialog.Open("");
    dialog.SelectProduct(0);
    EXPECT_EQ(dialog.Description(), std::nullopt);
    dialog.SelectProduct(2);
    EXPECT_EQ(dialog.Description(), std::nullopt);
    EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(AddNodeDialogTest, ModifyMovesOrRebuildsTheNode) {
    app.AddDrive(4).PdoAt(0).Settings = {"185", "0", "0", "0", "Fast", "0", 1};
    Node& other = app.AddDrive(9); // configured, using 182: TX 1's default in slot 1
    other.Configured = kTrue;
    other.PdoAt(0).Used = kTrue;
    other.PdoAt(0).Settings.CobId = "182";
    app.WriteEds("io.eds", kIoEds);
    const Network start = net;

    dialog.Open("mod", 4);
    EXPECT_EQ(dialog.Title() + dialog.NumberText(), "Modifica nodo5");
    EXPECT_EQ(dialog.SelectedProduct(), 0);
    EXPECT_EQ(dialog.Ok(), (DialogResult{false, true}));
    EXPECT_EQ(OkWith("2"), DialogResult{});
    EXPECT_EQ(alerts.shown.back().Line1, "Il CobId 182 è già ");
    EXPECT_EQ(alerts.shown.back().Source, "addWin");
    EXPECT_TRUE(net == start);

    // Moved as a paste moves it: new default COB-IDs.
    EXPECT_EQ(OkWith("7"), (DialogResult{true, true}));
    const Node& moved = net.NodeAt(6);
    EXPECT_EQ(net.NodeAt(4).InUse, 0);
    EXPECT_EQ(moved.PdoAt(0).Settings.CobId, "187");

    // Another product rebuilds the node, in the new slot when the number changes too.
    dialog.Open("mod", 6);
    dialog.SelectProduct(1);
    EXPECT_EQ(dialog.Ok(), (DialogResult{true, true}));
    EXPECT_EQ(moved.EdsName + moved.PdoAt(0).Direction, "ioRX");
    dialog.Open("mod", 6);
    dialog.SelectProduct(0);
    EXPECT_EQ(OkWith("1"), (DialogResult{true, true}));
    EXPECT_EQ(net.NodeAt(0).EdsName, "drive");
    EXPECT_EQ(net.NodeAt(6).InUse, 0);
    EXPECT_EQ(net.NodeCount, 2);
}

} // namespace
} // namespace velmora
