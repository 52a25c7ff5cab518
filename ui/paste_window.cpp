#include "paste_window.h"

#include "dialog_support.h"
#include "presenters/paste_dialog.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>

namespace velmora {

PasteWindow::PasteWindow(PasteDialog& presenter, UserDialogs& dialogs, QWidget* parent)
    : QDialog(parent), presenter_(presenter), dialogs_(dialogs) {
    setObjectName("pasteWindow");
    setWindowTitle(ToQt(presenter_.Title()));

    number_ = new QLineEdit(QString::fromStdString(presenter_.NumberText()), this);
    number_->setObjectName("nodeNumber");
    auto* prompt = new QLabel(QString::fromStdString(presenter_.Prompt()), this);
    prompt->setObjectName("prompt");
    prompt->setBuddy(number_);
    auto* ok = new QPushButton(tr("OK"), this);
    ok->setObjectName("ok");
    auto* cancel = new QPushButton(tr("Annulla"), this);
    cancel->setObjectName("cancel");

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(prompt);
    layout->addWidget(number_);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    layout->addLayout(buttons);

    ClearAutoDefault(this);
    connect(number_, &QLineEdit::textEdited, this,
            [this](const QString& text) { presenter_.NumberText() = text.toStdString(); });
    connect(ok, &QPushButton::clicked, this, &PasteWindow::Ok);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

void PasteWindow::Ok() {
    const auto result = Attempt(dialogs_, [&] { return presenter_.Ok(); });
    if (result && result->Closes) {
        changed_ = result->NetworkChanged;
        accept();
        return;
    }
    const QSignalBlocker blocker(number_);
    number_->setText(QString::fromStdString(presenter_.NumberText()));
}

} // namespace velmora
