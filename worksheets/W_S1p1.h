#pragma once

// Worksheet S-1 Part I: the home office's particulars. Each line gives its own meaning to the six
// columns.

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "worksheets/Worksheet.h"

namespace zolmara {

const std::vector<WorksheetField>& Fields_S1p1(std::string_view item);

void Build_S1p1();

/// The date available is kept only where the statements were not submitted.
void Calc_S1p1();

/// What a column means on a line, and whether it is closed there.
struct S1p1Caption {
    std::string_view Text;  ///< "N/A" where the column has no meaning
    bool Locked;
};

/// The captions of the six columns on a line. A subscripted line holds a further e-mail address.
/// `cells` are the line's Col_1 to Col_6, which open or close the dependent columns: the
/// description of the control (3, 2) and the date available (4, 4).
std::array<S1p1Caption, 6> CaptionS1p1(Currency line, const std::array<Variant, 6>& cells);

}  // namespace zolmara
