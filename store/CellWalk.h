#pragma once

// The rows of a table whose numbers are in memory, in the order of their lines, with texts that
// are not.

#include <functional>
#include <span>
#include <string_view>

#include "store/TableCells.h"

namespace zolmara {

/// The texts of a row, empty for Null. They last until the next row.
using RowTexts = std::span<const std::string_view>;

/// Gives each row of a table, as "ORDER BY" its first field has them: its place among the cells,
/// and its texts in some other fields. All rows are of one moment: StoreError where the table is
/// written to meanwhile. An exception of `onRow` ends the walk.
void WalkLines(Database& db, const TableCells& cells, std::span<const int> textFields,
               const std::function<void(TableCells::Row row, RowTexts texts)>& onRow);

}  // namespace zolmara
