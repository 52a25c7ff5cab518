#pragma once

// The "Salva nodo in libreria" dialog: the category (one of the library's, or a new name that
// creates its folder), the product name, "Salva" and "Annulla". Refusals and the question
// before replacing a product come from the dialog's logic; the dialog then stays open.

#include <QDialog>

class QComboBox;
class QLineEdit;

namespace velmora {

class SaveToLibraryDialog;
class UserDialogs;

class SaveToLibraryWindow : public QDialog {
    Q_OBJECT
public:
    SaveToLibraryWindow(SaveToLibraryDialog& presenter, UserDialogs& dialogs,
                        QWidget* parent = nullptr);

private:
    void Refresh();
    void Save();

    SaveToLibraryDialog& presenter_;
    UserDialogs& dialogs_;
    QComboBox* category_;
    QLineEdit* name_;
};

} // namespace velmora
