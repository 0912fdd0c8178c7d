#pragma once

// Worksheet A-8-1: costs from related organizations (A81p1) and the organizations (A81p2). Both
// are keyed by SeqNum.

#include <array>
#include <string_view>
#include <vector>

#include "worksheets/FormLines.h"
#include "worksheets/Worksheet.h"

namespace zolmara {

const std::vector<WorksheetField>& Fields_A81p1(std::string_view item);
const std::vector<WorksheetField>& Fields_A81p2(std::string_view item);
inline constexpr std::array<ComputedLine, 1> kComputedLines_A81p1 = {{{kTotalOfEntries.Whole()}}};

void Build_A81p1();
void Build_A81p2();

/// Fills the cost center names, the net adjustments and the total on line 100.
void Calc_A81p1();

}  // namespace zolmara
