#include "store/DatabaseImpl.h"

#include <fmt/format.h>

#include <algorithm>
#include <new>
#include <utility>

#include "core/Globals.h"
#include "store/CellReader.h"
#include "store/CommitsOfRun.h"
#include "store/files/NotConfirmed.h"

namespace zolmara {
namespace {

constexpr std::size_t kMostRequests = 4096;

std::int64_t commitsOfRun = 0;

int CountCommit(void* impl) {
    ++commitsOfRun;
    ++static_cast<Database::Impl*>(impl)->Commits;
    return 0;
}

/// A number in a statement counts as its text does.
Variant AsWritten(const Variant& value) {
    return value.IsDouble() ? Variant(ThroughText(value.AsDouble())) : value;
}

Variant AsNumber(const Variant& value) {
    if (value.IsText())
        if (const auto number = ParseNumber(value.AsText())) return *number;
    return AsWritten(value);
}

Variant AsCurrency(const Variant& value) {
    Variant number = AsNumber(value);
    if (!number.IsNumber() || !Currency::Holds(number.Number())) return number;
    return Currency(number.Number()).ToDouble();
}

Variant AsInteger(const Variant& value) {
    Variant number = AsNumber(value);
    if (!number.IsNumber() || std::abs(number.Number()) > 1e15) return number;
    return std::int64_t{std::llrint(number.Number())};
}

Variant AsDate(const Variant& value) {
    if (value.IsText())
        if (const auto date = ParseDate(value.AsText())) return *date;
    return value;
}

void BindAsText(SqliteStatement& statement, int position, const Variant& value, int size) {
    if (value.IsNull()) return statement.Bind(position, value);
    const auto text = Text(value);
    statement.BindText(position, size > 0 ? LeftText(text, static_cast<std::size_t>(size)) : text);
}

}  // namespace

std::int64_t CommitsOfRun() { return commitsOfRun; }

WithoutChecks::WithoutChecks(sqlite3* handle) : handle_(handle) {
    if (handle_) SqliteRun(handle_, "PRAGMA ignore_check_constraints=ON");
}

WithoutChecks::~WithoutChecks() {
    if (handle_)
        sqlite3_exec(handle_, "PRAGMA ignore_check_constraints=OFF", nullptr, nullptr, nullptr);
}

void BindParameter(SqliteStatement& statement, int position, const Variant& value, sql::BindAs how,
                   int size) {
    switch (how) {
        case sql::BindAs::Plain:
            return statement.Bind(position, AsWritten(value));
        case sql::BindAs::Currency:
            return statement.Bind(position, AsCurrency(value));
        case sql::BindAs::Number:
            return statement.Bind(position, AsNumber(value));
        case sql::BindAs::Integer:
            return statement.Bind(position, AsInteger(value));
        case sql::BindAs::Text:
            return BindAsText(statement, position, value, size);
        case sql::BindAs::Date:
            return statement.Bind(position, AsDate(value));
    }
}

Database::Impl::Impl(sqlite3* connection, std::string file, bool readOnly,
                     std::unique_ptr<OpenMark> mark)
    : Handle(connection),
      Path(std::move(file)),
      ReadOnly(readOnly),
      Mark(std::move(mark)),
      Tables(connection),
      Changes(connection, Cells),
      Beside(connection) {
    sqlite3_commit_hook(Handle, CountCommit, this);
    PrepareCellReading(Handle);
    Others.Look(*this);
}

Database::Impl::~Impl() {
    EndWatch();
    sqlite3_preupdate_hook(Handle, nullptr, nullptr);
    RequestsByText.clear();
    StatementsByKey.clear();
    sqlite3_close_v2(Handle);
}

// --- Statements

RequestPtr Database::Impl::Ask(std::string_view sql, bool snapshot) {
    RequestPtr request = AskUnnoted(sql, snapshot);
    for (const TablePtr& table : request->Statement->What.Tables) Note(*table);
    return request;
}

RequestPtr Database::Impl::AskUnnoted(std::string_view sql, bool snapshot) {
    if (Closed) throw StoreError(StoreError::Kind::Other, "no Cost Report File is open");
    LookForChanges();
    const auto found = RequestsByText.find(sql);
    if (found != RequestsByText.end() && !snapshot) return found->second;
    const auto tokens = sql::Tokenize(sql);
    auto statement = Prepare(tokens, sql, snapshot);
    return Remember(snapshot ? std::string_view() : sql, tokens, std::move(statement));
}

PreparedPtr Database::Impl::Prepare(const sql::TokenList& tokens, std::string_view sql,
                                    bool snapshot) {
    const auto key = (snapshot ? "S|" : "|") + tokens.Key;
    if (const auto found = StatementsByKey.find(key); found != StatementsByKey.end())
        return found->second;
    auto statement = std::make_shared<Prepared>();
    auto& what = statement->What;
    const auto find = [this](const std::string& name) { return Tables.Find(name); };
    what = sql::Translate(sql::Parse(tokens, sql), find, tokens, snapshot);
    using Kind = sql::Statement::Kind;
    if (what.Kind == Kind::SelectInto || what.Kind == Kind::CreateIndex ||
        what.Kind == Kind::DropTable)
        return statement;
    statement->Main = SqliteStatement(Handle, what.Sql, true);
    for (std::size_t i = what.Columns.size(); i-- > 0;)
        statement->FieldByLowerName[LCase(what.Columns[i].Field.Name)] = static_cast<int>(i);
    return StatementsByKey[key] = statement;
}

RequestPtr Database::Impl::AskFind(std::string_view criteria, const TablePtr& table) {
    LookForChanges();
    Note(*table);
    const auto text = fmt::format("F|{}|{}", table->Def.Name, criteria);
    if (const auto found = RequestsByText.find(text); found != RequestsByText.end())
        return found->second;
    const auto tokens = sql::Tokenize(criteria);
    auto& statement = StatementsByKey[fmt::format("F|{}|{}", table->Def.Name, tokens.Key)];
    if (!statement) {
        auto fresh = std::make_shared<Prepared>();
        fresh->What = sql::TranslateFind(*sql::ParseCondition(tokens, criteria), table, tokens);
        fresh->Main = SqliteStatement(Handle, fresh->What.Sql, true);
        statement = std::move(fresh);
    }
    return Remember(text, tokens, statement);
}

RequestPtr Database::Impl::Remember(std::string_view text, const sql::TokenList& tokens,
                                    PreparedPtr statement) {
    auto request = std::make_shared<Request>();
    request->Values = tokens.Values;
    for (const auto kind : tokens.Kinds)
        request->ArgumentOf.push_back(kind == sql::LiteralKind::Argument ? request->Arguments++
                                                                         : -1);
    const bool keep = !text.empty() && statement->Main;
    request->Statement = std::move(statement);
    if (!keep) return request;
    if (RequestsByText.size() >= kMostRequests) RequestsByText.clear();
    RequestsByText.emplace(text, request);
    return request;
}

void Database::Impl::BindAll(const Request& request, std::span<const Variant> args) {
    if (static_cast<std::size_t>(request.Arguments) != args.size())
        throw StoreError(StoreError::Kind::Other,
                         fmt::format("{} values given for {} parameters: {}", args.size(),
                                     request.Arguments, request.Statement->What.Sql));
    auto& statement = request.Statement->Main;
    int position = 0;
    for (const auto& parameter : request.Statement->What.Parameters) {
        const auto literal = static_cast<std::size_t>(parameter.Literal);
        const int argument = request.ArgumentOf[literal];
        const Variant& value =
            argument < 0 ? request.Values[literal] : args[static_cast<std::size_t>(argument)];
        BindParameter(statement, ++position, value, parameter.How, parameter.Size);
    }
}

int Database::Impl::Execute(const Request& request, std::span<const Variant> args) {
    const auto& what = request.Statement->What;
    switch (what.Kind) {
        case sql::Statement::Kind::Select:
            throw StoreError(StoreError::Kind::Other, "a SELECT statement is opened, not executed");
        case sql::Statement::Kind::SelectInto:
            SelectInto(request, args);
            return 0;
        case sql::Statement::Kind::CreateIndex:
            CreateIndex(what);
            return 0;
        case sql::Statement::Kind::DropTable:
            RunSchemaChange("DROP TABLE " + Quoted(what.Table->Def.Name), what.Table->Def.Name,
                            Shape::Gone);
            return 0;
        default:
            break;
    }
    BindAll(request, args);
    // A statement that meets nothing leaves the last count as it was.
    const auto before = sqlite3_total_changes64(Handle);
    RunWrite(request.Statement->Main, what.Table);
    return static_cast<int>(sqlite3_total_changes64(Handle) - before);
}

// --- Writing

void Database::Impl::CheckBatch() const {
    if (BatchDepth > 0 && sqlite3_get_autocommit(Handle)) throw LostBatch();
}

void Database::Impl::RunWrite(SqliteStatement& statement, const TablePtr& table) {
    if (NeedsBatch()) return RunInBatch([&] { RunWrite(statement, table); });
    CheckBatch();
    const auto before = sqlite3_total_changes64(Handle);
    statement.Step(table->Def.Name);
    statement.Reset();
    if (sqlite3_total_changes64(Handle) == before) return;
    ++*table->Version;
    Cells.VersionGrew(*table);
    if (BatchDepth == 0) Others.TakeOwnCommit(Handle);
}

void Database::Impl::ForgetStatements() {
    RequestsByText.clear();
    StatementsByKey.clear();
}

void Database::Impl::AfterSchemaChange(const std::string& table, Shape shape) {
    ForgetStatements();
    if (BatchDepth == 0) Others.TakeOwnCommit(Handle);
    Tables.Forget(table, shape);
    Changes.MarkSchemaChange();
}

void Database::Impl::AfterLostChange() {
    ForgetStatements();
    Tables.Refresh();
    Changes.MarkSchemaChange();
}

void Database::Impl::RunSchemaChange(const std::string& sql, const std::string& table,
                                     Shape shape) {
    if (NeedsBatch()) return RunInBatch([&] { RunSchemaChange(sql, table, shape); });
    CheckBatch();
    SqliteRun(Handle, sql, table);
    AfterSchemaChange(table, shape);
}

void Database::Impl::RunWhole(const std::string& table, Shape shape,
                              const std::function<void()>& step) {
    RunWhole([&] {
        step();
        AfterSchemaChange(table, shape);
    });
}

void Database::Impl::RunWhole(const std::function<void()>& step) {
    if (NeedsBatch()) return RunInBatch([&] { RunWhole(step); });
    CheckBatch();
    SqliteRun(Handle, "SAVEPOINT step");
    try {
        step();
        SqliteRun(Handle, "RELEASE step");
    } catch (...) {
        sqlite3_exec(Handle, "ROLLBACK TO step; RELEASE step", nullptr, nullptr, nullptr);
        AfterLostChange();
        throw;
    }
}

void Database::Impl::SelectInto(const Request& request, std::span<const Variant> args) {
    const auto& what = request.Statement->What;
    RunWhole(what.NewTable.Name, Shape::New, [&] {
        SqliteRun(Handle, CreateTableSql(what.NewTable), what.NewTable.Name);
        const WithoutChecks quiet(what.CopiesFields ? Handle : nullptr);
        request.Statement->Main = SqliteStatement(Handle, what.Sql);
        BindAll(request, args);
        request.Statement->Main.Step(what.NewTable.Name);
        request.Statement->Main = SqliteStatement();
    });
}

void Database::Impl::CreateIndex(const sql::Translation& what) {
    RunWhole(what.Table->Def.Name, Shape::Changed, [&] {
        RequireFields(what.Table->Def, what.RequiredFields);
        SqliteRun(Handle, what.Sql, what.Table->Def.Name);
    });
}

/// SQLite lays NOT NULL down with the table alone, so the table is made again with it.
void Database::Impl::RequireFields(const TableDef& table, const std::vector<std::string>& fields) {
    TableDef changed = table;
    bool any = false;
    for (const auto& name : fields) {
        auto& field = changed.Fields[static_cast<std::size_t>(changed.FieldIndex(name))];
        any = any || !field.Required;
        field.Required = true;
    }
    if (!any) return;
    std::vector<std::string> indexes;
    SqliteStatement select(Handle,
                           "SELECT sql FROM sqlite_schema WHERE type='index' AND "
                           "tbl_name=?1 AND sql IS NOT NULL");
    select.BindText(1, table.Name);
    while (select.Step()) indexes.push_back(select.Text(0));
    changed.Name = table.Name + "~";
    SqliteRun(Handle, CreateTableSql(changed), table.Name);
    SqliteRun(
        Handle,
        fmt::format("INSERT INTO {} SELECT * FROM {}", Quoted(changed.Name), Quoted(table.Name)),
        table.Name);
    SqliteRun(Handle, "DROP TABLE " + Quoted(table.Name), table.Name);
    SqliteRun(Handle,
              fmt::format("ALTER TABLE {} RENAME TO {}", Quoted(changed.Name), Quoted(table.Name)),
              table.Name);
    for (const auto& index : indexes) SqliteRun(Handle, index, table.Name);
}

// --- Batches

void Database::Impl::RunInBatch(const std::function<void()>& work) {
    BeginBatch();
    try {
        work();
    } catch (const StoreError& error) {
        EndBatch(&error);
        throw;
    } catch (const std::bad_alloc&) {
        // Where memory gives out is no place that anybody chose to stop at.
        TakeBatchBack();
        EndBatch(nullptr);
        throw;
    } catch (...) {
        EndBatch(nullptr);
        throw;
    }
    EndBatch(nullptr);
}

void Database::Impl::EndWatch() {
    if (BatchWatch* const watch = std::exchange(Listener, nullptr)) watch->Gone();
}

void Database::Impl::BeginBatch() {
    if (ReadOnly) throw StoreError(StoreError::Kind::ReadOnly, Path + ": the file is read-only");
    if (BatchDepth++ > 0) return;
    Beside.LetGo();
    try {
        SqliteRun(Handle, "BEGIN IMMEDIATE", Path);
    } catch (...) {
        --BatchDepth;
        throw;
    }
    BatchTrouble.reset();
    Others.Look(*this);
    Changes.Start(Listener);
}

/// What cannot be compared counts as a change.
bool Database::Impl::AnyNetChange() {
    try {
        return Changes.NetChange();
    } catch (const StoreError&) {
        Changes.MarkUnknown();
        return true;
    }
}

constexpr std::string_view kStands = "the change is in the file";

/// Where the disk fails behind the deletion of the journal there is nothing left to take the change
/// back by: it stands for everybody, and only its safety was not confirmed.
void Database::Impl::Commit() {
    const int code = sqlite3_exec(Handle, "COMMIT", nullptr, nullptr, nullptr);
    if (code == SQLITE_OK) return;
    if (sqlite3_extended_errcode(Handle) != SQLITE_IOERR_DIR_FSYNC) ThrowSqlite(Handle, code, Path);
    TakeBatchBack();
    throw NotConfirmed(Path, kStands);
}

StoreError Database::Impl::LostBatch() const {
    static constexpr std::string_view kNothingKept = "; nothing of this operation was kept";
    const auto kind = BatchTrouble ? BatchTrouble->kind() : StoreError::Kind::DiskFull;
    std::string text =
        BatchTrouble ? BatchTrouble->what() : Path + ": the file could not be read or written";
    if (!text.ends_with(kNothingKept) && !text.ends_with(UnconfirmedWords(kStands)))
        text += kNothingKept;
    return StoreError(kind, text);
}

/// What a batch has in memory beside the file can go behind its transaction.
class AtEnd {
public:
    explicit AtEnd(MemoryBeside& beside) : beside_(beside) {}
    ~AtEnd() { beside_.LetGo(); }
    AtEnd(const AtEnd&) = delete;
    AtEnd& operator=(const AtEnd&) = delete;

private:
    MemoryBeside& beside_;
};

/// The transaction is gone when the file failed in its course: what a step after that did not
/// notice must not stand alone.
void Database::Impl::EndBatch(const StoreError* error) {
    if (error && !BatchTrouble && sqlite3_get_autocommit(Handle)) BatchTrouble = *error;
    if (BatchDepth > 1) {
        --BatchDepth;
        return;
    }
    const AtEnd letGo(Beside);
    const bool changed = AnyNetChange();
    Changes.Stop();
    try {
        CheckBatch();
        --BatchDepth;
        changed ? Commit() : SqliteRun(Handle, "ROLLBACK", Path);
    } catch (const StoreError& failure) {
        BatchDepth = 0;
        if (!sqlite3_get_autocommit(Handle))
            sqlite3_exec(Handle, "ROLLBACK", nullptr, nullptr, nullptr);
        AfterLostChange();
        if (!BatchTrouble) BatchTrouble = failure;
        throw LostBatch();
    }
    changed ? Others.TakeOwnCommit(Handle) : Cells.Over([&] { Tables.TouchAll(); });
    if (changed && Listener) Listener->Committed(Changes.Take());
}

void Database::Impl::TakeBatchBack() {
    if (!sqlite3_get_autocommit(Handle))
        sqlite3_exec(Handle, "ROLLBACK", nullptr, nullptr, nullptr);
}

}  // namespace zolmara
