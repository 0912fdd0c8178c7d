#include "store/ChangeRecorder.h"

#include <algorithm>
#include <utility>

#include "store/Catalog.h"
#include "store/PackedRow.h"
#include "store/TableCells.h"
#include "store/base/Sqlite.h"
#include "store/base/TableSql.h"

namespace zolmara {
namespace {

std::string RowBeforeWrite(sqlite3* handle) {
    std::string row;
    const int count = sqlite3_preupdate_count(handle);
    for (int i = 0; i < count; ++i) {
        sqlite3_value* value = nullptr;
        if (sqlite3_preupdate_old(handle, i, &value) == SQLITE_OK) PackCell(row, value);
    }
    return row;
}

std::string RowNow(const SqliteStatement& select) {
    std::string row;
    for (int i = 0; i < sqlite3_column_count(select.get()); ++i)
        PackCell(row, sqlite3_column_value(select.get(), i));
    return row;
}

/// Both rows without what they have in common at either end.
RowChange Shortened(std::int64_t row, const std::string& before, const std::string& after) {
    RowChange change;
    change.Row = row;
    change.Existed = change.Exists = true;
    const std::size_t least = std::min(before.size(), after.size());
    while (change.Head < least && before[change.Head] == after[change.Head]) ++change.Head;
    while (change.Tail < least - change.Head &&
           before[before.size() - 1 - change.Tail] == after[after.size() - 1 - change.Tail])
        ++change.Tail;
    const auto middle = [&](const std::string& whole) {
        return whole.substr(change.Head, whole.size() - change.Head - change.Tail);
    };
    change.Before = middle(before);
    change.After = middle(after);
    return change;
}

}  // namespace

ChangeRecorder::ChangeRecorder(sqlite3* handle, CellCache& cells) : handle_(handle), cells_(cells) {
    sqlite3_preupdate_hook(handle, OnWrite, this);
}

void ChangeRecorder::Start(BatchWatch* watch) {
    watch_ = watch;
    running_ = true;
    certain_ = false;
    count_ = 0;
    tables_.clear();
    change_ = {};
}

void ChangeRecorder::Stop() {
    running_ = false;
    tables_.clear();
}

void ChangeRecorder::OnWrite(void* self, sqlite3*, int operation, const char*, const char* table,
                             sqlite3_int64 before, sqlite3_int64 after) {
    auto* const recorder = static_cast<ChangeRecorder*>(self);
    recorder->cells_.RowWritten(operation == SQLITE_UPDATE && before == after, table, before);
    recorder->Note(operation, table, operation == SQLITE_INSERT ? after : before);
}

void ChangeRecorder::Note(int operation, const char* table, std::int64_t row) {
    if (!running_ || certain_) return;
    auto& rows = tables_[table];
    if (rows.count(row)) return;
    if (++count_ > kMostRows) return GiveUpRows();
    rows[row] = operation == SQLITE_INSERT ? std::nullopt : std::optional(RowBeforeWrite(handle_));
}

void ChangeRecorder::MarkSchemaChange() {
    if (running_ && !certain_) GiveUpRows();
}

/// Nothing of the batch is in the file yet: another reader still sees it as it was.
void ChangeRecorder::GiveUpRows() {
    certain_ = true;
    tables_.clear();
    if (!watch_) return;
    change_.Before = watch_->KeepState();
    change_.Unknown = change_.Before == nullptr;
}

bool ChangeRecorder::NetChange() {
    if (certain_) return true;
    for (const auto& [table, rows] : tables_)
        if (CompareTable(table, rows, watch_ ? &change_ : nullptr) && !watch_) return true;
    return !change_.Tables.empty();
}

bool ChangeRecorder::ChangedTable(const std::string& table) {
    if (certain_) return true;
    const auto found = tables_.find(table);
    return found != tables_.end() && CompareTable(table, found->second, nullptr);
}

/// True when a row of the table differs; with `keep`, all that do are added to it.
bool ChangeRecorder::CompareTable(const std::string& table, const Rows& rows, BatchChange* keep) {
    TableChange changes{.Table = table, .Rows = {}};
    SqliteStatement select(handle_, "SELECT * FROM " + Quoted(table) + " WHERE rowid=?1");
    for (const auto& [row, before] : rows) {
        select.BindInteger(1, row);
        const bool exists = select.Step();
        const std::string now = exists ? RowNow(select) : std::string();
        select.Reset();
        if (exists == before.has_value() && (!exists || now == *before)) continue;
        if (!keep) return true;
        if (exists && before)
            changes.Rows.push_back(Shortened(row, *before, now));
        else
            changes.Rows.push_back(
                {row, before.has_value(), exists, 0, 0, before.value_or(""), now});
    }
    if (!keep || changes.Rows.empty()) return false;
    keep->Tables.push_back(std::move(changes));
    return true;
}

BatchChange ChangeRecorder::Take() { return std::exchange(change_, {}); }

}  // namespace zolmara
