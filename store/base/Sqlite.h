#pragma once

// SQLite's C interface with its errors as StoreError and its statements as owned objects.

#include <sqlite3.h>

#include <string>
#include <string_view>

#include "core/Variant.h"
#include "store/base/StoreError.h"
#include "store/base/TableDef.h"

namespace zolmara {

/// Raises what SQLite reports of a result code, with the given words ahead of SQLite's. An error
/// of the file itself takes an open transaction back.
[[noreturn]] void ThrowSqlite(sqlite3* handle, int code, const std::string& context);

/// Runs statements that give no rows.
void SqliteRun(sqlite3* handle, const std::string& sql, const std::string& context = "");

/// A prepared statement.
class SqliteStatement {
public:
    SqliteStatement() = default;
    SqliteStatement(sqlite3* handle, std::string_view sql, bool keep = false);
    SqliteStatement(SqliteStatement&& other) noexcept;
    SqliteStatement& operator=(SqliteStatement&& other) noexcept;
    ~SqliteStatement();

    explicit operator bool() const { return statement_ != nullptr; }
    sqlite3_stmt* get() const { return statement_; }

    /// True on a row, false at the end; an error raises and resets the statement.
    bool Step(const std::string& context = "");
    void Reset();

    /// Positions of parameters count from 1.
    void Bind(int position, const Variant& value);
    void BindText(int position, std::string_view text);
    void BindInteger(int position, std::int64_t value);

    /// Columns count from 0.
    std::string Text(int column) const;
    std::int64_t Integer(int column) const;
    /// The cell as a field of the type reads it.
    Variant Value(int column, FieldType type) const;
    /// The same, into a cell that is used again from row to row.
    void Read(int column, FieldType type, Variant& into) const;
    /// The cell by its own type alone.
    Variant Value(int column) const;

private:
    sqlite3* handle_ = nullptr;
    sqlite3_stmt* statement_ = nullptr;
};

}  // namespace zolmara
