#pragma once

// What stands behind a Database handle: the connection, the statements made ready, the batch.

#include <sqlite3.h>

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "store/Catalog.h"
#include "store/ChangeTracker.h"
#include "store/Dao.h"
#include "store/Sqlite.h"
#include "store/files/OpenMark.h"
#include "store/sql/SqlTranslator.h"

namespace zolmara {

/// A statement translated and prepared. Statements that differ only in their values share one.
struct Prepared {
    sql::Translation What;
    SqliteStatement Main;

    // Of a dynaset: one row by its rowid, and the writing of a set of its fields.
    SqliteStatement ReadRow;
    std::unordered_map<std::string, SqliteStatement> Writers;
    std::unordered_map<std::string, int> FieldByLowerName;
};
using PreparedPtr = std::shared_ptr<Prepared>;

/// A statement's text as it was given: the statement it is, and the literals in it.
struct Request {
    PreparedPtr Statement;
    std::vector<Variant> Values;
    std::vector<int> ArgumentOf;  ///< for each literal the argument it stands for, or -1
    int Arguments = 0;
};
using RequestPtr = std::shared_ptr<const Request>;

struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const {
        return std::hash<std::string_view>{}(text);
    }
};
template <class T>
using TextMap = std::unordered_map<std::string, T, TextHash, std::equal_to<>>;

struct Database::Impl {
    Impl(sqlite3* connection, std::string file, bool readOnly, std::unique_ptr<OpenMark> mark);
    ~Impl();
    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;

    // --- Statements
    RequestPtr Ask(std::string_view sql, bool snapshot);
    /// A condition on the rows of a table.
    RequestPtr AskFind(std::string_view criteria, const TablePtr& table);
    /// Binds a request's literals and arguments to its main statement.
    void BindAll(const Request& request, std::span<const Variant> args);
    int Execute(const Request& request, std::span<const Variant> args);

    // --- Writing
    /// Raises when a write cannot count any more: the transaction is gone.
    void CheckBatch() const;
    void RunWrite(SqliteStatement& statement, const TablePtr& table);
    /// A table has come, gone or changed its fields.
    void AfterSchemaChange(const std::string& table, Shape shape);
    /// What was changed is taken back: nothing that was known of the file is sure.
    void AfterLostChange();
    void RunSchemaChange(const std::string& sql, const std::string& table,
                         Shape shape = Shape::Changed);
    /// Runs a step of several statements on a table so that it has its whole effect or none.
    void RunWhole(const std::string& table, Shape shape, const std::function<void()>& step);

    // --- Batches
    void BeginBatch();
    void EndBatch();

    sqlite3* Handle;
    std::string Path;
    bool ReadOnly;
    std::unique_ptr<OpenMark> Mark;  ///< dropped behind the connection
    bool Closed = false;
    Catalog Tables;
    TextMap<RequestPtr> RequestsByText;
    TextMap<PreparedPtr> StatementsByKey;
    ChangeTracker Changes;
    int BatchDepth = 0;
    std::int64_t Commits = 0;

private:
    bool AnyNetChange();
    void SelectInto(const Request& request, std::span<const Variant> args);
    void CreateIndex(const sql::Translation& what);
    void RequireFields(const TableDef& table, const std::vector<std::string>& fields);
    PreparedPtr Prepare(const sql::TokenList& tokens, std::string_view sql, bool snapshot);
    RequestPtr Remember(std::string_view text, const sql::TokenList& tokens, PreparedPtr statement);
};

/// Spares values that a field already holds, or Nulls, from being checked again while they are
/// copied.
class WithoutChecks {
public:
    explicit WithoutChecks(sqlite3* handle);  ///< null changes nothing
    ~WithoutChecks();
    WithoutChecks(const WithoutChecks&) = delete;
    WithoutChecks& operator=(const WithoutChecks&) = delete;

private:
    sqlite3* handle_;
};

/// Puts a value into a parameter by the way its place demands.
void BindParameter(SqliteStatement& statement, int position, const Variant& value, sql::BindAs how,
                   int size);

}  // namespace zolmara
