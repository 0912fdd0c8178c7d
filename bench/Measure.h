#pragma once

// Timing, and the table in which every figure stands beside what it is measured against. It is
// Markdown, so that it can go into a document as it is.

#include <functional>
#include <string>

#include "bench/Process.h"

namespace zolmara::bench {

/// Seconds that the work takes: the median of so many runs. `prepare` runs untimed ahead of each.
double Seconds(int runs, const std::function<void()>& prepare, const std::function<void()>& work);
double Seconds(int runs, const std::function<void()>& work);

/// Seconds that one fsync of a changed file in the folder takes, the median of several. Raises
/// when the folder takes none.
double FsyncSeconds(const std::string& folder);

/// "0.08", "4.0", "161".
std::string Milliseconds(double seconds);

/// Begins a table of figures under a heading.
void ReportHead(const std::string& title);

/// A row: a figure, what it is measured against, their ratio, what it is to be, and the fsync of
/// the moment, since on a shared machine the disk's pace changes from minute to minute. Time and
/// CPU have each their own ratio.
void Report(const std::string& what, const Least& took, const std::string& against,
            const Least& baseline, const std::string& folder, const std::string& aim = "");
/// A figure without CPU.
void Report(const std::string& what, double seconds, const std::string& against, double baseline,
            const std::string& folder, const std::string& aim = "");
/// A figure that stands alone, with a note.
void Report(const std::string& what, const Least& took, const std::string& note,
            const std::string& folder, const std::string& aim = "");
void Report(const std::string& what, double seconds, const std::string& note,
            const std::string& folder, const std::string& aim = "");
/// A row of what is no time.
void ReportNote(const std::string& what, const std::string& note);

}  // namespace zolmara::bench
