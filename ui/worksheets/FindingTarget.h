#pragma once

// Which worksheet and line a finding speaks of.

#include <optional>
#include <string>

#include "core/Currency.h"

namespace zolmara::ui {

struct FindingTarget {
    std::string Item;
    std::optional<Currency> Line;

    friend bool operator==(const FindingTarget&, const FindingTarget&) = default;
};

/// Reads it off the message: "Worksheet A-8: line 12 column 4 ..." is line 12 of A8. Nothing
/// where the message names no worksheet.
std::optional<FindingTarget> TargetOf(const std::string& message);

}  // namespace zolmara::ui
