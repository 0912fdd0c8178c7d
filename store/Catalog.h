#pragma once

// What tables a file holds, as the file itself declares them.

#include <sqlite3.h>

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "store/Dao.h"

namespace zolmara {

/// A table as the store has it. `Version` grows with every write to the table, so that a row
/// read before is known to be old; it outlives a change of the table's shape.
struct TableInfo {
    TableDef Def;
    std::shared_ptr<std::int64_t> Version;
};
using TablePtr = std::shared_ptr<TableInfo>;

/// A name in double quotes, as a generated statement carries it.
std::string Quoted(std::string_view name);

/// The declaration of a field with its type and the check that keeps out what it cannot hold.
std::string FieldDeclaration(const FieldDef& field);
std::string CreateTableSql(const TableDef& table);
/// A field by the type that a file declares for it. A type that the system does not declare
/// counts as memo.
FieldDef FieldOfType(std::string name, std::string_view declared);

/// What happened to a table.
enum class Shape { New, Changed, Gone };

class Catalog {
public:
    explicit Catalog(sqlite3* handle) : handle_(handle) {}

    /// Null when there is no such table.
    TablePtr Find(std::string_view name);
    std::vector<std::string> Names();
    /// Forgets all that was read of the tables' shapes.
    void ReadAgain();
    /// The same, and marks every table as written to.
    void Refresh();
    /// Forgets what was read of one table.
    void Forget(const std::string& name, Shape shape);
    /// Marks every table as written to.
    void TouchAll();

private:
    TablePtr Load(const std::string& name);
    void LoadNames();

    sqlite3* handle_;
    bool namesLoaded_ = false;
    std::vector<std::string> names_;
    std::map<std::string, std::string> byLower_;  ///< lower-cased name to name
    std::map<std::string, TablePtr> tables_;      ///< by lower-cased name
    std::map<std::string, std::shared_ptr<std::int64_t>> versions_;
};

}  // namespace zolmara
