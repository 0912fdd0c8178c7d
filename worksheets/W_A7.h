#pragma once

// Worksheet A-7: the roll forward of capital assets (A7p1), and the ratios by which other capital
// related costs are spread over the capital related cost centers (A7p2).

#include <array>
#include <string_view>
#include <vector>

#include "worksheets/Worksheet.h"

namespace zolmara {

const std::vector<WorksheetField>& Fields_A7(std::string_view item);
inline constexpr std::array<ComputedLine, 2> kComputedLines_A7p1 = {{{7}, {9}}};
inline constexpr std::array<ComputedLine, 1> kComputedLines_A7p2 = {{{3}}};

void Build_A7p1();
void Build_A7p2();

void Calc_A7p1();

/// Ratios to six decimals and whole dollar shares; the line with the largest takes what rounding
/// leaves. Runs Calc_A, whose lines 4, 5 and 6 it spreads. StoreError where A lacks one of them.
void Calc_A7p2();

}  // namespace zolmara
