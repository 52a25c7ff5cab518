#pragma once

// What the PDO editor tests share: a drive at node 5 and the editor's keyboard and toolbar.

#include "dialog_harness.h"

#include <QAction>
#include <QComboBox>
#include <QToolBar>

namespace velmora::test {

class PdoEditorHarness : public DialogHarness {
protected:
    PdoEditorHarness() { app_.AddDrive(4); } // node 5: TX PDOs at entries 0 and 1, RX at 2

    Pdo& RxPdo() { return app_.Ws().Net.NodeAt(4).PdoAt(2); }

    // Chooses a mode with the keyboard, as the user does: from "Non configurato" (the last
    // entry) Up moves to Fast, Slow, Manuale, Disabilitato.
    static void ModeUp(QDialog& dialog, int steps) {
        QComboBox* mode = Find<QComboBox>(dialog, "mode");
        mode->setFocus();
        for (int i = 0; i < steps; ++i) {
            QTest::keyClick(mode, Qt::Key_Up);
        }
    }
    // Clicks the toolbar button of command, which must be enabled.
    static void Trigger(QDialog& dialog, const char* command) {
        QAction* action = Find<QAction>(dialog, command);
        ASSERT_TRUE(action->isEnabled()) << command;
        QTest::mouseClick(Find<QToolBar>(dialog, "pdoToolbar")->widgetForAction(action),
                          Qt::LeftButton);
    }
};

} // namespace velmora::test
