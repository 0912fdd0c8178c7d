#include "ecr/Schedules.h"

#include <fmt/format.h>

#include <vector>

#include "core/Fortran.h"
#include "core/Globals.h"
#include "core/Status.h"
#include "ecr/Record.h"
#include "store/session/CoreTables.h"
#include "store/session/Session.h"
#include "worksheets/Schedules.h"

namespace zolmara {
namespace {

constexpr Currency kRatioColumn = Currency::FromWhole(2);
constexpr std::string_view kAmount = "I16";
constexpr std::string_view kRatio = "F16.6";

/// A column of the schedule, as it stands in every record.
struct ScheduleField {
    int Position;
    std::string Column;
    std::string_view Format;
};

std::vector<ScheduleField> FieldsOf(const ScheduleEmitter& schedule, const Recordset& rows) {
    std::vector<ScheduleField> fields;
    for (int i = schedule.FirstField; i < rows.FieldCount(); ++i) {
        const Currency column = ScheduleColumn(rows.FieldName(i), schedule.Pooled);
        const bool isRatio = schedule.Pooled && column == kRatioColumn;
        fields.push_back({i, ColumnField(column), isRatio ? kRatio : kAmount});
    }
    return fields;
}

void WriteCell(EcrRun& run, const std::string& head, const ScheduleField& field, double amount,
               std::string_view format) {
    run.ECRLine = head;
    run.ECRLine += field.Column;
    run.ECRLine += Fortran(amount, format, " ", false);
    run.WriteRecord();
}

}  // namespace

Currency ScheduleColumn(std::string_view field, bool pooled) {
    if (!SameText(field.substr(0, 2), "CC")) return Currency(Val(MidText(field, 5)));
    const Currency line(Val(MidText(field, 4)) / 100);
    return pooled ? PoolColumn(line) : line;
}

void ECR_Schedule(EcrRun& run, const ScheduleEmitter& schedule, std::string_view item) {
    Recordset rows =
        gDB.OpenRecordset(fmt::format("SELECT * From {} ORDER BY LineNum;", item), dbOpenSnapshot);
    const std::vector<ScheduleField> fields = FieldsOf(schedule, rows);
    // Worksheet E has no parts.
    const char part = schedule.Family == "E" ? '0' : item.back();
    for (; !rows.Eof(); rows.MoveNext()) {
        const Currency line = CurOr(rows[0]);
        const std::string head = fmt::format("3{}{}  {}", schedule.Code, part, LineField(line));
        const bool isUcm = schedule.HasUcm && line == kUnitCostMultiplier;
        for (const ScheduleField& field : fields) {
            const double amount = NumOr(rows[field.Position]);
            if (amount == 0) continue;
            WriteCell(run, head, field, amount, isUcm ? kRatio : field.Format);
        }
        TheStatus().DoEvents();
    }
}

}  // namespace zolmara
