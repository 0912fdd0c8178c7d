#pragma once

// The form's titles of the worksheets, for lists.

#include <string>
#include <string_view>
#include <vector>

namespace zolmara {

/// "Reconciliation of capital cost centers" for "A7p2", "Pooled allocation, healthcare provider
/// components" for "E1p1". Empty for a name that is no worksheet.
std::string SheetTitle(std::string_view item);

/// All worksheets in the order of the form's letters, S first; each is the name of its table.
std::vector<std::string> SheetsByLetter();

}  // namespace zolmara
