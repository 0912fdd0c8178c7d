// A change taken back, or put in again.

#include <fmt/format.h>
#include <unistd.h>

#include "store/BatchChange.h"
#include "store/Connection.h"
#include "store/DatabaseImpl.h"
#include "store/Files.h"
#include "store/PackedRow.h"
#include "store/WholeCrf.h"
#include "store/WholeStep.h"

namespace zolmara {
namespace {

constexpr int kTries = 100;
constexpr useconds_t kPause = 10000;

StoreError Differs(const std::string& table) {
    return {StoreError::Kind::Other,
            fmt::format("table {} is not as the change left it; nothing was taken back", table)};
}

/// The rows of one table on their way. All that are there go first, then all that are to be there
/// come: a unique index would stand in the way of one row after the other.
class TableApplication {
public:
    TableApplication(Database::Impl& impl, const TableChange& change, bool forward)
        : impl_(impl), change_(change), forward_(forward), table_(impl.Tables.Find(change.Table)) {
        if (!table_) throw Differs(change.Table);
        Prepare();
    }

    void Run() {
        std::vector<std::string> wanted;
        for (const RowChange& row : change_.Rows) wanted.push_back(Wanted(row));
        for (const RowChange& row : change_.Rows)
            if (IsThere(row)) Delete(row.Row);
        for (std::size_t i = 0; i < change_.Rows.size(); ++i)
            if (IsWanted(change_.Rows[i])) Insert(change_.Rows[i].Row, wanted[i]);
    }

private:
    bool IsThere(const RowChange& row) const { return forward_ ? row.Existed : row.Exists; }
    bool IsWanted(const RowChange& row) const { return forward_ ? row.Exists : row.Existed; }
    const std::string& Old(const RowChange& row) const { return forward_ ? row.Before : row.After; }
    const std::string& New(const RowChange& row) const { return forward_ ? row.After : row.Before; }

    void Prepare() {
        const std::string name = Quoted(table_->Def.Name);
        std::string fields;
        std::string marks;
        for (const FieldDef& field : table_->Def.Fields) {
            fields += "," + Quoted(field.Name);
            marks += ",?";
        }
        read_ = SqliteStatement(impl_.Handle, "SELECT * FROM " + name + " WHERE rowid=?1");
        delete_ = SqliteStatement(impl_.Handle, "DELETE FROM " + name + " WHERE rowid=?1");
        insert_ = SqliteStatement(impl_.Handle, fmt::format("INSERT INTO {} (rowid{}) VALUES (?{})",
                                                            name, fields, marks));
    }

    /// The row as it stands; it must be as the change left it.
    std::string Standing(const RowChange& row) {
        read_.BindInteger(1, row.Row);
        const bool there = read_.Step(table_->Def.Name);
        std::string packed;
        for (int i = 0; there && i < sqlite3_column_count(read_.get()); ++i)
            PackCell(packed, sqlite3_column_value(read_.get(), i));
        read_.Reset();
        const bool asLeft = there == IsThere(row) &&
                            (!there || (packed.size() == row.Head + Old(row).size() + row.Tail &&
                                        packed.compare(row.Head, Old(row).size(), Old(row)) == 0));
        if (!asLeft) throw Differs(table_->Def.Name);
        return packed;
    }

    std::string Wanted(const RowChange& row) {
        const std::string standing = Standing(row);
        if (!IsWanted(row)) return {};
        if (!IsThere(row)) return New(row);
        return standing.substr(0, row.Head) + New(row) +
               standing.substr(standing.size() - row.Tail);
    }

    void Delete(std::int64_t row) {
        delete_.BindInteger(1, row);
        impl_.RunWrite(delete_, table_);
    }

    void Insert(std::int64_t row, const std::string& cells) {
        insert_.BindInteger(1, row);
        if (!BindPackedRow(insert_.get(), cells, 2, static_cast<int>(table_->Def.Fields.size())))
            throw Differs(table_->Def.Name);
        impl_.RunWrite(insert_, table_);
    }

    Database::Impl& impl_;
    const TableChange& change_;
    bool forward_;
    TablePtr table_;
    SqliteStatement read_;
    SqliteStatement delete_;
    SqliteStatement insert_;
};

/// The pages of one file into another that is open. Readers of it in other programs are waited
/// for a moment.
void CopyOver(sqlite3* from, Database::Impl& to) {
    sqlite3_backup* const copy = sqlite3_backup_init(to.Handle, "main", from, "main");
    if (!copy) ThrowSqlite(to.Handle, sqlite3_errcode(to.Handle), to.Path);
    // A step of no pages takes the lock.
    int step = sqlite3_backup_step(copy, 0);
    for (int tries = 0; tries < kTries && (step == SQLITE_BUSY || step == SQLITE_LOCKED); ++tries) {
        ::usleep(kPause);
        step = sqlite3_backup_step(copy, 0);
    }
    const bool news = step == SQLITE_OK && to.Others.HasNews(to.Handle);
    if (step == SQLITE_OK && !news) step = sqlite3_backup_step(copy, -1);
    const int end = sqlite3_backup_finish(copy);
    if (news)
        Fail(StoreError::Kind::Other, to.Path,
             "another program has changed the file; nothing was undone");
    if (step != SQLITE_DONE) ThrowSqlite(nullptr, step, to.Path);
    if (end != SQLITE_OK) ThrowSqlite(to.Handle, end, to.Path);
}

}  // namespace

void ApplyRows(Database& db, const std::vector<TableChange>& tables, bool forward) {
    RunWholeStep(db, [&] {
        Database::Impl& impl = db.impl();
        // What is stored is stored again: a value that a repair let in is none to be refused now.
        const WithoutChecks quiet(impl.Handle);
        for (const TableChange& change : tables) TableApplication(impl, change, forward).Run();
    });
}

StateFile::StateFile(const std::string& source, std::string path) : path_(std::move(path)) {
    try {
        CopyContent(source, path_);
    } catch (...) {
        DeleteFile(path_);
        throw;
    }
}

StateFile::~StateFile() { DeleteFile(path_); }

void BringBack(Database& db, const StateFile& state) {
    Database::Impl& impl = db.impl();
    impl.ForgetStatements();
    Connection from;
    Connect(from, state.Path(), SQLITE_OPEN_READONLY);
    CopyOver(from.Handle, impl);
    ++impl.Commits;
    impl.Others.TakeOwnCommit(impl.Handle);
    impl.Tables.Refresh();
}

void WatchBatches(Database& db, BatchWatch* watch) { db.impl().Listener = watch; }

BatchWatch* WatchOf(Database& db) { return db.impl().Listener; }

}  // namespace zolmara
