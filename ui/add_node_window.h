#pragma once

// The add-node dialog ("Aggiungi nodo", or "Modifica nodo" on an existing node): the products
// (the EDS files of the EDS folder, without extension) with the chosen one's vendor, name and
// PDO counts beside them, the node number, "OK" and "Annulla".
// Refusals come from the dialog's logic through the alert; the dialog then stays open.

#include <QDialog>

class QLabel;
class QLineEdit;
class QListWidget;

namespace velmora {

class AddNodeDialog;
class UserDialogs;

class AddNodeWindow : public QDialog {
    Q_OBJECT
public:
    AddNodeWindow(AddNodeDialog& presenter, UserDialogs& dialogs, QWidget* parent = nullptr);

    // Whether OK changed the network.
    bool NetworkChanged() const { return changed_; }

private:
    void Refresh();
    void Ok();

    AddNodeDialog& presenter_;
    UserDialogs& dialogs_;
    QListWidget* products_;
    QLabel* description_;
    QLineEdit* number_;
    bool changed_ = false;
};

} // namespace velmora
