#pragma once

// Statements of home offices that nobody would think of: the same seed always gives the same.

#include <string>
#include <vector>

namespace zolmara::test {

/// Lines of an import file, their fields separated by tabs: cost centers, components, entries and
/// amounts on all worksheets that an import fills. Every line is a good one.
std::vector<std::string> GeneratedLines(unsigned seed);

/// Imports them into the open CRF, a new one, and calculates. Fails the test on any message.
void FillGenerated(const std::string& folder, unsigned seed);

}  // namespace zolmara::test
