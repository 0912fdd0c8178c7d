#pragma once

// A comparison in a file that spreadsheet programs read.

#include <string>
#include <vector>

#include "import/CompareCrfs.h"

namespace zolmara {

/// StoreError unless the name ends in .xlsx or .csv, in any case.
void NeedComparisonName(const std::string& path);

/// Writes a comparison of the open CRF with the file `other` to a workbook, or as CSV, by the
/// ending of the name. In a workbook amounts are numbers, and a text stays one whatever it begins
/// with. An earlier CSV is replaced; for any other file that stands there the user is asked.
/// FileKept when it is to stay, StoreError when it cannot be written; then what stood there is as
/// it was.
void SaveComparison(const std::vector<CellDifference>& differences, const std::string& other,
                    const std::string& path);

}  // namespace zolmara
