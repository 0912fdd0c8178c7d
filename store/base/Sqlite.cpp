#include "store/base/Sqlite.h"

#include "core/Globals.h"
#include "store/base/Holder.h"

namespace zolmara {
namespace {

StoreError::Kind KindOf(int code) {
    switch (code & 0xff) {
        case SQLITE_CORRUPT:
        case SQLITE_INTERRUPT:
            return StoreError::Kind::Damaged;
        case SQLITE_NOTADB:
            return StoreError::Kind::NotADatabase;
        case SQLITE_CANTOPEN:
        case SQLITE_PERM:
        case SQLITE_AUTH:
            return StoreError::Kind::CannotOpen;
        case SQLITE_READONLY:
            return StoreError::Kind::ReadOnly;
        case SQLITE_FULL:
            return StoreError::Kind::DiskFull;
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            return StoreError::Kind::Locked;
        case SQLITE_IOERR:
            return code == SQLITE_IOERR_READ || code == SQLITE_IOERR_SHORT_READ
                       ? StoreError::Kind::Damaged
                       : StoreError::Kind::DiskFull;
        default:
            return StoreError::Kind::Other;
    }
}

/// True for an error that no statement can be blamed for. What a statement of its own connection
/// stands in the way of is not of that kind.
bool IsTheFiles(int code) {
    const int primary = code & 0xff;
    return primary == SQLITE_NOMEM ||
           (primary != SQLITE_LOCKED && StoreError(KindOf(code), "").IsFileError());
}

/// A transaction whose file failed is never committed: whatever is caught and passed over on the
/// way out of it, the half that was done before is gone.
void TakeBack(sqlite3* handle) {
    if (!sqlite3_get_autocommit(handle))
        sqlite3_exec(handle, "ROLLBACK", nullptr, nullptr, nullptr);
}

bool IsFileTrouble(StoreError::Kind kind) { return StoreError(kind, "").IsFileError(); }

/// A trouble of the file's own is told by the file's name, whatever table was in hand.
std::string ContextOf(sqlite3* handle, StoreError::Kind kind, const std::string& context) {
    const char* file =
        handle && IsFileTrouble(kind) ? sqlite3_db_filename(handle, "main") : nullptr;
    if (!file || !*file || context.find('/') != std::string::npos) return context;
    return file;
}

/// The limit on a statement's steps is one on each of its runs.
void ForgetSteps(sqlite3_stmt* statement) {
    if (statement) sqlite3_stmt_status(statement, SQLITE_STMTSTATUS_VM_STEP, 1);
}

/// An error in words for the person who opened the file.
std::string TextOf(sqlite3* handle, int code, const std::string& file) {
    const int whole = handle ? sqlite3_extended_errcode(handle) : code;
    if ((whole & 0xff) == SQLITE_BUSY) return WhoHolds(file) + "; nothing was written";
    if (whole == SQLITE_READONLY_DBMOVED)
        return "another program has deleted, moved or replaced the file while it was open; nothing "
               "was written";
    if (code == SQLITE_INTERRUPT) return "is damaged: its tables do not come to an end";
    return handle ? sqlite3_errmsg(handle) : sqlite3_errstr(code);
}

}  // namespace

void ThrowSqlite(sqlite3* handle, int code, const std::string& context) {
    const int reason = handle ? sqlite3_extended_errcode(handle) : code;
    const auto kind = KindOf(reason);
    const auto where = ContextOf(handle, kind, context);
    const std::string text = TextOf(handle, code, where);
    if (handle && IsTheFiles(reason)) TakeBack(handle);
    throw StoreError(kind, where.empty() ? text : where + ": " + text);
}

void SqliteRun(sqlite3* handle, const std::string& sql, const std::string& context) {
    const int code = sqlite3_exec(handle, sql.c_str(), nullptr, nullptr, nullptr);
    if (code != SQLITE_OK) ThrowSqlite(handle, code, context);
}

SqliteStatement::SqliteStatement(sqlite3* handle, std::string_view sql, bool keep)
    : handle_(handle) {
    const int code = sqlite3_prepare_v3(handle, sql.data(), static_cast<int>(sql.size()),
                                        keep ? SQLITE_PREPARE_PERSISTENT : 0, &statement_, nullptr);
    if (code != SQLITE_OK) ThrowSqlite(handle, code, "");
}

SqliteStatement::SqliteStatement(SqliteStatement&& other) noexcept
    : handle_(other.handle_), statement_(other.statement_) {
    other.statement_ = nullptr;
}

SqliteStatement& SqliteStatement::operator=(SqliteStatement&& other) noexcept {
    std::swap(handle_, other.handle_);
    std::swap(statement_, other.statement_);
    return *this;
}

SqliteStatement::~SqliteStatement() { sqlite3_finalize(statement_); }

bool SqliteStatement::Step(const std::string& context) {
    const int code = sqlite3_step(statement_);
    if (code == SQLITE_ROW) return true;
    if (code == SQLITE_DONE) {
        ForgetSteps(statement_);
        return false;
    }
    try {
        ThrowSqlite(handle_, code, context);
    } catch (...) {
        Reset();
        throw;
    }
}

void SqliteStatement::Reset() {
    sqlite3_reset(statement_);
    ForgetSteps(statement_);
}

void SqliteStatement::Bind(int position, const Variant& value) {
    if (value.IsNull())
        sqlite3_bind_null(statement_, position);
    else if (value.IsInteger())
        BindInteger(position, value.AsInteger());
    else if (value.IsNumber())
        sqlite3_bind_double(statement_, position, value.Number());
    else if (value.IsDate())
        BindText(position, StoreDateText(value.AsDate()));
    else
        BindText(position, value.AsText());
}

void SqliteStatement::BindText(int position, std::string_view text) {
    sqlite3_bind_text(statement_, position, text.data(), static_cast<int>(text.size()),
                      SQLITE_TRANSIENT);
}

void SqliteStatement::BindInteger(int position, std::int64_t value) {
    sqlite3_bind_int64(statement_, position, value);
}

std::string SqliteStatement::Text(int column) const {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement_, column));
    const auto size = sqlite3_column_bytes(statement_, column);
    return text ? std::string(text, static_cast<std::size_t>(size)) : std::string();
}

std::int64_t SqliteStatement::Integer(int column) const {
    return sqlite3_column_int64(statement_, column);
}

Variant SqliteStatement::Value(int column) const {
    switch (sqlite3_column_type(statement_, column)) {
        case SQLITE_NULL:
            return {};
        case SQLITE_INTEGER:
            return Integer(column);
        case SQLITE_FLOAT:
            return sqlite3_column_double(statement_, column);
        default:
            return Text(column);
    }
}

Variant SqliteStatement::Value(int column, FieldType type) const {
    const int stored = sqlite3_column_type(statement_, column);
    if (stored == SQLITE_NULL) return {};
    const bool number = stored == SQLITE_INTEGER || stored == SQLITE_FLOAT;
    switch (type) {
        case FieldType::dbDouble:
            if (number) return sqlite3_column_double(statement_, column);
            break;
        case FieldType::dbCurrency:
            if (number) {
                const double value = sqlite3_column_double(statement_, column);
                if (Currency::Holds(value)) return Currency(value);
            }
            break;
        case FieldType::dbInteger:
            if (number) return Integer(column);
            break;
        case FieldType::dbDate:
            if (const auto date = ParseStoreDate(Text(column))) return *date;
            break;
        case FieldType::dbText:
        case FieldType::dbMemo:
            return Text(column);
    }
    return Value(column);
}

void SqliteStatement::Read(int column, FieldType type, Variant& into) const {
    auto* cell = sqlite3_column_value(statement_, column);
    const int stored = sqlite3_value_type(cell);
    if (type == FieldType::dbDouble && stored == SQLITE_FLOAT) {
        into.SetDouble(sqlite3_value_double(cell));
    } else if (stored == SQLITE_NULL) {
        if (!into.IsNull()) into = Variant();
    } else {
        into = Value(column, type);
    }
}

}  // namespace zolmara
