#pragma once

// The paste dialog ("Incolla Nodo ..."): the prompt with the copied node's product, the number
// of the new node, "OK" and "Annulla".

#include <QDialog>

class QLineEdit;

namespace velmora {

class PasteDialog;
class UserDialogs;

class PasteWindow : public QDialog {
    Q_OBJECT
public:
    PasteWindow(PasteDialog& presenter, UserDialogs& dialogs, QWidget* parent = nullptr);

    // Whether OK changed the network.
    bool NetworkChanged() const { return changed_; }

private:
    void Ok();

    PasteDialog& presenter_;
    UserDialogs& dialogs_;
    QLineEdit* number_;
    bool changed_ = false;
};

} // namespace velmora
