#include "ui/tools/ListingModel.h"

#include "core/Globals.h"
#include "ui/main/QtText.h"

namespace zolmara::ui {

std::string ShownText(const Variant& value, Shown how) {
    if (how != Shown::Amount || !value.IsNumber()) return Text(value);
    // The commas of the whole part, the decimals as they are.
    const std::string plain = NumberText(value.Number());
    const std::size_t point = std::min(plain.find('.'), plain.size());
    std::string text = plain;
    const std::size_t first = plain.starts_with('-') ? 1 : 0;
    for (std::size_t at = point; at > first + 3;) text.insert(at -= 3, ",");
    return text;
}

void ListingModel::Set(std::vector<Column> columns, Rows rows) {
    beginResetModel();
    columns_ = std::move(columns);
    rows_ = std::move(rows);
    endResetModel();
}

void ListingModel::SetCell(int row, int column, const Variant& value) {
    rows_.at(static_cast<std::size_t>(row)).at(static_cast<std::size_t>(column)) = value;
    emit dataChanged(index(row, column), index(row, column));
}

int ListingModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int ListingModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QVariant ListingModel::data(const QModelIndex& index, int role) const {
    const auto column = static_cast<std::size_t>(index.column());
    const Variant& value = Row(index.row()).at(column);
    if (role == Qt::DisplayRole) return Lines(ShownText(value, columns_.at(column).How));
    if (role == Qt::TextAlignmentRole)
        return QVariant(Qt::AlignVCenter | (value.IsNumber() ? Qt::AlignRight : Qt::AlignLeft));
    return {};
}

QVariant ListingModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    return Q(columns_.at(static_cast<std::size_t>(section)).Head);
}

}  // namespace zolmara::ui
