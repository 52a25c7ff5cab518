#include "library_tree.h"

#include "dialog_support.h"
#include "library/product_library.h"

#include <QIcon>
#include <QLabel>
#include <QTreeWidget>

namespace velmora {
namespace {

constexpr int kCategoryRole = Qt::UserRole;
constexpr int kProductRole = Qt::UserRole + 1;

QTreeWidgetItem* MakeItem(const QString& text, const QIcon& icon, int category, int product) {
    auto* item = new QTreeWidgetItem(QStringList{text});
    item->setIcon(0, icon);
    item->setData(0, kCategoryRole, category);
    item->setData(0, kProductRole, product);
    return item;
}

} // namespace

void ShowLibrary(QTreeWidget& tree, const LibraryListing& listing) {
    const QIcon folder(":/icons/tree-folder.svg");
    const QIcon product(":/icons/tree-node.svg");
    tree.clear();
    for (std::size_t c = 0; c < listing.Categories.size(); ++c) {
        const LibraryCategory& category = listing.Categories[c];
        QTreeWidgetItem* categoryItem =
            MakeItem(ToQt(category.Name), folder, static_cast<int>(c), -1);
        for (std::size_t p = 0; p < category.Products.size(); ++p) {
            categoryItem->addChild(MakeItem(ToQt(category.Products[p].Name), product,
                                            static_cast<int>(c), static_cast<int>(p)));
        }
        tree.addTopLevelItem(categoryItem);
    }
    tree.expandAll();
}

QTreeWidgetItem* LibraryItem(const QTreeWidget& tree, int category, int product) {
    if (category < 0 || category >= tree.topLevelItemCount()) {
        return nullptr;
    }
    QTreeWidgetItem* categoryItem = tree.topLevelItem(category);
    if (product < 0) {
        return categoryItem;
    }
    return product < categoryItem->childCount() ? categoryItem->child(product) : nullptr;
}

int CategoryOf(const QTreeWidgetItem* item) {
    return item == nullptr ? -1 : item->data(0, kCategoryRole).toInt();
}

int ProductOf(const QTreeWidgetItem* item) {
    return item == nullptr ? -1 : item->data(0, kProductRole).toInt();
}

QString LibraryProblemsText(const LibraryListing& listing) {
    if (listing.Problems.empty()) {
        return {};
    }
    QString text = QObject::tr("Prodotti non leggibili:");
    for (const std::string& problem : listing.Problems) {
        text += "\n" + ToQt(problem);
    }
    return text;
}

QTreeWidget* CreateLibraryTree(QWidget* parent, QSize minimum) {
    auto* tree = new QTreeWidget(parent);
    tree->setObjectName("library");
    tree->setHeaderHidden(true);
    tree->setMinimumSize(minimum);
    return tree;
}

QLabel* CreateProblemsLabel(QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setObjectName("problems");
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

void ShowProblems(QLabel& label, const LibraryListing& listing) {
    const QString problems = LibraryProblemsText(listing);
    label.setText(problems);
    label.setVisible(!problems.isEmpty());
}

} // namespace velmora
