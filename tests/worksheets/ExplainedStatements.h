#pragma once

// Statements for the tests of descriptions and explanations, and the proof that every description
// gives what the calculation stored.

#include <set>
#include <string>
#include <vector>

#include "bench/LargeStatement.h"
#include "support/TestCrf.h"
#include "worksheets/CellSource.h"

namespace zolmara::test {

/// The sample home office, imported and calculated; with its planted mistakes.
void MakeNorthfield(const TempFolder& folder);
void MakeNorthfieldWithMistakes(const TempFolder& folder);
/// A home office of the shape, imported and calculated.
void MakeLarge(const TempFolder& folder, const bench::LargeShape& shape);

/// What is not as its description says, a line each, the first 20. Gives the number of cells that
/// were held against their descriptions.
std::size_t ProveDescriptions(std::vector<std::string>& faults);

/// Every cell of the worksheets by its name, "A|8|Col_2", in an exact form.
std::map<std::string, std::string> AllCells();

}  // namespace zolmara::test
