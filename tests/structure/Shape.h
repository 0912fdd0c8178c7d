#pragma once

// The shape of a CRF as text, for comparing before and after.

#include <string>
#include <string_view>
#include <vector>

#include "core/Currency.h"

namespace zolmara::test {

inline Currency Line(double value) { return Currency(value); }

/// The fields of a table in their order.
std::vector<std::string> Columns(std::string_view table);
/// The fields that belong to cost centers, joined by blanks.
std::string CostCenterColumns(std::string_view table);
/// The keys of a table in ascending order, joined by blanks.
std::string Lines(std::string_view table);
/// The keys from one up to and including another.
std::string Lines(std::string_view table, double from, double to);
/// Every table with its fields, their types and all cells, in the order of the keys. Left out are
/// scratch tables and the log.
std::vector<std::string> DumpCrf();

}  // namespace zolmara::test
