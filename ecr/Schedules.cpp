#include "ecr/Schedules.h"

#include <fmt/format.h>

#include <vector>

#include "core/Fortran.h"
#include "core/Globals.h"
#include "core/Status.h"
#include "ecr/Record.h"
#include "store/RowWalk.h"
#include "store/session/CoreTables.h"
#include "store/session/Session.h"
#include "worksheets/Schedules.h"

namespace zolmara {
namespace {

constexpr Currency kRatioColumn = Currency::FromWhole(2);
constexpr std::size_t kAmountWidth = 16;
constexpr std::string_view kRatio = "F16.6";

/// A column of the schedule, as it stands in every record.
struct ScheduleField {
    std::size_t Position;
    std::string Column;
    bool Ratio;
};

std::vector<ScheduleField> FieldsOf(const ScheduleEmitter& schedule, std::string_view item) {
    std::vector<ScheduleField> fields;
    const std::vector<FieldDef>& all = gDB.Table(item).Fields;
    for (auto i = static_cast<std::size_t>(schedule.FirstField); i < all.size(); ++i) {
        const Currency column = ScheduleColumn(all[i].Name, schedule.Pooled);
        fields.push_back({i, ColumnField(column), schedule.Pooled && column == kRatioColumn});
    }
    return fields;
}

void WriteCell(EcrRun& run, std::string_view head, const ScheduleField& field, double amount,
               bool ratio) {
    run.ECRLine = head;
    run.ECRLine += field.Column;
    if (ratio)
        run.ECRLine += Fortran(amount, kRatio, " ", false);
    else
        AppendWhole(run.ECRLine, amount, kAmountWidth);
    run.WriteRecord();
}

void WriteRow(EcrRun& run, const ScheduleEmitter& schedule, char part,
              const std::vector<ScheduleField>& fields, std::span<const Variant> row) {
    const Currency line = CurOr(row[0]);
    const std::string head = fmt::format("3{}{}  {}", schedule.Code, part, LineField(line));
    const bool isUcm = schedule.HasUcm && line == kUnitCostMultiplier;
    for (const ScheduleField& field : fields) {
        const double amount = NumOr(row[field.Position]);
        if (amount != 0) WriteCell(run, head, field, amount, isUcm || field.Ratio);
    }
}

}  // namespace

Currency ScheduleColumn(std::string_view field, bool pooled) {
    if (!SameText(field.substr(0, 2), "CC")) return Currency(Val(MidText(field, 5)));
    const Currency line(Val(MidText(field, 4)) / 100);
    return pooled ? PoolColumn(line) : line;
}

void ECR_Schedule(EcrRun& run, const ScheduleEmitter& schedule, std::string_view item) {
    const std::vector<ScheduleField> fields = FieldsOf(schedule, item);
    // Worksheet E has no parts.
    const char part = schedule.Family == "E" ? '0' : item.back();
    WalkRows(gDB, fmt::format("SELECT * From {} ORDER BY LineNum;", item),
             [&](std::span<const Variant> row) {
                 WriteRow(run, schedule, part, fields, row);
                 TheStatus().DoEvents();
             });
}

}  // namespace zolmara
