#pragma once

// Timing, and the table in which every figure stands beside what it is measured against.

#include <functional>
#include <string>

namespace zolmara::bench {

/// Seconds that the work takes: the median of so many runs. `prepare` runs untimed ahead of each.
double Seconds(int runs, const std::function<void()>& prepare, const std::function<void()>& work);
double Seconds(int runs, const std::function<void()>& work);

/// Seconds that one fsync of a changed file in the folder takes, the median of twenty.
double FsyncSeconds(const std::string& folder);

/// Prints a figure, what it is measured against, their ratio, and the fsync of the moment: on a
/// shared machine the disk's pace changes from minute to minute.
void Report(const std::string& what, double seconds, const std::string& against, double baseline,
            const std::string& folder);
/// Prints a figure that stands alone.
void Report(const std::string& what, double seconds, const std::string& note,
            const std::string& folder);

}  // namespace zolmara::bench
