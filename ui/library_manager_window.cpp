#include "library_manager_window.h"

#include "dialog_support.h"
#include "library_tree.h"
#include "presenters/library_manager.h"

#include <algorithm>
#include <utility>

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTreeWidget>

namespace velmora {
namespace {

// The positions of category and product in listing; -1 for a name not there (or empty).
std::pair<int, int> Find(const LibraryListing& listing, const std::string& category,
                         const std::string& product) {
    for (std::size_t c = 0; c < listing.Categories.size(); ++c) {
        const LibraryCategory& found = listing.Categories[c];
        if (found.Name != category) {
            continue;
        }
        for (std::size_t p = 0; p < found.Products.size(); ++p) {
            if (!product.empty() && found.Products[p].Name == product) {
                return {static_cast<int>(c), static_cast<int>(p)};
            }
        }
        return {static_cast<int>(c), -1};
    }
    return {-1, -1};
}

} // namespace

LibraryManagerWindow::LibraryManagerWindow(LibraryManager& presenter, UserDialogs& dialogs,
                                           QWidget* parent)
    : QDialog(parent), presenter_(presenter), dialogs_(dialogs) {
    setObjectName("libraryManagerWindow");
    setWindowTitle(ToQt(LibraryManagerTexts::Title));
    setWindowIcon(QIcon(":/icons/edit-library.svg"));

    library_ = CreateLibraryTree(this, {240, 260});
    auto* libraryLabel = new QLabel(tr("&Libreria:"), this);
    libraryLabel->setBuddy(library_);
    problems_ = CreateProblemsLabel(this);

    name_ = new QLineEdit(this);
    name_->setObjectName("name");
    auto* nameLabel = new QLabel(tr("&Nome:"), this);
    nameLabel->setBuddy(name_);
    rename_ = new QPushButton(tr("&Rinomina"), this);
    rename_->setObjectName("rename");
    auto* newCategory = new QPushButton(tr("Nuova &categoria"), this);
    newCategory->setObjectName("newCategory");
    target_ = new QComboBox(this);
    target_->setObjectName("target");
    target_->setMinimumContentsLength(16);
    auto* targetLabel = new QLabel(tr("&Sposta in:"), this);
    targetLabel->setBuddy(target_);
    move_ = new QPushButton(tr("S&posta"), this);
    move_->setObjectName("move");
    removeProduct_ = new QPushButton(tr("&Elimina prodotto"), this);
    removeProduct_->setObjectName("removeProduct");
    removeCategory_ = new QPushButton(tr("Rimuovi categoria &vuota"), this);
    removeCategory_->setObjectName("removeCategory");
    auto* refresh = new QPushButton(tr("A&ggiorna"), this);
    refresh->setObjectName("refresh");
    auto* close = new QPushButton(tr("Chiudi"), this);
    close->setObjectName("close");

    auto* left = new QVBoxLayout;
    left->addWidget(libraryLabel);
    left->addWidget(library_, 1);
    left->addWidget(problems_);
    auto* grid = new QGridLayout;
    grid->addWidget(nameLabel, 0, 0);
    grid->addWidget(name_, 0, 1);
    grid->addWidget(rename_, 1, 1);
    grid->addWidget(newCategory, 2, 1);
    grid->addWidget(targetLabel, 3, 0);
    grid->addWidget(target_, 3, 1);
    grid->addWidget(move_, 4, 1);
    grid->setRowMinimumHeight(5, 12);
    grid->addWidget(removeProduct_, 6, 1);
    grid->addWidget(removeCategory_, 7, 1);
    auto* right = new QVBoxLayout;
    right->addLayout(grid);
    right->addStretch();
    auto* columns = new QHBoxLayout;
    columns->addLayout(left, 1);
    columns->addLayout(right);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(refresh);
    buttons->addStretch();
    buttons->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(columns);
    layout->addLayout(buttons);

    ClearAutoDefault(this);
    connect(library_, &QTreeWidget::currentItemChanged, this, &LibraryManagerWindow::Choose);
    connect(rename_, &QPushButton::clicked, this, &LibraryManagerWindow::Rename);
    connect(newCategory, &QPushButton::clicked, this, &LibraryManagerWindow::CreateCategory);
    connect(move_, &QPushButton::clicked, this, &LibraryManagerWindow::Move);
    connect(removeProduct_, &QPushButton::clicked, this, &LibraryManagerWindow::RemoveProduct);
    connect(removeCategory_, &QPushButton::clicked, this, &LibraryManagerWindow::RemoveCategory);
    connect(refresh, &QPushButton::clicked, this, &LibraryManagerWindow::ReadLibraryAgain);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    ShowLibrary();
}

void LibraryManagerWindow::ShowLibrary() {
    const LibraryListing& listing = presenter_.Library();
    const auto [category, product] = Find(listing, category_, product_);
    if (category < 0) {
        category_.clear();
    }
    if (product < 0) {
        product_.clear();
    }
    {
        const QSignalBlocker blocker(library_);
        velmora::ShowLibrary(*library_, listing);
        library_->setCurrentItem(LibraryItem(*library_, category, product));
    }
    {
        const QSignalBlocker blocker(target_);
        const QString target = target_->currentText();
        target_->clear();
        for (const LibraryCategory& found : listing.Categories) {
            target_->addItem(QIcon(":/icons/tree-folder.svg"), ToQt(found.Name));
        }
        target_->setCurrentIndex(std::max(0, target_->findText(target, Qt::MatchExactly)));
    }
    ShowProblems(*problems_, listing);
    UpdateButtons();
}

void LibraryManagerWindow::UpdateButtons() {
    rename_->setEnabled(!category_.empty());
    move_->setEnabled(!product_.empty() && target_->count() > 0);
    removeProduct_->setEnabled(!product_.empty());
    removeCategory_->setEnabled(!category_.empty() && product_.empty());
}

void LibraryManagerWindow::Choose() {
    const QTreeWidgetItem* item = library_->currentItem();
    const LibraryListing& listing = presenter_.Library();
    const int category = CategoryOf(item);
    const int product = ProductOf(item);
    category_.clear();
    product_.clear();
    if (category >= 0) {
        const LibraryCategory& chosen = listing.Categories[static_cast<std::size_t>(category)];
        category_ = chosen.Name;
        if (product >= 0) {
            product_ = chosen.Products[static_cast<std::size_t>(product)].Name;
        }
    }
    const QSignalBlocker blocker(name_);
    name_->setText(ToQt(product_.empty() ? category_ : product_));
    UpdateButtons();
}

template <typename Operation>
void LibraryManagerWindow::Forward(Operation operation, std::string category,
                                   std::string product) {
    if (Attempt(dialogs_, operation).value_or(false)) {
        category_ = std::move(category);
        product_ = std::move(product);
        const QSignalBlocker blocker(name_);
        name_->setText(ToQt(product_.empty() ? category_ : product_));
    }
    ShowLibrary();
}

void LibraryManagerWindow::Rename() {
    const std::string newName = name_->text().toStdString();
    if (product_.empty()) {
        Forward([&] { return presenter_.RenameCategory(category_, newName); }, newName, "");
    } else {
        Forward([&] { return presenter_.RenameProduct(category_, product_, newName); }, category_,
                newName);
    }
}

void LibraryManagerWindow::CreateCategory() {
    const std::string name = name_->text().toStdString();
    Forward([&] { return presenter_.CreateCategory(name); }, name, "");
}

void LibraryManagerWindow::Move() {
    const std::string target = target_->currentText().toStdString();
    Forward([&] { return presenter_.MoveProduct(category_, product_, target); }, target, product_);
}

void LibraryManagerWindow::RemoveProduct() {
    Forward([&] { return presenter_.RemoveProduct(category_, product_); }, category_, "");
}

void LibraryManagerWindow::RemoveCategory() {
    Forward([&] { return presenter_.RemoveCategory(category_); }, "", "");
}

void LibraryManagerWindow::ReadLibraryAgain() {
    RunShowingErrors(dialogs_, [&] { presenter_.Refresh(); });
    ShowLibrary();
}

} // namespace velmora
