#pragma once

// The search through the whole statement.

#include <string_view>
#include <vector>

#include "core/Variant.h"
#include "worksheets/CellDescription.h"

namespace zolmara {

struct FoundCell {
    CellRef Cell;
    Variant Value;  ///< as stored
};

/// The cells of the open CRF that hold a text or an amount: cost centers and the pools' labels
/// first, then the worksheets in their order, by line and column. A text is found anywhere in a
/// cell, without regard to case. What reads as a number is also looked for among the amounts, as
/// SoughtAmount tells. Names that a worksheet only repeats, of a component or a cost center, are
/// not told again; line numbers are no amounts. Nothing is found for a blank text.
std::vector<FoundCell> FindCells(std::string_view text);

}  // namespace zolmara
