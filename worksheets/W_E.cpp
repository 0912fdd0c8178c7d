// The split of the pools among the three parts of components.

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "core/Globals.h"
#include "store/session/CoreTables.h"
#include "store/session/Session.h"
#include "worksheets/CellRows.h"
#include "worksheets/NumberedSheet.h"
#include "worksheets/Schedules.h"
#include "worksheets/W_Ex.h"

namespace zolmara {
namespace {

using PartAmounts = std::array<double, 3>;

constexpr int kPooledOnA = 8;  ///< the column of A that holds the pools

double Total(const PartAmounts& parts) {
    double total = 0;
    for (const double part : parts) total += part;
    return total;
}

bool IsPart(Currency line) { return line < kTotalOfE; }

/// Sums each part's statistics and writes the sums to the parts' totals.
PartAmounts SumStatistics() {
    PartAmounts sums = {};
    for (std::size_t i = 0; i < sums.size(); ++i) {
        TableCells& cells = CellsOf(gDB, fmt::format("E1p{}", i + 1));
        const int statistics = RequiredPosition(cells, "Col_1");
        sums[i] = cells.SumBelow(statistics, kPartTotal);
        PutOnLine(cells, kPartTotal, statistics, sums[i]);
    }
    return sums;
}

/// Without any statistics the ratios stay those of the last run.
void WriteRatios(const NumberedSheet& sheet, const PartAmounts& sums) {
    const double total = Total(sums);
    if (total == 0) return;
    for (std::size_t i = 0; i < sums.size(); ++i) {
        const Currency line = Currency::FromWhole(static_cast<std::int64_t>(i) + 1);
        sheet.Put(line, 1, sums[i]);
        sheet.Put(line, 2, RoundTo(sums[i] / total, 6));
    }
    sheet.Put(kTotalOfE, 1, total);
    sheet.Put(kTotalOfE, 2, 1);
}

/// The part with the largest statistic, the lowest of several; a Null is the smallest of all.
NumberedSheet::Row LargestPart(const NumberedSheet& sheet) {
    constexpr double kNullSize = -1;
    std::optional<NumberedSheet::Row> largest;
    double size = 0;
    for (const NumberedSheet::Row row : sheet.Rows()) {
        if (!IsPart(sheet.Cells().Line(row))) break;
        const bool isNull = sheet.Cells().IsNull(row, sheet.At(1));
        const double own = isNull ? kNullSize : std::abs(sheet.Amount(row, 1));
        if (largest && own <= size) continue;
        largest = row;
        size = own;
    }
    if (largest) return *largest;
    throw StoreError(StoreError::Kind::Other, "Worksheet E lacks its lines 1 to 3.");
}

/// Closes the ratios to 1, and gives the part with the largest statistic, counted from 0.
std::size_t CloseRatios(const NumberedSheet& sheet) {
    const double sum = sheet.Sum(2, IsPart);
    const NumberedSheet::Row largest = LargestPart(sheet);
    const Currency line = sheet.Cells().Line(largest);
    if (sum != 1 && sum != 0) sheet.Put(line, 2, sheet.Amount(largest, 2) - sum + 1);
    return static_cast<std::size_t>(line.Whole() - 1);
}

/// The ratios of the first three lines, by the parts that these are.
PartAmounts ReadRatios(const NumberedSheet& sheet) {
    PartAmounts ratios = {};
    const std::size_t count = std::min(ratios.size(), sheet.Rows().size());
    for (std::size_t i = 0; i < count; ++i) {
        const NumberedSheet::Row row = sheet.Rows()[i];
        const std::int64_t part = sheet.Cells().Line(row).Whole();
        if (Between<std::int64_t>(part, 1, 3))
            ratios.at(static_cast<std::size_t>(part - 1)) = sheet.Amount(row, 2);
    }
    return ratios;
}

/// A pool and its split, to be written to the field of its name.
struct Pool {
    std::string Field;
    double Amount;
    PartAmounts Shares;
};

Pool Split(const std::string& field, double amount, const PartAmounts& ratios,
           std::size_t largest) {
    Pool pool{field, amount, {}};
    for (std::size_t i = 0; i < ratios.size(); ++i) {
        pool.Shares[i] = RoundTo(ratios[i] * amount, 0);
    }
    const double sum = Total(pool.Shares);
    if (sum != amount) pool.Shares.at(largest) = pool.Shares.at(largest) - sum + amount;
    return pool;
}

bool IsOfAllOtherPools(Currency line) { return ClassOfLine(line) == CostClass::AllOther; }

std::vector<Pool> SplitPools(const NumberedSheet& sheet, const PartAmounts& ratios,
                             std::size_t largest) {
    std::vector<Pool> pools;
    const TableCells& cells = sheet.Cells();
    const NumberedSheet expenses("A");
    CellCursor trialBalance(expenses.Cells());
    for (int i = FindSchedule("E")->FirstColumn; i < cells.FieldCount(); ++i) {
        const std::string& field = cells.FieldName(i);
        if (!IsCostCenterColumn(field)) continue;
        trialBalance.Seek(LineOfColumn(field));
        const double amount = trialBalance.Amount(expenses.At(kPooledOnA));
        pools.push_back(Split(field, amount, ratios, largest));
    }
    const double others = expenses.Sum(kPooledOnA, IsOfAllOtherPools);
    pools.push_back(Split(std::string(kAllOtherPools), others, ratios, largest));
    return pools;
}

/// Writes one number of each pool to a row; what is written counts in its text form.
template <class Number>
void WriteRow(TableCells& cells, Currency line, const std::vector<Pool>& pools, Number number) {
    const auto row = cells.RowOn(line);
    if (!row) return;
    RowEdit edit(cells, *row);
    for (const Pool& pool : pools)
        edit.Set(RequiredPosition(cells, pool.Field), ThroughText(number(pool)));
    edit.Update();
}

void Calculate() {
    const NumberedSheet sheet("E");
    WriteRatios(sheet, SumStatistics());
    const std::size_t largest = CloseRatios(sheet);
    const std::vector<Pool> pools = SplitPools(sheet, ReadRatios(sheet), largest);
    for (int part = 1; part <= 3; ++part) {
        const auto share = [&](const Pool& pool) {
            return pool.Shares.at(static_cast<std::size_t>(part - 1));
        };
        WriteRow(sheet.Cells(), Currency::FromWhole(part), pools, share);
        WriteRow(CellsOf(gDB, fmt::format("E1p{}", part)), kPartTotal, pools, share);
    }
    WriteRow(sheet.Cells(), kTotalOfE, pools, [](const Pool& pool) { return pool.Amount; });
}

}  // namespace

void Calc_E() { ChangeCells(gDB, Calculate); }

}  // namespace zolmara
