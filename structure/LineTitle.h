#pragma once

// What a line is called in the name of an act.

#include <string>
#include <string_view>

#include "core/Currency.h"

namespace zolmara {

/// "cost center 12.01 Marketing", "component 5 St. Mary of S-2 Part I", "line 4 of A-8"; without
/// a name where the line has none. With `named` false it is a line that is not there yet.
std::string LineTitle(std::string_view item, Currency line, bool named = true);

}  // namespace zolmara
