#pragma once

// Worksheets F, F-1 and F-2: what the schedules allocated to each component, as capital cost, as
// non-capital cost (salaries and all other) and as interest income. Nothing is keyed on them.

#include <string_view>
#include <vector>

#include "worksheets/Worksheet.h"

namespace zolmara {

const std::vector<WorksheetField>& Fields_Fx(std::string_view item);

/// Makes a summary anew. When the old table cannot be deleted the reason is shown and nothing
/// else is done.
void Build_Fx(std::string_view item);

/// What a component bears. Rows whose amounts are what the calculation before found, here and in
/// the schedules, are left as they are.
void Calc_Fpx(std::string_view item, KeptColumns& kept);
void Calc_F1px(std::string_view item, KeptColumns& kept);
void Calc_F2px(std::string_view item, KeptColumns& kept);
/// The same of every row.
void Calc_Fpx(std::string_view item);
void Calc_F1px(std::string_view item);
void Calc_F2px(std::string_view item);

}  // namespace zolmara
