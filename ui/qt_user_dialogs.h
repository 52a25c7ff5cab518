#pragma once

// The message boxes and file dialogs of the window: information-icon message boxes with the
// system's titles and texts, an explicit Yes/No box (QMessageBox::question would show the
// question icon), and Qt's open and save dialogs with the given filters and no default suffix.

#include "interfaces/user_dialogs.h"

class QString;
class QWidget;

namespace velmora {

class QtUserDialogs : public UserDialogs {
public:
    // parent: the window the boxes are centred on; may change later with SetParent.
    explicit QtUserDialogs(QWidget* parent = nullptr) : parent_(parent) {}
    void SetParent(QWidget* parent) { parent_ = parent; }

    void Inform(const std::string& title, const std::string& text) override;
    void ShowError(const std::string& text) override;
    bool AskYesNo(const std::string& title, const std::string& text) override;
    std::optional<std::string> ChooseFileToOpen(const std::string& title,
                                                const std::vector<FileFilter>& filters) override;
    std::optional<std::string> ChooseFileToSave(const std::string& title,
                                                const std::vector<FileFilter>& filters) override;

private:
    QWidget* parent_;
};

// "tipo di file (*.nodi);;All Files (*.*)": the captions as they stand, one per filter.
QString FilterString(const std::vector<FileFilter>& filters);

} // namespace velmora
