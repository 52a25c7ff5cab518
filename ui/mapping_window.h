#pragma once

// The mapping editor ("Aggiungi mappatura per ..." / "Modifica mappatura per ..."): the name,
// the object chooser, Index with its base, Subindex, Lenght and the mapping's number, with
// "Salva mappatura", a discard button, a help button and a toolbar repeating save and
// discard. Enter in Name saves. Escape and the window's close button discard.

#include <QDialog>

class QComboBox;
class QLineEdit;
class QRadioButton;

namespace velmora {

class MappingEditor;
class UserDialogs;

class MappingWindow : public QDialog {
    Q_OBJECT
public:
    MappingWindow(MappingEditor& presenter, UserDialogs& dialogs, QWidget* parent = nullptr);

    void reject() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Refresh();
    template <typename Action> void Forward(Action&& action);

    MappingEditor& presenter_;
    UserDialogs& dialogs_;
    QLineEdit* name_;
    QComboBox* objects_;
    QLineEdit* index_;
    QLineEdit* subIndex_;
    QLineEdit* length_;
    QLineEdit* number_;
    QRadioButton* decimal_;
    QRadioButton* hexadecimal_;
};

} // namespace velmora
