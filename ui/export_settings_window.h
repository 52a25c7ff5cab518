#pragma once

// The export settings dialog ("Configurazione"): the maximum number of fast PDOs and "Salva".
// Escape and the window's close button leave the settings as they were.

#include <QDialog>

class QLineEdit;

namespace velmora {

class ExportSettingsDialog;
class UserDialogs;

class ExportSettingsWindow : public QDialog {
    Q_OBJECT
public:
    ExportSettingsWindow(ExportSettingsDialog& presenter, UserDialogs& dialogs,
                         QWidget* parent = nullptr);

private:
    void Save();

    ExportSettingsDialog& presenter_;
    UserDialogs& dialogs_;
    QLineEdit* maxFast_;
};

} // namespace velmora
