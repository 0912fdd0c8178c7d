#pragma once

// Worksheet A: reclassification and adjustment of the trial balance of expenses.

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "worksheets/CellDescription.h"
#include "worksheets/FormLines.h"
#include "worksheets/Worksheet.h"

namespace zolmara {

const std::vector<WorksheetField>& Fields_A(std::string_view item);
inline constexpr std::array<ComputedLine, 4> kComputedLines_A = {{{kCapitalSubtotal.Whole()},
                                                                  {kOtherCapitalSubtotal.Whole()},
                                                                  {kNonCapitalSubtotal.Whole()},
                                                                  {kTotalOfA.Whole()}}};

/// What is posted to column 2: the entries of A-6, up and down.
inline constexpr EntrySource kUpEntries = {"A6", "Col_4", "Col_5", 1,
                                           EntrySource::Condition::AmountAboveZero};
inline constexpr EntrySource kDownEntries = {"A6", "Col_7", "Col_8", -1,
                                             EntrySource::Condition::LineAboveZero};
/// What is posted to column 4: the adjustments of A-8 and the lines of A-8-1 Part I.
inline constexpr EntrySource kAdjustments = {"A8", "Col_5", "Col_3", 1,
                                             EntrySource::Condition::AmountAndLine};
inline constexpr EntrySource kRelatedCosts = {"A81p1", "Col_1", "Col_7", 1,
                                              EntrySource::Condition::LineOfA};

void Build_A();

/// Posts, A-8-1 and the grand totals of B to D, and sums the sections. An entry whose
/// line A lacks is told in a box and left out. StoreError when a schedule's grand total is
/// missing.
void Calc_A();

/// Empty where the cell takes input, else the message that refuses it. Columns count from
/// LineNum (0).
std::string ValidateCell_A(Currency lineNum, int column);

}  // namespace zolmara
