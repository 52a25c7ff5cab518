#include "model/runtime_error.h"
#include "presenters/pdo_editor.h"
#include "session/workspace.h"
#include "support/app_fixture.h"
#include "support/recording_help.h"
#include "support/scripted_alerts.h"
#include "support/scripted_dialogs.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace velmora {
namespace {

using Items = std::vector<std::string>;

// Also records whether the PDO editor was enabled while each alert was up.
class ProbingAlerts : public test::ScriptedAlerts {
public:
    const PdoEditor* editor = nullptr;
    std::vector<bool> editorEnabled;

    bool ShowAlert(const AlertRequest& request) override {
        editorEnabled.push_back(editor != nullptr && editor->Enabled());
        return ScriptedAlerts::ShowAlert(request);
    }
};

// The field texts in screen order: mode|COB-ID|bytes|comm|inhibit|event, then the switches
// that are on ("10001": COB-ID and RTR).
std::string Shown(const PdoEditor& editor) {
    std::string on;
    for (PdoSwitch which : {PdoSwitch::CobId, PdoSwitch::Comm, PdoSwitch::Inhibit,
                            PdoSwitch::Event, PdoSwitch::Rtr}) {
        on += editor.SwitchOn(which) ? "1" : "0";
    }
    return editor.ModeText() + "|" + editor.CobIdText() + "|" + editor.BytesText() + "|" +
           editor.CommText() + "|" + editor.InhibitTimeText() + "|" + editor.EventTimeText() +
           " " + on;
}

// Stored settings in the same order, Pcfg last.
std::string Stored(const PdoSettings& s) {
    return s.Mode + "|" + s.CobId + "|" + s.Bytes + "|" + s.Comm + "|" + s.InhibitTime + "|" +
           s.EventTime + " " + std::to_string(s.Pcfg);
}

// The fixture's drive in slot 4 (node 5): TX 1 with two mappings, TX 2 with a fixed one,
// RX 1; all three unconfigured.
class PdoEditorTest : public ::testing::Test {
protected:
    PdoEditorTest() { app.AddDrive(4); }

    std::unique_ptr<PdoEditor> Open(int pdo, int slot = 4) {
        auto editor = std::make_unique<PdoEditor>(app.Ws(), alerts, dialogs, help, slot, pdo);
        alerts.editor = editor.get();
        return editor;
    }
    Network& Net() { return app.Ws().Net; }
    Pdo& PdoOf(int pdo, int slot = 4) { return Net().NodeAt(slot).PdoAt(pdo); }

    test::AppFixture app;
    ProbingAlerts alerts;
    test::ScriptedDialogs dialogs;
    test::RecordingHelp help;
};

TEST_F(PdoEditorTest, OpeningSetsTheMarkersAndOnlyNotConfiguredFreesAFixedMapping) {
    PdoSettings& stored = PdoOf(0).Settings;
    stored.CobId = "1a5";
    stored.Mode = "Manual";
    stored.Bytes = "4";
    stored.Pcfg = 1 + 2 + 16;
    auto tx1 = Open(0);
    EXPECT_EQ(Shown(*tx1), "Manual|1a5|4|0|0|0 11001"); // Bytes as stored, not recomputed
    EXPECT_EQ(tx1->PdoDescription() + " " + tx1->ProductDescription(), "pdo_TX1 drive (5)");
    EXPECT_EQ(tx1->MappingTree(), (Items{"Mappature", "[6041 sub 0] statusword (16 bit)",
                                         "[6064 sub 0] position actual value (32 bit)"}));
    EXPECT_FALSE(tx1->EdsMappingMarker() || tx1->FirstConfiguration());

    // TX 2's EDS mapping object is read-only: a fixed mapping, here opened unconfigured.
    auto tx2 = Open(1);
    EXPECT_TRUE(tx2->EdsMappingMarker() && tx2->MappingFixed() && tx2->FirstConfiguration());
    EXPECT_FALSE(tx2->SwitchEnabled(PdoSwitch::CobId) || tx2->BytesEnabled());
    tx2->ChooseMode("Fast");
    // First configuration: Comm on with 1; Bytes follows the mapping the user cannot change.
    EXPECT_EQ(Shown(*tx2), "Fast|285|2|1|0|0 11000");
    EXPECT_FALSE(tx2->BytesEnabled() || tx2->ButtonEnabled(PdoCommand::AddMapping) ||
                 tx2->MenuEntryEnabled(PdoCommand::AddMapping) ||
                 tx2->ButtonEnabled(PdoCommand::ClearMappings));
    EXPECT_TRUE(tx2->MappingMenuEnabled());
    // Its entries can still be renamed; "Non configurato" reads the EDS mapping again.
    MappingEditor* mapping = tx2->ModifyMapping(1);
    ASSERT_NE(mapping, nullptr);
    mapping->EditName("stato");
    ASSERT_TRUE(mapping->Save());
    EXPECT_EQ(tx2->MappingTree()[1], "[6041 sub 0] stato (16 bit)");
    tx2->ChooseMode("Non configurato");
    EXPECT_FALSE(tx2->MappingFixed());
    tx2->ChooseMode("Fast");
    EXPECT_EQ(tx2->MappingTree()[1], "[6041 sub 0] statusword (16 bit)");
    EXPECT_TRUE(tx2->ButtonEnabled(PdoCommand::ClearMappings) &&
                tx2->ButtonEnabled(PdoCommand::RemoveMapping));
    EXPECT_FALSE(tx2->ButtonEnabled(PdoCommand::AddMapping)); // still taken from the EDS

    EXPECT_FALSE(Open(2)->EdsMappingMarker()); // RX
    std::filesystem::remove(app.AppDir() + "/eds/drive.eds");
    EXPECT_FALSE(Open(1)->EdsMappingMarker()); // without its EDS the PDO is edited freely
    // ...but its mapping editor cannot list the objects: the error passes, the editor goes on.
    auto rx = Open(2);
    rx->ChooseMode("Slow");
    EXPECT_THROW(rx->AddMapping(), RuntimeError);
    EXPECT_TRUE(rx->Enabled() && rx->OpenMappingEditor() == nullptr);
}

TEST_F(PdoEditorTest, ModeChangesSetUpTheFieldsAndNotConfiguredSavesACleanPdo) {
    auto editor = Open(0);
    editor->ChooseMode("Fast"); // the COB-ID switch was off
    EXPECT_EQ(Shown(*editor), "Fast|185|6|1|0|0 11000");
    EXPECT_EQ(editor->SavedMarker(), "no");
    editor->ChooseMode("Manuale"); // the previous mode is still "Non configurato"
    EXPECT_EQ(Shown(*editor), "Manuale||6|1|0|0 01000");
    editor->ChooseMode("Disabilitato");
    EXPECT_EQ(Shown(*editor), "Disabilitato|0|6|1|0|0 11000");
    EXPECT_FALSE(editor->CobIdFieldEnabled());
    editor->ChooseMode("Slow");
    editor->SetSwitch(PdoSwitch::Rtr, true);
    editor->SetSwitch(PdoSwitch::Inhibit, true);
    editor->EditInhibitTime("7");
    EXPECT_EQ(Shown(*editor), "Slow|185|6|1|7|0 11101");

    editor->ChooseMode("Non configurato");
    EXPECT_EQ(Shown(*editor), "Non configurato|0|0|0|0|0 00000");
    EXPECT_FALSE(editor->SwitchEnabled(PdoSwitch::Rtr) || editor->BytesEnabled() ||
                 editor->MappingMenuEnabled() || editor->ButtonEnabled(PdoCommand::ModifyMapping));
    EXPECT_EQ(editor->MappingTree().size() + editor->MappingCountText().size(), 1u); // "0"
    editor->EditComm("5"); // greyed: ignored
    const PdoSaveResult result = editor->Save();
    EXPECT_TRUE(result.Saved);
    EXPECT_FALSE(result.ChannelDialogShown || editor->IsOpen());
    EXPECT_EQ(Stored(PdoOf(0).Settings), "Non configurato|0|0|0|0|0 0");
    EXPECT_EQ(PdoOf(0).Settings.MappingCount, 2);
    EXPECT_EQ(PdoOf(0).Used + Net().NodeAt(4).Configured, 2 * kTrue);
}

TEST_F(PdoEditorTest, SaveWritesTheFieldsAndCancelWritesNothing) {
    const Network before = Net();
    auto cancelled = Open(0);
    cancelled->ChooseMode("Fast");
    cancelled->SetSwitch(PdoSwitch::Event, true);
    cancelled->EditEventTime("100");
    cancelled->Cancel();
    EXPECT_TRUE(!cancelled->IsOpen() && cancelled->SavedMarker() == "yes");
    EXPECT_TRUE(Net() == before);

    Net().MaxFastPdo() = 1;
    auto editor = Open(0);
    editor->ChooseMode("Fast");
    editor->SetSwitch(PdoSwitch::Event, true);
    editor->EditEventTime("");
    editor->SetSwitch(PdoSwitch::Inhibit, true);
    editor->EditInhibitTime("5");
    editor->ChooseCobIdBase("d");
    EXPECT_EQ(editor->CobIdText(), "389");
    const PdoSaveResult result = editor->Save();
    EXPECT_TRUE(result.Saved && result.ChannelDialogShown); // one fast PDO reaches the limit
    EXPECT_EQ(Stored(PdoOf(0).Settings), "Fast|185|6|1|5|0 15");

    auto rx = Open(2);
    rx->ChooseMode("Manuale");
    rx->Save();
    EXPECT_EQ(Stored(PdoOf(2).Settings), "Manual|0|2|0|0|0 0");
}

TEST_F(PdoEditorTest, CobIdIsCheckedAndADuplicateGoesInOnlyOnPurpose) {
    auto first = Open(0);
    first->ChooseMode("Fast");
    ASSERT_TRUE(first->Save().Saved); // node 5's TX 1 takes 185
    app.AddDrive(5);
    auto editor = Open(0, 5);
    editor->ChooseMode("Fast");
    EXPECT_EQ(editor->TypeCobIdKey(U'g'), 0u);
    editor->EditCobIdText("17F");
    editor->LeaveCobIdField(); // the check is disarmed when the editor opens: it only arms
    EXPECT_TRUE(alerts.shown.empty());
    EXPECT_TRUE(!editor->Save().Saved && editor->IsOpen());
    EXPECT_EQ(editor->CobIdText(), "0"); // the last accepted: the PDO's own
    editor->EditCobIdText("185");
    EXPECT_FALSE(editor->LeaveCobIdField().Saved);
    EXPECT_EQ(alerts.shown.back().Line2, "assegnato al pdo TX 1 di drive (5)");
    EXPECT_EQ(editor->CobIdText(), "0");
    EXPECT_EQ(alerts.editorEnabled, (std::vector<bool>{false, false}));

    // Ticking "Inserisci comunque il Cob-Id" saves at once what was typed, here in decimal.
    editor->ChooseCobIdBase("d");
    editor->EditCobIdText("389"); // 0x185
    alerts.insertAnyway.push_back(true);
    EXPECT_TRUE(editor->LeaveCobIdField().Saved);
    EXPECT_EQ(editor->CobIdText(), "389");
    EXPECT_EQ(PdoOf(0, 5).Settings.CobId, "185");
}

TEST_F(PdoEditorTest, MappingCommandsNeedAMappingAndKeepTheByteCount) {
    auto editor = Open(0);
    editor->ChooseMode("Slow");
    editor->RemoveMapping(0); // the root
    EXPECT_EQ(editor->ModifyMapping(3), nullptr);
    ASSERT_EQ(alerts.shown.size(), 2u);
    EXPECT_EQ(alerts.shown[0],
              (AlertRequest{"pdowin", "Selezionare una mappatura",
                            "dalla treeView per rimuoverla.", "", true, false, ""}));
    EXPECT_EQ(alerts.shown[1].Line2, "dalla treeView per modificarla.");
    EXPECT_EQ(alerts.editorEnabled, (std::vector<bool>{false, false}));

    editor->RemoveMapping(1);
    EXPECT_EQ(editor->MappingTree(),
              (Items{"Mappature", "[6064 sub 0] position actual value (32 bit)"}));
    EXPECT_TRUE(editor->BytesText() == "4" && !editor->MappingsSaved());

    for (int n = 2; n <= 11; ++n) {
        MappingEditor* mapping = editor->AddMapping();
        ASSERT_NE(mapping, nullptr) << n;
        EXPECT_FALSE(editor->Save().Saved); // the PDO editor waits for the mapping editor
        mapping->PickObject(1);             // [2000 sub 1] input a, 8 bits
        mapping->EditName("in" + std::to_string(n));
        mapping->EditLength("12");
        ASSERT_TRUE(mapping->Save()) << n;
    }
    EXPECT_EQ(editor->MappingCountText() + " " + editor->BytesText(), "11 19"); // 152 bits
    EXPECT_EQ(editor->AddMapping(), nullptr);
    EXPECT_EQ(dialogs.shown.back(),
              "Inform: Errore | Impossibile aggiungere la mappatura: il pdo ne contiene già 11");

    editor->ClearMappings();
    EXPECT_EQ(editor->MappingCountText() + editor->BytesText(), "00");
    editor->PressHelpKey(true, false, false);
    editor->PressHelpKey(false, false, false);
    EXPECT_EQ(help.pages, Items{"editPDO.htm"});
}

} // namespace
} // namespace velmora
