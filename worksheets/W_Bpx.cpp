#include "worksheets/W_Bpx.h"

#include <fmt/format.h>

#include <array>
#include <optional>

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

// --- Calculation ---------------------------------------------------------------------------

/// Amounts of a row, or sums of columns, by position in the table.
using Amounts = std::vector<double>;

std::size_t At(int position) { return static_cast<std::size_t>(position); }

/// A schedule's table while it is calculated. Positions are the table's, LineNum being 0.
struct Table {
    std::string Item;
    const Schedule& Kind;
    Recordset Rows;
    int Last;  ///< position of the last cost center; the total, if there is one, stands behind it

    explicit Table(std::string_view item)
        : Item(item),
          Kind(ScheduleOf(item)),
          Rows(gDB.OpenRecordset(fmt::format("Select * From {} Order By LineNum;", item))),
          Last(Rows.FieldCount() - (Kind.TotalField.empty() ? 1 : 2)) {}

    int First() const { return Kind.FirstColumn; }
    bool HasTotal() const { return !Kind.TotalField.empty(); }
    bool IsFunctional() const { return Kind.Kind == ScheduleKind::Functional; }
    /// The third part of the statistics, which has the costs and the multipliers.
    std::string CostTable() const { return TableOf(Kind.Statistics, 3); }
};

// --- Components ------------------------------------------------------------------------------

/// The unit cost multipliers; a column that was not calculated has none.
Amounts Multipliers(const Table& table) {
    const std::string source = table.CostTable();
    const Recordset row = RequiredRow(source, kUnitCostMultiplier);
    for (int i = table.First(); i < row.FieldCount(); ++i) {
        if (!row[i].IsNull()) continue;
        throw StoreError(StoreError::Kind::Other,
                         fmt::format("Worksheet {} line 54 holds no unit cost multiplier in {}.",
                                     source, row.FieldName(i)));
    }
    return AmountsOf(row);
}

LineCursor OpenStatistics(const Table& table) {
    const std::string source = fmt::format("{}{}", table.Kind.Statistics, PartOf(table.Item));
    return {source, fmt::format("Select * From {} Where LineNum<{} Order By LineNum;", source,
                                kPartTotal.Whole())};
}

/// What C and D are computed from.
struct Source {
    Amounts UnitCosts;
    LineCursor Statistics;
};

/// Sets the row in hand, which is in Edit, to its statistics' amounts. Without a statistic a cell
/// is Null.
void Allocate(Table& table, Source& source) {
    source.Statistics.Seek(LineOf(table.Rows));
    for (int i = table.First(); i <= table.Last; ++i) {
        const double statistic = source.Statistics.Amount(i);
        table.Rows.Set(
            i, statistic == 0 ? Variant() : RoundTo(source.UnitCosts.at(At(i)) * statistic, 0));
    }
}

/// Adds the row in hand to the sums, and gives its own total.
double AddRow(const Table& table, Amounts& sums) {
    double total = 0;
    for (int i = table.First(); i <= table.Last; ++i) {
        const double amount = NumOr(table.Rows[i]);
        total += amount;
        sums[At(i)] += amount;
    }
    return total;
}

void CalcComponent(Table& table, std::optional<Source>& source, Amounts& sums) {
    if (!table.HasTotal()) {
        AddRow(table, sums);
        return;
    }
    table.Rows.Edit();
    if (source) Allocate(table, *source);
    sums.back() = AddRow(table, sums);
    table.Rows.Set(table.Last + 1, sums.back());
    table.Rows.Update();
}

/// Calculates the components' rows and leaves the table on the first line behind them. Gives the
/// sums of the cost centers' columns.
Amounts CalcComponents(Table& table) {
    Amounts sums(At(table.Rows.FieldCount()), 0);
    std::optional<Source> source;
    if (table.IsFunctional() && !table.Rows.Eof()) {
        source.emplace(Multipliers(table), OpenStatistics(table));
    }
    for (; !table.Rows.Eof() && LineOf(table.Rows) < kPartTotal; table.Rows.MoveNext()) {
        CalcComponent(table, source, sums);
    }
    return sums;
}

// --- Totals ----------------------------------------------------------------------------------

void WriteRow(Table& table, const Amounts& amounts) {
    table.Rows.Edit();
    for (int i = table.First(); i < table.Rows.FieldCount(); ++i) table.Rows.Set(i, amounts[At(i)]);
    table.Rows.Update();
}

/// The part's total: the columns' sums, and what they sum to.
Amounts PartTotal(const Table& table, Amounts sums) {
    if (!table.HasTotal()) return sums;
    double total = 0;
    for (int i = table.First(); i <= table.Last; ++i) total += sums[At(i)];
    sums.back() = total;
    return sums;
}

/// The third part's total and those of the two others.
Amounts GrandTotal(const Table& table, Amounts total) {
    for (const int part : {1, 2}) {
        const Amounts other = AmountsOf(RequiredRow(TableOf(table.Kind, part), kPartTotal));
        for (int i = table.First(); i < table.Rows.FieldCount(); ++i)
            total[At(i)] += other.at(At(i));
    }
    return total;
}

void WriteMultipliers(Table& table, const Amounts& cost, const Amounts& statistics) {
    table.Rows.Edit();
    for (int i = table.First(); i <= table.Last; ++i) {
        const double total = statistics[At(i)];
        table.Rows.Set(i, total == 0 ? 0 : RoundTo(cost[At(i)] / total, 6));
    }
    table.Rows.Update();
}

/// Closes each column of C or D to its cost: what the rounded amounts miss goes to the largest.
void CloseOnCost(const Table& table, const Amounts& got) {
    const Amounts wanted = AmountsOf(RequiredRow(table.CostTable(), kCostToAllocate));
    std::vector<Gap> gaps;
    for (int i = table.First(); i <= table.Last; ++i) {
        if (wanted.at(At(i)) != got[At(i)]) gaps.push_back({i, got[At(i)], wanted[At(i)]});
    }
    CloseGaps(table.Kind.Family, gaps, table.Last + 1);
}

/// Calculates the fixed lines, in their order; each takes what the ones ahead have left.
void CalcFixedLines(Table& table, Amounts sums) {
    Amounts cost(sums.size(), 0);
    for (; !table.Rows.Eof(); table.Rows.MoveNext()) {
        const Currency line = LineOf(table.Rows);
        if (line == kPartTotal) {
            sums = PartTotal(table, std::move(sums));
            WriteRow(table, sums);
        } else if (line == kGrandTotal) {
            sums = GrandTotal(table, std::move(sums));
            WriteRow(table, sums);
            if (table.IsFunctional()) CloseOnCost(table, sums);
        } else if (line == kCostToAllocate) {
            cost = AmountsOf(table.Rows);
        } else if (line == kUnitCostMultiplier) {
            WriteMultipliers(table, cost, sums);
        }
    }
}

}  // namespace

const std::vector<WorksheetField>& FixedFields_Bpx(std::string_view item) {
    static const auto all = MakeAllFixedFields();
    const auto schedule = static_cast<std::size_t>(&ScheduleOf(item) - AllSchedules().data());
    return all.at(schedule).at(static_cast<std::size_t>(PartOf(item) - '1'));
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

void Calc_Bpx(std::string_view item) {
    Table table(item);
    CalcFixedLines(table, CalcComponents(table));
}

}  // namespace zolmara
