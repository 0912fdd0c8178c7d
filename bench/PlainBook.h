#pragma once

// The yardstick of an export: the cells of a workbook, kept in a plain file, and written again by
// libxlsxwriter alone, row by row.

#include <string>

namespace zolmara::bench {

/// Keeps what stands in the cells of a workbook: numbers, texts, formulas with their results, and
/// which cells look alike. Gives how many there are.
long KeepCells(const std::string& workbook, const std::string& kept);

/// Writes a workbook of the kept cells.
void WritePlainBook(const std::string& kept, const std::string& workbook);

}  // namespace zolmara::bench
