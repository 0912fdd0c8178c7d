// The calculation of the schedules.

#include <fmt/format.h>

#include <algorithm>
#include <numeric>
#include <optional>

#include "core/Globals.h"
#include "store/session/Session.h"
#include "worksheets/Build.h"
#include "worksheets/CellRows.h"
#include "worksheets/ColumnInputs.h"
#include "worksheets/Residual.h"
#include "worksheets/W_Bpx.h"

namespace zolmara {
namespace {

using Row = TableCells::Row;

std::size_t At(int position) { return static_cast<std::size_t>(position); }

/// A schedule's table while it is calculated. Positions are the table's, LineNum being 0.
struct Table {
    std::string Item;
    const Schedule& Kind;
    TableCells& Cells;
    int Last;  ///< position of the last cost center; the total, if there is one, stands behind it
    KeptColumns& Kept;
    TableChanges Changes;
    TableFindings& Found;

    Table(std::string_view item, KeptColumns& kept)
        : Item(item),
          Kind(*FindSchedule(item)),
          Cells(CellsOf(gDB, item)),
          Last(Cells.FieldCount() - (Kind.TotalField.empty() ? 1 : 2)),
          Kept(kept),
          Changes(kept.ChangesOf(Cells)),
          Found(kept.FindingsOf(Cells)) {}

    int First() const { return Kind.FirstColumn; }
    bool HasTotal() const { return !Kind.TotalField.empty(); }
    bool IsFunctional() const { return Kind.Kind == ScheduleKind::Functional; }
    /// The statistics of the part.
    std::string Statistics() const { return fmt::format("{}{}", Kind.Statistics, PartOf(Item)); }
    /// The third part of the statistics, which has the costs and the multipliers.
    std::string CostTable() const { return TableOf(Kind.Statistics, 3); }
    std::vector<int> AllColumns() const {
        std::vector<int> columns(At(std::max(0, Last + 1 - First())));
        std::iota(columns.begin(), columns.end(), First());
        return columns;
    }
};

/// The columns whose amounts are to be worked out: of C and D those whose statistics, costs or
/// multipliers have changed, too.
std::vector<int> ColumnsOf(const Table& table) {
    if (!table.IsFunctional())
        return ColumnsToCalculate(table.First(), table.Last + 1, {table.Changes});
    return ColumnsToCalculate(
        table.First(), table.Last + 1,
        {table.Changes, table.Kept.ChangesOf(CellsOf(gDB, table.Statistics())),
         table.Kept.ChangesOf(CellsOf(gDB, table.CostTable()))});
}

// --- Components ------------------------------------------------------------------------------

/// The unit cost multipliers; a column that was not calculated has none.
Amounts Multipliers(const Table& table) {
    const TableCells& source = CellsOf(gDB, table.CostTable());
    const Row row = RequiredRow(source, kUnitCostMultiplier);
    for (int i = table.First(); i < source.FieldCount(); ++i) {
        if (!source.IsNull(row, i)) continue;
        throw StoreError(StoreError::Kind::Other,
                         fmt::format("Worksheet {} line 54 holds no unit cost multiplier in {}.",
                                     table.CostTable(), source.FieldName(i)));
    }
    return AmountsOf(source, row);
}

/// What C and D are computed from.
struct Source {
    Amounts UnitCosts;
    CellCursor Statistics;
};

Source OpenSource(const Table& table) {
    return {Multipliers(table), CellCursor(CellsOf(gDB, table.Statistics()), kPartTotal)};
}

/// Sets the row's columns to their statistics' amounts. Without a statistic a cell is Null.
void Allocate(const std::vector<int>& columns, Source& source, Currency line, RowEdit& row) {
    source.Statistics.Seek(line);
    for (const int i : columns) {
        const double statistic = source.Statistics.Amount(i);
        if (statistic == 0)
            row.SetNull(i);
        else
            row.Set(i, RoundTo(source.UnitCosts.at(At(i)) * statistic, 0));
    }
}

/// The components' rows while they are calculated.
struct Components {
    std::vector<int> Columns;  ///< those that are worked out
    std::vector<int> All;
    std::optional<Source> From;
};

double TotalOf(const Table& table, Row row) {
    double total = 0;
    for (int i = table.First(); i <= table.Last; ++i) total += table.Cells.Amount(row, i);
    return total;
}

/// Works out the row's columns, and its total where any cell may be another than it was. A row with
/// a residual is made anew from all its statistics, so that the residual begins where it did.
void CalcComponent(const Table& table, Row row, Components& components) {
    const Currency line = table.Cells.Line(row);
    const bool hadResidual = components.From && table.Found.WithResidual.erase(line) > 0;
    RowEdit edit(table.Cells, row);
    if (components.From)
        Allocate(hadResidual ? components.All : components.Columns, *components.From, line, edit);
    for (const int i : components.Columns)
        table.Found.Columns[At(i)].Add(line, table.Cells.Amount(row, i),
                                       table.Cells.IsNull(row, i));
    if (table.HasTotal() && (hadResidual || edit.HasChanged() || table.Changes.Row(row)))
        edit.Set(table.Last + 1, TotalOf(table, row));
    edit.Update();
}

Amounts SumsOf(const TableFindings& found) {
    Amounts sums;
    for (const ColumnFinding& column : found.Columns) sums.push_back(column.Sum);
    return sums;
}

/// Calculates the components' rows. Gives the sums of the cost centers' columns.
Amounts CalcComponents(const Table& table) {
    Components components{ColumnsOf(table), table.AllColumns(), {}};
    table.Found.Columns.resize(At(table.Cells.FieldCount()));
    for (const int i : components.Columns) table.Found.Columns[At(i)] = {};
    if (table.IsFunctional() && !table.Cells.Rows().empty())
        components.From.emplace(OpenSource(table));
    for (const Row row : table.Cells.Rows()) {
        if (table.Cells.Line(row) >= kPartTotal) break;
        CalcComponent(table, row, components);
    }
    table.Found.AreNew = true;
    return SumsOf(table.Found);
}

// --- Totals ----------------------------------------------------------------------------------

void WriteRow(const Table& table, Row row, const Amounts& amounts) {
    RowEdit edit(table.Cells, row);
    for (int i = table.First(); i < table.Cells.FieldCount(); ++i) edit.Set(i, amounts[At(i)]);
    edit.Update();
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
        const TableCells& cells = CellsOf(gDB, TableOf(table.Kind, part));
        const Amounts other = AmountsOf(cells, RequiredRow(cells, kPartTotal));
        for (int i = table.First(); i < table.Cells.FieldCount(); ++i)
            total[At(i)] += other.at(At(i));
    }
    return total;
}

void WriteMultipliers(const Table& table, Row row, const Amounts& cost, const Amounts& statistics) {
    RowEdit edit(table.Cells, row);
    for (int i = table.First(); i <= table.Last; ++i) {
        const double total = statistics[At(i)];
        edit.Set(i, total == 0 ? 0 : RoundTo(cost[At(i)] / total, 6));
    }
    edit.Update();
}

/// Closes each column of C or D to its cost: what the rounded amounts miss goes to the largest.
void CloseOnCost(const Table& table, const Amounts& got) {
    const TableCells& cost = CellsOf(gDB, table.CostTable());
    const Amounts wanted = AmountsOf(cost, RequiredRow(cost, kCostToAllocate));
    std::vector<Gap> gaps;
    for (int i = table.First(); i <= table.Last; ++i) {
        if (wanted.at(At(i)) != got[At(i)]) gaps.push_back({i, got[At(i)], wanted[At(i)]});
    }
    CloseGaps(table.Kind.Family, gaps, table.Last + 1, table.Kept);
}

/// Calculates the fixed lines, in their order; each takes what the ones ahead have left.
void CalcFixedLines(const Table& table, Amounts sums) {
    Amounts cost(sums.size(), 0);
    for (const Row row : table.Cells.Rows()) {
        const Currency line = table.Cells.Line(row);
        if (line == kPartTotal) {
            sums = PartTotal(table, std::move(sums));
            WriteRow(table, row, sums);
        } else if (line == kGrandTotal) {
            sums = GrandTotal(table, std::move(sums));
            WriteRow(table, row, sums);
            if (table.IsFunctional()) CloseOnCost(table, sums);
        } else if (line == kCostToAllocate) {
            cost = AmountsOf(table.Cells, row);
        } else if (line == kUnitCostMultiplier) {
            WriteMultipliers(table, row, cost, sums);
        }
    }
}

}  // namespace

void Calc_Bpx(std::string_view item, KeptColumns& kept) {
    const Table table(item, kept);
    ChangeCells(gDB, [&] { CalcFixedLines(table, CalcComponents(table)); });
}

void Calc_Bpx(std::string_view item) {
    KeptColumns none;
    Calc_Bpx(item, none);
}

}  // namespace zolmara
