#pragma once

#include <string_view>

namespace zolmara {

/// Cuts every carriage return and line feed out of the text fields of a table; a row without one
/// is not touched. StoreError where the table is missing.
void RemoveLineBreaks(std::string_view table);

}  // namespace zolmara
