#pragma once

// A row while it is keyed: what has been entered and is not stored yet.

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/Currency.h"
#include "core/Variant.h"

namespace zolmara {

struct RowEntry {
    std::string Table;  ///< "A6", "CostCenters"
    Currency Line;      ///< LineNum or SeqNum of the row
    /// The cells that were keyed, and those that follow them, as they are to be stored.
    std::vector<std::pair<std::string, Variant>> Cells;

    bool Changed() const { return !Cells.empty(); }
    /// The keyed value of a field, without regard to case; null when it was not keyed.
    const Variant* Find(std::string_view field) const;
    void Set(std::string_view field, const Variant& value);
    void Erase(std::string_view field);
};

}  // namespace zolmara
