#include "model/runtime_error.h"
#include "presenters/parameter_editor.h"
#include "support/app_fixture.h"
#include "support/network_builder.h"
#include "support/scripted_alerts.h"
#include "support/scripted_dialogs.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

struct ParameterEditorTest : ::testing::Test {
    test::AppFixture app;
    test::ScriptedAlerts alerts;
    test::ScriptedDialogs dialogs;
    ParameterEditor editor{app.Ws(), alerts, dialogs};
    Node& node = app.AddDrive(4);
};

TEST_F(ParameterEditorTest, NewParameterChosenFromTheEds) {
    ASSERT_TRUE(editor.OpenParameterEditor(4, node.ParameterCount, "new"));
    // Every listed object, mappable or not, after the first item.
    const std::vector<std::string>& items = editor.ObjectItems();
    ASSERT_EQ(items.size(), 18u);
    EXPECT_EQ(items[16], "[6060] modes of operation");

    editor.PickObject(13); // [2000 sub 2] input b
    editor.Fields().ValueText = "7";
    editor.PickObject(16); // Valore emptied, a main object's sub-index is "0"
    EXPECT_EQ(editor.Fields(),
              (ParameterFields{items[16], "modes of operation", "6060", "0", "1", "", "h"}));
    editor.Fields().ValueText = "8";
    EXPECT_EQ(editor.SaveParameter(), (DialogResult{true, true}));
    EXPECT_EQ(node.ParameterCount, 1);
    EXPECT_EQ(node.ParameterAt(0),
              (NodeParameter{"modes of operation", "6060", "0", "1", "8", kTrue}));
    EXPECT_EQ(node.Configured, kTrue);

    editor.PickObject(0);
    EXPECT_EQ(editor.Fields().IndexText, "");
    EXPECT_THROW(editor.PickObject(18), RuntimeError);
}

TEST_F(ParameterEditorTest, ValidationOrderAndTheFirstCharacterTest) {
    editor.OpenParameterEditor(4, 0, "new");
    const char* cases[][4] = {
        // NByte, Subindex, Index, message
        {"", "", "", "Impossibile salvare con campo Lenght vuoto"},
        {"2", "", "", "Impossibile salvare con campo SubIndex vuoto"},
        {"2", "0", "", "Impossibile salvare con campo Index vuoto"},
        {"x", "0", "6060", "Campo Lenght non numerico"},
        {" -1.5e2 ", "G1", "6060", "Campo SubIndex non numerico"},
        {"2", "A", "Z1", "Campo Index non numerico"},
        {"2", "1Z", "fz", ""},
    };
    for (const auto& c : cases) {
        editor.Fields() = {"", "", c[2], c[1], c[0], "", "h"};
        EXPECT_EQ(editor.ValidateParameter().ErrorText, c[3]) << c[0] << c[1] << c[2];
    }
    editor.Fields().IndexText = "";
    EXPECT_EQ(editor.SaveParameter(), DialogResult{});
    EXPECT_EQ(dialogs.shown.back(), "Inform: Errore | Impossibile salvare con campo Index vuoto");
    EXPECT_EQ(node.ParameterCount, 0);
}

TEST_F(ParameterEditorTest, DecimalIndexAndItsKeyFilter) {
    editor.OpenParameterEditor(4, 0, "new");
    editor.SetBase("d");
    EXPECT_EQ(editor.Fields().IndexText, "0"); // an empty text reads as 0, as in the other editor
    editor.Fields() = {"x", "", "6060", "0", "1", "", "h"};
    editor.SetBase("d");
    EXPECT_EQ(editor.Fields().IndexText, "24672");
    EXPECT_FALSE(editor.IndexKeyTyped(U'a'));
    EXPECT_EQ(alerts.shown.back().Source + "|" + alerts.shown.back().Line1,
              "parametri|Inserire un valore decimale corretto");
    EXPECT_TRUE(editor.SaveParameter().NetworkChanged);
    EXPECT_EQ(node.ParameterAt(0).ObjectIndex, "6060");

    // The mapping editor's conversion: 32 bits, so A000 is 40960 and back.
    editor.SetBase("h");
    editor.Fields().IndexText = "A000";
    editor.SetBase("d");
    EXPECT_EQ(editor.Fields().Base + editor.Fields().IndexText, "d40960");
    editor.SetBase("h");
    EXPECT_EQ(editor.Fields().IndexText, "A000");
    // Too large even for that: the error passes, nothing changes.
    editor.Fields().IndexText = "100000000";
    EXPECT_THROW(editor.SetBase("d"), RuntimeError);
    EXPECT_EQ(editor.Fields().Base + editor.Fields().IndexText, "h100000000");
}

TEST_F(ParameterEditorTest, EditingFullNodesAndMissingEds) {
    test::AddParameter(node, "modes of operation", "6060", "0", "1", "8");
    const Network before = app.Ws().Net;
    editor.OpenParameterEditor(4, 0, "mod");
    editor.setOldData(node.ParameterAt(0));
    EXPECT_EQ(editor.SaveParameter(), (DialogResult{false, true})); // no change
    EXPECT_TRUE(app.Ws().Net == before);
    editor.Fields().ComboText = "[6060]xvelocità";
    EXPECT_TRUE(editor.SaveParameter().NetworkChanged);
    EXPECT_EQ(node.ParameterAt(0).Name, "velocità");
    EXPECT_EQ(node.ParameterCount, 1);

    for (int k = 1; k <= kLastParameter; ++k) {
        test::AddParameter(node, "p", "2000", "1", "1", "0");
    }
    EXPECT_FALSE(editor.OpenParameterEditor(4, node.ParameterCount, "new"));
    EXPECT_EQ(dialogs.shown.back(), "Inform: Errore | Impossibile aggiungere il parametro: il "
                                    "nodo 5 ha già 101 parametri");

    // A node whose EDS is gone: the error passes and the editor stays as it was.
    test::AddNode(app.Ws().Net, 9, 1, 1, "Fast", "ghost");
    const ParameterFields fields = editor.Fields();
    EXPECT_THROW(editor.OpenParameterEditor(9, 0, "new"), RuntimeError);
    EXPECT_EQ(editor.Fields(), fields);
    EXPECT_EQ(editor.ObjectItems().size(), 18u);
}

} // namespace
} // namespace velmora
