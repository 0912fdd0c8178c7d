#pragma once

// Reading lines and sums.

#include <string_view>

#include "store/Dao.h"

namespace zolmara {

/// The line of the current row, which every worksheet has as its first field.
Currency LineOf(const Recordset& rows);

/// The first value of a statement as a number; Null and no row count as 0.
double SumOf(std::string_view sql, std::initializer_list<Variant> args = {});

}  // namespace zolmara
