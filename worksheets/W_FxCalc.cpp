// The calculation of the summaries.

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <initializer_list>
#include <iterator>
#include <utility>

#include "core/Globals.h"
#include "store/session/CoreTables.h"
#include "store/session/Session.h"
#include "worksheets/Build.h"
#include "worksheets/CellRows.h"
#include "worksheets/ColumnInputs.h"
#include "worksheets/Schedules.h"
#include "worksheets/W_Fx.h"

namespace zolmara {
namespace {

/// The class of a field of B-1, D or E-1. On E-1 all other pools are one field.
CostClass ClassOf(std::string_view field, bool pooled) {
    if (pooled && SameText(field, kAllOtherPools)) return CostClass::AllOther;
    return IsCostCenterColumn(field) ? ClassOfLine(LineOfColumn(field)) : CostClass::None;
}

/// A row of a schedule, summed by class.
struct ClassSums {
    double Salaries = 0;
    double Other = 0;
    double Interest = 0;

    void Add(CostClass kind, double amount) {
        if (kind == CostClass::Salaries) Salaries += amount;
        if (kind == CostClass::AllOther) Other += amount;
        if (kind == CostClass::Interest) Interest += amount;
    }
};

using Row = TableCells::Row;

/// A field of a schedule whose class a summary takes.
struct Taken {
    int Position;
    CostClass Kind;
};

std::vector<Taken> FieldsToSum(const TableCells& cells, const Schedule& schedule,
                               std::span<const CostClass> kinds) {
    const bool pooled = schedule.Kind == ScheduleKind::Pooled;
    std::vector<Taken> taken;
    for (int i = schedule.FirstColumn; i < cells.FieldCount(); ++i) {
        const CostClass kind = ClassOf(cells.FieldName(i), pooled);
        if (std::ranges::find(kinds, kind) != kinds.end()) taken.push_back({i, kind});
    }
    return taken;
}

constexpr std::array<CostClass, 2> kNonCapital = {CostClass::Salaries, CostClass::AllOther};
constexpr std::array<CostClass, 1> kInterest = {CostClass::Interest};

std::string PartLike(std::string_view family, const TableCells& summary) {
    return fmt::format("{}{}", family, PartOf(summary.Name()));
}

/// Position of column `number` of a summary, whose first is behind the component's number.
constexpr int Col(int number) { return number + 2; }

/// A summary and its rows, in the order of their lines, that are to be summed again.
struct Summary {
    TableCells& Cells;
    std::vector<Row> Rows;
};

/// Marks the summary's rows on the lines that have changed in a table.
void MarkChanged(const TableCells& cells, const TableChanges& changes, const TableCells& summary,
                 std::vector<char>& wanted) {
    if (!changes.Any()) return;
    auto own = summary.Rows().begin();
    const auto end = summary.Rows().end();
    for (const Row row : cells.Rows()) {
        if (!changes.Row(row)) continue;
        const Currency line = cells.Line(row);
        while (own != end && summary.Line(*own) < line) ++own;
        if (own == end) return;
        if (summary.Line(*own) == line) wanted[*own] = 1;
    }
}

/// The rows for whose columns a step takes rows of the schedules: those of which any such row, or
/// any such column of their own, may have changed.
Summary RowsToSum(TableCells& summary, std::initializer_list<int> columns,
                  std::initializer_list<std::string_view> families, KeptColumns& kept) {
    std::vector<char> wanted(summary.RowCount(), 0);
    const TableChanges own = kept.ChangesOf(summary);
    if (std::ranges::any_of(columns, [&](int number) { return own.Column(Col(number)); }))
        MarkChanged(summary, own, summary, wanted);
    for (const std::string_view family : families) {
        const TableCells& cells = CellsOf(gDB, PartLike(family, summary));
        MarkChanged(cells, kept.ChangesOf(cells), summary, wanted);
    }
    std::vector<Row> rows;
    std::ranges::copy_if(summary.Rows(), std::back_inserter(rows),
                         [&](Row row) { return wanted[row] != 0; });
    return {summary, std::move(rows)};
}

/// Hands on each row of a schedule that is on the line of a row to be summed, with that row.
template <class Take>
void WalkRows(const TableCells& cells, const Summary& summary, const Take& take) {
    auto next = cells.Rows().begin();
    const auto end = cells.Rows().end();
    for (const Row to : summary.Rows) {
        const Currency line = summary.Cells.Line(to);
        while (next != end && cells.Line(*next) < line) ++next;
        for (; next != end && cells.Line(*next) == line; ++next) take(*next, to);
    }
}

/// Hands on each of the summary's rows with what its line of a schedule sums to.
template <class Write>
void SumRows(std::string_view family, const Summary& summary, std::span<const CostClass> kinds,
             const Write& write) {
    if (summary.Rows.empty()) return;
    const TableCells& cells = CellsOf(gDB, PartLike(family, summary.Cells));
    const std::vector<Taken> taken = FieldsToSum(cells, *FindSchedule(family), kinds);
    WalkRows(cells, summary, [&](Row row, Row to) {
        ClassSums sums;
        for (const Taken& field : taken) sums.Add(field.Kind, cells.Amount(row, field.Position));
        RowEdit edit(summary.Cells, to);
        write(edit, sums);
        edit.Update();
    });
}

/// Sets a column to a figure as a statement carries it.
void Put(RowEdit& row, int number, double amount) { row.Put(Col(number), ThroughText(amount)); }

/// A column as a statement adds it: Null makes the sum Null.
double Of(const RowEdit& row, int number) { return row.OrNull(Col(number)); }

// --- F -------------------------------------------------------------------------------------

/// Takes over a field of another schedule, line by line.
void CopyField(const Summary& summary, int number, std::string_view family,
               std::string_view field) {
    const TableCells& from = CellsOf(gDB, PartLike(family, summary.Cells));
    const int position = from.Position(field);
    WalkRows(from, summary, [&](Row row, Row to) {
        RowEdit edit(summary.Cells, to);
        if (from.IsNull(row, position))
            edit.SetNull(Col(number));
        else
            edit.Put(Col(number), from.Amount(row, position));
        edit.Update();
    });
}

/// Behind the capital related pools, which stand first on E-1.
int BehindCapitalPools(const TableCells& cells, int first) {
    int end = first;
    while (end < cells.FieldCount() && IsCostCenterColumn(cells.FieldName(end)) &&
           LineOfColumn(cells.FieldName(end)) < kOtherCapitalBegin) {
        ++end;
    }
    return end;
}

void SumPooledCapital(const Summary& summary) {
    const TableCells& pools = CellsOf(gDB, PartLike("E1p", summary.Cells));
    const int first = FindSchedule("E1p")->FirstColumn;
    const int end = BehindCapitalPools(pools, first);
    WalkRows(pools, summary, [&](Row row, Row to) {
        double sum = 0;
        for (int i = first; i < end; ++i) sum += pools.Amount(row, i);
        RowEdit edit(summary.Cells, to);
        Put(edit, 3, sum);
        edit.Put(Col(4), edit.Amount(Col(1)) + edit.Amount(Col(2)) + edit.Amount(Col(3)));
        edit.Update();
    });
}

/// Runs for every part; what the last part's run leaves is the final figure.
void WriteGrandTotal() {
    std::array<const TableCells*, 3> parts = {};
    std::array<Row, 3> totals = {};
    for (std::size_t i = 0; i < parts.size(); ++i) {
        parts[i] = &CellsOf(gDB, fmt::format("Fp{}", i + 1));
        totals[i] = RequiredRow(*parts[i], kPartTotal);
    }
    TableCells& third = CellsOf(gDB, "Fp3");
    const auto row = third.RowOn(kGrandTotal);
    if (!row) return;
    RowEdit edit(third, *row);
    for (int number = 1; number <= 4; ++number) {
        const int at = Col(number);
        const auto isNull = [&](std::size_t i) { return parts[i]->IsNull(totals[i], at); };
        const bool hasSum = !isNull(0) && !isNull(1) && !isNull(2);
        Put(edit, number,
            hasSum ? parts[0]->Amount(totals[0], at) + parts[1]->Amount(totals[1], at) +
                         parts[2]->Amount(totals[2], at)
                   : 0);
    }
    edit.Update();
}

}  // namespace

void Calc_Fpx(std::string_view item, KeptColumns& kept) {
    TableCells& cells = CellsOf(gDB, item);
    const Summary direct = RowsToSum(cells, {1}, {"Bp"}, kept);
    const Summary functional = RowsToSum(cells, {2}, {"Cp"}, kept);
    const Summary all = RowsToSum(cells, {1, 2, 3, 4}, {"Bp", "Cp", "E1p"}, kept);
    ChangeCells(gDB, [&] {
        CopyField(direct, 1, "Bp", "Col_7");
        CopyField(functional, 2, "Cp", "Col_3");
        SumPooledCapital(all);
        WriteGrandTotal();
    });
}

void Calc_F1px(std::string_view item, KeptColumns& kept) {
    TableCells& cells = CellsOf(gDB, item);
    const Summary direct = RowsToSum(cells, {1, 5}, {"B1p"}, kept);
    const Summary functional = RowsToSum(cells, {2, 6}, {"Dp"}, kept);
    const Summary all = RowsToSum(cells, {1, 2, 3, 4, 5, 6, 7, 8, 9}, {"B1p", "Dp", "E1p"}, kept);
    ChangeCells(gDB, [&] {
        SumRows("B1p", direct, kNonCapital, [](RowEdit& row, const ClassSums& sums) {
            Put(row, 1, sums.Salaries);
            Put(row, 5, sums.Other);
        });
        SumRows("Dp", functional, kNonCapital, [](RowEdit& row, const ClassSums& sums) {
            Put(row, 2, sums.Salaries);
            Put(row, 6, sums.Other);
        });
        SumRows("E1p", all, kNonCapital, [](RowEdit& row, const ClassSums& sums) {
            Put(row, 3, sums.Salaries);
            row.Put(Col(4), Of(row, 1) + Of(row, 2) + ThroughText(sums.Salaries));
            Put(row, 7, sums.Other);
            row.Put(Col(8), Of(row, 5) + Of(row, 6) + ThroughText(sums.Other));
            row.Put(Col(9), Of(row, 1) + Of(row, 2) + ThroughText(sums.Salaries + sums.Other) +
                                Of(row, 5) + Of(row, 6));
        });
    });
}

void Calc_F2px(std::string_view item, KeptColumns& kept) {
    TableCells& cells = CellsOf(gDB, item);
    const Summary direct = RowsToSum(cells, {1}, {"B1p"}, kept);
    const Summary functional = RowsToSum(cells, {2}, {"Dp"}, kept);
    const Summary all = RowsToSum(cells, {1, 2, 3, 4}, {"B1p", "Dp", "E1p"}, kept);
    ChangeCells(gDB, [&] {
        SumRows("B1p", direct, kInterest,
                [](RowEdit& row, const ClassSums& sums) { Put(row, 1, sums.Interest); });
        SumRows("Dp", functional, kInterest,
                [](RowEdit& row, const ClassSums& sums) { Put(row, 2, sums.Interest); });
        SumRows("E1p", all, kInterest, [](RowEdit& row, const ClassSums& sums) {
            Put(row, 3, sums.Interest);
            row.Put(Col(4), Of(row, 1) + Of(row, 2) + ThroughText(sums.Interest));
        });
    });
}

void Calc_Fpx(std::string_view item) {
    KeptColumns none;
    Calc_Fpx(item, none);
}

void Calc_F1px(std::string_view item) {
    KeptColumns none;
    Calc_F1px(item, none);
}

void Calc_F2px(std::string_view item) {
    KeptColumns none;
    Calc_F2px(item, none);
}

}  // namespace zolmara
