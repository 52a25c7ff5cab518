#include "add_node_window.h"

#include "dialog_support.h"
#include "presenters/add_node_dialog.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>

namespace velmora {

AddNodeWindow::AddNodeWindow(AddNodeDialog& presenter, UserDialogs& dialogs, QWidget* parent)
    : QDialog(parent), presenter_(presenter), dialogs_(dialogs) {
    setObjectName("addNodeWindow");
    setWindowTitle(QString::fromStdString(presenter_.Title()));

    products_ = new QListWidget(this);
    products_->setObjectName("products");
    for (const std::string& product : presenter_.Products()) {
        products_->addItem(QString::fromStdString(product));
    }
    description_ = new QLabel(this);
    description_->setObjectName("description");
    description_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    description_->setMinimumWidth(description_->fontMetrics().horizontalAdvance(QString(28, 'x')));
    number_ = new QLineEdit(this);
    number_->setObjectName("nodeNumber");
    auto* productsLabel = new QLabel(tr("&Prodotto"), this);
    productsLabel->setBuddy(products_);
    auto* numberLabel = new QLabel(tr("&Numero nodo"), this);
    numberLabel->setBuddy(number_);
    auto* ok = new QPushButton(tr("OK"), this);
    ok->setObjectName("ok");
    auto* cancel = new QPushButton(tr("Annulla"), this);
    cancel->setObjectName("cancel");

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(productsLabel);
    auto* productRow = new QHBoxLayout;
    productRow->addWidget(products_);
    productRow->addWidget(description_);
    layout->addLayout(productRow);
    auto* numberRow = new QHBoxLayout;
    numberRow->addWidget(numberLabel);
    numberRow->addWidget(number_);
    layout->addLayout(numberRow);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    layout->addLayout(buttons);

    ClearAutoDefault(this);
    connect(products_, &QListWidget::currentRowChanged, this, [this](int row) {
        RunShowingErrors(dialogs_, [&] { presenter_.SelectProduct(row); });
        Refresh();
    });
    connect(number_, &QLineEdit::textEdited, this,
            [this](const QString& text) { presenter_.NumberText() = text.toStdString(); });
    connect(ok, &QPushButton::clicked, this, &AddNodeWindow::Ok);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    Refresh();
}

void AddNodeWindow::Refresh() {
    const QSignalBlocker listBlocker(products_);
    const QSignalBlocker numberBlocker(number_);
    products_->setCurrentRow(presenter_.SelectedProduct());
    const auto& description = presenter_.Description();
    description_->setText(description ? ToQt(description->Text()) : QString());
    const QString number = QString::fromStdString(presenter_.NumberText());
    if (number_->text() != number) {
        number_->setText(number);
    }
}

void AddNodeWindow::Ok() {
    const auto result = Attempt(dialogs_, [&] { return presenter_.Ok(); });
    if (result && result->Closes) {
        changed_ = result->NetworkChanged;
        accept();
        return;
    }
    Refresh();
}

} // namespace velmora
