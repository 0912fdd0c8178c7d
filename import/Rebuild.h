#pragma once

// A worksheet made anew from nothing, as a repair. All that was keyed on it is lost.

#include <span>
#include <string_view>

namespace zolmara {

/// The worksheets that the window offers, in its order.
std::span<const std::string_view> RebuildableWorksheets();

/// Makes a worksheet of the open CRF anew; its window is closed first. False, and the reason has
/// been reported, when it could not be made. StoreError for a failure of the file.
bool RebuildWorksheet(std::string_view item);

}  // namespace zolmara
