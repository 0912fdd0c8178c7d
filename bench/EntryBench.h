#pragma once

// What a calculation takes in an open program, after one keyed cell, for statements of four sizes.

#include <functional>
#include <string>

namespace zolmara::bench {

/// `makeNew` makes a new CRF of a path and leaves it open.
void BenchEntries(const std::string& folder,
                  const std::function<void(const std::string&)>& makeNew);

}  // namespace zolmara::bench
