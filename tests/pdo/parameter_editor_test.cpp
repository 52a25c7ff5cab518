#include "model/runtime_error.h"
#include "pdo/parameter_editor.h"
#include "support/app_fixture.h"
#include "support/network_builder.h"
#include "support/scripted_alerts.h"
#include "support/scripted_dialogs.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace velmora {
namespace {

struct ParameterEditorTest : ::testing::Test {
    test::AppFixture app;
    test::ScriptedAlerts alerts;
    test::ScriptedDialogs dialogs;
    ParameterEditor editor{app.Ws(), alerts, dialogs};
    Node& node = app.AddDrive(4);

    int ItemOf(const std::string& text) const {
        const auto& items = editor.ObjectItems();
        const auto it = std::find(items.begin(), items.end(), text);
        EXPECT_NE(it, items.end()) << text;
        return static_cast<int>(it - items.begin());
    }
};

TEST_F(ParameterEditorTest, NewParameterChosenFromTheEds) {
    ASSERT_TRUE(editor.OpenParameterEditor(4, node.ParameterCount, "new"));
    EXPECT_EQ(editor.Title(), "Aggiungi parametro per ...");
    EXPECT_EQ(editor.ObjectItems().front(), "Scegli un parametro");
    // Every listed object, mappable or not; the headers of records are left out.
    EXPECT_EQ(editor.ObjectItems().size(), 18u);

    editor.PickObject(ItemOf("[2000 sub 1] input a"));
    editor.Fields().ValueText = "7";
    editor.PickObject(ItemOf("[6060] modes of operation"));
    ParameterFields expected{
        "[6060] modes of operation", "modes of operation", "6060", "0", "1", "", "h"};
    EXPECT_EQ(editor.Fields(), expected); // Valore emptied, main object sub-index "0"

    editor.Fields().ValueText = "8";
    EXPECT_EQ(editor.SaveParameter(), (DialogResult{true, true}));
    EXPECT_EQ(node.ParameterCount, 1);
    EXPECT_EQ(node.ParameterAt(0),
              (NodeParameter{"modes of operation", "6060", "0", "1", "8", kTrue}));
    EXPECT_EQ(node.Configured, kTrue);

    // The first item empties the fields again.
    editor.PickObject(0);
    ParameterFields reset;
    reset.ComboText = "Scegli un parametro";
    EXPECT_EQ(editor.Fields(), reset);
    EXPECT_THROW(editor.PickObject(18), RuntimeError);
}

TEST_F(ParameterEditorTest, ValidationOrderAndTheFirstCharacterTest) {
    editor.OpenParameterEditor(4, 0, "new");
    const Network before = app.Ws().Net;
    struct Case {
        const char* nbyte;
        const char* sub;
        const char* index;
        const char* error;
    };
    const Case cases[] = {
        {"", "", "", "Impossibile salvare con campo Lenght vuoto"},
        {"2", "", "", "Impossibile salvare con campo SubIndex vuoto"},
        {"2", "0", "", "Impossibile salvare con campo Index vuoto"},
        {"x", "0", "6060", "Campo Lenght non numerico"},
        {" -1.5e2 ", "G1", "6060", "Campo SubIndex non numerico"},
        {"2", "A", "Z1", "Campo Index non numerico"},
        {"2", "1Z", "fz", ""},
    };
    for (const Case& c : cases) {
        editor.Fields().NByteText = c.nbyte;
        editor.Fields().SubIndexText = c.sub;
        editor.Fields().IndexText = c.index;
        EXPECT_EQ(editor.ValidateParameter().ErrorText, c.error) << c.nbyte << c.sub << c.index;
    }
    editor.Fields().IndexText = "";
    EXPECT_EQ(editor.SaveParameter(), DialogResult{});
    EXPECT_EQ(dialogs.shown.back(), "Inform: Errore | Impossibile salvare con campo Index vuoto");
    EXPECT_TRUE(app.Ws().Net == before);
}

TEST_F(ParameterEditorTest, DecimalIndexAndItsKeyFilter) {
    editor.OpenParameterEditor(4, 0, "new");
    ParameterFields& fields = editor.Fields();
    fields.IndexText = "6060";
    editor.SetBase("d");
    EXPECT_EQ(fields.IndexText, "24672");
    EXPECT_TRUE(editor.IndexKeyTyped(U'5'));
    EXPECT_FALSE(editor.IndexKeyTyped(U'a'));
    EXPECT_EQ(alerts.shown.back().Line1, "Inserire un valore decimale corretto");
    EXPECT_EQ(alerts.shown.back().Source, "parametri");

    fields.NByteText = "1";
    fields.SubIndexText = "0";
    EXPECT_TRUE(editor.SaveParameter().NetworkChanged);
    EXPECT_EQ(node.ParameterAt(0).ObjectIndex, "6060");

    // Hexadecimal base: only a non-digit from "h" on is refused.
    editor.SetBase("h");
    EXPECT_TRUE(editor.IndexKeyTyped(U'f'));
    EXPECT_FALSE(editor.IndexKeyTyped(U'h'));
    EXPECT_EQ(alerts.shown.back().Line2, "compreso tra 0x180 e 0x57F");
    EXPECT_EQ(alerts.shown.size(), 2u);

    // Too large for the decimal view: reported, nothing changes.
    fields.IndexText = "FFFF";
    editor.SetBase("d");
    EXPECT_EQ(fields.Base, "h");
    EXPECT_EQ(fields.IndexText, "FFFF");
    EXPECT_EQ(dialogs.shown.back().rfind("Error: Overflow", 0), 0u);
}

TEST_F(ParameterEditorTest, EditingAnExistingParameter) {
    test::AddParameter(node, "modes of operation", "6060", "0", "1", "8");
    const Network before = app.Ws().Net;
    editor.OpenParameterEditor(4, 0, "mod");
    editor.setOldData(node.ParameterAt(0));
    EXPECT_EQ(editor.Fields().ComboText, "modes of operation");
    EXPECT_EQ(editor.SaveParameter(), (DialogResult{false, true}));
    EXPECT_TRUE(app.Ws().Net == before);

    editor.Fields().ComboText = "[6060]xvelocità";
    editor.Fields().ValueText = "";
    EXPECT_EQ(editor.SaveParameter(), (DialogResult{true, true}));
    EXPECT_EQ(node.ParameterAt(0), (NodeParameter{"velocità", "6060", "0", "1", "", kTrue}));
    EXPECT_EQ(node.ParameterCount, 1);
}

TEST_F(ParameterEditorTest, FullNodeAndMissingEds) {
    for (int k = 0; k <= kLastParameter; ++k) {
        test::AddParameter(node, "p", "2000", "1", "1", "0");
    }
    EXPECT_FALSE(editor.OpenParameterEditor(4, node.ParameterCount, "new"));
    EXPECT_EQ(dialogs.shown.back(), "Inform: Errore | Impossibile aggiungere il parametro: il "
                                    "nodo 5 ha già 101 parametri");
    EXPECT_THROW(editor.OpenParameterEditor(4, 101, "mod"), RuntimeError);

    // A node whose EDS is gone: the chooser has its first item only, typing still works.
    Node& ghost = test::AddNode(app.Ws().Net, 9, 1, 1, "Fast", "ghost");
    ASSERT_TRUE(editor.OpenParameterEditor(9, 0, "new"));
    EXPECT_EQ(dialogs.shown.back().rfind("Error: Impossibile trovare il file", 0), 0u);
    EXPECT_EQ(editor.ObjectItems().size(), 1u);
    editor.Fields() = {"[1000] device type", "", "1000", "0", "4", "0", "h"};
    EXPECT_TRUE(editor.SaveParameter().NetworkChanged);
    EXPECT_EQ(ghost.ParameterAt(0).Name, "device type");
}

} // namespace
} // namespace velmora
