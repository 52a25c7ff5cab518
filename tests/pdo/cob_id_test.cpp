#include "model/network.h"
#include "model/runtime_error.h"
#include "model/transmission_mode.h"
#include "pdo/cob_id.h"
#include "pdo/cob_id_entry.h"
#include "pdo/field_flags.h"
#include "support/network_builder.h"

#include <string>
#include <utility>

#include <gtest/gtest.h>

namespace velmora {
namespace {

TEST(CobId, DefaultCobIds) {
    EXPECT_EQ(ComputeDefaultCobId("RX", 4, 1), "305");
    EXPECT_EQ(ComputeDefaultCobId("TX", 9, 4), "58A"); // upper case, no range check
    EXPECT_EQ(ComputeDefaultCobId("NOTYPE", 0, 0), "201");
}

TEST(CobId, FindCobIdWalk) {
    Network network;
    // Three TX and one RX (183, 283, 383, 203): only PDOs 0 and 1 (twice the RX count) are
    // compared. Then 188 and 208 in slot 7.
    test::AddNode(network, 2, 3, 1, TransmissionMode::Fast, "drive");
    test::AddNode(network, 7, 1, 1, TransmissionMode::Fast, "io");

    EXPECT_EQ(FindCobId(network, "283"), (CobIdOwner{-1, "drive", 2, "TX", "2"}));
    EXPECT_EQ(FindCobId(network, "383").Found, 0); // past twice the RX count
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
    EXPECT_EQ(FindCobId(network, "188").Found, 0);
    // A count larger than the nodes in use runs past slot 500, unless a match ends it first.
    network.NodeCount = 3;
    EXPECT_THROW(FindCobId(network, "nothing"), RuntimeError);
    EXPECT_EQ(FindCobId(network, "188").NodeSlot, 7);
}

class CobIdEntry : public ::testing::Test {
protected:
    CobIdEntry() {
        test::AddNode(network_, 0, 2, 2, TransmissionMode::Fast, "drive"); // 181 281 201 201
        state_.Armed = true;
        state_.CobIdSwitch = true;
        state_.Mode = "Fast";
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
    using enum CobIdVerdict;
    struct Case {
        const char* base;
        const char* text;
        CobIdVerdict verdict;
    };
    const Case cases[] = {
        {"d", "384", Accept},        {"d", " 400 ", Accept},      {"d", "383", RefuseRange},
        {"d", "1000", RefuseLength}, {"d", "12", RefuseLength},   {"d", "1e9", RefuseRange},
        {"h", "180", Accept},        {"h", "57F", Accept},        {"h", "17F", RefuseRange},
        {"h", "580", RefuseRange},   {"h", "0180", RefuseLength},
    };
    for (const Case& c : cases) {
        const CobIdCheck check = Check(c.base, c.text);
        EXPECT_EQ(check.Verdict, c.verdict) << c.base << " " << c.text;
        if (c.verdict == Accept) {
            EXPECT_FALSE(check.Alert);
            continue;
        }
        ASSERT_TRUE(check.Alert) << c.text;
        // Only the range refusal disables the editor.
        EXPECT_EQ(*check.Alert, (AlertRequest{"pdowin", "Inserire un valore esadecimale ",
                                              "compreso tra 0x180 e 0x57F", "default",
                                              c.verdict == RefuseRange, false, ""}));
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
    // The last accepted text is never tested again, even when a PDO uses it (node 1's TX 1
    // here), nor is decimal 385, which is that text.
    state_.LastAccepted = "181";
    for (const auto& [base, text] : {std::pair{"h", "181"}, {"d", "385"}}) {
        state_.Base = base;
        state_.FieldText = text;
        EXPECT_TRUE(CheckCobIdEntry(network_, state_).Passed()) << text;
    }
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

    // Ticking it stores the duplicate through a save whose own check passes; the field keeps
    // its base.
    Check("d", "641"); // 0x281
    EXPECT_TRUE(CloseCobIdConflict(state_, "281", true));
    EXPECT_EQ(state_.FieldText, "641");
    EXPECT_TRUE(CheckCobIdEntry(network_, state_).Passed());
    EXPECT_TRUE(state_.Armed);

    // Case matters in the search: "1A0" in the field does not find a stored "1a0".
    network_.NodeAt(0).PdoAt(1).Settings.CobId = "1a0";
    EXPECT_TRUE(Check("h", "1A0").Passed());
}

TEST(CobIdKeys, FiltersAndBases) {
    // Kept in base "h": codes 0x30..0x66 ("G" and ":" too); in base "d" digits only.
    // Backspace is discarded in both.
    for (char32_t key : {U'0', U'f', U'G', U':'}) {
        EXPECT_EQ(FilterCobIdKey("h", key), key);
    }
    for (char32_t key : {U'g', char32_t{8}}) {
        EXPECT_EQ(FilterCobIdKey("h", key), 0u);
        EXPECT_EQ(FilterCobIdKey("d", key), 0u);
    }
    EXPECT_EQ(FilterCobIdKey("d", U'7'), U'7');

    std::string base = "h";
    std::string text = "180";
    ToHexBase(base, text); // already hexadecimal: nothing happens
    ToDecimalBase(base, text);
    ToDecimalBase(base, text); // already decimal: nothing happens
    EXPECT_EQ(base + text, "d384");

    EXPECT_EQ(DecodeFieldFlags(-1), (FieldFlags{1, 1, 1, 1, 1})); // high bits ignored
    EXPECT_EQ(EncodeFieldFlags(true, false, true, false, true), 21);
}

} // namespace
} // namespace velmora
