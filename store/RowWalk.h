#pragma once

// Rows that are read once, from the first to the last, and not kept.

#include <functional>
#include <span>
#include <string_view>

#include "store/Dao.h"

namespace zolmara {

/// Gives the rows of a SELECT without values in it, each in the same cells: what is to stay is
/// copied. The cells stand in the order of the fields. All rows are of one moment: `onRow` must
/// not change the tables. StoreError where the statement or the file is at fault; an exception
/// of `onRow` ends the walk.
void WalkRows(Database& db, std::string_view select,
              const std::function<void(std::span<const Variant> row)>& onRow);

}  // namespace zolmara
