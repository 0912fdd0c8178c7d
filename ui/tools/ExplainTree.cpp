#include "ui/tools/ExplainTree.h"

#include "core/Globals.h"
#include "forms/ExplainByForm.h"
#include "store/Dao.h"
#include "ui/main/QtText.h"

namespace zolmara::ui {

struct ExplainTree::Node {
    CellRef Cell;
    Node* Parent = nullptr;
    int Row = 0;
    bool Opened = false;
    std::vector<std::unique_ptr<Node>> Children = {};
    std::optional<Explanation> Glance = {};
};

QString ShownValue(const Variant& value) {
    if (value.IsNull()) return {};
    return Q(value.IsNumber() ? Figure(value.Number()) : Text(value)).simplified();
}

ExplainTree::ExplainTree(QObject* parent)
    : QAbstractItemModel(parent), explainer_(std::make_unique<Explainer>()) {}
ExplainTree::~ExplainTree() = default;

void ExplainTree::Show(const std::optional<CellRef>& cell, Direction direction) {
    beginResetModel();
    explainer_ = std::make_unique<Explainer>();
    shown_ = cell;
    direction_ = direction;
    root_ = cell ? std::make_unique<Node>(Node{.Cell = *cell}) : nullptr;
    endResetModel();
}

// --- Its shape -----------------------------------------------------------------------------

ExplainTree::Node* ExplainTree::NodeAt(const QModelIndex& index) const {
    return index.isValid() ? static_cast<Node*>(index.internalPointer()) : nullptr;
}

std::optional<CellRef> ExplainTree::CellAt(const QModelIndex& index) const {
    const Node* const node = NodeAt(index);
    return node ? std::optional(node->Cell) : std::nullopt;
}

QModelIndex ExplainTree::index(int row, int column, const QModelIndex& parent) const {
    if (!hasIndex(row, column, parent)) return {};
    const Node* const above = NodeAt(parent);
    const auto& node = above ? above->Children[static_cast<std::size_t>(row)] : root_;
    return createIndex(row, column, node.get());
}

QModelIndex ExplainTree::parent(const QModelIndex& index) const {
    const Node* const node = NodeAt(index);
    if (!node || !node->Parent) return {};
    return createIndex(node->Parent->Row, 0, node->Parent);
}

int ExplainTree::rowCount(const QModelIndex& parent) const {
    if (parent.column() > 0) return 0;
    const Node* const node = NodeAt(parent);
    if (!node) return root_ ? 1 : 0;
    return static_cast<int>(node->Children.size());
}

int ExplainTree::columnCount(const QModelIndex& /*parent*/) const { return kColumns; }

/// Whether anything depends on a cell is known only when it has been asked.
bool ExplainTree::Opens(const Node& node) const {
    if (node.Opened) return !node.Children.empty();
    return direction_ == Direction::Uses || StateOf(node.Cell) == CellState::Computed;
}

bool ExplainTree::hasChildren(const QModelIndex& parent) const {
    if (parent.column() > 0) return false;
    const Node* const node = NodeAt(parent);
    return node ? Opens(*node) : static_cast<bool>(root_);
}

bool ExplainTree::canFetchMore(const QModelIndex& parent) const {
    const Node* const node = NodeAt(parent);
    return node && !node->Opened && Opens(*node);
}

void ExplainTree::fetchMore(const QModelIndex& parent) {
    Node* const node = NodeAt(parent);
    if (!node || node->Opened) return;
    std::vector<CellRef> cells;
    try {
        cells = direction_ == Direction::Uses ? explainer_->Uses(node->Cell)
                                              : explainer_->Explain(node->Cell).Inputs;
    } catch (const StoreError&) {
        // The CRF is on its way out; the tree goes with it.
    }
    node->Opened = true;
    if (cells.empty()) return;
    beginInsertRows(parent, 0, static_cast<int>(cells.size()) - 1);
    for (int row = 0; CellRef & cell : cells)
        node->Children.push_back(
            std::make_unique<Node>(Node{.Cell = std::move(cell), .Parent = node, .Row = row++}));
    endInsertRows();
}

Explanation ExplainTree::Told(const CellRef& cell) {
    Explanation told = explainer_->Explain(cell);
    TellByForm(told);
    return told;
}

// --- What it shows -------------------------------------------------------------------------

QVariant ExplainTree::Text(Node& node, int column) const {
    if (!node.Glance) {
        node.Glance = explainer_->Glance(node.Cell);
        TellByForm(*node.Glance);
    }
    switch (column) {
        case kCell:
            return Q(node.Glance->Name);
        case kTitle:
            return Q(node.Glance->Title);
        case kValue:
            return ShownValue(node.Glance->Value);
        default:
            return Q(NameOf(node.Glance->Kind));
    }
}

QVariant ExplainTree::data(const QModelIndex& index, int role) const {
    Node* const node = NodeAt(index);
    if (!node) return {};
    try {
        if (role == Qt::DisplayRole) return Text(*node, index.column());
        if (role == Qt::ToolTipRole) {
            Text(*node, kCell);
            return Q(node->Glance->Rule);
        }
    } catch (const StoreError&) {
        return {};
    }
    if (role == Qt::TextAlignmentRole && index.column() == kValue)
        return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    return {};
}

QVariant ExplainTree::headerData(int section, Qt::Orientation orientation, int role) const {
    static constexpr const char* kTitles[] = {"Cell", "Column", "Value", "Kind"};
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    return QString(kTitles[section]);
}

}  // namespace zolmara::ui
