#pragma once

// The new database file that a repair writes.

#include <sqlite3.h>

#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "store/salvage/SalvageTree.h"

namespace zolmara::salvage {

/// A new file, written in one transaction. Unless it is finished it is removed again. Failures
/// of the disk raise StoreError.
class Target {
public:
    /// The path must not exist. `prepare` may give the connection text orders and functions.
    Target(std::string path, const std::function<void(sqlite3*)>& prepare);
    ~Target();
    Target(const Target&) = delete;
    Target& operator=(const Target&) = delete;

    /// Runs a CREATE TABLE or CREATE INDEX statement; false where it is none or is refused.
    bool Create(const std::string& sql);
    /// The columns of a table that was created; nothing where there is no such table with rowids.
    std::optional<TableShape> Describe(const std::string& table);
    /// Position in its table of an index's first column (-1 for none), and how many it has.
    std::pair<int, std::size_t> DescribeIndex(const std::string& index);

    enum class Outcome { Kept, Refused, Repeated };
    /// Writes a row. `mended` becomes true where letters of a text had to be replaced.
    Outcome Insert(const TableShape& table, std::int64_t rowId, const Record& record, bool& mended);

    /// Commits, and checks the file. StoreError::Damaged where the new file is not sound.
    void Finish();

private:
    void PrepareInsert(const TableShape& table, std::size_t width);
    void Close();

    std::string path_;
    sqlite3* handle_ = nullptr;
    sqlite3_stmt* insert_ = nullptr;
    std::string insertTable_;
    std::size_t insertWidth_ = 0;
    bool finished_ = false;
};

}  // namespace zolmara::salvage
