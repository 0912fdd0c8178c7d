#pragma once

// The allocation schedules B, B-1, C, C-1, D and D-1, each in three tables for the three parts of
// components: rows are components, columns are cost centers. B and B-1 hold keyed amounts; C-1
// and D-1 keyed statistics, which C and D turn into dollars by a unit cost multiplier.

#include <array>
#include <string_view>
#include <vector>

#include "worksheets/Schedules.h"
#include "worksheets/Worksheet.h"

namespace zolmara {

/// All fields: those of the form, the cost centers of the open CRF that the schedule takes, the
/// total.
std::vector<WorksheetField> Fields_Bpx(std::string_view item);
const std::vector<WorksheetField>& FixedFields_Bpx(std::string_view item);
inline constexpr std::array<ComputedLine, 3> kComputedLines_Bpx = {
    {{kPartTotal.Whole()}, {kGrandTotal.Whole()}, {kUnitCostMultiplier.Whole()}}};

/// Makes a schedule anew from the cost centers and components. When the old table cannot be
/// deleted the reason is shown and nothing else is done.
void Build_Bpx(std::string_view item);

/// Totals a schedule; works out the unit cost multipliers of C-1 and D-1, rounded to six
/// decimals, and the whole dollar amounts of C and D. On the third part of C and D what rounding
/// leaves of each cost goes to the largest amount of its column in the three parts. StoreError
/// where a line that it needs is missing or not calculated. Columns whose inputs are what the
/// calculation before found are left as they are.
void Calc_Bpx(std::string_view item, KeptColumns& kept);
/// The same of every column.
void Calc_Bpx(std::string_view item);

/// The lines of the cost centers that have a column in the schedule, in their order.
std::vector<Currency> CostCenterLines(const Schedule& schedule);

/// The fields of these cost centers.
/// With `withBasis` the title has the words of the statistical basis ahead of the name.
std::vector<WorksheetField> CostCenterFields(const Schedule& schedule, CellKind kind,
                                             bool withBasis);

}  // namespace zolmara
