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

constexpr std::size_t kUsualCell = 10;  ///< bytes of a number

/// Packs a row cell by cell; where a number is given, that instead of what the cell holds.
class Packer {
public:
    Packer(int fields, const FormerNumbers& numbers) : next_(numbers.begin()), end_(numbers.end()) {
        row_.reserve(static_cast<std::size_t>(fields) * kUsualCell);
    }
    /// Cells come in the order of their fields.
    template <class Cell>
    void Add(int field, const Cell& cell) {
        if (next_ != end_ && next_->Field == field)
            PackNumber(row_, (next_++)->Value);
        else if (sqlite3_value* const value = cell())
            PackCell(row_, value);
    }
    std::string Take() { return std::move(row_); }

private:
    FormerNumbers::const_iterator next_, end_;
    std::string row_;
};

std::string RowBeforeWrite(sqlite3* handle, const FormerNumbers& numbers) {
    const int count = sqlite3_preupdate_count(handle);
    Packer row(count, numbers);
    for (int i = 0; i < count; ++i) {
        row.Add(i, [&]() -> sqlite3_value* {
            sqlite3_value* value = nullptr;
            return sqlite3_preupdate_old(handle, i, &value) == SQLITE_OK ? value : nullptr;
        });
    }
    return row.Take();
}

/// The row in hand, with other numbers where these are given.
std::string RowNow(const SqliteStatement& select, const FormerNumbers& numbers = {}) {
    const int count = sqlite3_column_count(select.get());
    Packer row(count, numbers);
    for (int i = 0; i < count; ++i)
        row.Add(i, [&] { return sqlite3_column_value(select.get(), i); });
    return row.Take();
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

void AddFormer(FormerNumbers& known, const FormerNumbers& more) {
    for (const FormerNumber& number : more) {
        if (known.empty() || known.back().Field < number.Field) {
            known.push_back(number);
            continue;
        }
        const auto place = std::ranges::lower_bound(known, number.Field, {}, &FormerNumber::Field);
        if (place->Field != number.Field) known.insert(place, number);
    }
}

ChangeRecorder::ChangeRecorder(sqlite3* handle, CellCache& cells) : handle_(handle), cells_(cells) {
    Listen(true);
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
    if (const auto known = rows.find(row); known != rows.end()) return NoteAgain(known->second);
    if (++count_ > kMostRows) return GiveUpRows();
    rows.emplace(row, FormerOf(operation));
}

ChangeRecorder::Former ChangeRecorder::FormerOf(int operation) const {
    if (operation == SQLITE_INSERT) return {.Existed = false, .Packed = {}, .Numbers = {}};
    if (expected_) return {.Packed = {}, .Numbers = *expected_, .Once = true};
    return {.Packed = RowBeforeWrite(handle_, {}), .Numbers = {}};
}

/// A row of which numbers alone are known is written to again. By a statement of whatever kind, it
/// must be known as a whole from now on.
void ChangeRecorder::NoteAgain(Former& former) const {
    former.Once = false;
    if (former.Numbers.empty()) return;
    if (expected_) return AddFormer(former.Numbers, *expected_);
    former.Packed = RowBeforeWrite(handle_, former.Numbers);
    former.Numbers.clear();
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
    if (!keep && std::ranges::any_of(rows, [](const auto& row) { return row.second.Once; }))
        return true;
    TableChange changes{.Table = table, .Rows = {}};
    SqliteStatement select(handle_, "SELECT * FROM " + Quoted(table) + " WHERE rowid=?1");
    for (const auto& [row, former] : rows) {
        select.BindInteger(1, row);
        const bool exists = select.Step();
        const std::string now = exists ? RowNow(select) : std::string();
        const std::string before =
            former.Numbers.empty() ? former.Packed : RowNow(select, former.Numbers);
        select.Reset();
        if (exists == former.Existed && now == before) continue;
        if (!keep) return true;
        if (exists && former.Existed)
            changes.Rows.push_back(Shortened(row, before, now));
        else
            changes.Rows.push_back({row, former.Existed, exists, 0, 0, before, now});
    }
    if (!keep || changes.Rows.empty()) return false;
    keep->Tables.push_back(std::move(changes));
    return true;
}

BatchChange ChangeRecorder::Take() { return std::exchange(change_, {}); }

}  // namespace zolmara
