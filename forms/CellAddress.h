#pragma once

// How a person names a cell: worksheet, line, and a column of the form or a field.

#include <optional>
#include <string>
#include <string_view>

#include "core/Currency.h"

namespace zolmara {

/// The name of a table's line number field, its first: "LineNum" or "SeqNum". StoreError when
/// there is no such table.
std::string LineKeyOf(std::string_view table);

/// True where the table's first field is a line number.
bool HasLineKey(std::string_view table);

/// True where the table has the line.
bool HasRow(std::string_view table, Currency line);

/// The field that a column names: a field's name in any case ("Col_1", "CC_401", "Description"),
/// or a column number of the form. Number n is the field Col_n where the table has it, else the
/// field of cost center n: 4.01 is CC_401. On CostCenters and ES the name is column 0 and the
/// other fields follow it. Nothing when the table has no such column.
std::optional<std::string> FieldOfColumn(std::string_view table, std::string_view column);

}  // namespace zolmara
