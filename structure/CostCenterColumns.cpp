#include "structure/CostCenterColumns.h"

#include <fmt/format.h>

#include <algorithm>

#include "core/Dialogs.h"
#include "core/Globals.h"
#include "core/Status.h"
#include "store/PlainWords.h"
#include "store/session/CoreTables.h"
#include "store/session/DeleteIfThere.h"
#include "store/session/Session.h"
#include "worksheets/Schedules.h"
#include "worksheets/Worksheet.h"

namespace zolmara {

namespace {

/// The name that a new column has until it gets its place; no table may hold such a field.
constexpr std::string_view kNewField = "CC";

/// The three parts of a schedule are worked together; E stands alone.
std::size_t FamilySize(const std::vector<std::string_view>& tables, std::size_t at) {
    return at + 1 < tables.size() && tables[at + 1].ends_with('2') ? 3 : 1;
}

/// Why no field can be added to a table of the family; empty when one can.
std::string RefusalOfField(const std::vector<std::string_view>& family) {
    try {
        gDB.RefreshTableDefs();
        for (auto table : family)
            if (gDB.Table(table).FieldIndex(kNewField) >= 0)
                return fmt::format("duplicate column name: {}", kNewField);
    } catch (const StoreError& error) {
        if (error.IsFileError()) throw;
        return PlainWords(error);
    }
    return {};
}

void ReportAppendFailure(std::string_view table, std::string_view reason) {
    MsgOrLog(fmt::format("Failure to append field to the {} table, please rebuild the table.  The "
                         "following error message was returned: \"{}\"",
                         table, reason),
             kCritical, "Error adding field to table B");
}

void RebuildTable(std::string_view table, const std::string& select, bool indexed = true) {
    DropTable("tblTemp");
    gDB.Execute(fmt::format("{} INTO tblTemp FROM {};", select, table));
    DropTable(table);
    gDB.Execute(fmt::format("Select * Into {} From tblTemp;", table));
    if (indexed) gDB.Execute(fmt::format("CREATE UNIQUE INDEX ndx{0} ON {0} (LineNum);", table));
}

std::vector<std::string> RegisteredWorksheets() {
    std::vector<std::string> items;
    auto rows = gDB.OpenRecordset("Select Item From Worksheets Where Calc_Lvl<900;");
    for (; !rows.Eof(); rows.MoveNext()) items.push_back(StrOr(rows[0]));
    return items;
}

}  // namespace

std::vector<std::string_view> TablesWithColumn(Currency line) {
    std::vector<std::string_view> tables;
    if (!IsCostCenterLine(line)) return tables;
    for (const Schedule& schedule : AllSchedules()) {
        if (!TakesColumn(schedule, line)) continue;
        for (int part = 1; part <= (schedule.HasParts ? 3 : 1); ++part)
            tables.push_back(FindWorksheet(TableOf(schedule, part))->Item);
    }
    return tables;
}

std::size_t NewColumns::FamilyOf(std::vector<std::string_view> tables) {
    const auto known = std::ranges::find_if(
        families_, [&](const Family& family) { return family.Tables == tables; });
    const auto at = static_cast<std::size_t>(known - families_.begin());
    if (known != families_.end()) return at;
    Family family{std::move(tables), "", {}, false};
    family.Refusal = RefusalOfField(family.Tables);
    if (family.Refusal.empty()) family.Shape.emplace_back(family.Tables.front());
    families_.push_back(std::move(family));
    return at;
}

std::vector<std::size_t> NewColumns::FamiliesOf(Currency line) {
    std::vector<std::size_t> families;
    const auto tables = TablesWithColumn(line);
    for (std::size_t at = 0; at < tables.size(); at += FamilySize(tables, at)) {
        const auto first = tables.begin() + static_cast<std::ptrdiff_t>(at);
        const auto size = static_cast<std::ptrdiff_t>(FamilySize(tables, at));
        families.push_back(FamilyOf({first, first + size}));
    }
    return families;
}

std::string NewColumns::Obstacle(Currency line) {
    for (const std::size_t at : FamiliesOf(line))
        for (const TableShape& shape : families_[at].Shape)
            if (auto obstacle = shape.Obstacle(line); !obstacle.empty()) return obstacle;
    return {};
}

bool NewColumns::Add(Currency line) {
    for (const std::size_t at : FamiliesOf(line)) {
        Family& family = families_[at];
        if (!family.Refusal.empty()) {
            ReportAppendFailure(family.Tables.front(), family.Refusal);
            return false;
        }
        family.Shape.front().Add(line);
        family.Changed = true;
    }
    return true;
}

void NewColumns::Finish() {
    for (Family& family : families_) {
        if (!std::exchange(family.Changed, false)) continue;
        const auto select = family.Shape.front().Select();
        for (auto table : family.Tables) RebuildTable(table, select);
    }
    families_.clear();
}

bool AddCCColumn(Currency line) {
    NewColumns columns;
    const bool done = columns.Add(line);
    columns.Finish();
    return done;
}

void DeleteCCColumn(Currency line) {
    const auto column = CostCenterColumn(line);
    const bool hadCopy = gDB.HasTable("tblTemp");
    for (const auto& item : RegisteredWorksheets()) {
        if (!gDB.HasTable(item) || gDB.Table(item).FieldIndex(column) < 0) continue;
        TableShape shape(item);
        shape.Remove(line);
        RebuildTable(item, shape.Select(), !gDB.Table(item).Indexes.empty());
    }
    if (!hadCopy) DropTable("tblTemp");
}

void DropTable(std::string_view name) {
    gDB.RefreshTableDefs();
    TheStatus().DoEvents();
    DeleteIfThere(name);
    gDB.RefreshTableDefs();
}

}  // namespace zolmara
