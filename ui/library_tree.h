#pragma once

// What the two library windows that list the library share: its categories and products as a
// tree, and the text naming the product files that could not be read.

#include <QSize>
#include <QString>

class QLabel;
class QTreeWidget;
class QWidget;
class QTreeWidgetItem;

namespace velmora {

struct LibraryListing;

// Fills tree with listing: a top-level item per category, a child per product, all expanded.
// Each item holds the position of its category and product (-1 for a category's own item).
void ShowLibrary(QTreeWidget& tree, const LibraryListing& listing);
// The item of category and product (-1 for the category's own item), nullptr when none.
QTreeWidgetItem* LibraryItem(const QTreeWidget& tree, int category, int product);
// The positions an item of ShowLibrary holds; {-1, -1} for none.
int CategoryOf(const QTreeWidgetItem* item);
int ProductOf(const QTreeWidgetItem* item);
// "Prodotti non leggibili:" and one "path: reason" line per refused file; empty when none.
QString LibraryProblemsText(const LibraryListing& listing);

// The library's tree view ("library", no header) of at least minimum size.
QTreeWidget* CreateLibraryTree(QWidget* parent, QSize minimum);
// The label ("problems") that names the refused product files, selectable for copying.
QLabel* CreateProblemsLabel(QWidget* parent);
// Shows listing's refused files in label, hidden when there are none.
void ShowProblems(QLabel& label, const LibraryListing& listing);

} // namespace velmora
