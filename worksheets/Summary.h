#pragma once

// The figures that stand first in a reviewer's notes.

#include <string_view>
#include <vector>

#include "worksheets/CellDescription.h"
#include "worksheets/CellSource.h"

namespace zolmara {

struct SummaryFigure {
    std::string_view Name;
    CellRef Cell;
    Variant Value;  ///< as stored; Null before the first calculation
};

/// Expenses, reclassifications, adjustments, net, direct, functional, pooled, and the grand totals
/// of F, F-1 and F-2.
std::vector<SummaryFigure> SummaryFigures(CellSource& cells);

}  // namespace zolmara
