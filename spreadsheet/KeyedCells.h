#pragma once

// Every keyed cell of the open CRF in the import's form. What the import cannot take is named, so
// that nobody takes it for carried over. The identity is none of them: it comes with a new file.

#include <functional>
#include <string>
#include <vector>

#include "core/Currency.h"
#include "worksheets/CellDescription.h"

namespace zolmara {

struct KeyedCell {
    std::string WorkSheet;
    Currency Row;
    Currency Col;
    std::string Contents;   ///< empty for a line that is there and holds nothing
    bool IsNumber = false;  ///< an amount, a line reference, a code
};

/// One that was keyed and cannot come along.
struct LeftCell {
    CellRef Cell;
    std::string Value;
    std::string Reason;
};

/// The tables that have keyed cells, in the order of the import's loaders.
std::vector<std::string> KeyedTables();

using TakeKeyedCell = std::function<void(const KeyedCell&)>;

/// Gives the cells in the order of the import's loaders, then of lines and columns. The others
/// come back.
std::vector<LeftCell> WalkKeyedCells(const TakeKeyedCell& take);

}  // namespace zolmara
