#include "network_tree_model.h"

#include "model/network.h"
#include "model/transmission_mode.h"
#include "tree/network_tree.h"

namespace velmora {

namespace {

enum IconSlot { kMaster, kNode, kTimeout, kTx, kRx, kPdoOff, kFolder, kParameter };

} // namespace

NetworkTreeModel::NetworkTreeModel(const NetworkTree& tree, const Network& network,
                                   QObject* parent)
    : QAbstractItemModel(parent), tree_(tree), network_(network) {
    icons_[kMaster] = QIcon(":/icons/tree-master.svg");
    icons_[kNode] = QIcon(":/icons/tree-node.svg");
    icons_[kTimeout] = QIcon(":/icons/tree-timeout.svg");
    icons_[kTx] = QIcon(":/icons/tree-pdo-tx.svg");
    icons_[kRx] = QIcon(":/icons/tree-pdo-rx.svg");
    icons_[kPdoOff] = QIcon(":/icons/tree-pdo-off.svg");
    icons_[kFolder] = QIcon(":/icons/tree-folder.svg");
    icons_[kParameter] = QIcon(":/icons/tree-parameter.svg");
}

void NetworkTreeModel::Reset() {
    beginResetModel();
    endResetModel();
}

int NetworkTreeModel::ItemOf(const QModelIndex& index) {
    return index.isValid() ? static_cast<int>(index.internalId()) : -1;
}

QModelIndex NetworkTreeModel::IndexOfItem(int i) const {
    if (i < 0 || i >= tree_.Size()) {
        return {};
    }
    return createIndex(tree_.Item(i).Row, 0, static_cast<quintptr>(i));
}

QModelIndex NetworkTreeModel::index(int row, int column, const QModelIndex& parent) const {
    if (column != 0 || row < 0) {
        return {};
    }
    if (!parent.isValid()) {
        // The invisible root's one child is the configuration's root item.
        return row == 0 && tree_.Size() > 0 ? createIndex(0, 0, quintptr{0}) : QModelIndex();
    }
    const int item = ItemOf(parent);
    if (row >= tree_.ChildCount(item)) {
        return {};
    }
    return createIndex(row, 0, static_cast<quintptr>(tree_.Child(item, row)));
}

QModelIndex NetworkTreeModel::parent(const QModelIndex& child) const {
    const int item = ItemOf(child);
    if (item <= 0 || item >= tree_.Size()) {
        return {};
    }
    return IndexOfItem(tree_.Item(item).Parent);
}

int NetworkTreeModel::rowCount(const QModelIndex& parent) const {
    if (!parent.isValid()) {
        return tree_.Size() > 0 ? 1 : 0;
    }
    const int item = ItemOf(parent);
    return item < tree_.Size() ? tree_.ChildCount(item) : 0;
}

int NetworkTreeModel::columnCount(const QModelIndex&) const {
    return 1;
}

QVariant NetworkTreeModel::data(const QModelIndex& index, int role) const {
    const int item = ItemOf(index);
    if (item < 0 || item >= tree_.Size()) {
        return {};
    }
    switch (role) {
    case Qt::DisplayRole: {
        const std::string_view caption = tree_.Caption(item);
        return QString::fromUtf8(caption.data(), static_cast<qsizetype>(caption.size()));
    }
    case Qt::UserRole: {
        const std::string_view key = tree_.Key(item);
        return QString::fromUtf8(key.data(), static_cast<qsizetype>(key.size()));
    }
    case Qt::DecorationRole:
        return IconFor(item);
    default:
        return {};
    }
}

QIcon NetworkTreeModel::IconFor(int i) const {
    const TreeItem& item = tree_.Item(i);
    switch (item.Kind) {
    case TreeItemKind::Root:
        return icons_[kMaster];
    case TreeItemKind::Node:
        return icons_[kNode];
    case TreeItemKind::Timeout:
        return icons_[kTimeout];
    case TreeItemKind::TxPdo:
    case TreeItemKind::RxPdo: {
        const std::string& mode = network_.NodeAt(item.Slot).PdoAt(item.Index).Settings.Mode;
        if (mode == TransmissionMode::Disabled || TransmissionMode::IsNotConfigured(mode)) {
            return icons_[kPdoOff];
        }
        return icons_[item.Kind == TreeItemKind::TxPdo ? kTx : kRx];
    }
    case TreeItemKind::ParameterFolder:
        return icons_[kFolder];
    case TreeItemKind::Parameter:
        return icons_[kParameter];
    }
    return {};
}

} // namespace velmora
