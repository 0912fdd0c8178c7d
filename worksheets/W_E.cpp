// The split of the pools among the three parts of components.

#include <fmt/format.h>

#include "core/Globals.h"
#include "store/session/CoreTables.h"
#include "store/session/Session.h"
#include "worksheets/Rows.h"
#include "worksheets/Schedules.h"
#include "worksheets/W_Ex.h"

namespace zolmara {
namespace {

using PartAmounts = std::array<double, 3>;

double Total(const PartAmounts& parts) {
    double total = 0;
    for (const double part : parts) total += part;
    return total;
}

/// Sums each part's statistics and writes the sums to the parts' totals.
PartAmounts SumStatistics() {
    PartAmounts sums = {};
    for (std::size_t i = 0; i < sums.size(); ++i) {
        sums[i] = SumOf(fmt::format("Select Sum(Col_1) As C1 From E1p{} Where LineNum<?;", i + 1),
                        {kPartTotal});
        gDB.Execute(fmt::format("Update E1p{} Set Col_1=? Where LineNum=?;", i + 1),
                    {sums[i], kPartTotal});
    }
    return sums;
}

/// Without any statistics the ratios stay those of the last run.
void WriteRatios(const PartAmounts& sums) {
    const double total = Total(sums);
    if (total == 0) return;
    for (std::size_t i = 0; i < sums.size(); ++i) {
        gDB.Execute("Update E Set Col_1=?,Col_2=? Where LineNum=?;",
                    {sums[i], RoundTo(sums[i] / total, 6), static_cast<int>(i) + 1});
    }
    gDB.Execute("Update E Set Col_1=?,Col_2=1 Where LineNum=4;", {total});
}

/// Closes the ratios to 1, and gives the part with the largest statistic, counted from 0.
std::size_t CloseRatios() {
    const double sum = SumOf("Select Sum(Col_2) As C2 From E Where LineNum<4;");
    const Recordset largest = gDB.OpenRecordset(
        "Select Top 1 LineNum,Col_1,Col_2 From E Where LineNum<4 Order By abs(Col_1) Desc;",
        dbOpenSnapshot);
    if (largest.Eof()) {
        throw StoreError(StoreError::Kind::Other, "Worksheet E lacks its lines 1 to 3.");
    }
    if (sum != 1 && sum != 0) {
        gDB.Execute("Update E Set Col_2=? Where LineNum=?;",
                    {NumOr(largest["Col_2"]) - sum + 1, largest["LineNum"]});
    }
    return static_cast<std::size_t>(LineOf(largest).Whole() - 1);
}

PartAmounts ReadRatios() {
    PartAmounts ratios = {};
    Recordset rows = gDB.OpenRecordset("Select * From E Order by LineNum;", dbOpenSnapshot);
    for (int i = 0; i < 3 && !rows.Eof(); ++i, rows.MoveNext()) {
        const std::int64_t part = LineOf(rows).Whole();
        if (Between<std::int64_t>(part, 1, 3)) {
            ratios.at(static_cast<std::size_t>(part - 1)) = NumOr(rows["Col_2"]);
        }
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

std::vector<Pool> SplitPools(const PartAmounts& ratios, std::size_t largest) {
    std::vector<Pool> pools;
    const Recordset row = gDB.OpenRecordset("Select * From E Where LineNum=4;", dbOpenSnapshot);
    LineCursor trialBalance("A", "Select LineNum,Col_8 From A Order by LineNum;");
    for (int i = FindSchedule("E")->FirstColumn; i < row.FieldCount(); ++i) {
        const std::string& field = row.FieldName(i);
        if (!IsCostCenterColumn(field)) continue;
        trialBalance.Seek(LineOfColumn(field));
        pools.push_back(Split(field, trialBalance.Amount(1), ratios, largest));
    }
    const double others = SumOf(
        fmt::format("Select Sum(Col_8) As C8 From A Where {};", ConditionFor(CostClass::AllOther)));
    pools.push_back(Split(std::string(kAllOtherPools), others, ratios, largest));
    return pools;
}

/// Writes one number of each pool to a row; what is written counts in its text form.
template <class Number>
void WriteRow(std::string_view table, Currency line, const std::vector<Pool>& pools,
              Number number) {
    Recordset row =
        gDB.OpenRecordset(fmt::format("Select * From {} Where LineNum=?;", table), {line});
    if (row.Eof()) return;
    row.Edit();
    for (const Pool& pool : pools) row.Set(pool.Field, ThroughText(number(pool)));
    row.Update();
}

}  // namespace

void Calc_E() {
    const PartAmounts sums = SumStatistics();
    WriteRatios(sums);
    const std::size_t largest = CloseRatios();
    const std::vector<Pool> pools = SplitPools(ReadRatios(), largest);
    for (int part = 1; part <= 3; ++part) {
        const auto share = [&](const Pool& pool) {
            return pool.Shares.at(static_cast<std::size_t>(part - 1));
        };
        WriteRow("E", Currency::FromWhole(part), pools, share);
        WriteRow(fmt::format("E1p{}", part), kPartTotal, pools, share);
    }
    WriteRow("E", kTotalOfE, pools, [](const Pool& pool) { return pool.Amount; });
}

}  // namespace zolmara
