#include "import/LoaderTools.h"

#include <fmt/format.h>

#include <algorithm>

#include "core/Globals.h"
#include "core/Status.h"
#include "core/Windows.h"
#include "import/ImportRun.h"
#include "store/session/Session.h"

namespace zolmara {

TargetRow::TargetRow(std::string_view table, std::string_view key, std::string_view where)
    : table_(table),
      key_(key),
      select_(fmt::format("SELECT * From {} Where {}{}=?;", table,
                          where.empty() ? "" : fmt::format("({}) And ", where), key)) {}

bool TargetRow::GoTo(Currency line) {
    if (line_ == line) return true;
    Store();
    return Refind(line);
}

bool TargetRow::Refind(Currency line) {
    row_ = gDB.OpenRecordset(select_, {line});
    line_.reset();
    if (row_->Eof()) return false;
    line_ = line;
    return true;
}

void TargetRow::GoToOrAdd(Currency line) {
    if (GoTo(line)) return;
    row_->AddNew();
    row_->Set(key_, line);
    row_->Update();
    Refind(line);
}

void TargetRow::Set(int field, const Variant& value) {
    if (field < 0 || field >= row_->FieldCount())
        throw StoreError(StoreError::Kind::NoSuchItem,
                         fmt::format("Table {} has no such column.", table_));
    if (!row_->Editing()) row_->Edit();
    row_->Set(field, value);
}

void TargetRow::Set(std::string_view field, const Variant& value) {
    Set(row_->FieldIndex(field), value);
}

void TargetRow::Store() {
    if (Editing()) row_->Update();
}

int Ordinal(Currency column, int offset) {
    return column.IsWhole() ? static_cast<int>(column.Whole()) + offset : -1;
}

bool InAny(std::span<const Range> ranges, Currency value) {
    return std::any_of(ranges.begin(), ranges.end(), [&](const Range& range) {
        return Between(value.ToDouble(), range.Low, range.High);
    });
}

void LoadRows(ImportRun& run, std::string_view sheet, const LoadOne& loadOne) {
    const auto rows = run.Staged().Take(sheet);
    for (const auto& row : rows) {
        try {
            const auto complaint = loadOne(row);
            if (!complaint.empty()) run.Complain(sheet, row, complaint);
        } catch (const StoreError& error) {
            if (error.IsFileError()) throw;
            run.Complain(sheet, row, kConversionError);
        }
        TheStatus().DoEvents();
    }
}

void LoadRows(ImportRun& run, std::string_view sheet, TargetRow& target, const LoadOne& loadOne) {
    LoadRows(run, sheet, loadOne);
    target.Store();
}

void LoadWorksheet(ImportRun& run, std::string_view sheet, TargetRow target,
                   std::string (*loadOne)(TargetRow&, const SourceRow&)) {
    LoadRows(run, sheet, target, [&](const SourceRow& row) { return loadOne(target, row); });
    TheWindows().RefreshOpenForms("");
}

}  // namespace zolmara
