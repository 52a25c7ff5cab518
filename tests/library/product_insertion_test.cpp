#include "library/product_file.h"
#include "library/product_insertion.h"
#include "model/runtime_error.h"
#include "model/transmission_mode.h"
#include "support/app_fixture.h"
#include "support/network_builder.h"
#include "tree/network_tree.h"

#include <filesystem>
#include <memory>

#include <gtest/gtest.h>

namespace velmora {
namespace {

// The fixture's drive (TX0, TX1, RX0) configured in slot 4 and kept as a product the way the
// library keeps it: through the product file. TX0 is Fast with a mapping of its own, TX1
// "Disabilitato", RX0 never configured.
class ProductInsertion : public ::testing::Test {
protected:
    ProductInsertion() {
        Node& drive = app_.AddDrive(4);
        drive.Configured = kTrue;
        drive.ParameterFolderExpanded = kTrue;
        drive.repetitions = 3;
        drive.repetitionTime = 100;
        drive.PdoAt(0).Used = kTrue;
        drive.PdoAt(0).Settings = {"185", "10", "5", "1", "Fast", "4", 3};
        test::AddMapping(drive.PdoAt(0), "Posizione", "6064", "0", "32");
        drive.PdoAt(1).Used = kTrue;
        drive.PdoAt(1).Settings = {"0", "0", "0", "0", "Disabilitato", "0", 1};
        test::AddParameter(drive, "Modes of operation", "6060", "0", "1", "1");
        ReadProductFile(ProductFileBytes(drive), "drive.libs", *product_);
    }

    InsertionOutcome Insert(std::vector<ProductPlacement> placements) {
        return InsertProducts(app_.Ws().ForNodeImport(), tree_, placements);
    }
    Network& Net() { return app_.Ws().Net; }

    test::AppFixture app_;
    NetworkTree tree_;
    std::unique_ptr<Node> product_ = std::make_unique<Node>();
};

TEST_F(ProductInsertion, GivesTheStoredConfigurationTheNewNodesCobIds) {
    const InsertionOutcome outcome = Insert({{product_.get(), 9}});
    ASSERT_TRUE(outcome.Inserted()) << outcome.Line1;
    EXPECT_TRUE(outcome.Messages.empty());
    EXPECT_EQ(Net().NodeCount, 2);

    const Node& node = Net().NodeAt(9);
    EXPECT_EQ(node.EdsName, "drive");
    EXPECT_EQ(node.InUse, kTrue);
    EXPECT_EQ(node.Configured, kTrue);
    EXPECT_EQ(node.repetitions * 1000 + node.repetitionTime, 3100);
    EXPECT_EQ(node.ParameterCount, 1);
    EXPECT_EQ(node.Parameters, product_->Parameters);
    // Modes, mappings and flags kept; the new defaults, except for "Disabilitato".
    const Pdo& tx0 = node.PdoAt(0);
    EXPECT_EQ(tx0.Settings.Mode + " " + tx0.Settings.CobId + " " + tx0.DefaultCobId,
              "Fast 18A 18A");
    EXPECT_EQ(tx0.Settings.Mappings, product_->PdoAt(0).Settings.Mappings);
    EXPECT_EQ(tx0.Settings.MappingCount, 1);
    EXPECT_EQ(tx0.Settings.Pcfg, 3);
    EXPECT_EQ(node.PdoAt(1).Settings.Mode + " " + node.PdoAt(1).Settings.CobId, "Disabilitato 0");
    EXPECT_EQ(node.PdoAt(2).Settings.Mode + " " + node.PdoAt(2).Settings.CobId,
              "Non Configurato 20A");
    EXPECT_EQ(node.PdoAt(2).Settings.MappingCount, 1); // the EDS default mapping
    for (int p = 0; p < 3; ++p) {
        EXPECT_EQ(node.PdoAt(p).OwnerSlot, 9);
        EXPECT_EQ(node.PdoAt(p).Note, "drive");
    }

    // The next rebuild shows every node collapsed, once.
    EXPECT_EQ(tree_.CollapseOnRebuild(), 1);
    Net().NodeAt(4).Expanded = kTrue;
    tree_.RebuildNetworkTree(Net(), false);
    for (int i = 0; i < tree_.Size(); ++i) {
        EXPECT_FALSE(tree_.Item(i).Kind == TreeItemKind::Node && tree_.Item(i).Expanded);
    }
    EXPECT_EQ(tree_.CollapseOnRebuild(), 0);
}

TEST_F(ProductInsertion, ReportsStoredPdosTheEdsNoLongerDescribes) {
    // The product was kept with a fourth PDO, TX k = 5, that this EDS does not have.
    product_->TxPdoCount = 3;
    product_->RxPdoCount = 1;
    product_->PdoAt(3) = product_->PdoAt(2);
    product_->PdoAt(2) = product_->PdoAt(0);
    product_->PdoAt(2).PdoNumber = 5;
    const InsertionOutcome outcome = Insert({{product_.get(), 0}});
    ASSERT_TRUE(outcome.Inserted());
    ASSERT_EQ(outcome.Messages.size(), 1u);
    EXPECT_EQ(outcome.Messages[0].Text, "Il pdo_TX6 del prodotto non è descritto da drive.eds: "
                                        "la sua configurazione non è stata inserita");
    const Node& node = Net().NodeAt(0);
    EXPECT_EQ(node.TxPdoCount * 10 + node.RxPdoCount, 21); // as the EDS describes it
    EXPECT_EQ(node.PdoAt(2).Direction + node.PdoAt(2).Settings.Mode, "RXNon Configurato");
    EXPECT_EQ(node.PdoAt(3).Direction, "NOTYPE");
}

TEST_F(ProductInsertion, InsertsAllOrNothing) {
    const auto expectNothingInserted = [&](const InsertionOutcome& outcome, const char* line1,
                                           const char* line2 = "") {
        EXPECT_EQ(outcome.Title + "|" + outcome.Line1 + "|" + outcome.Line2,
                  std::string("Errore|") + line1 + "|" + line2);
        EXPECT_EQ(Net().NodeCount, 1);
        for (int slot : {20, 21, 132}) {
            EXPECT_EQ(Net().NodeAt(slot).InUse, 0);
        }
        EXPECT_EQ(tree_.CollapseOnRebuild(), 0);
    };
    // Occupied slots, in the network or by an earlier product of the same insertion.
    expectNothingInserted(Insert({{product_.get(), 20}, {product_.get(), 4}}),
                          "Il nodo 5 è già occupato da drive");
    expectNothingInserted(Insert({{product_.get(), 20}, {product_.get(), 20}}),
                          "Il nodo 21 è già occupato da drive");
    EXPECT_THROW(Insert({{product_.get(), 501}}), RuntimeError);

    // Slot 132's RX0 default, 285, is the COB-ID of the network's TX1 of node 5.
    Net().NodeAt(4).PdoAt(1).Settings.CobId = "285";
    expectNothingInserted(Insert({{product_.get(), 20}, {product_.get(), 132}}),
                          "Il CobId 285 è già ", "assegnato al pdo TX 2 di drive (5)");

    // The EDS is looked for first, its name matched regardless of case.
    Node other = *product_;
    other.EdsName = "encoder";
    expectNothingInserted(Insert({{product_.get(), 20}, {&other, 21}}),
                          "Eds non trovato:encoder.eds");
    std::filesystem::rename(app_.AppDir() + "/eds/drive.eds", app_.AppDir() + "/eds/DRIVE.EDS");
    ASSERT_TRUE(Insert({{product_.get(), 20}, {product_.get(), 21}}).Inserted());
    EXPECT_EQ(Net().NodeCount, 3);
}

TEST(SuccessiveFreeSlots, SkipsOccupiedSlotsAfterTheFirst) {
    Network network = test::EmptyNetwork();
    test::AddNode(network, 4, 1, 1);
    test::AddNode(network, 6, 1, 1);
    EXPECT_EQ(SuccessiveFreeSlots(network, 3, 4), (std::vector<int>{3, 5, 7, 8}));
    EXPECT_EQ(SuccessiveFreeSlots(network, 4, 2), (std::vector<int>{4, 5}));
    EXPECT_EQ(SuccessiveFreeSlots(network, 499, 5), (std::vector<int>{499, 500}));
    EXPECT_EQ(SuccessiveFreeSlots(network, 3, 3, {5, 7}), (std::vector<int>{3, 8, 9}));
}

} // namespace
} // namespace velmora
