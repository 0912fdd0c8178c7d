#pragma once

// What a worksheet of the open CRF holds, at a glance.

#include <string>
#include <string_view>

namespace zolmara {

enum class SheetState {
    Empty,       ///< nothing was keyed on it, and a calculation left nothing there
    Keyed,       ///< it has entries, and no calculated figure
    Calculated,  ///< a calculation left figures there
};

/// "empty", "keyed", "calculated".
std::string_view NameOf(SheetState state);

/// Reads so much of the worksheet as is needed to tell; amounts of 0 are nothing, and so are
/// texts beside amounts that are calculated. Empty for a table that is not there. StoreError when
/// it cannot be read.
SheetState StateOfSheet(const std::string& item);

}  // namespace zolmara
