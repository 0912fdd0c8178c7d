// Loaders of the keyed allocation schedules: B, B-1, C-1, D-1 and E-1.

#include <fmt/format.h>

#include "core/Globals.h"
#include "core/Windows.h"
#include "import/ImportRun.h"
#include "import/LoaderTools.h"
#include "import/Loaders.h"
#include "store/session/CoreTables.h"
#include "worksheets/Schedules.h"

namespace zolmara {

namespace {

/// The bounds of rows and columns are the import's own, as its messages name them.
struct KeyedSchedule {
    std::string_view Family;
    Range Columns;
    std::string_view ColumnList;
    bool TakesCost;  ///< line 53 of part 3, the cost to be allocated
    int Field;       ///< position of the one field; 0 for the cost center's column
};

constexpr KeyedSchedule kB = {"Bp", {1, 6}, "columns 1-6", false, 0};
constexpr KeyedSchedule kB1 = {"B1p", {8, 98.99}, "columns 8-98.99", false, 0};
constexpr KeyedSchedule kC1 = {"C1p", {1, 2.99}, "columns 1-2.99", true, 0};
constexpr KeyedSchedule kD1 = {"D1p", {8, 99}, "columns 8-99", true, 0};
constexpr KeyedSchedule kE1 = {"E1p", {1, 1}, "column 1", true, 3};

constexpr Range kComponents = {1, 50.99};

/// Both tests are made, so that a row may give two messages.
bool PassesRules(ImportRun& run, const KeyedSchedule& schedule, const std::string& item, int part,
                 const SourceRow& row) {
    bool passes = true;
    auto fail = [&](std::string_view rule) {
        run.Complain(item, row, fmt::format("Table {} only allows {}: ", item, rule));
        passes = false;
    };
    if (!InRange(schedule.Columns, row.Col)) fail(schedule.ColumnList);
    const bool isCost = schedule.TakesCost && part == 3 && row.Row == kCostToAllocate;
    if (!InRange(kComponents, row.Row) && !isCost) fail("rows 1-50.99");
    return passes;
}

int FieldOf(const KeyedSchedule& schedule, const TargetRow& target, Currency column) {
    if (schedule.Field != 0) return schedule.Field;
    const bool isLine = column.Units() % kSubscriptStep.Units() == 0;
    return isLine ? target.FieldIndex(CostCenterColumn(column)) : -1;
}

void LoadSchedule(ImportRun& run, const KeyedSchedule& schedule, int part) {
    const auto item = TableOf(schedule.Family, part);
    TargetRow target(item, "LineNum");
    LoadRows(run, item, target, [&](const SourceRow& row) -> std::string {
        if (!PassesRules(run, schedule, item, part, row)) return {};
        if (!target.GoTo(row.Row))
            return fmt::format("Table {} line {} doesn't exist: ", item, NumberText(row.Row));
        target.Set(FieldOf(schedule, target, row.Col), row.Contents);
        return {};
    });
    TheWindows().RefreshOpenForms("");
}

}  // namespace

void Load_Bpx(ImportRun& run, int part) { LoadSchedule(run, kB, part); }
void Load_B1px(ImportRun& run, int part) { LoadSchedule(run, kB1, part); }
void Load_C1px(ImportRun& run, int part) { LoadSchedule(run, kC1, part); }
void Load_D1px(ImportRun& run, int part) { LoadSchedule(run, kD1, part); }
void Load_E1px(ImportRun& run, int part) { LoadSchedule(run, kE1, part); }

}  // namespace zolmara
