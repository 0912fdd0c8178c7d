#pragma once

// The memory of printing and of the electronic report on statements of growing size.

#include <functional>
#include <string>

#include "bench/SilentHost.h"

namespace zolmara::bench {

/// Prints, for each step and size, the peak of a program that has just opened the statement, and
/// what the step adds to it.
void BenchPeaks(const std::string& folder, const std::function<void(const std::string&)>& makeNew);

/// One of its programs: opens a statement, does a step, and prints both peaks. False for a step
/// that is none.
bool MeasurePeak(const std::string& step, const std::string& crf, SilentHost& host);

}  // namespace zolmara::bench
