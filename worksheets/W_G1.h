#pragma once

// Worksheet G-1: statement of revenue and expenses.

#include <array>
#include <string_view>
#include <vector>

#include "worksheets/Worksheet.h"

namespace zolmara {

const std::vector<WorksheetField>& Fields_G1(std::string_view item);
inline constexpr std::array<ComputedLine, 5> kComputedLines_G1 = {
    {{2, "Col_2"}, {3, "Col_2"}, {15, "Col_2"}, {21, "Col_2"}, {22, "Col_2"}}};

void Build_G1();

/// Takes the operating expenses from A and sums to the net income on line 22. StoreError where A
/// has no total line.
void Calc_G1();

}  // namespace zolmara
