#pragma once

// The time-out dialog ("Par. di TimeOut su nodo N"): the node's number of repetitions and
// time per repetition, "Ok" to store them and "Annulla" to close without storing.

#include <QDialog>

class QLineEdit;

namespace velmora {

class TimeoutDialog;
class UserDialogs;

class TimeoutWindow : public QDialog {
    Q_OBJECT
public:
    TimeoutWindow(TimeoutDialog& presenter, UserDialogs& dialogs, QWidget* parent = nullptr);

private:
    void Ok();

    TimeoutDialog& presenter_;
    UserDialogs& dialogs_;
    QLineEdit* repetitions_;
    QLineEdit* repetitionTime_;
};

} // namespace velmora
