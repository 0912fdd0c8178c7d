#include "store/CellReader.h"

#include <fmt/format.h>

#include <new>

#include "store/base/TableSql.h"

namespace zolmara {
namespace {

constexpr const char* kTakeCells = "zcells";
constexpr std::size_t kAtOnce = 100;  ///< cells that one call takes; SQLite allows 127 values

/// Of a row: who takes it, the position of the first cell, the rowid, the cells.
void TakeCells(sqlite3_context* context, int count, sqlite3_value** args) {
    constexpr int kAhead = 3;
    if (count < kAhead) return;
    const auto* const taker =
        static_cast<const CellTaker*>(sqlite3_value_pointer(args[0], kTakeCells));
    if (!taker) return;
    try {
        (*taker)(sqlite3_value_int64(args[2]),
                 static_cast<std::size_t>(sqlite3_value_int64(args[1])),
                 std::span(args + kAhead, static_cast<std::size_t>(count - kAhead)));
    } catch (const std::bad_alloc&) {
        sqlite3_result_error_nomem(context);
    }
}

}  // namespace

void PrepareCellReading(sqlite3* handle) {
    const int code =
        sqlite3_create_function_v2(handle, kTakeCells, -1, SQLITE_UTF8 | SQLITE_DIRECTONLY, nullptr,
                                   TakeCells, nullptr, nullptr, nullptr);
    if (code != SQLITE_OK) ThrowSqlite(handle, code, "");
}

SqliteStatement CellReader(sqlite3* handle, const TableDef& table, std::size_t first,
                           std::size_t count, const std::string& rest, const CellTaker& taker) {
    std::string list = count == 0 ? fmt::format("{}(?1,{},rowid", kTakeCells, first) : "";
    for (std::size_t i = 0; i < count; ++i) {
        if (i % kAtOnce == 0)
            list += fmt::format("{}{}(?1,{},rowid", i == 0 ? "" : "),", kTakeCells, first + i);
        list += "," + Quoted(table.Fields[first + i].Name);
    }
    SqliteStatement reader(handle,
                           fmt::format("SELECT {}) FROM {} {}", list, Quoted(table.Name), rest));
    sqlite3_bind_pointer(reader.get(), 1, const_cast<CellTaker*>(&taker), kTakeCells, nullptr);
    return reader;
}

bool IsNumberField(FieldType type) {
    return type == FieldType::dbDouble || type == FieldType::dbCurrency ||
           type == FieldType::dbInteger;
}

}  // namespace zolmara
