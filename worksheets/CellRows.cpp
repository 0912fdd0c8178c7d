#include "worksheets/CellRows.h"

#include <fmt/format.h>

#include "core/Globals.h"

namespace zolmara {

Amounts AmountsOf(const TableCells& cells, TableCells::Row row) {
    Amounts amounts(static_cast<std::size_t>(cells.FieldCount()));
    for (int i = 0; i < cells.FieldCount(); ++i)
        amounts[static_cast<std::size_t>(i)] = cells.Amount(row, i);
    return amounts;
}

TableCells::Row RequiredRow(const TableCells& cells, Currency line) {
    if (const auto row = cells.RowOn(line)) return *row;
    throw StoreError(StoreError::Kind::Other,
                     fmt::format("Worksheet {} has no line {}.", cells.Name(), NumberText(line)));
}

CellCursor::CellCursor(const TableCells& cells, Currency below) : cells_(cells) {
    for (const TableCells::Row row : cells.Rows())
        if (cells.Line(row) < below) rows_.push_back(row);
}

void CellCursor::Seek(Currency line) {
    while (next_ < rows_.size() && cells_.Line(rows_[next_]) < line) ++next_;
    if (next_ < rows_.size() && cells_.Line(rows_[next_]) == line) held_ = next_;
}

double CellCursor::Amount(int position) const {
    if (rows_.empty() || position >= cells_.FieldCount()) {
        throw StoreError(
            StoreError::Kind::Other,
            fmt::format("Worksheet {} lacks a line or column to read.", cells_.Name()));
    }
    return cells_.Amount(rows_[held_], position);
}

}  // namespace zolmara
