#pragma once

// A comparison on paper and in a file.

#include <string>
#include <string_view>
#include <vector>

#include "import/CompareCrfs.h"

namespace zolmara {

/// The columns that a comparison is told in, in their order.
const std::vector<std::string>& ComparisonColumns();
/// A difference in these columns; Null for what does not apply.
std::vector<Variant> ComparisonRow(const CellDifference& difference);

/// Prints a comparison of the open CRF with the file `other` to "Compare.prt" in the CRF's folder
/// and to the printer. StoreError when it cannot be written.
void Print_Comparison(const std::vector<CellDifference>& differences, const std::string& other);

/// Writes a comparison as CSV, with a line of names. A text that a spreadsheet would take for a
/// formula gets an apostrophe ahead. An earlier one is replaced; for any other
/// file that stands there the user is asked. StoreError when it cannot be written, FileKept when
/// the user kept what stood there.
void SaveComparisonCsv(const std::vector<CellDifference>& differences, const std::string& path);

}  // namespace zolmara
