#pragma once

// Cells taken from the source, gImportDB, by the names of their columns.

#include <string_view>

namespace zolmara {

struct Worksheet;

/// True where the worksheet has amounts or answers that are keyed.
bool HasKeyedCells(const Worksheet& sheet);

/// Fills a table of the open CRF with the source's rows in place of its own. Columns that only one
/// side has are reported by name.
void TakeRows(std::string_view table);

/// The same for a worksheet, without what the calculation writes.
void TakeKeyedCells(std::string_view item);

}  // namespace zolmara
