#include "qt_user_dialogs.h"

#include <QFileDialog>
#include <QMessageBox>
#include <QStringList>

namespace velmora {

namespace {

QString Q(const std::string& text) {
    return QString::fromStdString(text);
}

} // namespace

QString FilterString(const std::vector<FileFilter>& filters) {
    QStringList parts;
    for (const FileFilter& filter : filters) {
        QString caption = Q(filter.Caption);
        // Qt reads the patterns from the parentheses; a caption without them gets its own.
        if (!caption.contains('(')) {
            caption += " (" + Q(filter.Pattern) + ")";
        }
        parts << caption;
    }
    return parts.join(";;");
}

void QtUserDialogs::Inform(const std::string& title, const std::string& text) {
    QMessageBox box(QMessageBox::Information, Q(title), Q(text), QMessageBox::Ok, parent_);
    box.exec();
}

void QtUserDialogs::ShowError(const std::string& text) {
    QMessageBox box(QMessageBox::Warning, QObject::tr("Errore"), Q(text), QMessageBox::Ok,
                    parent_);
    box.exec();
}

bool QtUserDialogs::AskYesNo(const std::string& title, const std::string& text) {
    QMessageBox box(QMessageBox::Information, Q(title), Q(text),
                    QMessageBox::Yes | QMessageBox::No, parent_);
    box.setDefaultButton(QMessageBox::Yes);
    box.setEscapeButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes;
}

std::optional<std::string>
QtUserDialogs::ChooseFileToOpen(const std::string& title, const std::vector<FileFilter>& filters) {
    const QString path =
        QFileDialog::getOpenFileName(parent_, Q(title), QString(), FilterString(filters));
    if (path.isEmpty()) {
        return std::nullopt;
    }
    return path.toStdString();
}

std::optional<std::string>
QtUserDialogs::ChooseFileToSave(const std::string& title, const std::vector<FileFilter>& filters) {
    const QString path =
        QFileDialog::getSaveFileName(parent_, Q(title), QString(), FilterString(filters));
    if (path.isEmpty()) {
        return std::nullopt;
    }
    return path.toStdString();
}

} // namespace velmora
