#include "alert_window.h"

#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QStyle>
#include <QVBoxLayout>

namespace velmora {

std::unique_ptr<QDialog> CreateAlertDialog(const AlertRequest& request, QWidget* parent) {
    auto shown = std::make_unique<QDialog>(parent);
    QDialog& dialog = *shown;
    // The window that raised it may be disabled while the alert is open.
    dialog.setEnabled(true);
    dialog.setObjectName("alertWindow");
    dialog.setWindowTitle(QObject::tr("Errore"));
    dialog.setModal(true);

    auto* layout = new QVBoxLayout(&dialog);
    auto* line1 = new QLabel(QString::fromStdString(request.Line1), &dialog);
    line1->setObjectName("line1");
    auto* line2 = new QLabel(QString::fromStdString(request.Line2), &dialog);
    line2->setObjectName("line2");
    layout->addWidget(line1);
    layout->addWidget(line2);
    auto* insertAnyway = new QCheckBox(QObject::tr("Inserisci comunque il Cob-Id"), &dialog);
    insertAnyway->setObjectName("insertAnyway");
    insertAnyway->setVisible(request.ShowsInsertAnyway);
    layout->addWidget(insertAnyway);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, &dialog);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    layout->addWidget(buttons);

    return shown;
}

bool AlertWindow::ShowAlert(const AlertRequest& request) {
    // Over the dialog that raised it when one is open, else over the window.
    QWidget* active = QApplication::activeModalWidget();
    if (active == nullptr && parent_ != nullptr) {
        active = parent_->window();
    }
    const std::unique_ptr<QDialog> dialog = CreateAlertDialog(request, active);
    dialog->exec();
    return request.ShowsInsertAnyway && dialog->findChild<QCheckBox*>("insertAnyway")->isChecked();
}

} // namespace velmora
