#include <algorithm>

#include "core/Globals.h"
#include "forms/WorksheetForm.h"
#include "store/session/Session.h"
#include "worksheets/FormLines.h"

namespace zolmara {

namespace {

/// Rows that are kept; more than a screen shows, and few enough to forget.
constexpr std::size_t kKept = 512;

constexpr std::string_view kUnitCost = "0.000000;(0.000000)";

bool IsUnitCost(const std::string& format, Currency line) {
    return line == kUnitCostMultiplier && format.starts_with("#,###,###");
}

std::string Shown(const std::string& format, Currency line, const Variant& value) {
    if (value.IsNull()) return "";
    if (value.IsDate()) return FormatDate(value.AsDate(), "mm/dd/yyyy");
    if (format.empty()) return Text(value);
    return FormatNumber(value, IsUnitCost(format, line) ? kUnitCost : format);
}

}  // namespace

FormRows::FormRows(const WorksheetForm& form) : source_(form.RowSource), key_(form.Key) {
    for (const FormColumn& column : form.Columns) {
        fields_.push_back(column.Field);
        formats_.push_back(column.NumberFormat);
    }
    Requery();
}

void FormRows::Requery() {
    rows_ = gDB.OpenRecordset(source_);
    read_.clear();
    marks_.clear();
    positions_.clear();
    for (const std::string& field : fields_) positions_.push_back(rows_->FieldIndex(field));
    marks_.reserve(rows_->RecordCount());
    for (; !rows_->Eof(); rows_->MoveNext()) marks_.push_back(rows_->Bookmark());
}

const std::vector<Variant>& FormRows::Read(int row) const {
    static const std::vector<Variant> none;
    if (row < 0 || row >= Count()) return none;
    const auto kept = read_.find(row);
    if (kept != read_.end()) return kept->second;
    if (read_.size() >= kKept) read_.clear();
    std::vector<Variant> cells(fields_.size());
    try {
        rows_->SetBookmark(marks_[static_cast<std::size_t>(row)]);
        for (std::size_t i = 0; i < cells.size(); ++i)
            if (positions_[i] >= 0) cells[i] = (*rows_)[positions_[i]];
    } catch (const StoreError& error) {
        if (error.IsFileError()) throw;
        // The row has gone since; the next refresh shows it.
    }
    return read_.emplace(row, std::move(cells)).first->second;
}

Variant FormRows::Cell(int row, int column) const {
    const std::vector<Variant>& cells = Read(row);
    const bool there = column >= 0 && static_cast<std::size_t>(column) < cells.size();
    return there ? cells[static_cast<std::size_t>(column)] : Variant();
}

Variant FormRows::Cell(int row, std::string_view field) const {
    const auto found = std::ranges::find_if(
        fields_, [&](const std::string& name) { return SameText(name, field); });
    return Cell(row, static_cast<int>(found - fields_.begin()));
}

std::string FormRows::CellText(int row, int column) const {
    if (column < 0 || static_cast<std::size_t>(column) >= formats_.size()) return "";
    return Shown(formats_[static_cast<std::size_t>(column)], Line(row), Cell(row, column));
}

Currency FormRows::Line(int row) const { return CurOr(Cell(row, key_)); }

int FormRows::RowOf(Currency line) const {
    if (marks_.empty()) return -1;
    rows_->FindFirst(key_ + "=?", {line});
    return rows_->NoMatch() ? -1 : RowMarked(rows_->Bookmark());
}

std::int64_t FormRows::Mark(int row) const {
    return row < 0 || row >= Count() ? 0 : marks_[static_cast<std::size_t>(row)];
}

int FormRows::RowMarked(std::int64_t mark) const {
    const auto found = std::ranges::find(marks_, mark);
    return found == marks_.end() ? -1 : static_cast<int>(found - marks_.begin());
}

std::optional<Currency> FormRows::LineNow(int row) const {
    if (row < 0 || row >= Count()) return std::nullopt;
    try {
        rows_->SetBookmark(Mark(row));
        return CurOr((*rows_)[key_]);
    } catch (const StoreError& error) {
        if (error.IsFileError()) throw;
        return std::nullopt;
    }
}

std::string ShownText(const FormColumn& column, Currency line, const Variant& value) {
    return Shown(column.NumberFormat, line, value);
}

}  // namespace zolmara
