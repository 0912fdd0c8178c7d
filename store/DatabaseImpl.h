#pragma once

// What stands behind a Database handle: the connection, the statements made ready, the batch.

#include <sqlite3.h>

#include <array>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "store/Catalog.h"
#include "store/ChangeRecorder.h"
#include "store/Dao.h"
#include "store/MemoryBeside.h"
#include "store/TableCells.h"
#include "store/TableWatch.h"
#include "store/base/Sqlite.h"
#include "store/base/TableSql.h"
#include "store/files/OpenMark.h"
#include "store/sql/SqlTranslator.h"

namespace zolmara {

class AmountSpool;

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

/// Knows by the file's change counter whether another program wrote to it.
class OtherPrograms {
public:
    void Look(Database::Impl& impl);
    /// Whether the file is not as the last look or own commit left it. Asks SQLite nothing.
    bool HasNews(sqlite3* handle);
    /// One commit of this program's own is no news.
    void TakeOwnCommit(sqlite3* handle);

private:
    /// The change counter and what follows it, up to the number of the schema.
    using Mark = std::array<unsigned char, 20>;
    bool ReadMark(sqlite3* handle, Mark& mark);
    static std::uint32_t CounterOf(const Mark& mark);

    sqlite3_file* file_ = nullptr;
    bool known_ = false;
    Mark seen_{};
};

struct Database::Impl {
    Impl(sqlite3* connection, std::string file, bool readOnly, std::unique_ptr<OpenMark> mark);
    ~Impl();
    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;

    // --- Others
    /// Looks whether another program changed the file since the last look, and forgets what was
    /// known of it. In a batch nobody can.
    void LookForChanges() {
        if (BatchDepth == 0) Others.Look(*this);
    }

    void Note(const TableInfo& table) const {
        if (Watch) Watch->Note(table);
    }

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
    void ForgetStatements();
    /// What was changed is taken back: nothing that was known of the file is sure.
    void AfterLostChange();
    void RunSchemaChange(const std::string& sql, const std::string& table,
                         Shape shape = Shape::Changed);
    /// Runs a step of several statements on a table so that it has its whole effect or none.
    void RunWhole(const std::string& table, Shape shape, const std::function<void()>& step);
    /// The same of a step that tells itself what tables it changed.
    void RunWhole(const std::function<void()>& step);

    // --- Batches
    /// Runs work as a batch, whatever way out it takes; see RunBatch.
    void RunInBatch(const std::function<void()>& work);
    void BeginBatch();
    /// Ends a batch that an error ended, or none. StoreError when nothing of it was kept.
    void EndBatch(const StoreError* error);
    void TakeBatchBack();
    /// Nobody is told of the file any more.
    void EndWatch();

    sqlite3* Handle;
    std::string Path;
    bool ReadOnly;
    std::unique_ptr<OpenMark> Mark;  ///< dropped behind the connection
    bool Closed = false;
    Catalog Tables;
    TextMap<RequestPtr> RequestsByText;
    TextMap<PreparedPtr> StatementsByKey;
    CellCache Cells;
    AmountSpool* Spool = nullptr;  ///< of amounts that pass by
    bool ReadingThrough = false;   ///< what is read goes by
    ChangeRecorder Changes;
    MemoryBeside Beside;
    BatchWatch* Listener = nullptr;  ///< of what batches change
    int BatchDepth = 0;
    std::optional<StoreError> BatchTrouble;  ///< the file's error that took the batch back
    std::int64_t Commits = 0;
    OtherPrograms Others;
    TableWatch* Watch = nullptr;
    std::shared_ptr<void> Attached;  ///< what AttachedTo keeps

private:
    RequestPtr AskUnnoted(std::string_view sql, bool snapshot);
    bool AnyNetChange();
    /// True where a write is to be a batch of its own, for the watch.
    bool NeedsBatch() const { return Listener && BatchDepth == 0; }
    void Commit();
    StoreError LostBatch() const;
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
