#pragma once

// The yardstick: SQLite's C interface alone, doing the reads and writes that a step comes to.

#include <sqlite3.h>

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace zolmara::bench {

class RawFile {
public:
    explicit RawFile(const std::string& path);
    ~RawFile();
    RawFile(const RawFile&) = delete;
    RawFile& operator=(const RawFile&) = delete;

    void Run(const std::string& sql);
    std::vector<std::string> Tables();
    /// Steps over a table and takes every cell; gives the number of cells.
    std::size_t ReadAll(const std::string& table);
    sqlite3* handle() const { return handle_; }

private:
    sqlite3* handle_ = nullptr;
};

/// A row that a run changed: its values as they are afterwards; NaN stands for Null.
struct ChangedRow {
    std::int64_t Rowid;
    std::vector<double> Values;
};
/// The changed rows of a table, with the columns that changed on any of them.
struct ChangedRows {
    std::string Update;  ///< with a parameter for each column, then the rowid
    std::vector<ChangedRow> Rows;
};

/// What a run changed, from the file before and the file after it.
std::vector<ChangedRows> Differences(const std::string& before, const std::string& after);
std::size_t CellsOf(const std::vector<ChangedRows>& changes);

/// How often a table is read.
using Reads = std::function<int(const std::string& table)>;
/// Reads the tables so often and writes the changes in one durable transaction.
void ReadAndWrite(const std::string& path, const std::vector<ChangedRows>& changes,
                  const Reads& reads);

/// Copies each table twice in one durable transaction, as the place of a column demands.
void CopyTablesTwice(const std::string& path, const std::vector<std::string_view>& tables);
/// Puts each line of a text file, with four fields between tabs, into a table of a database that
/// is made for it, in one durable transaction.
void InsertLines(const std::string& path, const std::string& text);

}  // namespace zolmara::bench
