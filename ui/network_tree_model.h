#pragma once

// The network tree as Qt sees it: a read-only item model over the application's NetworkTree,
// reading items on demand (no copy). An index's internal id is the item's position in the
// tree; its key is under Qt::UserRole, its caption exactly as stored under Qt::DisplayRole,
// an icon by item kind (a disabled or unconfigured PDO has an icon of its own).

#include <array>

#include <QAbstractItemModel>
#include <QIcon>

namespace velmora {

class NetworkTree;
struct Network;

class NetworkTreeModel : public QAbstractItemModel {
    Q_OBJECT
public:
    NetworkTreeModel(const NetworkTree& tree, const Network& network, QObject* parent = nullptr);

    // The tree was rebuilt or changed: every index is invalid.
    void Reset();
    // The index of tree item i; an invalid index for i outside the tree.
    QModelIndex IndexOfItem(int i) const;
    // The tree item of index; -1 for an invalid index.
    static int ItemOf(const QModelIndex& index);

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

private:
    QIcon IconFor(int item) const;

    const NetworkTree& tree_;
    const Network& network_;
    std::array<QIcon, 8> icons_;
};

} // namespace velmora
