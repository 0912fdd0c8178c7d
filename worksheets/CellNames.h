#pragma once

// How a cell is called to a person.

#include <map>
#include <string>
#include <string_view>

#include "worksheets/CellDescription.h"

namespace zolmara {

/// "Col_5" is "5", "CC_401" is "4.01"; any other field is its own name.
std::string ColumnNumber(std::string_view field);

/// "A-8, line 12, column 3"; a field that has no number goes by its name.
std::string CellName(const CellRef& cell);

/// The column's title as on the form, on one line; a schedule's column has its cost center's name.
/// Empty where the form has none.
std::string ColumnTitle(const CellRef& cell);
/// The titles of all columns of a worksheet, by field; none for a name that is no worksheet.
std::map<std::string, std::string> ColumnTitles(std::string_view item);

}  // namespace zolmara
