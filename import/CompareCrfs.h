#pragma once

// Two Cost Report Files side by side, cell by cell.

#include <optional>
#include <string>
#include <vector>

#include "store/Dao.h"

namespace zolmara {

/// A cell that differs; or a row or column of which one file has none.
struct CellDifference {
    std::string Item;
    Variant Line;        ///< as this file has it, or the other where this one lacks it; Null for
                         ///< a column that one file lacks
    std::string Column;  ///< empty for a row that one file lacks
    std::string Name;    ///< of the cost center, component or line
    Variant Here;        ///< the cell; the name of what only this file has
    Variant There;
    Variant Difference;  ///< here less there; Null where they are no amounts
    Variant Percent;     ///< of the other file's amount; Null where that is none
};

struct ComparisonWish {
    std::vector<std::string> Items;     ///< all when empty
    bool Keyed = false;                 ///< without what the calculation writes
    std::optional<double> Over;         ///< only amounts that differ by more
    std::optional<double> OverPercent;  ///< only amounts that differ by more per cent
};

/// The tables that are compared when none is named, in their order.
std::vector<std::string> ComparableTables();

/// Compares two open files. Rows and columns of cost centers and components are matched by number
/// and name where they stand on other lines. An amount that is Null counts as 0, amounts count to
/// six decimals, and a text that is Null is an empty one. With a limit, texts are left out; an
/// amount against none differs by more than any per cent. StoreError for an item that is no table
/// of either file.
std::vector<CellDifference> CompareCrfs(Database& here, Database& there,
                                        const ComparisonWish& wish);

}  // namespace zolmara
