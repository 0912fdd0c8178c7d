#pragma once

// What tables a file holds, as the file itself declares them.

#include <sqlite3.h>

#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "store/base/TableDef.h"

namespace zolmara {

/// What happened to a table.
enum class Shape { New, Changed, Gone };

class Catalog {
public:
    explicit Catalog(sqlite3* handle) : handle_(handle) {}

    /// Null when there is no such table. Its indexes are not read.
    TablePtr Find(std::string_view name);
    /// The same with its indexes.
    TablePtr FindWithIndexes(std::string_view name);
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
    void LoadIndexes(TableInfo& table);
    void LoadNames();

    sqlite3* handle_;
    bool namesLoaded_ = false;
    std::vector<std::string> names_;
    std::map<std::string, std::string> byLower_;  ///< lower-cased name to name
    std::map<std::string, TablePtr> tables_;      ///< by lower-cased name
    std::set<std::string> withIndexes_;           ///< those of them whose indexes are known
    std::map<std::string, std::shared_ptr<std::int64_t>> versions_;
};

}  // namespace zolmara
