#pragma once

// The PDO editor ("Configura Pdo"): mode, COB-ID with its base and switch, bytes, Comm,
// inhibit and event time with their switches, RTR, and the PDO's mapping tree, with the
// commands in a toolbar and in the menus "Pdo" and "Mappature". F1 opens its help page.
// Escape and the window's close button cancel, as "Annulla Operazioni" does.

#include "presenters/pdo_editor.h"

#include <array>

#include <QDialog>

class QAction;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QRadioButton;
class QTreeWidget;

namespace velmora {

class UserDialogs;
class MappingEditor;

class PdoWindow : public QDialog {
    Q_OBJECT
public:
    PdoWindow(PdoEditor& presenter, UserDialogs& dialogs, QWidget* parent = nullptr);

    // What the last save told, once the editor has closed.
    const PdoSaveResult& SaveResult() const { return saveResult_; }

    void reject() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void Refresh();
    // Runs a user action on the presenter, shows a run-time error, then shows the state again
    // and closes the dialog when the editor has closed.
    template <typename Action> void Forward(Action&& action);
    void RunCommand(PdoCommand command);
    void OpenMappingEditor(MappingEditor* editor);
    int SelectedMappingItem() const;

    PdoEditor& presenter_;
    UserDialogs& dialogs_;
    PdoSaveResult saveResult_;
    bool leavingCobId_ = false;

    QComboBox* mode_;
    QLineEdit* cobId_;
    QRadioButton* hexBase_;
    QRadioButton* decBase_;
    QComboBox* bytes_;
    QLineEdit* comm_;
    QLineEdit* inhibit_;
    QLineEdit* event_;
    std::array<QCheckBox*, 5> switches_{};
    QTreeWidget* tree_;
    QLabel* mappingCount_;
    std::array<QAction*, 6> buttons_{};
    std::array<QAction*, 6> menuEntries_{};
    QAction* mappingMenu_ = nullptr;
};

} // namespace velmora
