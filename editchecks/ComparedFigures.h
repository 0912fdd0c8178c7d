#pragma once

// The figures that a finding speaks of, where its check holds one against another.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "worksheets/CellDescription.h"

namespace zolmara {

/// A cell and the sign with which it counts.
struct SignedCell {
    int Sign = 1;
    CellRef Cell;
};

/// One side of a comparison: cells, and what they come to.
struct ComparedSide {
    std::vector<SignedCell> Cells;
    double Value = 0;
};

struct Comparison {
    ComparedSide Left;
    ComparedSide Right;
    double Difference = 0;  ///< left less right
};

/// The comparison behind a finding of the edit checks, with the figures as the open CRF has them
/// now; none where its check compares no two figures. `code` and `message` are the finding's.
std::optional<Comparison> ComparisonOf(std::string_view code, std::string_view message);

/// True where a side is the sum of cells of one column: the entries of a code.
bool IsRun(const ComparedSide& side);
/// "A, line 99, column 8 less A, line 8, column 8"; of a run "A-6, lines 1 to 14, column 5".
std::string SideText(const ComparedSide& side);

}  // namespace zolmara
