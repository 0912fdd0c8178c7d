#pragma once

// Worksheet A: reclassification and adjustment of the trial balance of expenses.

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "worksheets/FormLines.h"
#include "worksheets/Worksheet.h"

namespace zolmara {

const std::vector<WorksheetField>& Fields_A(std::string_view item);
inline constexpr std::array<ComputedLine, 4> kComputedLines_A = {{{kCapitalSubtotal.Whole()},
                                                                  {kOtherCapitalSubtotal.Whole()},
                                                                  {kNonCapitalSubtotal.Whole()},
                                                                  {kTotalOfA.Whole()}}};

void Build_A();

/// Posts, A-8-1 and the grand totals of B to D, and sums the sections. An entry whose
/// line A lacks is told in a box and left out. StoreError when a schedule's grand total is
/// missing.
void Calc_A();

/// Empty where the cell takes input, else the message that refuses it. Columns count from
/// LineNum (0).
std::string ValidateCell_A(Currency lineNum, int column);

}  // namespace zolmara
