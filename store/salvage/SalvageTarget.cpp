#include "store/salvage/SalvageTarget.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <string_view>

#include "store/base/StoreError.h"
#include "store/base/TableSql.h"

namespace zolmara::salvage {
namespace {

constexpr const char* kSetUp =
    "PRAGMA page_size=4096; PRAGMA encoding='UTF-8'; PRAGMA journal_mode=MEMORY;"
    "PRAGMA synchronous=FULL; BEGIN IMMEDIATE;"
    "PRAGMA application_id=0x5A4D4C52; PRAGMA user_version=1;";

std::string UpperCased(std::string_view text) {
    std::string upper(text);
    std::transform(upper.begin(), upper.end(), upper.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::toupper(letter)); });
    return upper;
}

std::string Quoted(std::string_view name) {
    std::string quoted = "\"";
    for (const char letter : name)
        quoted += letter == '"' ? std::string("\"\"") : std::string(1, letter);
    return quoted + "\"";
}

StoreError::Kind KindOf(int code) {
    switch (code & 0xFF) {
        case SQLITE_FULL:
            return StoreError::Kind::DiskFull;
        case SQLITE_CANTOPEN:
            return StoreError::Kind::CannotOpen;
        case SQLITE_READONLY:
            return StoreError::Kind::ReadOnly;
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            return StoreError::Kind::Locked;
        case SQLITE_CORRUPT:
            return StoreError::Kind::Damaged;
        default:
            return StoreError::Kind::Other;
    }
}

[[noreturn]] void Raise(sqlite3* handle, const std::string& path) {
    const int code = handle ? sqlite3_extended_errcode(handle) : SQLITE_NOMEM;
    const std::string words = handle ? sqlite3_errmsg(handle) : "out of memory";
    throw StoreError(KindOf(code), words + ": " + path);
}

void Run(sqlite3* handle, const char* sql, const std::string& path) {
    if (sqlite3_exec(handle, sql, nullptr, nullptr, nullptr) != SQLITE_OK) Raise(handle, path);
}

// Failures that lie with the disk or the memory, and not with the statement.
bool IsGrave(int code) {
    switch (code & 0xFF) {
        case SQLITE_FULL:
        case SQLITE_IOERR:
        case SQLITE_NOMEM:
        case SQLITE_READONLY:
        case SQLITE_CANTOPEN:
        case SQLITE_CORRUPT:
            return true;
        default:
            return false;
    }
}

bool IsCreateStatement(const std::string& sql) {
    const std::string start = UpperCased(std::string_view(sql).substr(0, 20));
    return start.starts_with("CREATE TABLE ") || start.starts_with("CREATE INDEX ") ||
           start.starts_with("CREATE UNIQUE INDEX ");
}

struct Statement {
    sqlite3_stmt* Handle = nullptr;
    ~Statement() { sqlite3_finalize(Handle); }
    bool Prepare(sqlite3* handle, const std::string& sql) {
        const char* tail = nullptr;
        const int code = sqlite3_prepare_v2(handle, sql.data(), static_cast<int>(sql.size()) + 1,
                                            &Handle, &tail);
        return code == SQLITE_OK && Handle && (!tail || *tail == '\0');
    }
    std::string Text(int column) const {
        const auto* text = sqlite3_column_text(Handle, column);
        return text ? reinterpret_cast<const char*>(text) : "";
    }
};

Accepts AcceptsOf(const std::string& declared) {
    const std::string word = UpperCased(declared.substr(0, declared.find('(')));
    if (word == "SMALLINT" || word == "INTEGER") return Accepts::WholeNumber;
    if (word == "CURRENCY" || word == "DOUBLE") return Accepts::Number;
    if (word == "TEXT" || word == "LONGTEXT" || word == "DATETIME") return Accepts::Text;
    return Accepts::Anything;
}

bool IsLineColumn(const std::string& name) {
    const std::string upper = UpperCased(name);
    return upper == "LINENUM" || upper == "SEQNUM";
}

bool NamesColumn(const TableShape& table, const char* name) {
    return std::any_of(table.Columns.begin(), table.Columns.end(),
                       [&](const Column& column) { return UpperCased(column.Name) == name; });
}

// The rowid by the first of its names that no column of the table takes away.
std::string RowIdName(const TableShape& table) {
    for (const char* name : {"ROWID", "_ROWID_", "OID"}) {
        if (!NamesColumn(table, name)) return name;
    }
    return "";
}

std::string InsertSql(const TableShape& table, std::size_t width) {
    std::string names = RowIdName(table);
    std::string marks = "?1";
    for (std::size_t i = 0; i < width; ++i) {
        if (static_cast<int>(i) == table.RowIdColumn) continue;
        names += ", " + Quoted(table.Columns[i].Name);
        marks += ", ?" + std::to_string(i + 2);
    }
    return "INSERT INTO " + Quoted(table.Name) + " (" + names + ") VALUES (" + marks + ");";
}

bool BindValue(sqlite3_stmt* statement, int at, const Value& value) {
    const auto size = static_cast<sqlite3_uint64>(value.Bytes.size());
    switch (value.Kind) {
        case Value::Type::Null:
        case Value::Type::Lost:
            sqlite3_bind_null(statement, at);
            return false;
        case Value::Type::Integer:
            sqlite3_bind_int64(statement, at, value.Integer);
            return false;
        case Value::Type::Real:
            sqlite3_bind_double(statement, at, value.Real);
            return false;
        case Value::Type::Blob:
            sqlite3_bind_blob64(statement, at, value.Bytes.data(), size, SQLITE_TRANSIENT);
            return false;
        case Value::Type::Text:
            break;
    }
    std::string text = value.Bytes;
    const bool mended = MendText(text) > 0;
    sqlite3_bind_text64(statement, at, text.data(), size, SQLITE_TRANSIENT, SQLITE_UTF8);
    return mended;
}

}  // namespace

Target::Target(std::string path, const std::function<void(sqlite3*)>& prepare)
    : path_(std::move(path)) {
    std::error_code error;
    if (std::filesystem::exists(path_, error)) {
        throw StoreError(StoreError::Kind::CannotOpen, "file is already there: " + path_);
    }
    try {
        if (sqlite3_open_v2(path_.c_str(), &handle_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE,
                            nullptr) != SQLITE_OK) {
            Raise(handle_, path_);
        }
        if (prepare) prepare(handle_);
        Run(handle_, kSetUp, path_);
    } catch (...) {
        Close();
        std::filesystem::remove(path_, error);
        throw;
    }
}

Target::~Target() {
    Close();
    std::error_code error;
    if (!finished_) std::filesystem::remove(path_, error);
}

void Target::Close() {
    sqlite3_finalize(insert_);
    insert_ = nullptr;
    sqlite3_close(handle_);
    handle_ = nullptr;
}

bool Target::Create(const std::string& sql) {
    Statement statement;
    if (!IsCreateStatement(sql) || !statement.Prepare(handle_, sql)) return false;
    const int code = sqlite3_step(statement.Handle);
    if (IsGrave(code)) Raise(handle_, path_);
    return code == SQLITE_DONE;
}

std::optional<TableShape> Target::Describe(const std::string& table) {
    TableShape shape;
    shape.Name = table;
    Statement columns;
    if (!columns.Prepare(handle_, "PRAGMA table_info(" + Quoted(table) + ");"))
        Raise(handle_, path_);
    int keys = 0;
    while (sqlite3_step(columns.Handle) == SQLITE_ROW) {
        const std::string type = columns.Text(2);
        const bool key = sqlite3_column_int(columns.Handle, 5) > 0;
        if (key && ++keys == 1 && UpperCased(type) == "INTEGER") {
            shape.RowIdColumn = static_cast<int>(shape.Columns.size());
        }
        shape.Columns.push_back(
            {columns.Text(1), AcceptsOf(type), FieldOfType(columns.Text(1), type)});
    }
    if (shape.Columns.empty() || RowIdName(shape).empty()) return std::nullopt;
    if (keys > 1) shape.RowIdColumn = -1;
    shape.HasLineNum = IsLineColumn(shape.Columns.front().Name) && shape.RowIdColumn != 0;
    Statement rows;
    const bool hasRowIds =
        rows.Prepare(handle_, "SELECT " + RowIdName(shape) + " FROM " + Quoted(table) + ";");
    return hasRowIds ? std::optional(shape) : std::nullopt;
}

std::pair<int, std::size_t> Target::DescribeIndex(const std::string& index) {
    Statement columns;
    if (!columns.Prepare(handle_, "PRAGMA index_info(" + Quoted(index) + ");"))
        Raise(handle_, path_);
    int first = -1;
    std::size_t count = 0;
    while (sqlite3_step(columns.Handle) == SQLITE_ROW) {
        if (count++ == 0) first = sqlite3_column_int(columns.Handle, 1);
    }
    return {first, count};
}

void Target::PrepareInsert(const TableShape& table, std::size_t width) {
    if (insert_ && insertTable_ == table.Name && insertWidth_ == width) return;
    sqlite3_finalize(insert_);
    insert_ = nullptr;
    const std::string sql = InsertSql(table, width);
    if (sqlite3_prepare_v3(handle_, sql.c_str(), -1, SQLITE_PREPARE_PERSISTENT, &insert_,
                           nullptr) != SQLITE_OK) {
        Raise(handle_, path_);
    }
    insertTable_ = table.Name;
    insertWidth_ = width;
}

Target::Outcome Target::Insert(const TableShape& table, std::int64_t rowId, const Record& record,
                               bool& mended) {
    PrepareInsert(table, record.size());
    sqlite3_bind_int64(insert_, 1, rowId);
    mended = false;
    for (std::size_t i = 0; i < record.size(); ++i) {
        if (static_cast<int>(i) == table.RowIdColumn) continue;
        mended |= BindValue(insert_, static_cast<int>(i) + 2, record[i]);
    }
    const int code = sqlite3_step(insert_);
    if (IsGrave(code)) Raise(handle_, path_);
    const int detail = sqlite3_extended_errcode(handle_);
    sqlite3_reset(insert_);
    if (code == SQLITE_DONE) return Outcome::Kept;
    const bool repeated = detail == SQLITE_CONSTRAINT_UNIQUE ||
                          detail == SQLITE_CONSTRAINT_PRIMARYKEY ||
                          detail == SQLITE_CONSTRAINT_ROWID;
    return repeated ? Outcome::Repeated : Outcome::Refused;
}

void Target::Finish() {
    sqlite3_finalize(insert_);
    insert_ = nullptr;
    Run(handle_, "COMMIT;", path_);
    Statement check;
    if (!check.Prepare(handle_, "PRAGMA integrity_check;") ||
        sqlite3_step(check.Handle) != SQLITE_ROW) {
        Raise(handle_, path_);
    }
    if (check.Text(0) != "ok") {
        throw StoreError(StoreError::Kind::Damaged, check.Text(0) + ": " + path_);
    }
    finished_ = true;
}

}  // namespace zolmara::salvage
