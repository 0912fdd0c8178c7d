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

/// The table that a surgery leaves as a copy of the last one that it made anew.
constexpr std::string_view kCopy = "tblTemp";

void Rebuild(const std::vector<RebuiltTable>& tables, bool keepsCopy) {
    TheStatus().DoEvents();
    gDB.RefreshTableDefs();
    RebuildTables(gDB, tables, kCopy, keepsCopy);
    gDB.RefreshTableDefs();
}

bool IsAmong(const std::vector<RebuiltTable>& tables, std::string_view name) {
    return std::ranges::any_of(
        tables, [&](const RebuiltTable& table) { return SameText(table.Name, name); });
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
    std::vector<RebuiltTable> tables;
    for (const Family& family : std::exchange(families_, {})) {
        if (!family.Changed) continue;
        const auto fields = family.Shape.front().Fields();
        for (auto table : family.Tables) tables.push_back({std::string(table), fields});
    }
    if (!tables.empty()) Rebuild(tables, true);
}

bool AddCCColumn(Currency line) {
    NewColumns columns;
    const bool done = columns.Add(line);
    columns.Finish();
    return done;
}

void DeleteCCColumn(Currency line) {
    const auto column = CostCenterColumn(line);
    std::vector<RebuiltTable> tables;
    for (const auto& item : RegisteredWorksheets()) {
        if (!HasField(gDB, item, column) || IsAmong(tables, item)) continue;
        TableShape shape(item);
        shape.Remove(line);
        tables.push_back({item, shape.Fields(), !gDB.Table(item).Indexes.empty()});
    }
    if (!tables.empty()) Rebuild(tables, gDB.HasTable(kCopy));
}

void DropTable(std::string_view name) {
    gDB.RefreshTableDefs();
    TheStatus().DoEvents();
    DeleteIfThere(name);
    gDB.RefreshTableDefs();
}

}  // namespace zolmara
