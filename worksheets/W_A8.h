#pragma once

// Worksheet A-8: adjustments to the trial balance.

#include <array>
#include <span>
#include <string_view>
#include <vector>

#include "worksheets/FormLines.h"
#include "worksheets/Worksheet.h"

namespace zolmara {

struct SeedRow;

const std::vector<WorksheetField>& Fields_A8(std::string_view item);
/// Line 12 shows the net of A-8-1 Part I.
inline constexpr std::array<ComputedLine, 2> kComputedLines_A8 = {
    {{kRelatedOrganizations.Whole(), "Col_3"}, {kTotalOfEntries.Whole()}}};

void Build_A8();

/// The form's lines and the texts that they come with.
std::span<const SeedRow> Seeds_A8();

/// Fills the cost center names, line 12 from A-8-1 and the total.
void Calc_A8();

/// Checks a cell by the number of its field, Col_1 being 1. 0 when the value is accepted, 1 when
/// it is refused, 99 for a column that is not keyed. A basis is kept, and given in `outName`,
/// trimmed and upper-cased; a line is kept as a number, and its cost center's name is `outName`.
int ValidateCell_A8(int column, Variant& value, Variant& outName);

}  // namespace zolmara
