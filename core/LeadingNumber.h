#pragma once

#include <optional>
#include <string_view>

namespace zolmara {

/// The number at the start of a text as Val reads it. Nothing for one that is too large.
std::optional<double> LeadingNumber(std::string_view text);

}  // namespace zolmara
