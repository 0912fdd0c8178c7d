#pragma once

// The rules of all cells as one table, walked by CellRules.cpp.

#include <span>
#include <string_view>

#include "forms/CellChecks.h"

namespace zolmara {

/// Lines from and to, both included, in hundredths: 401 is line 4.01.
struct LineRange {
    int From;
    int To;
};

struct CellRule {
    std::string_view Items;  ///< "A6"; "?" stands for the part: "Bp?"
    LineRange Lines;
    std::string_view Fields;  ///< separated by blanks; "CC_*" for all that begin so
    CellCheck Check;
    CheckArgument Argument = {};
    bool SeesBlanks = false;  ///< the check decides on a blank entry, which else empties the cell
    /// Decides on the row whether the cell is open; none where it always is.
    bool (*Open)(const CellEntry& entry) = nullptr;
};

/// The first rule that fits a cell holds.
std::span<const CellRule> AllCellRules();

}  // namespace zolmara
