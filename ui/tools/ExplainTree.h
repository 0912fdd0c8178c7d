#pragma once

#include <QAbstractItemModel>
#include <memory>
#include <optional>
#include <vector>

#include "worksheets/Explain.h"

namespace zolmara::ui {

/// What an explanation's tree goes on with: the cells that a cell comes from, or those that depend
/// on it.
enum class Direction { From, Uses };

/// The tree of an explanation: the cell at its root, below each cell those that it goes on with.
/// They are asked for when a branch is opened, and a row's figures when it is looked at.
class ExplainTree : public QAbstractItemModel {
public:
    enum Column { kCell, kTitle, kValue, kKind, kColumns };

    explicit ExplainTree(QObject* parent = nullptr);
    ~ExplainTree() override;

    /// The open CRF as it stands now, from this cell on; nothing without a cell.
    void Show(const std::optional<CellRef>& cell, Direction direction);
    const std::optional<CellRef>& Root() const { return shown_; }
    Direction Way() const { return direction_; }

    /// The cell of a row; none for no row.
    std::optional<CellRef> CellAt(const QModelIndex& index) const;
    /// All that is told of a cell.
    Explanation Told(const CellRef& cell);

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    bool hasChildren(const QModelIndex& parent = {}) const override;
    bool canFetchMore(const QModelIndex& parent) const override;
    void fetchMore(const QModelIndex& parent) override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

private:
    struct Node;
    Node* NodeAt(const QModelIndex& index) const;
    bool Opens(const Node& node) const;
    QVariant Text(Node& node, int column) const;

    std::unique_ptr<Explainer> explainer_;
    std::unique_ptr<Node> root_;
    std::optional<CellRef> shown_;
    Direction direction_ = Direction::From;
};

/// A stored value as explanations show it.
QString ShownValue(const Variant& value);

}  // namespace zolmara::ui
