#pragma once

// The figures that stand first in a reviewer's notes.

#include <string>
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

/// A step on the way from the books to the components, on one scale: it begins where the one ahead
/// of it ends.
struct MoneyStep {
    enum class Is { Sum, Change, Share };  ///< Share: of the net, to the components

    std::string_view Name;
    Is Kind;
    CellRef Cell;
    double From = 0;
    double Amount = 0;
};

/// Expenses, reclassifications, adjustments, net, and what of it is allocated directly, by function
/// and from the pools. Empty cells count 0.
std::vector<MoneyStep> MoneyPath(CellSource& cells);

/// What the statement lays on a component: capital, non-capital and interest together.
struct ComponentCost {
    std::string Name;
    CellRef Cell;  ///< its total on F-1
    double Cost = 0;
};

/// The components of the open CRF that bear most, at most so many; those without any cost are left
/// out. Equal ones stand in the order of parts and lines.
std::vector<ComponentCost> LargestComponents(std::size_t count);

}  // namespace zolmara
