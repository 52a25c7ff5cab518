#include "dialog_support.h"

#include "interfaces/user_dialogs.h"

#include <QDialog>
#include <QPushButton>

namespace velmora {

void ClearAutoDefault(QWidget* root) {
    for (QPushButton* button : root->findChildren<QPushButton*>()) {
        button->setAutoDefault(false);
        button->setDefault(false);
    }
}

void EnableOverParent(QDialog& dialog) {
    dialog.setEnabled(true);
}

void ShowRuntimeError(UserDialogs& dialogs, const RuntimeError& error) {
    dialogs.ShowError(error.what());
}

} // namespace velmora
