#pragma once

// Worksheet S-1 Part II: the home office's key officers. Keyed only.

#include <string_view>
#include <vector>

#include "worksheets/Worksheet.h"

namespace zolmara {

const std::vector<WorksheetField>& Fields_S1p2(std::string_view item);

void Build_S1p2();

}  // namespace zolmara
