#pragma once

// What the form calls a worksheet.

#include <string>
#include <string_view>

namespace zolmara {

/// The number of a part, 1 to 9, as the form prints it.
std::string_view RomanNumeral(int part);

/// The form's name of a worksheet from its Item: "C1p2" is "C-1 Part II", "A81p1" "A-8-1 Part I".
/// The name itself of a table that is no worksheet, such as "CostCenters".
std::string PrintedName(std::string_view item);

}  // namespace zolmara
