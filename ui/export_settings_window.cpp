#include "export_settings_window.h"

#include "dialog_support.h"
#include "presenters/export_settings_dialog.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace velmora {

ExportSettingsWindow::ExportSettingsWindow(ExportSettingsDialog& presenter, UserDialogs& dialogs,
                                           QWidget* parent)
    : QDialog(parent), presenter_(presenter), dialogs_(dialogs) {
    setObjectName("exportSettingsWindow");
    setWindowTitle(tr("Configurazione"));

    maxFast_ = new QLineEdit(QString::fromStdString(presenter_.MaxFastPdoText()), this);
    maxFast_->setObjectName("maxFastPdo");
    auto* label = new QLabel(WithAccessKey(ExportSettingsTexts::MaxFastLabel), this);
    label->setBuddy(maxFast_);
    auto* save = new QPushButton(ToQt(ExportSettingsTexts::SaveButton), this);
    save->setObjectName("save");

    auto* row = new QHBoxLayout;
    row->addWidget(label);
    row->addWidget(maxFast_);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(save);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(row);
    layout->addLayout(buttons);

    ClearAutoDefault(this);
    connect(save, &QPushButton::clicked, this, &ExportSettingsWindow::Save);
}

void ExportSettingsWindow::Save() {
    if (RunShowingErrors(dialogs_, [&] { presenter_.Save(maxFast_->text().toStdString()); })) {
        accept();
    }
}

} // namespace velmora
