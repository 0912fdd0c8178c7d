#pragma once

#include <string>

namespace zolmara::bench {

/// The start of the program, and short commands on the sample, against a program that does nothing.
void BenchStart(const std::string& folder, const std::string& cli, const std::string& sample);

}  // namespace zolmara::bench
