#pragma once

// The "Modifica nodo in libreria" window: the library's categories and products as the disk
// holds them, a name field for renaming the chosen category or product and for creating a
// category, a target category for moving the chosen product, removals (each asked first by
// the window's logic) and "Aggiorna", which reads the disk again. Every operation shows the
// library as it is afterwards.

#include <string>

#include <QDialog>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTreeWidget;

namespace velmora {

class LibraryManager;
class UserDialogs;

class LibraryManagerWindow : public QDialog {
    Q_OBJECT
public:
    LibraryManagerWindow(LibraryManager& presenter, UserDialogs& dialogs,
                         QWidget* parent = nullptr);

private:
    void ShowLibrary();
    void UpdateButtons();
    void Choose();
    void Rename();
    void CreateCategory();
    void Move();
    void RemoveProduct();
    void RemoveCategory();
    void ReadLibraryAgain();
    // Runs a forwarded operation; when it changed the library, category and product become
    // the chosen item. Then shows the library as it is afterwards.
    template <typename Operation>
    void Forward(Operation operation, std::string category, std::string product);

    LibraryManager& presenter_;
    UserDialogs& dialogs_;
    QTreeWidget* library_;
    QLabel* problems_;
    QLineEdit* name_;
    QComboBox* target_;
    QPushButton* rename_;
    QPushButton* move_;
    QPushButton* removeProduct_;
    QPushButton* removeCategory_;
    // The chosen item by name, so that it stays chosen when the library is read again;
    // product is empty when a category itself is chosen, both when nothing is.
    std::string category_;
    std::string product_;
};

} // namespace velmora
