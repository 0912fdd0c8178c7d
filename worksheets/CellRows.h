#pragma once

// Rows of amounts of a table in memory, as calculations want them.

#include <optional>
#include <string_view>
#include <vector>

#include "store/TableCells.h"

namespace zolmara {

/// Amounts of a row, or sums of columns, by position in the table.
using Amounts = std::vector<double>;

/// The row's fields as numbers; what is no number counts as 0.
Amounts AmountsOf(const TableCells& cells, TableCells::Row row);

/// The row on a line that must be there. StoreError that names the place otherwise.
TableCells::Row RequiredRow(const TableCells& cells, Currency line);

/// The position of a field that must be there. StoreError::NoSuchItem otherwise.
int RequiredPosition(const TableCells& cells, std::string_view field);

/// Sets a cell of a line, if it is there. StoreError for what no field can hold.
void SetOnLine(TableCells& cells, Currency line, int position, double amount);
/// The same with what a statement carries into a cell: the number that the text of 15 digits reads
/// as.
void PutOnLine(TableCells& cells, Currency line, int position, double amount);

/// The rows below a line, or all, asked for lines that do not go down. A line that is not among
/// them leaves the amounts those of the line found before, or of the first row.
class CellCursor {
public:
    explicit CellCursor(const TableCells& cells, std::optional<Currency> below = {});

    /// Takes the line's row.
    void Seek(Currency line);
    /// A cell of the row in hand, as a number, by position. StoreError where there is none.
    double Amount(int position) const;

private:
    const TableCells& cells_;
    std::vector<TableCells::Row> rows_;
    std::size_t next_ = 0;
    std::size_t held_ = 0;
};

}  // namespace zolmara
