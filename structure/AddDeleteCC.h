#pragma once

// A cost center is a row in CostCenters and in A, perhaps one in A7p2, and a column in up to
// thirteen allocation tables. These procedures keep those places in step.

#include <string_view>

#include "core/Currency.h"
#include "structure/Renumber.h"

namespace zolmara {

class NewColumns;

/// Adds a cost center at a line: a whole line moves the lines from it by one, a subscript the
/// rest of its group by .01; then come the rows and the columns. The caller has made sure that
/// the line is free to take and closed the worksheet forms. False when a column could not be
/// added, which has been reported. StoreError, before anything is changed, for a line that
/// cannot become a cost center: outside the sections, in a group that is full to its end, more
/// than one whole line above the last, or with columns that cannot all move up.
bool AddCostCenter(Currency line);
/// The same as one of several, whose columns the caller finishes together.
bool AddCostCenter(Currency line, NewColumns& columns);

/// Deletes a cost center with its rows and columns and closes the gap. Only a subscript or a line
/// of 29 and above can go; another line only beeps. No question is asked.
LineResult DeleteCostCenter(Currency line);

/// Carries a name that was changed in CostCenters to the worksheets. False when the worksheet
/// forms could not be closed; then nothing is changed.
bool RenameCostCenter(Currency line, std::string_view name);

/// The same for a name that comes from an import, to A, A6 and A7p2, with the forms as they are.
void CarryCostCenterName(Currency line, std::string_view name);

/// The guard on leaving the cost center editor: a line of 4 must stand, and every name. False
/// when a box has told what is missing.
bool CostCentersMayClose();

}  // namespace zolmara
