#pragma once

// The memory of printing and of the electronic report on statements of growing size.

#include <string>

#include "bench/SilentHost.h"

namespace zolmara::bench {

/// Prints, for each step and size, the peak of a program that has just opened the statement, and
/// what the step adds to it.
void BenchPeaks(const std::string& folder);

/// What this program is called with to be one of those: the word, a step, a statement.
inline constexpr const char* kPeakWord = "peak";
/// One of its programs: opens a statement, does a step, and prints both peaks. False for a step
/// that is none.
bool MeasurePeak(const std::string& step, const std::string& crf, SilentHost& host);

}  // namespace zolmara::bench
