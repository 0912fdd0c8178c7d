#include "store/TableCells.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <numeric>

#include "core/Globals.h"
#include "store/CellReader.h"
#include "store/DatabaseImpl.h"

namespace zolmara {
namespace {

constexpr double kNull = std::numeric_limits<double>::quiet_NaN();

bool IsSame(double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); }

constexpr char kNumber = 'n';
constexpr char kText = 't';
constexpr char kOther = 'o';

/// What is kept of a field: its numbers, or whether its texts have line breaks, or nothing.
char KindOf(FieldType type) {
    if (IsNumberField(type)) return kNumber;
    return type == FieldType::dbText ? kText : kOther;
}

std::size_t At(int position) { return static_cast<std::size_t>(position); }

bool HasBreak(sqlite3_value* value) {
    if (sqlite3_value_type(value) != SQLITE_TEXT) return false;
    const auto* text = sqlite3_value_text(value);
    const auto size = static_cast<std::size_t>(sqlite3_value_bytes(value));
    return text != nullptr &&
           (std::memchr(text, '\r', size) != nullptr || std::memchr(text, '\n', size) != nullptr);
}

Currency LineIn(double number) { return Currency::Holds(number) ? Currency(number) : Currency(); }

}  // namespace

// --- Reading ---------------------------------------------------------------------------------

const std::string& TableCells::Name() const { return info_->Def.Name; }

const std::string& TableCells::FieldName(int position) const {
    return info_->Def.Fields.at(static_cast<std::size_t>(position)).Name;
}

int TableCells::Position(std::string_view field) const { return info_->Def.FieldIndex(field); }

std::optional<TableCells::Row> TableCells::RowOn(Currency line) const {
    const auto found =
        std::ranges::lower_bound(order_, line, {}, [&](Row row) { return lines_[row]; });
    if (found == order_.end() || lines_[*found] != line) return std::nullopt;
    return *found;
}

std::optional<TableCells::Row> TableCells::RowWithId(std::int64_t rowid) const {
    const auto found = std::ranges::lower_bound(rowids_, rowid);
    if (found == rowids_.end() || *found != rowid) return std::nullopt;
    return static_cast<Row>(found - rowids_.begin());
}

double TableCells::Amount(Row row, int position) const {
    const double amount = CellsOf(row)[position];
    return std::isnan(amount) ? 0 : amount;
}

bool TableCells::IsNull(Row row, int position) const { return std::isnan(CellsOf(row)[position]); }

Variant TableCells::Value(Row row, int position) const {
    const double number = CellsOf(row)[position];
    if (std::isnan(number)) return {};
    switch (info_->Def.Fields[static_cast<std::size_t>(position)].Type) {
        case FieldType::dbCurrency:
            return Currency::Holds(number) ? Variant(Currency(number)) : Variant(number);
        case FieldType::dbInteger:
            return std::int64_t{std::llrint(number)};
        default:
            return number;
    }
}

bool TableCells::HasIndexOfLines() const {
    if (!hasIndexOfLines_) {
        const TablePtr table = db_->Tables.FindWithIndexes(Name());
        hasIndexOfLines_ =
            table && std::ranges::any_of(table->Def.Indexes, [&](const IndexDef& index) {
                return !index.Fields.empty() && SameText(index.Fields.front(), FieldName(0));
            });
    }
    return *hasIndexOfLines_;
}

// --- Keeping up ------------------------------------------------------------------------------

bool TableCells::IsInStep() const { return !lost_ && version_ == *info_->Version; }

void TableCells::BringUpToDate(Database::Impl& db, const std::shared_ptr<TableInfo>& table) {
    const bool known = info_ == table && IsInStep();
    db_ = &db;
    info_ = table;
    if (!known) Load();
    if (!dirty_.empty()) ReadDirtyRows();
}

void TableCells::Load() {
    lost_ = true;
    width_ = info_->Def.Fields.size();
    rowids_.clear();
    lines_.clear();
    cells_.clear();
    edit_.clear();
    before_.clear();
    dirty_.clear();
    lineBreaks_ = strange_ = false;
    hasIndexOfLines_.reset();
    version_ = *info_->Version;
    kinds_.clear();
    for (const FieldDef& field : info_->Def.Fields) kinds_.push_back(KindOf(field.Type));
    const CellTaker taker = Taker();
    SqliteStatement reader =
        CellReader(db_->Handle, info_->Def, 0, width_, "ORDER BY rowid", taker);
    reading_ = 0;
    while (reader.Step(Name())) ++reading_;
    PutInOrder();
    lastChange_ = shapeChange_ = db_->Cells.NextChange();
    columnChanges_.assign(width_, lastChange_);
    rowChanges_.assign(lines_.size(), lastChange_);
    lost_ = false;
}

double TableCells::NumberIn(sqlite3_value* value) {
    const int type = sqlite3_value_type(value);
    if (type == SQLITE_FLOAT || type == SQLITE_INTEGER) return sqlite3_value_double(value);
    strange_ = strange_ || type != SQLITE_NULL;
    return kNull;
}

CellTaker TableCells::Taker() {
    return [this](std::int64_t rowid, std::size_t first, std::span<sqlite3_value* const> values) {
        Take(rowid, first, values);
    };
}

void TableCells::Take(std::int64_t rowid, std::size_t first,
                      std::span<sqlite3_value* const> values) {
    if (reading_ == rowids_.size()) {
        rowids_.push_back(rowid);
        lines_.emplace_back();
        cells_.resize(cells_.size() + width_);
    }
    double* const cells = CellsOf(reading_) + first;
    for (std::size_t i = 0; i < values.size(); ++i) {
        const char kind = kinds_[first + i];
        cells[i] = kind == kNumber ? NumberIn(values[i]) : kNull;
        if (kind == kText) lineBreaks_ = lineBreaks_ || HasBreak(values[i]);
    }
    if (first == 0) lines_[reading_] = LineIn(Amount(reading_, 0));
}

void TableCells::PutInOrder() {
    order_.resize(lines_.size());
    std::iota(order_.begin(), order_.end(), Row{0});
    std::ranges::stable_sort(order_, {}, [&](Row row) { return lines_[row]; });
}

void TableCells::ReadDirtyRows() {
    const CellTaker taker = Taker();
    SqliteStatement reader =
        CellReader(db_->Handle, info_->Def, 0, width_, "WHERE rowid=?2", taker);
    std::vector<double> before;
    // Where a reading fails nobody knows which rows have come in.
    lost_ = true;
    for (const std::int64_t rowid : dirty_) {
        const std::optional<Row> row = RowWithId(rowid);
        if (!row) return Load();
        reading_ = *row;
        before.assign(CellsOf(reading_), CellsOf(reading_) + width_);
        const Currency line = lines_[reading_];
        reader.BindInteger(2, rowid);
        if (!reader.Step(Name())) return Load();
        reader.Reset();
        if (lines_[reading_] != line) return Load();
        NumberChanges(reading_, before);
    }
    dirty_.clear();
    lost_ = false;
}

/// A row has been read again.
void TableCells::NumberChanges(Row row, std::span<const double> before) {
    const double* const now = CellsOf(row);
    if (std::equal(before.begin(), before.end(), now, IsSame)) return;
    lastChange_ = rowChanges_[row] = db_->Cells.NextChange();
    for (std::size_t i = 0; i < width_; ++i)
        if (!IsSame(now[i], before[i])) columnChanges_[i] = lastChange_;
}

void TableCells::RowWritten(bool isUpdate, std::int64_t rowid) {
    if (lost_ || writing_) return;
    if (!isUpdate || dirty_.size() >= kMostDirty) {
        lost_ = true;
        return;
    }
    if (std::ranges::find(dirty_, rowid) == dirty_.end()) dirty_.push_back(rowid);
}

namespace {

TablePtr NeedTable(Database::Impl& db, std::string_view name) {
    db.LookForChanges();
    TablePtr table = db.Tables.Find(name);
    if (!table)
        throw StoreError(StoreError::Kind::NoSuchItem, "no such table: " + std::string(name));
    db.Note(*table);
    return table;
}

}  // namespace

TableCells& CellCache::Of(Database::Impl& db, std::string_view name) {
    const TablePtr table = NeedTable(db, name);
    auto& cells = tables_[table->Def.Name];
    if (!cells) cells = std::make_shared<TableCells>();
    cells->BringUpToDate(db, table);
    return *cells;
}

std::shared_ptr<const TableCells> CellCache::IfKept(Database::Impl& db, std::string_view name) {
    const TablePtr table = NeedTable(db, name);
    const auto found = tables_.find(table->Def.Name);
    if (found == tables_.end()) return nullptr;
    TableCells& cells = *found->second;
    if (cells.info_ != table || !cells.IsInStep()) return nullptr;
    cells.BringUpToDate(db, table);
    return found->second;
}

void CellCache::RowWritten(bool isUpdate, const char* table, std::int64_t rowid) {
    const auto found = tables_.find(std::string_view(table));
    if (found != tables_.end()) found->second->RowWritten(isUpdate, rowid);
}

void CellCache::VersionGrew(const TableInfo& table) {
    const auto found = tables_.find(table.Def.Name);
    if (found == tables_.end()) return;
    TableCells& cells = *found->second;
    if (cells.version_ + 1 == *table.Version) cells.version_ = *table.Version;
}

void CellCache::Over(const std::function<void()>& touch) {
    std::vector<TableCells*> known;
    for (const auto& [name, cells] : tables_)
        if (cells->IsInStep()) known.push_back(cells.get());
    touch();
    for (TableCells* cells : known) cells->version_ = *cells->info_->Version;
}

TableCells& CellsOf(Database& db, std::string_view table) {
    return db.impl().Cells.Of(db.impl(), table);
}

std::shared_ptr<const TableCells> KeptCellsOf(Database& db, std::string_view table) {
    return db.impl().Cells.IfKept(db.impl(), table);
}

// --- Writing ---------------------------------------------------------------------------------

RowEdit::RowEdit(TableCells& cells, TableCells::Row row) : cells_(cells), row_(row) {
    cells_.edit_.clear();
}

RowEdit::~RowEdit() {
    for (; !cells_.edit_.empty(); cells_.edit_.pop_back())
        cells_.CellsOf(row_)[cells_.edit_.back().Field] = cells_.edit_.back().Value;
}

double RowEdit::OrNull(int position) const { return cells_.CellsOf(row_)[position]; }

double RowEdit::Amount(int position) const { return cells_.Amount(row_, position); }

void RowEdit::Set(int position, double amount) {
    if (!std::isfinite(amount))
        throw StoreError(
            StoreError::Kind::Other,
            fmt::format("{} line {} {} takes numbers only, not \"{}\"", cells_.Name(),
                        Text(cells_.Line(row_)), cells_.FieldName(position), Text(amount)));
    Put(position, amount);
}

void RowEdit::SetNull(int position) { Put(position, kNull); }

/// The store knows no 0 below 0.
void RowEdit::Put(int position, double amount) {
    double& cell = cells_.CellsOf(row_)[position];
    if (IsSame(cell, amount)) return;
    cells_.edit_.push_back({position, cell});
    cell = amount + 0.0;
}

void RowEdit::Update() {
    if (cells_.edit_.empty()) return;
    AddFormer(cells_.before_[row_], cells_.edit_);
    cells_.edit_.clear();
}

/// Forgets what was changed and changed back.
void TableCells::ForgetWhatStands() {
    for (auto row = before_.begin(); row != before_.end();) {
        const double* const now = CellsOf(row->first);
        std::erase_if(row->second, [&](const FormerNumber& former) {
            return IsSame(now[former.Field], former.Value);
        });
        row = row->second.empty() ? before_.erase(row) : std::next(row);
    }
}

/// Numbers what differs from the store as one change. Gives the fields in which any row does.
std::vector<int> TableCells::NumberChanges() {
    lastChange_ = db_->Cells.NextChange();
    for (const auto& [row, numbers] : before_) {
        rowChanges_[row] = lastChange_;
        for (const FormerNumber& former : numbers) columnChanges_[At(former.Field)] = lastChange_;
    }
    std::vector<int> fields;
    for (std::size_t i = 0; i < width_; ++i)
        if (columnChanges_[i] == lastChange_) fields.push_back(static_cast<int>(i));
    return fields;
}

void TableCells::WriteRows(const std::vector<int>& fields) {
    std::string sets;
    for (const int field : fields)
        sets += fmt::format("{}{}=?", sets.empty() ? "" : ",", Quoted(FieldName(field)));
    SqliteStatement update(db_->Handle,
                           fmt::format("UPDATE {} SET {} WHERE rowid=?", Quoted(Name()), sets));
    const bool numbersTell = AreAllNumbers(fields);
    for (const auto& [row, former] : before_) {
        if (!numbersTell) {
            WriteRow(update, fields, row);
            continue;
        }
        const ChangeRecorder::OnlyNumbers told(db_->Changes, former);
        WriteRow(update, fields, row);
    }
}

void TableCells::WriteRow(SqliteStatement& update, const std::vector<int>& fields, Row row) {
    const double* const now = CellsOf(row);
    int place = 0;
    for (const int field : fields) {
        const double value = now[field];
        std::isnan(value) ? sqlite3_bind_null(update.get(), ++place)
                          : sqlite3_bind_double(update.get(), ++place, value);
    }
    update.BindInteger(++place, rowids_[row]);
    db_->RunWrite(update, info_);
}

/// Fields whose numbers here are, to the last bit, those in the store.
bool TableCells::AreAllNumbers(const std::vector<int>& fields) const {
    return !strange_ && std::ranges::all_of(fields, [&](int field) {
        return info_->Def.Fields[At(field)].Type == FieldType::dbDouble;
    });
}

/// Where a write fails the store and what is here have parted.
void TableCells::Write() {
    ForgetWhatStands();
    if (before_.empty()) return;
    const std::vector<int> fields = NumberChanges();
    lost_ = writing_ = true;
    try {
        WriteRows(fields);
    } catch (...) {
        writing_ = false;
        throw;
    }
    lost_ = writing_ = false;
    before_.clear();
}

/// What could not be written is given up: it must not come along with what is changed next.
void CellCache::Write() {
    try {
        for (auto& [name, cells] : tables_) cells->Write();
    } catch (...) {
        for (auto& [name, cells] : tables_) cells->GiveUp();
        throw;
    }
}

void TableCells::GiveUp() {
    if (before_.empty()) return;
    before_.clear();
    lost_ = true;
}

void CellCache::Change(const std::function<void()>& work) {
    ++depth_;
    try {
        work();
    } catch (...) {
        if (--depth_ == 0) Write();
        throw;
    }
    if (--depth_ == 0) Write();
}

void ChangeCells(Database& db, const std::function<void()>& work) { db.impl().Cells.Change(work); }

}  // namespace zolmara
