// Keying a row of a window: cell by cell, then the row as a whole.

#include <fmt/format.h>

#include "core/Dialogs.h"
#include "core/Globals.h"
#include "forms/CellAddress.h"
#include "forms/CellRules.h"
#include "forms/WorksheetForm.h"
#include "store/PlainWords.h"
#include "store/session/Session.h"
#include "worksheets/W_S1p1.h"

namespace zolmara {

namespace {

const FormColumn* ColumnAt(const WorksheetForm& form, int column) {
    const bool there = column >= 0 && static_cast<std::size_t>(column) < form.Columns.size();
    return there ? &form.Columns[static_cast<std::size_t>(column)] : nullptr;
}

/// The list of the types of control is keyed by its numbers.
std::string KeyedOf(std::string_view menu, std::string_view entry) {
    return std::string(menu == "mnuType" ? entry.substr(0, entry.find(' ')) : entry);
}

Variant StoredCell(const RowEntry& row, std::string_view field) {
    return gDB.Scalar(
        fmt::format("SELECT [{}] FROM [{}] WHERE {}=?;", field, row.Table, LineKeyOf(row.Table)),
        {row.Line});
}

bool IsParticulars(const WorksheetForm& form) { return SameText(form.Table, "S1p1"); }

/// The six columns of S-1 Part I by the field's number; -1 for line and description.
int ParticularOf(const FormColumn& column) {
    return SameText(LeftText(column.Field, 4), "Col_") ? column.Field[4] - '1' : -1;
}

constexpr Currency kIdentityLine = Currency::FromWhole(2);

}  // namespace

RowEntry BeginRow(const WorksheetForm& form, Currency line) { return {form.Table, line, {}}; }

bool IsCellOpen(const WorksheetForm& form, const RowEntry& row, int column) {
    const FormColumn* found = ColumnAt(form, column);
    if (form.Mode == FormMode::View || found == nullptr || found->Locked || found->Hidden)
        return false;
    return IsCellOpen(form.Table, row.Line, found->Field, &row);
}

std::string TitleOnRow(const WorksheetForm& form, const RowEntry& row, int column) {
    const FormColumn* found = ColumnAt(form, column);
    if (found == nullptr) return "";
    const int particular = ParticularOf(*found);
    if (!IsParticulars(form) || particular < 0) return found->Title;
    return std::string(CaptionS1p1(row.Line, {})[static_cast<std::size_t>(particular)].Text);
}

std::vector<FormChoice> ChoicesOf(const WorksheetForm& form, const RowEntry& row, int column) {
    std::vector<FormChoice> choices;
    if (!IsCellOpen(form, row, column)) return choices;
    const EntryList list = ListOf(form.Table, row.Line, ColumnAt(form, column)->Field);
    for (const std::string_view entry : list.Entries)
        choices.push_back({std::string(entry), KeyedOf(list.Menu, entry)});
    return choices;
}

bool IsOnlyPicked(const WorksheetForm& form, const RowEntry& row, int column) {
    return IsCellOpen(form, row, column) &&
           ListOf(form.Table, row.Line, ColumnAt(form, column)->Field).OnlyPicked;
}

std::string ChoiceMenuOf(const WorksheetForm& form, const RowEntry& row, int column) {
    const FormColumn* found = ColumnAt(form, column);
    return found == nullptr ? "" : std::string(ListOf(form.Table, row.Line, found->Field).Menu);
}

bool OpensIdentity(const WorksheetForm& form, Currency line, int column) {
    const FormColumn* found = ColumnAt(form, column);
    if (form.Mode == FormMode::View || !IsParticulars(form) || line != kIdentityLine || !found)
        return false;
    const int particular = ParticularOf(*found);
    return particular >= 0 && !SameText(found->Field, "Col_3") &&
           CaptionS1p1(line, {})[static_cast<std::size_t>(particular)].Text != "N/A";
}

bool KeyCell(const WorksheetForm& form, RowEntry& row, int column, const Variant& value) {
    const FormColumn* found = ColumnAt(form, column);
    if (found == nullptr) return false;
    CellEntry entry;
    entry.Item = row.Table;
    entry.Line = row.Line;
    entry.Field = found->Field;
    entry.Value = value;
    entry.Row = &row;
    if (form.Mode == FormMode::Edit)
        CheckCell(entry);
    else
        entry.Refuse(kLockedCellText);
    Tell(entry.Message());
    if (!entry.Refused) row = RowOf(entry);
    return !entry.Refused;
}

Variant CellOfRow(const WorksheetForm& form, const RowEntry& row, int column) {
    const FormColumn* found = ColumnAt(form, column);
    if (found == nullptr) return {};
    const Variant* keyed = row.Find(found->Field);
    return keyed != nullptr ? *keyed : StoredCell(row, found->Field);
}

bool CommitRow(const WorksheetForm& form, RowEntry& row) {
    if (!row.Changed()) return true;
    const EntryMessage refusal = CheckRow(row);
    Tell(refusal);
    if (!refusal.Text.empty()) return false;
    try {
        StoreRow(row);
    } catch (const StoreError& error) {
        MsgOrLog(fmt::format("Line {} of {} was not saved.  {}", NumberText(row.Line), form.Item,
                             PlainWords(error)),
                 kCritical, std::string(kProductName));
        return false;
    }
    row.Cells.clear();
    return true;
}

}  // namespace zolmara
