#include "dialog_support.h"

#include "interfaces/user_dialogs.h"

#include <QDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>

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

void ShowText(QLineEdit* field, const std::string& text) {
    const QSignalBlocker blocker(field);
    const QString shown = QString::fromStdString(text);
    if (field->text() != shown) {
        field->setText(shown);
    }
}

std::optional<char32_t> FilteredKey(const QKeyEvent& key, bool withBackspace) {
    if (key.key() == Qt::Key_Backspace) {
        return withBackspace ? std::optional<char32_t>(U'\b') : std::nullopt;
    }
    const QString text = key.text();
    if (!text.isEmpty() && text.at(0).isPrint()) {
        return text.at(0).unicode();
    }
    return std::nullopt;
}

} // namespace velmora
