#pragma once

// Text files taken in.

#include <string>

namespace zolmara::bench {

/// Imports of growing files into a new statement, and one of 100,000 lines with 200 new cost
/// centers into a statement whose components stand.
void BenchImports(const std::string& folder);

}  // namespace zolmara::bench
