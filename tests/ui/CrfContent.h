#pragma once

// What a statement holds, as text that can be compared.

#include <string>

namespace zolmara::ui {

/// Every worksheet of the open CRF, the cost centers and the bases, line by line.
std::string Content();

/// The first line in which two contents differ, from both; empty where they are the same.
std::string FirstDifference(const std::string& a, const std::string& b);

}  // namespace zolmara::ui
