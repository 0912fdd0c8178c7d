#pragma once

// The tables that every CRF carries beside its worksheets, and the registry that names them.

#include <string>
#include <string_view>

namespace zolmara {

void Build_Worksheets();  ///< the registry; before anything registers
void Build_Master();      ///< the identity, one row from the session globals
void Build_Log();
void Build_HeaderLines();
void Build_Error();
void Build_CC();  ///< CostCenters with the form's 26 lines
void Build_ES();  ///< the pooled allocation basis

/// A level of 900 or more is no worksheet.
inline constexpr int kNotAWorksheet = 999;

/// The one writer of the registry. Only the action "Make" writes.
void RegisterWorksheet(std::string_view item, std::string_view action, int level);

/// The registry's display name: "B1p3" is "B-1  Part-3".
std::string ItemDisplayName(std::string_view item);

/// 0 the rule on the lines of 4 holds; 1 or 2 it does not, and the message says why.
int CheckCC4xx(std::string& message);

/// The column of a cost center in the allocation schedules: line 4.01 is "CC_401".
std::string CostCenterColumn(class Currency line);
/// The line of a column that begins with "CC_" (any case).
class Currency LineOfColumn(std::string_view column);
bool IsCostCenterColumn(std::string_view column);

/// A finding or message of a run. Table Error must be there.
void AddErrorRow(std::string_view level, std::string_view code, std::string_view message);
void ClearErrors();

}  // namespace zolmara
