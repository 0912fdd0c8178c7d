#pragma once

// The walk through all tables of a damaged file, with an eye on pages that were overwritten by
// copies of other pages.

#include <string>
#include <vector>

#include "store/salvage/SalvageTree.h"

namespace zolmara::salvage {

/// Walks all tables. A page that two tables lay claim to goes to neither; a page whose bytes also
/// stand in another table, which they fit better, is not believed. The pages read are taken in
/// `claimed`.
void WalkTables(const PageFile& file, std::vector<TableRows>& tables, PageSet& claimed);

/// Adds a gap wherever a table's index lists rows that the walk did not find.
void AddGapsByIndex(TableRows& table);

/// The sentences about figures that stand in two tables to the last byte. Needs the tables as
/// walked.
std::vector<std::string> TwinTexts(const PageFile& file, std::vector<TableRows>& tables);

}  // namespace zolmara::salvage
