#pragma once

// Worksheet S-2: the components of the chain, in three parts. Every row of the schedules is a
// copy of a row here.

#include <string_view>
#include <vector>

#include "worksheets/Worksheet.h"

namespace zolmara {

const std::vector<WorksheetField>& Fields_S2(std::string_view item);

void Build_S2p1();
void Build_S2p2();
void Build_S2p3();

/// S-2 is keyed throughout; nothing is calculated on it.
void Calc_S2();

}  // namespace zolmara
