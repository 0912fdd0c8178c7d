#pragma once

// S-2 lists the components of the chain, and each schedule of its part has a row for every one of
// them. Taken over one without the other, they may differ.

#include <span>
#include <string>
#include <string_view>

namespace zolmara {

/// Holds S-2 against the schedules of every part that one of these worksheets belongs to, and
/// reports a warning for each line that is missing on either side, or that bears another name or
/// number. Gives the number of warnings.
std::size_t CompareS2WithSchedules(std::span<const std::string> items);

/// The same for one part (1, 2 or 3).
std::size_t CompareS2WithSchedules(int part);

}  // namespace zolmara
