#pragma once

#include <string>
#include <string_view>

namespace zolmara {

/// Deletes a table of the open CRF if it is there. What stood in the way, in plain words; empty
/// when there is no such table any more.
std::string DeleteIfThere(std::string_view name);

}  // namespace zolmara
