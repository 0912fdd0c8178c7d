#include "worksheets/W_Bpx.h"

#include <fmt/format.h>

#include <array>

#include "core/Globals.h"
#include "store/session/CoreTables.h"
#include "store/session/Session.h"
#include "worksheets/Build.h"
#include "worksheets/CellRows.h"
#include "worksheets/ColumnCaption.h"
#include "worksheets/Rows.h"

namespace zolmara {
namespace {

using enum FieldType;
using enum CellKind;

const Schedule& ScheduleOf(std::string_view item) { return *FindSchedule(item); }

std::string_view NumberTitle(char part) {
    return part == '1' ? "CCN" : part == '2' ? "" : "Region-|al HO|#";
}

std::vector<WorksheetField> MakeFixedFields(const Schedule& schedule, char part) {
    std::vector<WorksheetField> fields = {
        {"LineNum", dbCurrency, 0, "Line|#", Key},
        {"Description", dbText, 40, "Component Name", Label},
        {"Col_0", dbText, 40, std::string(NumberTitle(part)), Label},
    };
    if (!schedule.TotalField.empty()) {
        fields.push_back({std::string(schedule.TotalField), dbDouble, 0, "Total", Computed});
    }
    return fields;
}

using FieldsByPart = std::array<std::vector<WorksheetField>, 3>;

std::vector<FieldsByPart> MakeAllFixedFields() {
    std::vector<FieldsByPart> all(AllSchedules().size());
    for (std::size_t i = 0; i < all.size(); ++i) {
        for (std::size_t part = 0; part < 3; ++part) {
            all[i][part] = MakeFixedFields(AllSchedules()[i], static_cast<char>('1' + part));
        }
    }
    return all;
}

}  // namespace

const std::vector<WorksheetField>& FixedFields_Bpx(std::string_view item) {
    static const auto all = MakeAllFixedFields();
    const auto schedule = static_cast<std::size_t>(&ScheduleOf(item) - AllSchedules().data());
    return all.at(schedule).at(static_cast<std::size_t>(PartOf(item) - '1'));
}

std::vector<Currency> CostCenterLines(const Schedule& schedule) {
    const TableCells& centers = CellsOf(gDB, "CostCenters");
    std::vector<Currency> lines;
    for (const TableCells::Row row : centers.Rows())
        if (TakesColumn(schedule, centers.Line(row))) lines.push_back(centers.Line(row));
    return lines;
}

std::vector<WorksheetField> CostCenterFields(const Schedule& schedule, CellKind kind,
                                             bool withBasis) {
    std::vector<WorksheetField> fields;
    Recordset centers = gDB.OpenRecordset(
        "SELECT LineNum, CCName, StatLabel1, StatLabel2 From CostCenters ORDER BY LineNum;",
        dbOpenSnapshot);
    for (; !centers.Eof(); centers.MoveNext()) {
        const Currency line = LineOf(centers);
        if (!TakesColumn(schedule, line)) continue;
        fields.push_back({CostCenterColumn(line), dbDouble, 0,
                          CostCenterTitle(centers[1], centers[2], centers[3], withBasis), kind});
    }
    return fields;
}

std::vector<WorksheetField> Fields_Bpx(std::string_view item) {
    const Schedule& schedule = ScheduleOf(item);
    std::vector<WorksheetField> fields = FixedFields_Bpx(item);
    const std::vector<WorksheetField> centers = CostCenterFields(
        schedule, schedule.Kind == ScheduleKind::Functional ? Computed : Keyed, ShowsBasis(item));
    fields.insert(fields.begin() + schedule.FirstColumn, centers.begin(), centers.end());
    return fields;
}

void Build_Bpx(std::string_view item) {
    if (!DropWorksheetTable(item)) return;
    MakeWorksheetTable(item);
    MakeWorksheetIndex(item);
    InsertComponentRows(item);
    if (PartOf(item) == '3' && ScheduleOf(item).Kind == ScheduleKind::Statistics) {
        const std::string insert =
            fmt::format("Insert Into {} (LineNum,Description) Values(?,?);", item);
        gDB.Execute(insert, {kCostToAllocate, "Cost to be allocated"});
        gDB.Execute(insert, {kUnitCostMultiplier, "UCM"});
    }
    RegisterBuiltWorksheet(item);
}

}  // namespace zolmara
