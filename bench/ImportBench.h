#pragma once

// Text files taken in.

#include <functional>
#include <string>

namespace zolmara::bench {

/// Imports of growing files into a new statement, and one of 100,000 lines with 200 new cost
/// centers into a statement whose components stand. `makeNew` makes a statement at a path.
void BenchImports(const std::string& folder,
                  const std::function<void(const std::string&)>& makeNew);

}  // namespace zolmara::bench
