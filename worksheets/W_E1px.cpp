// The split of a part's share of the pools among its components.

#include <fmt/format.h>

#include <cmath>
#include <map>

#include "core/Globals.h"
#include "store/session/Session.h"
#include "worksheets/Build.h"
#include "worksheets/Rows.h"
#include "worksheets/Schedules.h"
#include "worksheets/W_Ex.h"

namespace zolmara {
namespace {

const int kFirstPool = FindSchedule("E1p")->FirstColumn;

std::size_t At(int position) { return static_cast<std::size_t>(position); }

Recordset OpenRows(std::string_view item) {
    return gDB.OpenRecordset(fmt::format("Select * From {} Order By LineNum;", item));
}

void WriteRatios(std::string_view item) {
    const double total =
        SumOf(fmt::format("Select Sum(Col_1) As C1 From {} Where LineNum<?;", item), {kPartTotal});
    gDB.Execute(fmt::format("Update {} Set Col_1=? Where LineNum=?;", item), {total, kPartTotal});
    Recordset rows = OpenRows(item);
    for (; !rows.Eof() && LineOf(rows) != kPartTotal; rows.MoveNext()) {
        rows.Edit();
        rows.Set("Col_2", total == 0 ? 0 : RoundTo(NumOr(rows["Col_1"]) / total, 6));
        rows.Update();
    }
}

/// The largest statistic, by its plain value, takes what the ratios miss of 1.
void CloseRatios(std::string_view item) {
    const double sum =
        SumOf(fmt::format("Select Sum(Col_2) As C2 From {} Where LineNum<?;", item), {kPartTotal});
    if (sum != 1 && sum != 0) {
        const Recordset largest = gDB.OpenRecordset(
            fmt::format("Select Top 1 LineNum,Col_1,Col_2 From {} Where LineNum<? Order By Col_1 "
                        "Desc;",
                        item),
            {kPartTotal}, dbOpenSnapshot);
        gDB.Execute(fmt::format("Update {} Set Col_2=? Where LineNum=?;", item),
                    {NumOr(largest["Col_2"]) - sum + 1, largest["LineNum"]});
    }
    gDB.Execute(fmt::format("Update {} Set Col_2=1 Where LineNum=?;", item), {kPartTotal});
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

/// Gives every row its share of line 51, line 51 its own in whole dollars. Line 52, which has no
/// ratio, comes out as 0.
std::vector<Column> SplitShares(std::string_view item) {
    std::vector<double> total = AmountsOf(RequiredRow(item, kPartTotal));
    Recordset rows = OpenRows(item);
    std::vector<Column> columns(At(rows.FieldCount()));
    for (; !rows.Eof(); rows.MoveNext()) {
        const Currency line = LineOf(rows);
        const double ratio = NumOr(rows["Col_2"]);
        rows.Edit();
        for (int i = kFirstPool; i < rows.FieldCount(); ++i) {
            const double amount = RoundTo(ratio * total[At(i)], 0);
            rows.Set(i, amount);
            if (line < kPartTotal) Gather(columns, line, i, amount);
            if (line == kPartTotal) total[At(i)] = amount;
        }
        rows.Update();
    }
    return columns;
}

/// The largest amount of each column takes what rounding left of the part's share.
void CloseColumns(std::string_view item, const std::vector<Column>& columns) {
    const std::vector<double> total = AmountsOf(RequiredRow(item, kPartTotal));
    std::map<Currency, std::vector<int>> touched;
    for (int i = kFirstPool; i < static_cast<int>(columns.size()); ++i) {
        const Column& column = columns[At(i)];
        if (column.Size >= 0 && column.Sum != total[At(i)]) touched[column.Line].push_back(i);
    }
    for (const auto& [line, positions] : touched) {
        Recordset row =
            gDB.OpenRecordset(fmt::format("Select * From {} Where LineNum=?;", item), {line});
        row.Edit();
        for (const int i : positions) {
            row.Set(i, ThroughText(NumOr(row[i]) + total[At(i)] - columns[At(i)].Sum));
        }
        row.Update();
    }
}

/// Line 52 of the third part: the three parts' totals.
void WriteGrandTotal() {
    std::array<std::vector<double>, 3> totals;
    for (std::size_t i = 0; i < totals.size(); ++i) {
        totals[i] = AmountsOf(RequiredRow(fmt::format("E1p{}", i + 1), kPartTotal));
    }
    Recordset row = gDB.OpenRecordset("Select * From E1p3 Where LineNum=?;", {kGrandTotal});
    if (row.Eof()) return;
    row.Edit();
    for (int i = kFirstPool; i < row.FieldCount(); ++i) {
        row.Set(i, totals[0].at(At(i)) + totals[1].at(At(i)) + totals[2].at(At(i)));
    }
    row.Update();
}

}  // namespace

void Calc_E1px(std::string_view item) {
    WriteRatios(item);
    CloseRatios(item);
    CloseColumns(item, SplitShares(item));
    if (PartOf(item) == '3') WriteGrandTotal();
}

}  // namespace zolmara
