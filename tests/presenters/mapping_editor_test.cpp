#include "model/runtime_error.h"
#include "presenters/mapping_editor.h"
#include "session/workspace.h"
#include "support/app_fixture.h"
#include "support/recording_help.h"
#include "support/scripted_alerts.h"
#include "support/scripted_dialogs.h"

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace velmora {
namespace {

using Items = std::vector<std::string>;
constexpr MappingEditorMode kNew = MappingEditorMode::New;
constexpr MappingEditorMode kEdit = MappingEditorMode::Edit;

// Edits a copy of the drive's TX 1 mapping table: statusword, position actual value.
class MappingEditorTest : public ::testing::Test {
protected:
    MappingEditorTest() { table = app.AddDrive(4).PdoAt(0).Settings; }

    std::unique_ptr<MappingEditor> Open(MappingEditorMode mode, int number = 0,
                                        const std::string& eds = "drive") {
        return std::make_unique<MappingEditor>(app.Ws(), alerts, dialogs, help, table, eds,
                                               "pdo_TX1", mode, number,
                                               [this](bool stored) { closes.push_back(stored); });
    }
    void Fill(MappingEditor& editor, const MappingFields& fields) {
        editor.EditName(fields.Name);
        editor.EditIndex(fields.Index);
        editor.EditSubIndex(fields.SubIndex);
        editor.EditLength(fields.Length);
    }

    test::AppFixture app;
    test::ScriptedAlerts alerts;
    test::ScriptedDialogs dialogs;
    test::RecordingHelp help;
    PdoSettings table;
    std::vector<bool> closes;
};

TEST_F(MappingEditorTest, ChooserOffersMappableObjectsAndPickingFillsTheFields) {
    auto editor = Open(kNew);
    EXPECT_EQ(editor->Title() + "|" + editor->MappingNumberText(),
              "Aggiungi mappatura per ...|3"); // the title as it stands, nothing appended
    // Mappable objects only: not "[6060] modes of operation".
    EXPECT_EQ(editor->ObjectItems().size(), 6u);
    editor->ChooseBase("d");
    editor->PickObject(5);
    EXPECT_EQ(editor->Fields(), (MappingFields{"position actual value", "6064", "0", "32"}));
    EXPECT_TRUE(editor->Base() == "h" && !editor->PickedWritable());
    editor->PickObject(1); // a record's entry: its own sub-index, UNSIGNED8
    EXPECT_EQ(editor->Fields(), (MappingFields{"input a", "2000", "1", "8"}));
    EXPECT_THROW(editor->PickObject(6), RuntimeError);

    EXPECT_EQ(Open(kEdit, 2)->Fields(),
              (MappingFields{"position actual value", "6064", "0", "32"}));
    EXPECT_THROW(Open(kEdit, 12), RuntimeError);
}

TEST(ValidateMapping, ChecksInOrderAndFindsDuplicatesIncludingPastTheLast) {
    PdoSettings table;
    table.Mappings[0].Vcb = "velocita ";
    table.Mappings[1].Vcb = "Posizione";
    table.Mappings[2].Vcb = "vecchio"; // left past the last entry
    table.MappingCount = 2;
    const std::string duplicate = "Nome variabile duplicato";
    struct Case {
        MappingEditorMode mode;
        int number;
        MappingFields fields;
        std::string error;
    };
    const Case cases[] = {
        {kNew, 3, {"", "", "", ""}, "Impossibile salvare con campo Lenght vuoto"},
        {kNew, 3, {"", "", "", " "}, "Impossibile salvare con campo SubIndex vuoto"},
        {kNew, 3, {"", "", "0", "8"}, "Impossibile salvare con campo Index vuoto"},
        {kNew, 3, {"Velocita", "6064", "0", "32"}, duplicate},
        {kNew, 3, {"[6064 sub 0] posizione", "6064", "0", "32"}, duplicate},
        {kNew, 3, {"VECCHIO", "6064", "0", "32"}, duplicate},
        {kNew, 3, {"", "6064", "0", "32"}, "Nome variabile non specificato"},
        {kNew, 3, {"nuovo", "6064", "0", "32"}, ""},
        {kEdit, 2, {"posizione", "6064", "0", "32"}, ""},
        {kEdit, 2, {"velocita", "6064", "0", "32"}, duplicate},
        {kEdit, 2, {"x]", "6064", "0", "32"}, "Nome variabile non specificato"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(ValidateMapping(table, c.mode, c.number, c.fields).value_or(""), c.error)
            << c.fields.Name;
    }
    // A new mapping without a name usually meets the empty entry past the last first; an
    // edited one whose name was cleared does not count its own entry, so it reads as unnamed.
    EXPECT_EQ(ValidateMapping(PdoSettings{}, kNew, 1, {"", "1", "0", "8"}), duplicate);
    table.Mappings[2].Vcb.clear();
    EXPECT_EQ(ValidateMapping(table, kEdit, 2, {"", "6064", "0", "32"}),
              "Nome variabile non specificato");
    EXPECT_EQ(ValidateMapping(table, kEdit, 2, {"Velocita", "6064", "0", "32"}), duplicate);
    table.MappingCount = 11; // the walk ends at the last entry
    EXPECT_EQ(ValidateMapping(table, kEdit, 11, {"z", "1", "0", "8"}), std::nullopt);
}

TEST_F(MappingEditorTest, IndexKeysBasesAndADecimalIndexStoredInHexadecimal) {
    auto editor = Open(kNew);
    EXPECT_TRUE(editor->TypeIndexKey(U'g') && editor->TypeIndexKey(U'G')); // below "h"
    EXPECT_FALSE(editor->TypeIndexKey(U'h'));
    ASSERT_EQ(alerts.shown.size(), 1u);
    EXPECT_EQ(alerts.shown[0], (AlertRequest{"mapping", "Inserire un valore esadecimale corretto",
                                             "compreso tra 0x180 e 0x57F", "", true, false, ""}));
    editor->ChooseBase("d");
    EXPECT_EQ(editor->Fields().Index, "0"); // an empty text reads as 0, as in the other editor
    EXPECT_FALSE(editor->TypeIndexKey(U'a'));
    EXPECT_EQ(alerts.shown[1].Line1 + "|" + alerts.shown[1].Line2,
              "Inserire un valore decimale corretto|");
    EXPECT_TRUE(editor->TypeIndexKey(U'7'));

    Fill(*editor, {"velocita", "24676", "0", "32"});
    editor->ChooseBase("h");
    EXPECT_EQ(editor->Fields().Index, "6064");
    editor->ChooseBase("d");
    EXPECT_EQ(editor->Fields().Index, "24676");
    ASSERT_TRUE(editor->EnterInName());
    EXPECT_EQ(table.MappingCount, 3);
    EXPECT_EQ(table.Mappings[2], (PdoMapping{"velocita", "6064", "0", "32", kTrue}));
    EXPECT_EQ(closes, std::vector<bool>{true});

    EXPECT_THROW(StoreMapping(table, 12, {}, "h", kEdit), RuntimeError);
    EXPECT_THROW(StoreMapping(table, 1, {"x", "99999999999", "0", "8", 0}, "d", kEdit),
                 RuntimeError);
    EXPECT_EQ(table.Mappings[0].Vcb, "statusword"); // nothing stored
}

TEST_F(MappingEditorTest, RefusalsStayOpenAndAFullPdoTakesNoMore) {
    EXPECT_THROW(Open(kNew, 0, "missing"), RuntimeError); // no EDS: the dialog does not open
    auto editor = Open(kNew);
    editor->EditLength("16");
    EXPECT_TRUE(!editor->Save() && editor->IsOpen());
    EXPECT_EQ(dialogs.shown.back(),
              "Inform: Errore | Impossibile salvare con campo SubIndex vuoto");
    Fill(*editor, {"stato", "6041", "0", "16"});
    editor->ClickToolbarButton(1);
    EXPECT_EQ(table.Mappings[2].Vcb, "stato");

    auto discarded = Open(kEdit, 1);
    discarded->EditName("altro");
    discarded->ClickToolbarButton(3);
    EXPECT_EQ(table.Mappings[0].Vcb, "statusword");
    EXPECT_EQ(closes, (std::vector<bool>{true, false}));

    table.MappingCount = 11;
    auto full = Open(kNew);
    Fill(*full, {"dodicesima", "6041", "0", "16"});
    EXPECT_FALSE(full->Save() || table.MappingCount != 11);
    EXPECT_EQ(dialogs.shown.size(), 2u); // refused with a message
}

} // namespace
} // namespace velmora
