#pragma once

// Worksheet A-6: reclassifications of expenses between cost centers.

#include <array>
#include <string_view>
#include <vector>

#include "worksheets/FormLines.h"
#include "worksheets/Worksheet.h"

namespace zolmara {

const std::vector<WorksheetField>& Fields_A6(std::string_view item);
inline constexpr std::array<ComputedLine, 1> kComputedLines_A6 = {{{kTotalOfEntries.Whole()}}};

void Build_A6();

/// Totals the increases and decreases. An entry without a valid line loses its name and amount.
void Calc_A6();

/// Refreshes the names of the cost centers. An entry without a line loses its amount.
void SyncNames_A6();

/// The line behind `line` (0 ahead of the first) where so many entries are numbered in sequence.
Currency NextEntryLine(Currency line, std::int64_t entries);

/// Numbers the entries anew by their code and, within it, their former order: whole lines first,
/// then subscripts of the last whole line. The total stays on line 100.
void ResequenceLines_A6();

/// Checks a cell by the number of its field, Col_1 being 1. 0 when the value is accepted; `value`
/// may then have been put into the form in which it is kept, and `outName` is the code (column 2)
/// or the cost center's name (columns 4 and 7; Null for a blank line, as it was for line 0).
/// 1 a bad code or a line that is no number; 3 and 6 no such cost center in column 4 and 7; 5 and
/// 8 an amount that is no number; 99 a column that is not keyed.
int ValidateCell_A6(int column, Variant& value, Variant& outName);

}  // namespace zolmara
