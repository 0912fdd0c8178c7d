#pragma once

// Pages with rows that no tree of a damaged file leads to, because the page above them is lost.

#include <cstddef>
#include <string>
#include <vector>

#include "store/salvage/SalvageTree.h"

namespace zolmara::salvage {

/// Rows that were found but could not be told to be one table's.
struct Leftover {
    std::size_t Rows = 0;
    std::size_t Columns = 0;               ///< of the first row
    std::vector<std::string> MayBelongTo;  ///< the tables they would fit
};

/// Gives each loose page to the one table with a gap that it fits, if there is exactly one, and
/// tells of the others. `needsWitness`: only an index's word makes a page fit, since tables may
/// be missing whose definitions nobody knows.
std::vector<Leftover> TakeLoosePages(const PageFile& file, std::vector<TableRows>& tables,
                                     PageSet& claimed, bool needsWitness);

}  // namespace zolmara::salvage
