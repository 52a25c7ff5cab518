#include "save_to_library_window.h"

#include "dialog_support.h"
#include "presenters/save_to_library_dialog.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>

namespace velmora {

SaveToLibraryWindow::SaveToLibraryWindow(SaveToLibraryDialog& presenter, UserDialogs& dialogs,
                                         QWidget* parent)
    : QDialog(parent), presenter_(presenter), dialogs_(dialogs) {
    setObjectName("saveToLibraryWindow");
    setWindowTitle(ToQt(SaveToLibraryTexts::Title));
    setWindowIcon(QIcon(":/icons/save-to-library.svg"));

    category_ = new QComboBox(this);
    category_->setObjectName("category");
    category_->setEditable(true);
    category_->setInsertPolicy(QComboBox::NoInsert);
    category_->setMinimumContentsLength(24);
    for (const std::string& category : presenter_.Categories()) {
        category_->addItem(QIcon(":/icons/tree-folder.svg"), ToQt(category));
    }
    category_->lineEdit()->setObjectName("categoryText");
    category_->lineEdit()->setPlaceholderText(tr("nuova categoria"));
    name_ = new QLineEdit(this);
    name_->setObjectName("productName");
    auto* categoryLabel = new QLabel(tr("&Categoria:"), this);
    categoryLabel->setBuddy(category_);
    auto* nameLabel = new QLabel(tr("&Nome prodotto:"), this);
    nameLabel->setBuddy(name_);
    auto* save = new QPushButton(tr("&Salva"), this);
    save->setObjectName("save");
    auto* cancel = new QPushButton(tr("Annulla"), this);
    cancel->setObjectName("cancel");

    auto* grid = new QGridLayout;
    grid->addWidget(categoryLabel, 0, 0);
    grid->addWidget(category_, 0, 1);
    grid->addWidget(nameLabel, 1, 0);
    grid->addWidget(name_, 1, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(save);
    buttons->addWidget(cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(grid);
    layout->addStretch();
    layout->addLayout(buttons);

    ClearAutoDefault(this);
    connect(category_->lineEdit(), &QLineEdit::textEdited, this,
            [this](const QString& text) { presenter_.CategoryText() = text.toStdString(); });
    connect(category_, &QComboBox::activated, this, [this](int item) {
        presenter_.CategoryText() = category_->itemText(item).toStdString();
        Refresh();
    });
    connect(name_, &QLineEdit::textEdited, this,
            [this](const QString& text) { presenter_.NameText() = text.toStdString(); });
    connect(save, &QPushButton::clicked, this, &SaveToLibraryWindow::Save);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    Refresh();
}

void SaveToLibraryWindow::Refresh() {
    const QSignalBlocker categoryBlocker(category_);
    const QSignalBlocker categoryTextBlocker(category_->lineEdit());
    const QSignalBlocker nameBlocker(name_);
    const QString category = ToQt(presenter_.CategoryText());
    category_->setCurrentIndex(category_->findText(category, Qt::MatchExactly));
    if (category_->currentText() != category) {
        category_->setEditText(category);
    }
    const QString name = ToQt(presenter_.NameText());
    if (name_->text() != name) {
        name_->setText(name);
    }
}

void SaveToLibraryWindow::Save() {
    const auto result = Attempt(dialogs_, [&] { return presenter_.Ok(); });
    if (result && result->Closes) {
        accept();
        return;
    }
    Refresh();
}

} // namespace velmora
