#pragma once

#include <string>

namespace zolmara::bench {

/// The electronic report of the open statement, and both files with their seals, against writing
/// the same bytes plainly, and against raw SQLite reading the same tables. The files go to the
/// folder.
void BenchEcr(const std::string& folder);

}  // namespace zolmara::bench
