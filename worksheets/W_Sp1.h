#pragma once

// Worksheet S Part I: the status of the cost statement.

#include <string_view>
#include <vector>

#include "worksheets/Worksheet.h"

namespace zolmara {

const std::vector<WorksheetField>& Fields_Sp1(std::string_view item);

void Build_Sp1();

/// Line 1, whether the statement is amended, follows the amendment number on line 2: "No" for 0,
/// "Yes" for 1 to 9, "Error" for anything else.
void Calc_Sp1();

}  // namespace zolmara
