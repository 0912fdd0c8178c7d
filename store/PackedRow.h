#pragma once

// A row's cells as one string of bytes, exactly as they are stored.

#include <sqlite3.h>

#include <string>
#include <vector>

namespace zolmara {

/// Adds a cell behind the others.
void PackCell(std::string& row, sqlite3_value* value);
/// The same of a cell of type dbDouble; no number is Null.
void PackNumber(std::string& row, double number);

/// Binds the cells of a packed row to the parameters of a statement from `first` on, as long as
/// the row lives. False when it does not have so many.
bool BindPackedRow(sqlite3_stmt* statement, const std::string& row, int first, int count);

}  // namespace zolmara
