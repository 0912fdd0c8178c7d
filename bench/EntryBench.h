#pragma once

#include <string>

namespace zolmara::bench {

/// What a calculation takes in an open program, after one keyed cell, for statements of four sizes.
void BenchEntries(const std::string& folder);

}  // namespace zolmara::bench
