#pragma once

// The keyed cells of the open CRF as a file that an import takes.

#include <string>
#include <vector>

#include "spreadsheet/KeyedCells.h"

namespace zolmara {

/// Writes every keyed cell: .xlsx as a workbook of one sheet, .csv as a table with headings, any
/// other name as text of four fields between tabs. Gives those that cannot come along. A text that
/// a spreadsheet would take for a formula stands in .csv behind an apostrophe, which the import
/// takes away. FileKept for a file that stands there and is to stay; StoreError for the name of a
/// workbook of another kind, and when it cannot be written: then what stood there is as it was.
std::vector<LeftCell> WriteCells(const std::string& path);

/// The headings of the four columns, in their order.
inline constexpr const char* kCellHeadings[] = {"Worksheet", "Line", "Column", "Contents"};

}  // namespace zolmara
