#pragma once

// The other yardstick: the arithmetic of the schedules alone, on numbers in memory.

#include <string>
#include <vector>

namespace zolmara::bench {

/// The statistics and direct amounts of a file, part by part.
struct Matrices {
    struct Part {
        std::vector<std::vector<double>> Direct, Statistics;
    };
    std::vector<Part> B, D;  ///< B and C-1, and B-1 and D-1, of the three parts
    std::vector<double> CostC, CostD;
};

Matrices LoadMatrices(const std::string& path);

/// Totals, multipliers, whole dollar amounts and sums by class, as a calculation makes them.
/// Gives a checksum.
double Calculate(const Matrices& matrices);

}  // namespace zolmara::bench
