#include "library_insert_window.h"

#include "dialog_support.h"
#include "library_tree.h"
#include "presenters/library_insert_dialog.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTreeWidget>

namespace velmora {

LibraryInsertWindow::LibraryInsertWindow(LibraryInsertDialog& presenter, UserDialogs& dialogs,
                                         QWidget* parent)
    : QDialog(parent), presenter_(presenter), dialogs_(dialogs) {
    setObjectName("libraryInsertWindow");
    setWindowTitle(ToQt(LibraryInsertTexts::Title));
    setWindowIcon(QIcon(":/icons/add-from-library.svg"));

    library_ = CreateLibraryTree(this, {220, 240});
    auto* libraryLabel = new QLabel(tr("&Libreria:"), this);
    libraryLabel->setBuddy(library_);
    problems_ = CreateProblemsLabel(this);

    details_ = new QLabel(this);
    details_->setObjectName("details");
    details_->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    details_->setMinimumWidth(200);
    number_ = new QLineEdit(this);
    number_->setObjectName("nodeNumber");
    copies_ = new QLineEdit(this);
    copies_->setObjectName("copies");
    auto* numberLabel = new QLabel(tr("&Numero nodo:"), this);
    numberLabel->setBuddy(number_);
    auto* copiesLabel = new QLabel(tr("&Copie:"), this);
    copiesLabel->setBuddy(copies_);
    auto* add = new QPushButton(tr("&Aggiungi alla lista"), this);
    add->setObjectName("add");

    entries_ = new QTreeWidget(this);
    entries_->setObjectName("entries");
    entries_->setRootIsDecorated(false);
    entries_->setHeaderLabels({tr("Categoria"), tr("Prodotto"), tr("Nodo"), tr("Copie")});
    entries_->header()->setStretchLastSection(false);
    entries_->header()->setSectionResizeMode(QHeaderView::Stretch);
    entries_->header()->setSectionResizeMode(2, QHeaderView::ResizeToContents);
    entries_->header()->setSectionResizeMode(3, QHeaderView::ResizeToContents);
    entries_->setMinimumWidth(300);
    entries_->setMinimumHeight(110);
    auto* entriesLabel = new QLabel(tr("&Da inserire:"), this);
    entriesLabel->setBuddy(entries_);
    removeEntry_ = new QPushButton(tr("&Togli dalla lista"), this);
    removeEntry_->setObjectName("removeEntry");

    auto* refresh = new QPushButton(tr("A&ggiorna"), this);
    refresh->setObjectName("refresh");
    auto* ok = new QPushButton(tr("OK"), this);
    ok->setObjectName("ok");
    auto* cancel = new QPushButton(tr("Annulla"), this);
    cancel->setObjectName("cancel");

    auto* left = new QVBoxLayout;
    left->addWidget(libraryLabel);
    left->addWidget(library_, 1);
    left->addWidget(problems_);
    auto* fields = new QFormLayout;
    fields->addRow(numberLabel, number_);
    fields->addRow(copiesLabel, copies_);
    auto* addRow = new QHBoxLayout;
    addRow->addStretch();
    addRow->addWidget(add);
    auto* removeRow = new QHBoxLayout;
    removeRow->addStretch();
    removeRow->addWidget(removeEntry_);
    auto* right = new QVBoxLayout;
    right->addWidget(details_, 1);
    right->addLayout(fields);
    right->addLayout(addRow);
    right->addWidget(entriesLabel);
    right->addWidget(entries_, 1);
    right->addLayout(removeRow);
    auto* columns = new QHBoxLayout;
    columns->addLayout(left, 1);
    columns->addLayout(right, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(refresh);
    buttons->addStretch();
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(columns);
    layout->addLayout(buttons);

    ClearAutoDefault(this);
    connect(library_, &QTreeWidget::currentItemChanged, this, &LibraryInsertWindow::Choose);
    connect(number_, &QLineEdit::textEdited, this,
            [this](const QString& text) { presenter_.NumberText() = text.toStdString(); });
    connect(copies_, &QLineEdit::textEdited, this,
            [this](const QString& text) { presenter_.CopiesText() = text.toStdString(); });
    connect(entries_, &QTreeWidget::itemSelectionChanged, this,
            [this] { removeEntry_->setEnabled(!entries_->selectedItems().isEmpty()); });
    connect(add, &QPushButton::clicked, this, &LibraryInsertWindow::Add);
    connect(removeEntry_, &QPushButton::clicked, this, &LibraryInsertWindow::RemoveEntry);
    connect(refresh, &QPushButton::clicked, this, &LibraryInsertWindow::ReadLibraryAgain);
    connect(ok, &QPushButton::clicked, this, &LibraryInsertWindow::Ok);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    ShowLibrary();
}

// The listing changes only when the library is read again: the tree is rebuilt then, and
// Refresh follows the rest of the state.
void LibraryInsertWindow::ShowLibrary() {
    {
        const QSignalBlocker blocker(library_);
        velmora::ShowLibrary(*library_, presenter_.Library());
    }
    ShowProblems(*problems_, presenter_.Library());
    Refresh();
}

void LibraryInsertWindow::Refresh() {
    {
        const QSignalBlocker blocker(library_);
        library_->setCurrentItem(
            LibraryItem(*library_, presenter_.SelectedCategory(), presenter_.SelectedProduct()));
    }
    details_->setText(ToQt(presenter_.Details()));
    const QSignalBlocker numberBlocker(number_);
    const QSignalBlocker copiesBlocker(copies_);
    const QString number = ToQt(presenter_.NumberText());
    if (number_->text() != number) {
        number_->setText(number);
    }
    const QString copies = ToQt(presenter_.CopiesText());
    if (copies_->text() != copies) {
        copies_->setText(copies);
    }
    const QSignalBlocker entriesBlocker(entries_);
    entries_->clear();
    for (const LibraryInsertEntry& entry : presenter_.Entries()) {
        entries_->addTopLevelItem(new QTreeWidgetItem(
            QStringList{ToQt(entry.Category), ToQt(entry.Product), QString::number(entry.Number),
                        QString::number(entry.Copies)}));
    }
    removeEntry_->setEnabled(false);
}

void LibraryInsertWindow::Choose() {
    const QTreeWidgetItem* item = library_->currentItem();
    RunShowingErrors(dialogs_, [&] { presenter_.Select(CategoryOf(item), ProductOf(item)); });
    Refresh();
}

void LibraryInsertWindow::Add() {
    Attempt(dialogs_, [&] { return presenter_.Add(); });
    Refresh();
}

void LibraryInsertWindow::RemoveEntry() {
    const int row = entries_->indexOfTopLevelItem(entries_->currentItem());
    RunShowingErrors(dialogs_, [&] { presenter_.RemoveEntry(row); });
    Refresh();
}

void LibraryInsertWindow::ReadLibraryAgain() {
    RunShowingErrors(dialogs_, [&] { presenter_.Refresh(); });
    ShowLibrary();
}

void LibraryInsertWindow::Ok() {
    const auto result = Attempt(dialogs_, [&] { return presenter_.Ok(); });
    if (result && result->Closes) {
        changed_ = result->NetworkChanged;
        accept();
        return;
    }
    Refresh();
}

} // namespace velmora
