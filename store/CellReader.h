#pragma once

// The cells of a table row by row, without SQLite's making of columns of a result: their names,
// and a call for each cell.

#include <sqlite3.h>

#include <cstdint>
#include <functional>
#include <span>
#include <string>

#include "store/base/Sqlite.h"

namespace zolmara {

/// Takes cells of a row that stand side by side: the row's number in the store, the position of
/// the first of them, and their values. A wide row comes in several pieces.
using CellTaker = std::function<void(std::int64_t rowid, std::size_t first,
                                     std::span<sqlite3_value* const> values)>;

/// Gives a connection what the reading of cells takes.
void PrepareCellReading(sqlite3* handle);

/// A statement that hands so many fields of each of its rows, from position `first` on, to a taker
/// as it is stepped. `rest` stands behind the table's name; its values are ?2 and so on. The taker
/// must live as long as the statement.
SqliteStatement CellReader(sqlite3* handle, const TableDef& table, std::size_t first,
                           std::size_t count, const std::string& rest, const CellTaker& taker);

/// True for fields that hold numbers.
bool IsNumberField(FieldType type);

}  // namespace zolmara
