#include "alert_window.h"

#include <QCheckBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QStyle>
#include <QVBoxLayout>

namespace velmora {

bool AlertWindow::ShowAlert(const AlertRequest& request) {
    QWidget* active = parent_ != nullptr ? parent_->window() : nullptr;
    QDialog dialog(active);
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

    dialog.exec();
    return request.ShowsInsertAnyway && insertAnyway->isChecked();
}

} // namespace velmora
