#include "worksheets/W_Bpx.h"

#include <fmt/format.h>

#include <algorithm>

#include "core/Globals.h"
#include "store/session/CoreTables.h"
#include "store/session/Session.h"
#include "worksheets/Build.h"
#include "worksheets/ColumnCaption.h"
#include "worksheets/Residual.h"
#include "worksheets/Rows.h"

namespace zolmara {
namespace {

using enum FieldType;
using enum CellKind;

/// What differs between the six schedules.
struct Schedule {
    std::string_view Type;  ///< the first two letters of its tables
    Currency From;          ///< the cost centers that have a column
    Currency Below;
    std::string_view TotalField;
};

constexpr Currency kSeven = Currency::FromWhole(7);
constexpr Currency kEnd = Currency::FromWhole(10000);

constexpr std::array<Schedule, 6> kSchedules = {{
    {"Bp", Currency(), kSeven, "Col_7"},
    {"B1", kSeven, kEnd, "Col_99"},
    {"Cp", Currency(), Currency::FromWhole(3), "Col_3"},
    {"C1", Currency(), Currency::FromWhole(3), ""},
    {"Dp", kSeven, kEnd, "Col_99"},
    {"D1", kSeven, kEnd, ""},
}};

const Schedule& ScheduleOf(std::string_view item) {
    return *std::ranges::find_if(kSchedules, [&](const Schedule& schedule) {
        return SameText(schedule.Type, LeftText(item, 2));
    });
}

/// C and D, whose amounts are computed from the statistics of C-1 and D-1.
bool IsAllocated(const Schedule& schedule) {
    return schedule.Type == "Cp" || schedule.Type == "Dp";
}

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

std::array<FieldsByPart, kSchedules.size()> MakeAllFixedFields() {
    std::array<FieldsByPart, kSchedules.size()> all;
    for (std::size_t i = 0; i < kSchedules.size(); ++i) {
        for (std::size_t part = 0; part < 3; ++part) {
            all[i][part] = MakeFixedFields(kSchedules[i], static_cast<char>('1' + part));
        }
    }
    return all;
}

// --- Calculation ---------------------------------------------------------------------------

constexpr int kFirst = 3;  ///< position of the first cost center

/// One schedule's table while it is calculated. Positions are the table's, LineNum being 0.
struct Run {
    std::string Item;
    const Schedule& Kind;
    Recordset Rows;
    int Last;  ///< position of the last cost center; the total, if there is one, stands behind it
    std::vector<double> Tot = {};   ///< the columns' totals, by position
    std::vector<double> Cost = {};  ///< line 53
    std::vector<double> Ucm = {};   ///< line 54 of the statistics, on C and D
    std::optional<LineCursor> Statistics = {};

    bool HasTotal() const { return !Kind.TotalField.empty(); }
};

std::size_t At(int position) { return static_cast<std::size_t>(position); }

/// The unit cost multipliers; a column that was not calculated has none.
std::vector<double> Multipliers(std::string_view table) {
    const Recordset row = RequiredRow(table, 54);
    for (int i = kFirst; i < row.FieldCount(); ++i) {
        if (!row[i].IsNull()) continue;
        throw StoreError(StoreError::Kind::Other,
                         fmt::format("Worksheet {} line 54 holds no unit cost multiplier in {}.",
                                     table, row.FieldName(i)));
    }
    return AmountsOf(row);
}

Run OpenRun(std::string_view item) {
    const Schedule& kind = ScheduleOf(item);
    Recordset rows = gDB.OpenRecordset(fmt::format("Select * From {} Order By LineNum;", item));
    const int fields = rows.FieldCount();
    Run run{.Item = std::string(item),
            .Kind = kind,
            .Rows = std::move(rows),
            .Last = fields - (kind.TotalField.empty() ? 1 : 2)};
    run.Tot.assign(At(fields), 0);
    run.Cost.assign(At(fields), 0);
    if (IsAllocated(kind) && !run.Rows.Eof()) {
        run.Ucm = Multipliers(fmt::format("{}1p3", item[0]));
        const std::string source = fmt::format("{}1{}", item[0], item.substr(1));
        run.Statistics.emplace(
            source, fmt::format("Select * From {} Where LineNum<51 Order By LineNum;", source));
    }
    return run;
}

void Allocate(Run& run) {
    run.Statistics->Seek(LineOf(run.Rows));
    for (int i = kFirst; i <= run.Last; ++i) {
        const double statistic = run.Statistics->Amount(i);
        run.Rows.Set(i, statistic == 0 ? Variant() : RoundTo(run.Ucm.at(At(i)) * statistic, 0));
    }
}

void CalcComponent(Run& run) {
    if (run.HasTotal()) run.Rows.Edit();
    if (run.Statistics) Allocate(run);
    double rowTotal = 0;
    for (int i = kFirst; i <= run.Last; ++i) {
        const double amount = NumOr(run.Rows[i]);
        rowTotal += amount;
        run.Tot[At(i)] += amount;
    }
    if (!run.HasTotal()) return;
    run.Rows.Set(run.Last + 1, rowTotal);
    run.Tot[At(run.Last + 1)] = rowTotal;
    run.Rows.Update();
}

void WriteTotals(Run& run) {
    run.Rows.Edit();
    for (int i = kFirst; i < run.Rows.FieldCount(); ++i) run.Rows.Set(i, run.Tot[At(i)]);
    run.Rows.Update();
}

void CalcTotal(Run& run) {
    double rowTotal = 0;
    for (int i = kFirst; i <= run.Last; ++i) rowTotal += run.Tot[At(i)];
    if (run.HasTotal()) run.Tot[At(run.Last + 1)] = rowTotal;
    WriteTotals(run);
}

void CalcGrandTotal(Run& run) {
    const std::string_view family = std::string_view(run.Item).substr(0, run.Item.size() - 1);
    for (const int part : {1, 2}) {
        const std::vector<double> total =
            AmountsOf(RequiredRow(fmt::format("{}{}", family, part), 51));
        for (int i = kFirst; i < run.Rows.FieldCount(); ++i) run.Tot[At(i)] += total.at(At(i));
    }
    WriteTotals(run);
}

void CalcMultipliers(Run& run) {
    run.Rows.Edit();
    for (int i = kFirst; i <= run.Last; ++i) {
        const double total = run.Tot[At(i)];
        run.Rows.Set(i, total == 0 ? 0 : RoundTo(run.Cost[At(i)] / total, 6));
    }
    run.Rows.Update();
}

/// Closes each column of C or D to its cost: what the rounded amounts miss goes to the largest.
void CloseOnCost(const Run& run) {
    const std::vector<double> wanted =
        AmountsOf(RequiredRow(fmt::format("{}1p3", run.Item[0]), 53));
    std::vector<Gap> gaps;
    for (int i = kFirst; i <= run.Last; ++i) {
        if (wanted.at(At(i)) != run.Tot[At(i)]) gaps.push_back({i, run.Tot[At(i)], wanted[At(i)]});
    }
    CloseGaps(std::string_view(run.Item).substr(0, 2), gaps, run.Last + 1);
}

void CalcRow(Run& run) {
    const Currency line = LineOf(run.Rows);
    if (line < Currency::FromWhole(51)) return CalcComponent(run);
    if (!line.IsWhole()) return;
    switch (line.Whole()) {
        case 51:
            return CalcTotal(run);
        case 52:
            CalcGrandTotal(run);
            if (IsAllocated(run.Kind)) CloseOnCost(run);
            return;
        case 53:
            run.Cost = AmountsOf(run.Rows);
            return;
        case 54:
            return CalcMultipliers(run);
        default:
            return;
    }
}

}  // namespace

const std::vector<WorksheetField>& FixedFields_Bpx(std::string_view item) {
    static const auto all = MakeAllFixedFields();
    const auto schedule = static_cast<std::size_t>(&ScheduleOf(item) - kSchedules.data());
    return all.at(schedule).at(static_cast<std::size_t>(PartOf(item) - '1'));
}

std::vector<WorksheetField> CostCenterFields(const std::function<bool(Currency)>& takes,
                                             CellKind kind, bool withBasis) {
    std::vector<WorksheetField> fields;
    Recordset centers = gDB.OpenRecordset(
        "SELECT LineNum, CCName, StatLabel1, StatLabel2 From CostCenters ORDER BY LineNum;",
        dbOpenSnapshot);
    for (; !centers.Eof(); centers.MoveNext()) {
        const Currency line = LineOf(centers);
        if (!takes(line)) continue;
        fields.push_back({CostCenterColumn(line), dbDouble, 0,
                          CostCenterTitle(centers[1], centers[2], centers[3], withBasis), kind});
    }
    return fields;
}

std::vector<WorksheetField> Fields_Bpx(std::string_view item) {
    const Schedule& schedule = ScheduleOf(item);
    std::vector<WorksheetField> fields = FixedFields_Bpx(item);
    const auto takes = [&](Currency line) {
        return line >= schedule.From && line < schedule.Below;
    };
    const std::vector<WorksheetField> centers =
        CostCenterFields(takes, IsAllocated(schedule) ? Computed : Keyed, ShowsBasis(item));
    fields.insert(fields.begin() + kFirst, centers.begin(), centers.end());
    return fields;
}

void Build_Bpx(std::string_view item) {
    if (!DropWorksheetTable(item)) return;
    MakeWorksheetTable(item);
    MakeWorksheetIndex(item);
    InsertComponentRows(item);
    if (PartOf(item) == '3' && ScheduleOf(item).TotalField.empty()) {
        const std::string insert =
            fmt::format("Insert Into {} (LineNum,Description) Values(?,?);", item);
        gDB.Execute(insert, {53, "Cost to be allocated"});
        gDB.Execute(insert, {54, "UCM"});
    }
    RegisterBuiltWorksheet(item);
}

void Calc_Bpx(std::string_view item) {
    Run run = OpenRun(item);
    for (; !run.Rows.Eof(); run.Rows.MoveNext()) CalcRow(run);
}

}  // namespace zolmara
