// How a row that has passed its checks is stored, and what follows from it on other lines and
// worksheets.

#include <fmt/format.h>

#include <algorithm>

#include "core/Globals.h"
#include "core/Windows.h"
#include "forms/CellAddress.h"
#include "forms/CellRules.h"
#include "store/session/Acts.h"
#include "store/session/LogRun.h"
#include "store/session/Session.h"
#include "structure/AddDeleteCC.h"
#include "structure/LineTitle.h"
#include "structure/modAddS2.h"
#include "worksheets/W_A.h"
#include "worksheets/W_A6.h"

namespace zolmara {

namespace {

bool IsComponents(std::string_view table) { return SameText(LeftText(table, 3), "S2p"); }

/// Name and number of a component stand in all the schedules of its part.
void CarryComponentName(const RowEntry& row, Recordset& stored) {
    if (row.Find("Col_1") == nullptr && row.Find("Col_2") == nullptr) return;
    const auto cell = [&](std::string_view field) {
        const Variant* keyed = row.Find(field);
        return Text(keyed != nullptr ? *keyed : stored[field]);
    };
    RenameS2Line(row.Line, row.Table.back() - '0', cell("Col_1"), cell("Col_2"));
}

/// The cells that differ from what is stored.
RowEntry Changes(const RowEntry& row, const Recordset& stored) {
    RowEntry changes = row;
    std::erase_if(changes.Cells,
                  [&](const auto& cell) { return stored[cell.first] == cell.second; });
    return changes;
}

void WriteCells(const RowEntry& row, Recordset& stored) {
    stored.Edit();
    for (const auto& [field, value] : row.Cells) stored.Set(field, value);
    stored.Update();
}

void Write(const RowEntry& row, Recordset& stored) {
    if (IsComponents(row.Table)) CarryComponentName(row, stored);
    WriteCells(row, stored);
    if (SameText(row.Table, "A6")) SyncNames_A6();
    const Variant* name = SameText(row.Table, "CostCenters") ? row.Find("CCName") : nullptr;
    if (name != nullptr) RenameCostCenter(row.Line, Text(*name));
}

/// Open views of A-6 and A follow each entry with fresh figures.
void CalculateViews(const RowEntry& changes) {
    if (!changes.Changed() || !SameText(changes.Table, "A6")) return;
    const LogRun log("C");
    if (TheWindows().FormIsOpen("frmViewA6")) Calc_A6();
    if (TheWindows().FormIsOpen("frmViewA")) Calc_A();
}

/// The Item of the windows on a table.
std::string ItemOf(std::string_view table) {
    return SameText(table, "CostCenters") ? "CCs" : std::string(table);
}

void RefreshViews(const RowEntry& changes) {
    if (!changes.Changed()) return;
    TheWindows().EnableMenu("mnuReportSubmit", false);
    TheWindows().RefreshWorksheetForm("View", ItemOf(changes.Table));
    const bool figures = SameText(changes.Table, "A6") && TheWindows().FormIsOpen("frmViewA");
    if (figures) TheWindows().RefreshWorksheetForm("View", "A");
    const bool renamed = changes.Find("Col_1") != nullptr || changes.Find("Col_2") != nullptr;
    if (IsComponents(changes.Table) && renamed) TheWindows().RefreshOpenForms(changes.Table);
}

std::string NameOfEntry(const RowEntry& row) { return "Enter " + LineTitle(row.Table, row.Line); }

}  // namespace

RowEntry WriteRow(const RowEntry& row) {
    auto stored = gDB.OpenRecordset(
        fmt::format("SELECT * FROM [{}] WHERE {}=?;", row.Table, LineKeyOf(row.Table)), {row.Line});
    RowEntry changes = Changes(row, stored);
    if (changes.Changed()) RunAct(NameOfEntry(row), [&] { Write(changes, stored); });
    return changes;
}

void FollowRow(const RowEntry& changes) {
    CalculateViews(changes);
    RefreshViews(changes);
}

/// The row and the figures that follow it go to the disk together.
void StoreRow(const RowEntry& row) {
    RowEntry changes;
    RunAct(NameOfEntry(row), [&] {
        changes = WriteRow(row);
        CalculateViews(changes);
    });
    RefreshViews(changes);
}

}  // namespace zolmara
