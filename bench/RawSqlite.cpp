#include "bench/RawSqlite.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <functional>
#include <limits>
#include <set>
#include <stdexcept>

namespace zolmara::bench {
namespace {

class RawStatement {
public:
    RawStatement(sqlite3* handle, const std::string& sql) {
        if (sqlite3_prepare_v2(handle, sql.c_str(), -1, &statement_, nullptr) != SQLITE_OK)
            throw std::runtime_error(sqlite3_errmsg(handle));
    }
    ~RawStatement() { sqlite3_finalize(statement_); }
    RawStatement(const RawStatement&) = delete;
    RawStatement& operator=(const RawStatement&) = delete;
    /// True when there is a row. Raises when the statement failed: what fails is no figure.
    bool Step() {
        const int result = sqlite3_step(statement_);
        if (result != SQLITE_ROW && result != SQLITE_DONE)
            throw std::runtime_error(sqlite3_errmsg(sqlite3_db_handle(statement_)));
        return result == SQLITE_ROW;
    }
    sqlite3_stmt* get() const { return statement_; }

private:
    sqlite3_stmt* statement_ = nullptr;
};

constexpr double kNull = std::numeric_limits<double>::quiet_NaN();

/// What was read is used, so that the reading is not left out.
volatile double gSink = 0;

bool SameCell(sqlite3_stmt* a, sqlite3_stmt* b, int column) {
    return sqlite3_column_type(a, column) == sqlite3_column_type(b, column) &&
           sqlite3_column_double(a, column) == sqlite3_column_double(b, column);
}

std::string UpdateOf(const std::string& table, sqlite3_stmt* row, const std::set<int>& columns) {
    std::string sets;
    for (const int column : columns)
        sets +=
            fmt::format("{}\"{}\"=?", sets.empty() ? "" : ",", sqlite3_column_name(row, column));
    return fmt::format("UPDATE \"{}\" SET {} WHERE rowid=?", table, sets);
}

/// Walks two states of a table side by side.
void WalkBoth(RawFile& before, RawFile& after, const std::string& table,
              const std::function<void(sqlite3_stmt*, sqlite3_stmt*)>& onRow) {
    const auto sql = "SELECT rowid, * FROM \"" + table + "\" ORDER BY rowid";
    RawStatement a(before.handle(), sql), b(after.handle(), sql);
    while (a.Step() && b.Step()) onRow(a.get(), b.get());
}

/// One statement a table writes every column that changed on any row: what a careful program
/// would use where the changed columns differ from row to row.
void CompareTable(RawFile& before, RawFile& after, const std::string& table,
                  std::vector<ChangedRows>& changes) {
    std::set<int> columns;
    WalkBoth(before, after, table, [&](sqlite3_stmt* a, sqlite3_stmt* b) {
        for (int i = 1; i < sqlite3_column_count(b); ++i)
            if (!SameCell(a, b, i)) columns.insert(i);
    });
    if (columns.empty()) return;
    ChangedRows group;
    WalkBoth(before, after, table, [&](sqlite3_stmt* a, sqlite3_stmt* b) {
        const bool changed =
            std::any_of(columns.begin(), columns.end(), [&](int i) { return !SameCell(a, b, i); });
        if (!changed) return;
        if (group.Update.empty()) group.Update = UpdateOf(table, b, columns);
        ChangedRow row{sqlite3_column_int64(b, 0), {}};
        for (const int i : columns)
            row.Values.push_back(
                sqlite3_column_type(b, i) == SQLITE_NULL ? kNull : sqlite3_column_double(b, i));
        group.Rows.push_back(std::move(row));
    });
    changes.push_back(std::move(group));
}

}  // namespace

RawFile::RawFile(const std::string& path) {
    if (sqlite3_open(path.c_str(), &handle_) != SQLITE_OK) throw std::runtime_error(path);
    Run("PRAGMA synchronous=FULL; PRAGMA cache_size=-262144; PRAGMA cache_spill=OFF;");
}

RawFile::~RawFile() { sqlite3_close(handle_); }

void RawFile::Run(const std::string& sql) {
    if (sqlite3_exec(handle_, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK)
        throw std::runtime_error(sql + ": " + sqlite3_errmsg(handle_));
}

std::vector<std::string> RawFile::Tables() {
    std::vector<std::string> names;
    RawStatement select(handle_, "SELECT name FROM sqlite_schema WHERE type='table'");
    while (select.Step())
        names.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(select.get(), 0)));
    return names;
}

std::size_t RawFile::ReadAll(const std::string& table) {
    RawStatement select(handle_, "SELECT * FROM \"" + table + "\"");
    std::size_t cells = 0;
    double sum = 0;
    while (select.Step()) {
        const int count = sqlite3_column_count(select.get());
        for (int i = 0; i < count; ++i) sum += sqlite3_column_double(select.get(), i);
        cells += static_cast<std::size_t>(count);
    }
    gSink = gSink + sum;
    return cells;
}

std::vector<ChangedRows> Differences(const std::string& before, const std::string& after) {
    RawFile a(before), b(after);
    std::vector<ChangedRows> changes;
    for (const auto& table : b.Tables())
        if (table != "ImportASCII" && table != "Log") CompareTable(a, b, table, changes);
    return changes;
}

std::size_t CellsOf(const std::vector<ChangedRows>& changes) {
    std::size_t cells = 0;
    for (const auto& group : changes)
        for (const auto& row : group.Rows) cells += row.Values.size();
    return cells;
}

void ReadAndWrite(const std::string& path, const std::vector<ChangedRows>& changes,
                  const Reads& reads) {
    RawFile file(path);
    file.Run("BEGIN IMMEDIATE");
    for (const auto& table : file.Tables())
        for (int left = table == "ImportASCII" ? 0 : reads(table); left > 0; --left)
            file.ReadAll(table);
    for (const auto& group : changes) {
        RawStatement update(file.handle(), group.Update);
        for (const auto& row : group.Rows) {
            int position = 0;
            for (const double value : row.Values) {
                if (std::isnan(value))
                    sqlite3_bind_null(update.get(), ++position);
                else
                    sqlite3_bind_double(update.get(), ++position, value);
            }
            sqlite3_bind_int64(update.get(), ++position, row.Rowid);
            update.Step();
            sqlite3_reset(update.get());
        }
    }
    file.Run("COMMIT");
}

void CopyTablesTwice(const std::string& path, const std::vector<std::string_view>& tables) {
    RawFile file(path);
    file.Run("BEGIN IMMEDIATE");
    for (const auto table : tables) {
        file.Run(fmt::format("CREATE TABLE copy1 AS SELECT * FROM {}", table));
        file.Run(fmt::format("DROP TABLE {}", table));
        file.Run(fmt::format("CREATE TABLE {} AS SELECT * FROM copy1", table));
        file.Run("DROP TABLE copy1");
        file.Run(fmt::format("CREATE UNIQUE INDEX ndx{0} ON {0} (LineNum)", table));
    }
    file.Run("COMMIT");
}

void InsertLines(const std::string& path, const std::string& text) {
    RawFile file(path);
    file.Run("BEGIN IMMEDIATE; CREATE TABLE lines (WorkSheet, Row REAL, Col REAL, Contents)");
    RawStatement insert(file.handle(), "INSERT INTO lines VALUES (?,?,?,?)");
    std::ifstream source(text, std::ios::binary);
    for (std::string line; std::getline(source, line);) {
        std::size_t start = 0;
        for (int field = 1; field <= 4; ++field) {
            const std::size_t end = field == 4 ? line.size() : line.find('\t', start);
            if (end == std::string::npos) throw std::runtime_error("no line of four: " + line);
            sqlite3_bind_text(insert.get(), field, line.data() + start,
                              static_cast<int>(end - start), SQLITE_STATIC);
            start = end + 1;
        }
        insert.Step();
        sqlite3_reset(insert.get());
    }
    file.Run("COMMIT");
}

}  // namespace zolmara::bench
