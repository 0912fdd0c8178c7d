#pragma once

// The residual of C and D: where the rounded amounts of a column do not sum to the cost that was
// to be allocated, the largest amount of the column in the three parts takes the difference.

#include <string_view>
#include <vector>

namespace zolmara {

class KeptColumns;

/// A column that does not close.
struct Gap {
    int Position;  ///< of its field in the tables
    double Got;    ///< what its amounts sum to
    double Want;   ///< what they are to sum to
};

/// Closes the columns of the schedule's three tables ("Cp" or "Dp" with a part number): the cell
/// with the largest absolute value, the total field of its row, line 51 of its part and line 52
/// of the third. Among equals the lower part is taken, and in it the lower line. A column
/// without any component stays as it is. The largest of a part is the one that its calculation has
/// found; where none did, it is looked for. The lines that take something are noted there.
void CloseGaps(std::string_view family, const std::vector<Gap>& gaps, int totalPosition,
               KeptColumns& kept);

}  // namespace zolmara
