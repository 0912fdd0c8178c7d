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

int RequiredPosition(const TableCells& cells, std::string_view field) {
    const int position = cells.Position(field);
    if (position >= 0) return position;
    throw StoreError(StoreError::Kind::NoSuchItem,
                     fmt::format("no such column: {} in {}", field, cells.Name()));
}

void SetOnLine(TableCells& cells, Currency line, int position, double amount) {
    const auto row = cells.RowOn(line);
    if (!row) return;
    RowEdit edit(cells, *row);
    edit.Set(position, amount);
    edit.Update();
}

void PutOnLine(TableCells& cells, Currency line, int position, double amount) {
    SetOnLine(cells, line, position, ThroughText(amount));
}

CellCursor::CellCursor(const TableCells& cells, std::optional<Currency> below) : cells_(cells) {
    for (const TableCells::Row row : cells.Rows())
        if (!below || cells.Line(row) < *below) rows_.push_back(row);
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
