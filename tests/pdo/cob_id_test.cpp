#include "model/network.h"
#include "model/runtime_error.h"
#include "pdo/cob_id.h"
#include "pdo/cob_id_entry.h"
#include "pdo/field_flags.h"
#include "pdo/node_paste.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace velmora {
namespace {

// A configured node in slot with tx + rx used PDOs holding the given COB-IDs in order.
void PutNode(Network& network, int slot, int tx, int rx, const std::vector<std::string>& cobIds,
             const std::string& name = "drive") {
    Node& node = network.NodeAt(slot);
    node.EdsName = name;
    node.InUse = kTrue;
    node.Configured = kTrue;
    node.TxPdoCount = static_cast<std::int16_t>(tx);
    node.RxPdoCount = static_cast<std::int16_t>(rx);
    for (int p = 0; p < tx + rx; ++p) {
        Pdo& pdo = node.PdoAt(p);
        pdo.Used = kTrue;
        pdo.Direction = p < tx ? "TX" : "RX";
        pdo.PdoNumber = static_cast<std::int16_t>(p < tx ? p : p - tx);
        pdo.OwnerSlot = static_cast<std::int16_t>(slot);
        pdo.Settings.Mode = "Fast";
        pdo.Settings.CobId = cobIds.at(static_cast<std::size_t>(p));
    }
    ++network.NodeCount;
}

TEST(CobId, DefaultCobIdsOfSlotFour) {
    const char* tx[] = {"185", "285", "385", "485", "585"};
    const char* rx[] = {"205", "305", "405", "505", "605"};
    for (int k = 0; k < 5; ++k) {
        EXPECT_EQ(ComputeDefaultCobId("TX", 4, k), tx[k]);
        EXPECT_EQ(ComputeDefaultCobId("RX", 4, k), rx[k]);
    }
    EXPECT_EQ(ComputeDefaultCobId("TX", 9, 0), "18A"); // upper case
    EXPECT_EQ(ComputeDefaultCobId("NOTYPE", 0, 0), "201");
}

TEST(CobId, FindCobIdWalk) {
    Network network;
    // Three TX and one RX: only PDOs 0 and 1 (twice the RX count) are compared.
    PutNode(network, 2, 3, 1, {"183", "283", "383", "203"});
    PutNode(network, 7, 1, 1, {"1a0", "208"}, "io");

    CobIdOwner owner = FindCobId(network, "283");
    EXPECT_EQ(owner.Found, -1);
    EXPECT_EQ(owner.NodeName, "drive");
    EXPECT_EQ(owner.NodeSlot, 2);
    EXPECT_EQ(owner.PdoKind, "TX");
    EXPECT_EQ(owner.PdoNumberText, "2");
    EXPECT_EQ(CobIdConflictLine1("283"), "Il CobId 283 è già ");
    EXPECT_EQ(CobIdConflictLine2(owner), "assegnato al pdo TX 2 di drive (3)");

    EXPECT_EQ(FindCobId(network, "383").Found, 0); // past twice the RX count
    EXPECT_EQ(FindCobId(network, "203").Found, 0);
    EXPECT_EQ(FindCobId(network, "1A0").Found, 0); // texts compare case-sensitively
    EXPECT_EQ(FindCobId(network, "0183").Found, 0);
    EXPECT_EQ(FindCobId(network, "1a0").PdoKind, "TX");
    EXPECT_EQ(FindCobId(network, "208"), (CobIdOwner{-1, "io", 7, "RX", "2"}));

    // Unused PDOs and nodes without Configured are not searched; the mode is not looked at.
    network.NodeAt(7).PdoAt(1).Settings.Mode = "Disabilitato";
    EXPECT_EQ(FindCobId(network, "208").Found, -1);
    network.NodeAt(7).PdoAt(1).Used = 0;
    EXPECT_EQ(FindCobId(network, "208").Found, 0);
    network.NodeAt(2).Configured = 0;
    EXPECT_EQ(FindCobId(network, "283").Found, 0);

    // The walk stops after NodeCount nodes in use: a count of 1 never reaches slot 7.
    network.NodeCount = 1;
    EXPECT_EQ(FindCobId(network, "1a0").Found, 0);
    // A count larger than the nodes in use runs past slot 500.
    network.NodeCount = 3;
    EXPECT_THROW(FindCobId(network, "nothing"), RuntimeError);
}

class CobIdEntry : public ::testing::Test {
protected:
    CobIdEntry() {
        PutNode(network_, 0, 2, 2, {"181", "281", "201", "301"});
        state_.Armed = true;
        state_.CobIdSwitch = true;
        state_.Mode = "Fast";
        state_.LastAccepted = "185";
    }

    CobIdCheck Check(const std::string& base, const std::string& text) {
        state_.Base = base;
        state_.FieldText = text;
        state_.LastAccepted = "185";
        return CheckCobIdEntry(network_, state_);
    }

    Network network_;
    CobIdEntryState state_;
};

TEST_F(CobIdEntry, LengthAndRangeInBothBases) {
    struct Case {
        const char* base;
        const char* text;
        CobIdVerdict verdict;
    };
    const Case cases[] = {
        {"d", "384", CobIdVerdict::Accept},        {"d", "999", CobIdVerdict::Accept},
        {"d", " 400 ", CobIdVerdict::Accept},      {"d", "383", CobIdVerdict::RefuseRange},
        {"d", "1000", CobIdVerdict::RefuseLength}, {"d", "1407", CobIdVerdict::RefuseLength},
        {"d", "12", CobIdVerdict::RefuseLength},   {"d", "1e9", CobIdVerdict::RefuseRange},
        {"h", "180", CobIdVerdict::Accept},        {"h", "57F", CobIdVerdict::Accept},
        {"h", "57f", CobIdVerdict::Accept},        {"h", "17F", CobIdVerdict::RefuseRange},
        {"h", "580", CobIdVerdict::RefuseRange},   {"h", "G12", CobIdVerdict::RefuseRange},
        {"h", "0180", CobIdVerdict::RefuseLength}, {"h", "18", CobIdVerdict::RefuseLength},
        {"h", "", CobIdVerdict::RefuseLength},
    };
    for (const Case& c : cases) {
        const CobIdCheck check = Check(c.base, c.text);
        EXPECT_EQ(check.Verdict, c.verdict) << c.base << " " << c.text;
        if (c.verdict == CobIdVerdict::Accept) {
            EXPECT_FALSE(check.Alert);
            continue;
        }
        ASSERT_TRUE(check.Alert) << c.text;
        EXPECT_EQ(check.Alert->Source, "pdowin");
        EXPECT_EQ(check.Alert->Line1, "Inserire un valore esadecimale ");
        EXPECT_EQ(check.Alert->Line2, "compreso tra 0x180 e 0x57F");
        EXPECT_EQ(check.Alert->Action, "default");
        // Only the range refusal disables the editor.
        EXPECT_EQ(check.Alert->DisablesEditor, c.verdict == CobIdVerdict::RefuseRange);
        EXPECT_EQ(state_.FieldText, "185"); // back to the last accepted text
    }

    // An accepted decimal entry is remembered by its hexadecimal text.
    Check("d", "384");
    EXPECT_EQ(state_.LastAccepted, "180");
    Check("h", "57f");
    EXPECT_EQ(state_.LastAccepted, "57f");
}

TEST_F(CobIdEntry, WhenNothingIsTested) {
    // Disarmed: the call only arms the check.
    state_.Armed = false;
    EXPECT_TRUE(Check("h", "999").Passed());
    EXPECT_TRUE(state_.Armed);
    EXPECT_FALSE(Check("h", "999").Passed());

    for (const char* mode : {"Non configurato", "Non Configurato", "Disabilitato"}) {
        state_.Mode = mode;
        EXPECT_TRUE(Check("h", "999").Passed()) << mode;
    }
    state_.Mode = "Manual";
    state_.CobIdSwitch = false;
    EXPECT_TRUE(Check("h", "999").Passed());
    state_.CobIdSwitch = true;
    state_.Loading = true;
    EXPECT_TRUE(Check("h", "999").Passed());
    state_.Loading = false;
    // The last accepted text is never tested again, even when another PDO now uses it.
    EXPECT_TRUE(Check("h", "185").Passed());
    network_.NodeAt(0).PdoAt(0).Settings.CobId = "185";
    EXPECT_TRUE(Check("h", "185").Passed());
    // Decimal 385 is "181", the last accepted text: no search.
    state_.LastAccepted = "181";
    state_.Base = "d";
    state_.FieldText = "385";
    EXPECT_TRUE(CheckCobIdEntry(network_, state_).Passed());
}

TEST_F(CobIdEntry, ConflictOffersInsertAnyway) {
    CobIdCheck check = Check("h", "281");
    EXPECT_EQ(check.Verdict, CobIdVerdict::Conflict);
    ASSERT_TRUE(check.Alert);
    EXPECT_EQ(*check.Alert,
              (AlertRequest{"pdowin", "Il CobId 281 è già ", "assegnato al pdo TX 2 di drive (1)",
                            "", true, true, "281"}));
    EXPECT_EQ(state_.FieldText, "281"); // kept until the alert closes
    EXPECT_EQ(state_.LastAccepted, "185");

    // Closing without the box: the field goes back.
    EXPECT_FALSE(CloseCobIdConflict(state_, "281", false));
    EXPECT_EQ(state_.FieldText, "185");

    // Ticking it stores the duplicate through a save whose own check passes.
    Check("d", "641"); // 0x281
    EXPECT_TRUE(CloseCobIdConflict(state_, "281", true));
    EXPECT_EQ(state_.FieldText, "281");
    EXPECT_TRUE(CheckCobIdEntry(network_, state_).Passed());
    EXPECT_TRUE(state_.Armed);

    // Case matters in the search: "1A0" in the field does not find a stored "1a0".
    network_.NodeAt(0).PdoAt(1).Settings.CobId = "1a0";
    EXPECT_TRUE(Check("h", "1A0").Passed());
}

TEST(CobIdKeys, FiltersAndBases) {
    // Kept in base "h": codes 0x30..0x66 ("G" and ":" too); in base "d" digits only.
    // Backspace is discarded in both.
    const char32_t kept[] = {U'0', U'f', U'G', U':'};
    for (char32_t key : kept) {
        EXPECT_EQ(FilterCobIdKey("h", key), key);
    }
    for (char32_t key : {U'g', char32_t{8}}) {
        EXPECT_EQ(FilterCobIdKey("h", key), 0u);
        EXPECT_EQ(FilterCobIdKey("d", key), 0u);
    }
    EXPECT_EQ(FilterCobIdKey("d", U'7'), U'7');

    // The editors' variant keeps the key and raises the alert from "h" on.
    EXPECT_FALSE(FilterIndexKey("h", U'g', "mapping").Alert);
    const IndexKeyCheck hex = FilterIndexKey("h", U'h', "mapping");
    EXPECT_EQ(hex.Key, U'h');
    ASSERT_TRUE(hex.Alert);
    EXPECT_EQ(*hex.Alert, (AlertRequest{"mapping", "Inserire un valore esadecimale corretto",
                                        "compreso tra 0x180 e 0x57F", "", true, false, ""}));
    const IndexKeyCheck dec = FilterIndexKey("d", U'a', "parametri");
    ASSERT_TRUE(dec.Alert);
    EXPECT_EQ(dec.Alert->Line1, "Inserire un valore decimale corretto");
    EXPECT_EQ(dec.Alert->Line2, "");

    std::string base = "h";
    std::string text = "180";
    ToHexBase(base, text); // already hexadecimal: nothing happens
    ToDecimalBase(base, text);
    EXPECT_EQ(base + text, "d384");
    text = "1407";
    ToHexBase(base, text);
    EXPECT_EQ(base + text, "h57F");
    text = "FFFF"; // does not fit 16 bits signed
    EXPECT_THROW(ToDecimalBase(base, text), RuntimeError);

    EXPECT_EQ(DecodeFieldFlags(-1), (FieldFlags{1, 1, 1, 1, 1})); // high bits ignored
    EXPECT_EQ(EncodeFieldFlags(true, false, true, false, true), 21);
}

TEST(NodePaste, NewDefaultsOrConflict) {
    Network network;
    PutNode(network, 4, 2, 2, {"185", "285", "205", "305"});
    Node source = network.NodeAt(4);
    source.PdoAt(1).Settings.Mode = "Disabilitato";
    source.PdoAt(1).Settings.CobId = "0";
    source.PdoAt(2).Settings.Mode = "Non configurato";
    source.PdoAt(3).Settings.Mode = "Non Configurato";
    source.PdoAt(3).Settings.Bytes = "8";

    PasteResult result = PasteNode(network, source, 9);
    EXPECT_TRUE(result.Pasted);
    EXPECT_FALSE(result.Alert);
    EXPECT_EQ(network.NodeCount, 2);
    const Node& pasted = network.NodeAt(9);
    EXPECT_EQ(pasted.PdoAt(0).Settings.CobId, "18A");
    EXPECT_EQ(pasted.PdoAt(1).Settings.CobId, "0"); // Disabilitato keeps its COB-ID
    EXPECT_EQ(pasted.PdoAt(1).DefaultCobId, "28A");
    EXPECT_EQ(pasted.PdoAt(2).Settings.CobId, "20A");
    EXPECT_EQ(pasted.PdoAt(3).Settings.CobId, "305"); // the copy routine's capital-C test
    EXPECT_EQ(pasted.PdoAt(3).Settings.Bytes, "8");
    for (int p = 0; p < 4; ++p) {
        EXPECT_EQ(pasted.PdoAt(p).OwnerSlot, 9);
    }

    // Slot 0's RX 0 default "201" is taken by a configured node: the paste is abandoned.
    PutNode(network, 20, 1, 1, {"190", "201"}, "io");
    result = PasteNode(network, source, 0);
    EXPECT_FALSE(result.Pasted);
    ASSERT_TRUE(result.Alert);
    EXPECT_EQ(*result.Alert,
              (AlertRequest{"mainWin", "Il CobId 201 è già ", "assegnato al pdo RX 2 di io (21)",
                            "", false, false, ""}));
    EXPECT_EQ(network.NodeAt(0).InUse, 0);
    EXPECT_EQ(network.NodeAt(0).EdsName, "");
    EXPECT_EQ(network.NodeCount, 3);

    EXPECT_THROW(PasteNode(network, source, 9), RuntimeError); // occupied
}

} // namespace
} // namespace velmora
