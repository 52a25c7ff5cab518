#pragma once

// The parameter editor ("Aggiungi parametro per ..." / "Modifica parametro"): the object
// chooser, the chosen object's name, Index with its base, Subindex, NByte and Valore, with
// "Salva &parametro" and a toolbar repeating save and close. Enter in Valore saves; Enter in
// the chooser applies the chosen object. Escape and the window's close button close without
// saving.

#include "interfaces/dialog_result.h"

#include <QDialog>

class QComboBox;
class QLabel;
class QLineEdit;
class QRadioButton;

namespace velmora {

class ParameterEditor;
class UserDialogs;

class ParameterWindow : public QDialog {
    Q_OBJECT
public:
    ParameterWindow(ParameterEditor& presenter, UserDialogs& dialogs, QWidget* parent = nullptr);

    bool NetworkChanged() const { return changed_; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Refresh();
    void Save();
    template <typename Action> void Forward(Action&& action);

    ParameterEditor& presenter_;
    UserDialogs& dialogs_;
    QComboBox* objects_;
    QLabel* name_;
    QLineEdit* index_;
    QLineEdit* subIndex_;
    QLineEdit* nByte_;
    QLineEdit* value_;
    QRadioButton* decimal_;
    QRadioButton* hexadecimal_;
    bool changed_ = false;
};

} // namespace velmora
