#pragma once

// Which worksheet, line and column a finding speaks of.

#include <optional>
#include <string>

#include "core/Currency.h"

namespace zolmara {

struct FindingTarget {
    std::string Item;
    std::optional<Currency> Line;
    std::string Column = {};  ///< a column number of the form or a field's name; may be empty

    friend bool operator==(const FindingTarget&, const FindingTarget&) = default;
};

/// Reads it off the message: "Worksheet A-8: line 12 column 4 ..." is line 12 of A8, column 4.
/// Nothing where the message names no worksheet.
std::optional<FindingTarget> TargetOf(const std::string& message);

}  // namespace zolmara
