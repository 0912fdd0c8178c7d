#include "store/AmountRows.h"

#include <fmt/format.h>

#include <limits>

#include "store/CellReader.h"
#include "store/DatabaseImpl.h"

namespace zolmara {
namespace {

constexpr double kNull = std::numeric_limits<double>::quiet_NaN();

double NumberIn(sqlite3_value* value) {
    const int type = sqlite3_value_type(value);
    return type == SQLITE_FLOAT || type == SQLITE_INTEGER ? sqlite3_value_double(value) : kNull;
}

std::string_view TextIn(const SqliteStatement& row, int column) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(row.get(), column));
    const int size = sqlite3_column_bytes(row.get(), column);
    return text ? std::string_view(text, static_cast<std::size_t>(size)) : std::string_view();
}

/// Rows on one line stand as the file has them.
std::string NamesSql(const TableDef& table, std::span<const int> textFields) {
    const std::string line = Quoted(table.Fields.front().Name);
    std::string fields = "rowid," + line;
    for (const int field : textFields)
        fields += "," + Quoted(table.Fields.at(static_cast<std::size_t>(field)).Name);
    return fmt::format("SELECT {} FROM {} ORDER BY {},rowid", fields, Quoted(table.Name), line);
}

/// Rows of a table as they are asked for by their numbers. Rows that follow each other in the file
/// are stepped through; any other is sought.
class RowSeeker {
public:
    RowSeeker(sqlite3* handle, const TableDef& table, std::size_t first, std::size_t count)
        : name_(table.Name),
          first_(first),
          row_(count),
          taker_(
              [this](std::int64_t rowid, std::size_t at, auto values) { Take(rowid, at, values); }),
          reader_(
              CellReader(handle, table, first, count, "WHERE rowid>=?2 ORDER BY rowid", taker_)) {
        for (std::size_t i = 0; i < count; ++i)
            isNumber_.push_back(IsNumberField(table.Fields[first + i].Type) ? 1 : 0);
    }
    RowSeeker(const RowSeeker&) = delete;
    RowSeeker& operator=(const RowSeeker&) = delete;

    /// False where it is not there.
    bool Seek(std::int64_t rowid) {
        if (stepping_ && Step(rowid)) return true;
        reader_.Reset();
        reader_.BindInteger(2, rowid);
        stepping_ = true;
        return Step(rowid);
    }
    std::span<const double> Row() const { return row_; }

private:
    bool Step(std::int64_t rowid) {
        stepping_ = reader_.Step(name_);
        return stepping_ && rowid_ == rowid;
    }

    void Take(std::int64_t rowid, std::size_t at, std::span<sqlite3_value* const> values) {
        rowid_ = rowid;
        for (std::size_t i = 0, cell = at - first_; i < values.size(); ++i, ++cell)
            row_[cell] = isNumber_[cell] != 0 ? NumberIn(values[i]) : kNull;
    }

    const std::string name_;
    const std::size_t first_;
    std::vector<char> isNumber_;
    std::vector<double> row_;
    std::int64_t rowid_ = 0;
    bool stepping_ = false;
    const CellTaker taker_;
    SqliteStatement reader_;
};

}  // namespace

AmountRows::AmountRows(Database& db, std::string_view table, std::span<const int> textFields,
                       const RowNames& onRow)
    : db_(db), kept_(KeptCellsOf(db, table)) {
    Database::Impl& impl = db.impl();
    info_ = impl.Tables.Find(table);
    version_ = *info_->Version;
    if (kept_) lastChange_ = kept_->LastChange();
    if (!kept_ && impl.Spool) aside_ = impl.Spool->Find(*info_);
    ReadNames(textFields, onRow);
    if (aside_ && aside_->Rows() != rows_.size()) aside_ = nullptr;
}

void AmountRows::ReadNames(std::span<const int> textFields, const RowNames& onRow) {
    SqliteStatement names(db_.impl().Handle, NamesSql(info_->Def, textFields));
    std::vector<std::string_view> texts(textFields.size());
    Variant line;
    while (names.Step(info_->Def.Name)) {
        NeedUnchanged();
        std::int64_t row = names.Integer(0);
        if (kept_) {
            const auto place = kept_->RowWithId(row);
            // What another program has written, and nobody here has looked at yet.
            if (!place) Changed();
            row = static_cast<std::int64_t>(*place);
        }
        rows_.push_back(row);
        names.Read(1, info_->Def.Fields.front().Type, line);
        for (std::size_t i = 0; i < texts.size(); ++i)
            texts[i] = TextIn(names, static_cast<int>(i) + 2);
        onRow(line, texts);
    }
}

/// Cells in memory that were read anew are current again, and may be others.
void AmountRows::NeedUnchanged() const {
    const bool same = kept_ ? kept_->AreCurrent() && kept_->LastChange() == lastChange_
                            : version_ == *info_->Version;
    if (!same) Changed();
}

void AmountRows::Changed() const {
    throw StoreError(
        StoreError::Kind::Other,
        fmt::format("table {} was changed while it was read; do it again", info_->Def.Name));
}

void AmountRows::Walk(std::size_t first, std::size_t count, const RowNumbers& onRow) {
    if (aside_) return aside_->Walk(first, count, onRow);
    // The file itself may be another one by now.
    NeedUnchanged();
    if (kept_) return WalkKept(first, count, onRow);
    const bool put = PutAll([&](std::span<const double> row) { onRow(row.subspan(first, count)); });
    if (!put) WalkFile(first, count, onRow);
}

void AmountRows::PutAside() {
    if (kept_ || aside_) return;
    NeedUnchanged();
    PutAll([](std::span<const double>) {});
}

void AmountRows::WalkKept(std::size_t first, std::size_t count, const RowNumbers& onRow) const {
    for (const std::int64_t row : rows_) {
        NeedUnchanged();
        onRow(kept_->Amounts(static_cast<TableCells::Row>(row)).subspan(first, count));
    }
}

void AmountRows::WalkFile(std::size_t first, std::size_t count, const RowNumbers& onRow) const {
    db_.impl().LookForChanges();
    RowSeeker seeker(db_.impl().Handle, info_->Def, first, count);
    for (const std::int64_t row : rows_) {
        NeedUnchanged();
        if (!seeker.Seek(row)) Changed();
        onRow(seeker.Row());
    }
}

/// Where the disk is full before the last row, the walk goes on to its end all the same.
bool AmountRows::PutAll(const RowNumbers& onRow) {
    AmountSpool* const spool = db_.impl().Spool;
    const std::size_t width = info_->Def.Fields.size();
    auto table = spool ? spool->Begin(rows_.size(), width) : nullptr;
    if (!table) return false;
    bool room = true;
    WalkFile(0, width, [&](std::span<const double> row) {
        room = room && table->Put(row);
        onRow(row);
    });
    if (room)
        aside_ = spool->Keep(*info_, version_, std::move(table));
    else
        spool->GiveUp(*table);
    return true;
}

}  // namespace zolmara
