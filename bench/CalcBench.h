#pragma once

#include <string>

namespace zolmara::bench {

/// A whole calculation of the large statement, from the file and again in the open program, open
/// and close, against raw SQLite doing the same reads and writes, and the arithmetic in memory.
void BenchCalc(const std::string& folder, const std::string& large);

}  // namespace zolmara::bench
