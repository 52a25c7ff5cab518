#pragma once

// The "Prendi nodo da libreria" dialog: the library's categories and products, the chosen
// product's details, a node number and a number of copies; "Aggiungi" puts the product on the
// list to insert, "OK" inserts the list (or the chosen product alone) all together.
// "Aggiorna" reads the library again. Refusals come from the dialog's logic; the dialog then
// stays open with the network untouched.

#include <QDialog>

class QLabel;
class QLineEdit;
class QPushButton;
class QTreeWidget;

namespace velmora {

class LibraryInsertDialog;
class UserDialogs;

class LibraryInsertWindow : public QDialog {
    Q_OBJECT
public:
    LibraryInsertWindow(LibraryInsertDialog& presenter, UserDialogs& dialogs,
                        QWidget* parent = nullptr);

    // Whether OK changed the network.
    bool NetworkChanged() const { return changed_; }

private:
    void ShowLibrary();
    void Refresh();
    void Choose();
    void Add();
    void RemoveEntry();
    void ReadLibraryAgain();
    void Ok();

    LibraryInsertDialog& presenter_;
    UserDialogs& dialogs_;
    QTreeWidget* library_;
    QLabel* problems_;
    QLabel* details_;
    QLineEdit* number_;
    QLineEdit* copies_;
    QTreeWidget* entries_;
    QPushButton* removeEntry_;
    bool changed_ = false;
};

} // namespace velmora
