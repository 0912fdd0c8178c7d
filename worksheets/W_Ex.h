#pragma once

// Worksheets E and E-1: the pooled allocation. E splits each pool, column 8 of A, among the three
// parts of components by their share of a statistic; E-1 splits each part's share among its
// components. Ratios have six decimals, amounts are whole dollars, and the largest takes what
// rounding leaves.

#include <array>
#include <string_view>
#include <vector>

#include "worksheets/FormLines.h"
#include "worksheets/Worksheet.h"

namespace zolmara {

/// All fields, with the pools that have a column of their own: lines 1, 2, 8, 9 and 28 with
/// their subscripts. Col_7, all other pools, stands right before line 28.
std::vector<WorksheetField> Fields_Ex(std::string_view item);
const std::vector<WorksheetField>& FixedFields_Ex(std::string_view item);
inline constexpr std::array<ComputedLine, 2> kComputedLines_E1px = {
    {{kPartTotal.Whole()}, {kGrandTotal.Whole()}}};

/// Makes E or a part of E-1 anew. When the old table cannot be deleted the reason is shown and
/// nothing else is done.
void Build_Ex(std::string_view item);

/// Also writes each part's share to line 51 of E-1. StoreError where a row that it needs is
/// missing.
void Calc_E();

/// Needs line 51, which Calc_E has written; StoreError where it is missing. Pools whose inputs are
/// what the calculation before found are left as they are.
void Calc_E1px(std::string_view item, KeptColumns& kept);
/// The same of every pool.
void Calc_E1px(std::string_view item);

}  // namespace zolmara
