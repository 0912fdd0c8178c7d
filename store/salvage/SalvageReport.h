#pragma once

// What a repair lost, in sentences for the person who keyed the figures.

#include <string>
#include <vector>

#include "store/salvage/SalvageLoose.h"
#include "store/salvage/SalvageTree.h"

namespace zolmara::salvage {

/// "12" or "12.05": a line number as the form writes it.
std::string LineText(double line);

/// "Worksheet table D1p2", or "Table Log" where the rows have no lines.
std::string TitleOf(const TableShape& table);

/// "line 12.05", or "row 120" in a table without lines.
std::string RowText(const TableShape& table, const RowPlace& row);

/// The sentences about the rows that a table lacks. Needs its rows in ascending order.
std::vector<std::string> MissingRows(const TableRows& table);

/// The sentence about entries of the file's own list that are lost; empty without any.
std::string MissingDefinitions(const TableRows& schema, const std::vector<std::string>& names);

/// The first of a list of rows, and how many more there are.
std::string Listed(const std::vector<std::string>& rows);

/// The sentence about rows that belong nowhere.
std::string LeftoverText(const Leftover& left);

}  // namespace zolmara::salvage
