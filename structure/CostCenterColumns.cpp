#include "structure/CostCenterColumns.h"

#include <fmt/format.h>

#include <algorithm>
#include <span>

#include "core/Dialogs.h"
#include "core/Globals.h"
#include "core/Status.h"
#include "store/session/CoreTables.h"
#include "store/session/Session.h"
#include "worksheets/Schedules.h"
#include "worksheets/Worksheet.h"

namespace zolmara {

namespace {

using Names = std::span<const std::string_view>;

/// The name that a new column has until it gets its place; no table may hold such a field.
constexpr std::string_view kNewField = "CC";
/// A new column's amounts. Appending the field first, only to select it from there, would make
/// the store read every table's definition again.
constexpr std::string_view kNewAmounts = "CDbl(Null)";

/// The three parts of a schedule are worked together; E stands alone.
std::size_t FamilySize(Names tables, std::size_t at) {
    return at + 1 < tables.size() && tables[at + 1].ends_with('2') ? 3 : 1;
}

struct ColumnPlan {
    std::string Select;              ///< the statement up to its INTO
    std::vector<std::string> Names;  ///< the columns that it gives
    bool BehindTotal = false;

    void Add(std::string_view field, std::string_view as = {}) {
        Select += Names.empty() ? " " : ", ";
        Select += field;
        if (!as.empty()) Select.append(" as ").append(as);
        Names.emplace_back(as.empty() ? field : as);
    }
};

/// Walks a table's fields in their order and finds the place of the line's column among them.
class ColumnPlacer {
public:
    explicit ColumnPlacer(Currency line) : line_(line) { plan_.Select = "SELECT"; }

    void Field(const std::string& name) {
        if (SameText(name, kNewField)) return;
        if (IsCostCenterColumn(name))
            Column(name);
        else
            Other(name);
    }

    ColumnPlan Finish() {
        plan_.BehindTotal = !placed_ && !lastIsColumn_;
        if (!placed_) Place();
        return std::move(plan_);
    }

private:
    void Place() {
        plan_.Add(kNewAmounts, CostCenterColumn(line_));
        placed_ = true;
    }

    void Other(const std::string& name) {
        if (!placed_ && line_ - previous_ <= kWholeStep) Place();
        plan_.Add(name);
        lastIsColumn_ = false;
    }

    void Column(const std::string& name) {
        previous_ = LineOfColumn(name);
        lastIsColumn_ = true;
        if (placed_ || line_ > previous_) return plan_.Add(name);
        Place();
        // The column that stood here moves up by one subscript, the others keep their names.
        const bool sameGroup = line_.Whole() == previous_.Whole();
        plan_.Add(name, sameGroup ? CostCenterColumn(line_ + kSubscriptStep) : std::string());
    }

    Currency line_;
    Currency previous_;
    bool placed_ = false;
    bool lastIsColumn_ = false;
    ColumnPlan plan_;
};

ColumnPlan PlanColumn(std::string_view table, Currency line) {
    ColumnPlacer placer(line);
    for (const auto& field : gDB.Table(table).Fields) placer.Field(field.Name);
    return placer.Finish();
}

bool HasDoubles(std::vector<std::string> names) {
    for (auto& name : names) name = UCase(name);
    std::sort(names.begin(), names.end());
    return std::adjacent_find(names.begin(), names.end()) != names.end();
}

void ReportAppendFailure(std::string_view table, const StoreError& error) {
    MsgOrLog(fmt::format("Failure to append field to the {} table, please rebuild the table.  The "
                         "following error message was returned: \"{}\"",
                         table, error.what()),
             kCritical, "Error adding field to table B");
}

/// A field can be added to each table of a family that is there and holds no field of that name.
bool CanTakeNewField(Names family) {
    try {
        gDB.RefreshTableDefs();
        for (auto table : family)
            if (gDB.Table(table).FieldIndex(kNewField) >= 0)
                throw StoreError(StoreError::Kind::Other,
                                 fmt::format("duplicate column name: {}", kNewField));
    } catch (const StoreError& error) {
        if (error.IsFileError()) throw;
        ReportAppendFailure(family.front(), error);
        return false;
    }
    return true;
}

void RebuildTable(std::string_view table, const std::string& select) {
    DropTable("tblTemp");
    gDB.Execute(fmt::format("{} INTO tblTemp FROM {};", select, table));
    DropTable(table);
    gDB.Execute(fmt::format("Select * Into {} From tblTemp;", table));
    gDB.Execute(fmt::format("CREATE UNIQUE INDEX ndx{0} ON {0} (LineNum);", table));
}

bool AddColumnToFamily(Names family, Currency line) {
    if (!CanTakeNewField(family)) return false;
    const auto plan = PlanColumn(family.front(), line);
    for (auto table : family) RebuildTable(table, plan.Select);
    return true;
}

std::vector<std::string> FieldNames(std::string_view table) {
    std::vector<std::string> names;
    for (const auto& field : gDB.Table(table).Fields) names.push_back(field.Name);
    return names;
}

/// Brings the columns behind a deleted one down by .01, so long as they follow without a hole.
void CloseColumnGap(std::string_view table, Currency deleted) {
    auto inGroup = [&](const std::string& name) {
        return IsCostCenterColumn(name) && LineOfColumn(name).Whole() == deleted.Whole();
    };
    const auto names = FieldNames(table);
    auto next = deleted + kSubscriptStep;
    for (auto at = std::find_if(names.begin(), names.end(), inGroup);
         at != names.end() && inGroup(*at); ++at) {
        if (LineOfColumn(*at) != next) continue;
        gDB.RenameField(table, *at, CostCenterColumn(next - kSubscriptStep));
        next += kSubscriptStep;
    }
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

bool AddCCColumn(Currency line) {
    const auto tables = TablesWithColumn(line);
    std::size_t size = 1;
    for (std::size_t at = 0; at < tables.size(); at += size) {
        size = FamilySize(tables, at);
        if (!AddColumnToFamily(Names(tables).subspan(at, size), line)) return false;
    }
    return true;
}

std::string ColumnObstacle(Currency line) {
    const auto tables = TablesWithColumn(line);
    for (std::size_t at = 0; at < tables.size(); at += FamilySize(tables, at)) {
        const auto plan = PlanColumn(tables[at], line);
        if (HasDoubles(plan.Names))
            return fmt::format("the columns behind {} in table {} cannot all move up",
                               CostCenterColumn(line), tables[at]);
        if (plan.BehindTotal)
            return fmt::format("{} would stand behind the total of table {}",
                               CostCenterColumn(line), tables[at]);
    }
    return {};
}

void DeleteCCColumn(Currency line) {
    const auto column = CostCenterColumn(line);
    for (const auto& item : RegisteredWorksheets()) {
        if (!gDB.HasTable(item) || gDB.Table(item).FieldIndex(column) < 0) continue;
        gDB.RefreshTableDefs();
        gDB.DeleteField(item, column);
        CloseColumnGap(item, line);
    }
}

void DropTable(std::string_view name) {
    gDB.RefreshTableDefs();
    TheStatus().DoEvents();
    try {
        gDB.DeleteTable(name);
    } catch (const StoreError&) {
        // A table that is not there is no fault.
    }
    gDB.RefreshTableDefs();
}

}  // namespace zolmara
