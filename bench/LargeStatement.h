#pragma once

// An import file of a home office far larger than usual, for benchmarks and tests. The same shape
// always gives the same file.

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

#include "core/Currency.h"

namespace zolmara::bench {

struct LargeShape {
    /// Over the three parts of S-2, with subscripts: at most 15,000.
    int Components = 5000;
    /// The form's 26 among them, with subscripts: at most 96 times 100.
    int CostCenters = 200;
    /// How many of a thousand statistics on C-1 and D-1 are filled.
    int FilledPerMille = 500;
    /// How many of a thousand direct amounts on B and B-1 are filled.
    int DirectPerMille = 20;
};

/// The cost centers of a shape, in their order; those of the form among them.
std::vector<Currency> LargeCostCenters(const LargeShape& shape);
/// The component lines of a part, in their order.
std::vector<Currency> LargeComponents(const LargeShape& shape, int part);

/// Writes the file. Gives the number of its lines.
std::size_t WriteLargeStatement(std::ostream& out, const LargeShape& shape = {});

}  // namespace zolmara::bench
