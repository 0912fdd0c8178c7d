// The split of a part's share of the pools among its components.

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <numeric>
#include <optional>

#include "core/Globals.h"
#include "store/session/Session.h"
#include "worksheets/Build.h"
#include "worksheets/CellRows.h"
#include "worksheets/ColumnInputs.h"
#include "worksheets/Schedules.h"
#include "worksheets/W_Ex.h"

namespace zolmara {
namespace {

using Row = TableCells::Row;

const int kFirstPool = FindSchedule("E1p")->FirstColumn;

std::size_t At(int position) { return static_cast<std::size_t>(position); }

/// The fields ahead of the pools.
struct Ratios {
    TableCells& Cells;
    int Statistic;
    int Ratio;

    explicit Ratios(TableCells& cells)
        : Cells(cells), Statistic(cells.Position("Col_1")), Ratio(cells.Position("Col_2")) {}

    /// Sets a cell of a line, if it is there, to what a statement carries into it.
    void Put(Currency line, int position, double amount) const {
        PutOnLine(Cells, line, position, amount);
    }
};

void WriteRatios(const Ratios& ratios) {
    TableCells& cells = ratios.Cells;
    const double total = cells.SumBelow(ratios.Statistic, kPartTotal);
    ratios.Put(kPartTotal, ratios.Statistic, total);
    for (const Row row : cells.Rows()) {
        if (cells.Line(row) == kPartTotal) break;
        RowEdit edit(cells, row);
        edit.Set(ratios.Ratio, total == 0 ? 0 : RoundTo(edit.Amount(ratios.Statistic) / total, 6));
        edit.Update();
    }
}

/// The component with the largest statistic by its plain value; a Null is below all others.
std::optional<Row> LargestStatistic(const Ratios& ratios) {
    const TableCells& cells = ratios.Cells;
    std::optional<Row> largest;
    const auto isAbove = [&](Row row) {
        if (cells.IsNull(row, ratios.Statistic)) return false;
        return cells.IsNull(*largest, ratios.Statistic) ||
               cells.Amount(row, ratios.Statistic) > cells.Amount(*largest, ratios.Statistic);
    };
    for (const Row row : cells.Rows()) {
        if (cells.Line(row) >= kPartTotal) break;
        if (!largest || isAbove(row)) largest = row;
    }
    return largest;
}

/// The largest statistic takes what the ratios miss of 1.
void CloseRatios(const Ratios& ratios) {
    TableCells& cells = ratios.Cells;
    const double sum = cells.SumBelow(ratios.Ratio, kPartTotal);
    const std::optional<Row> largest = LargestStatistic(ratios);
    if (sum != 1 && sum != 0 && largest) {
        const double ratio = cells.Amount(*largest, ratios.Ratio);
        ratios.Put(cells.Line(*largest), ratios.Ratio, ratio - sum + 1);
    }
    ratios.Put(kPartTotal, ratios.Ratio, 1);
}

/// A column of amounts: what it sums to, and where its largest cell stands.
struct Column {
    double Sum = 0;
    Currency Line;
    double Size = -1;  ///< absolute value of the largest; below 0 while there is no row
};

void Gather(std::vector<Column>& columns, Currency line, int position, double amount) {
    Column& column = columns[At(position)];
    column.Sum += amount;
    if (std::abs(amount) > column.Size) {
        column.Line = line;
        column.Size = std::abs(amount);
    }
}

/// The pools that are to be split: all of them where the ratios may be others than they were.
std::vector<int> PoolsToSplit(const Ratios& ratios, const TableChanges& changes, bool newRatios) {
    const int end = ratios.Cells.FieldCount();
    if (!newRatios) return ColumnsToCalculate(kFirstPool, end, {changes});
    std::vector<int> all(At(std::max(0, end - kFirstPool)));
    std::iota(all.begin(), all.end(), kFirstPool);
    return all;
}

/// Gives every row its share of line 51, line 51 its own in whole dollars. Line 52, which has no
/// ratio, comes out as 0.
std::vector<Column> SplitShares(const Ratios& ratios, const std::vector<int>& pools) {
    TableCells& cells = ratios.Cells;
    Amounts total = AmountsOf(cells, RequiredRow(cells, kPartTotal));
    std::vector<Column> columns(At(cells.FieldCount()));
    if (pools.empty()) return columns;
    for (const Row row : cells.Rows()) {
        const Currency line = cells.Line(row);
        RowEdit edit(cells, row);
        const double ratio = edit.Amount(ratios.Ratio);
        for (const int i : pools) {
            const double amount = RoundTo(ratio * total[At(i)], 0);
            edit.Set(i, amount);
            if (line < kPartTotal) Gather(columns, line, i, amount);
            if (line == kPartTotal) total[At(i)] = amount;
        }
        edit.Update();
    }
    return columns;
}

/// The largest amount of each column takes what rounding left of the part's share.
void CloseColumns(TableCells& cells, const std::vector<Column>& columns) {
    const Amounts total = AmountsOf(cells, RequiredRow(cells, kPartTotal));
    std::map<Currency, std::vector<int>> touched;
    for (int i = kFirstPool; i < static_cast<int>(columns.size()); ++i) {
        const Column& column = columns[At(i)];
        if (column.Size >= 0 && column.Sum != total[At(i)]) touched[column.Line].push_back(i);
    }
    for (const auto& [line, positions] : touched) {
        RowEdit edit(cells, RequiredRow(cells, line));
        for (const int i : positions)
            edit.Set(i, ThroughText(edit.Amount(i) + total[At(i)] - columns[At(i)].Sum));
        edit.Update();
    }
}

/// Line 52 of the third part: the three parts' totals, in every column.
void WriteGrandTotal() {
    std::array<Amounts, 3> totals;
    for (std::size_t i = 0; i < totals.size(); ++i) {
        const TableCells& cells = CellsOf(gDB, fmt::format("E1p{}", i + 1));
        totals[i] = AmountsOf(cells, RequiredRow(cells, kPartTotal));
    }
    TableCells& third = CellsOf(gDB, "E1p3");
    const auto row = third.RowOn(kGrandTotal);
    if (!row) return;
    RowEdit edit(third, *row);
    for (int i = kFirstPool; i < third.FieldCount(); ++i)
        edit.Set(i, totals[0].at(At(i)) + totals[1].at(At(i)) + totals[2].at(At(i)));
    edit.Update();
}

}  // namespace

void Calc_E1px(std::string_view item, KeptColumns& kept) {
    const Ratios ratios(CellsOf(gDB, item));
    const TableChanges changes = kept.ChangesOf(ratios.Cells);
    const bool newRatios = changes.Column(ratios.Statistic) || changes.Column(ratios.Ratio);
    const std::vector<int> pools = PoolsToSplit(ratios, changes, newRatios);
    ChangeCells(gDB, [&] {
        if (newRatios) {
            WriteRatios(ratios);
            CloseRatios(ratios);
        }
        CloseColumns(ratios.Cells, SplitShares(ratios, pools));
        if (PartOf(item) == '3') WriteGrandTotal();
    });
}

void Calc_E1px(std::string_view item) {
    KeptColumns none;
    Calc_E1px(item, none);
}

}  // namespace zolmara
