#pragma once

// The columns that cost centers have in the allocation tables. The schedules address them by
// position, in the order of their lines and ahead of the closing total, so a new column has to
// stand at its place: a field can only be appended, and the table is rebuilt around it.

#include <string>
#include <string_view>
#include <vector>

#include "core/Currency.h"

namespace zolmara {

/// The tables that hold a column for a line, in the order in which they are worked. The three
/// parts of a schedule stand together. None for a line that is no cost center.
std::vector<std::string_view> TablesWithColumn(Currency line);

/// Adds the line's column, Null on every row, to every table of TablesWithColumn. False when a
/// field could not be appended: the reason has been reported, and the tables done so far stay.
/// The last rebuilt table's copy stays behind as tblTemp.
bool AddCCColumn(Currency line);

/// Why AddCCColumn cannot place the line's column, or empty: two columns would have one name, or
/// the column would stand behind the closing total.
std::string ColumnObstacle(Currency line);

/// Removes the line's column from every worksheet that has it; the columns behind it in the
/// line's group come down by .01.
void DeleteCCColumn(Currency line);

/// Deletes a table if it is there.
void DropTable(std::string_view name);

}  // namespace zolmara
