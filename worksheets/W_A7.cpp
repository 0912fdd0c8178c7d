#include "worksheets/W_A7.h"

#include <fmt/format.h>

#include "core/Globals.h"
#include "store/session/Acts.h"
#include "store/session/Session.h"
#include "worksheets/Build.h"
#include "worksheets/FormLines.h"
#include "worksheets/Rows.h"
#include "worksheets/W_A.h"
#include "worksheets/WholeForm.h"

namespace zolmara {
namespace {

using enum FieldType;
using enum CellKind;

const std::vector<WorksheetField>& FieldsOfPart1() {
    static const std::vector<WorksheetField> fields = {
        {"LineNum", dbInteger, 0, "Line #", Key},
        {"Description", dbText, 36, "Description", Label},
        {"Col_1", dbDouble, 0, "Beginning Balance", Keyed},
        {"Col_2", dbDouble, 0, "Acquisitions - Purchases", Keyed},
        {"Col_3", dbDouble, 0, "Acquisitions - Donation", Keyed},
        {"Col_4", dbDouble, 0, "Total", Computed},
        {"Col_5", dbDouble, 0, "Retirements and Disposals", Keyed},
        {"Col_6", dbDouble, 0, "Ending Balance", Computed},
        {"Col_7", dbDouble, 0, "Fully Depreciated Assets", Keyed},
    };
    return fields;
}

const std::vector<WorksheetField>& FieldsOfPart2() {
    static const std::vector<WorksheetField> fields = {
        {"LineNum", dbCurrency, 0, "CC #", Key},
        {"Description", dbText, 36, "Description", Label},
        {"Col_1", dbDouble, 0, "Gross Assets", Keyed},
        {"Col_2", dbDouble, 0, "Capitalized Leases", Keyed},
        {"Col_3", dbDouble, 0, "Gross Assets For Ratio", Computed},
        {"Col_4", dbDouble, 0, "Ratio", Computed},
        {"Col_5", dbDouble, 0, "Insurance Premiums Other CRC", Computed},
        {"Col_6", dbDouble, 0, "Taxes & Licenses Other CRC", Computed},
        {"Col_7", dbDouble, 0, "All Other Cap Rel Costs", Computed},
        {"Col_8", dbDouble, 0, "Allocation Total", Computed},
        {"Col_9", dbDouble, 0, "Depreciation", Keyed},
        {"Col_10", dbDouble, 0, "Lease", Keyed},
        {"Col_11", dbDouble, 0, "Interest", Keyed},
        {"Col_12", dbDouble, 0, "Insurance Premiums Other CRC", Keyed},
        {"Col_13", dbDouble, 0, "Taxes & Licenses Other CRC", Keyed},
        {"Col_14", dbDouble, 0, "All Other Cap Rel Costs", Keyed},
        {"Col_15", dbDouble, 0, "Total", Computed},
    };
    return fields;
}

void WriteRollForward(int line, const std::array<double, 7>& amounts) {
    gDB.Execute(
        "Update A7p1 Set Col_1=?,Col_2=?,Col_3=?,Col_4=?,Col_5=?,Col_6=?,Col_7=? Where LineNum=?;",
        {amounts[0], amounts[1], amounts[2], amounts[3], amounts[4], amounts[5], amounts[6], line});
}

void TotalKeyedColumns() {
    const Recordset sums = gDB.OpenRecordset(
        "Select Sum(Col_1) As S1, Sum(Col_2) As S2, Sum(Col_9) As S9, Sum(Col_10) As S10, "
        "Sum(Col_11) As S11, Sum(Col_12) As S12, Sum(Col_13) As S13, Sum(Col_14) As S14 From A7p2 "
        "Where LineNum<3;");
    gDB.Execute(
        "Update A7p2 Set Col_1=?,Col_2=?,Col_9=?,Col_10=?,Col_11=?,Col_12=?,Col_13=?,Col_14=? "
        "Where LineNum=3;",
        {NumOr(sums[0]), NumOr(sums[1]), NumOr(sums[2]), NumOr(sums[3]), NumOr(sums[4]),
         NumOr(sums[5]), NumOr(sums[6]), NumOr(sums[7])});
}

constexpr Currency kTotalLine = kCapitalSubtotal;  ///< of Part II

void CalcRatios() {
    const double total = SumOf("Select Col_3 From A7p2 Where LineNum=3;");
    double largest = 0;
    Currency largestLine;
    double sum = 0;
    Recordset rows = gDB.OpenRecordset("Select * From A7p2 Order by LineNum;");
    for (; !rows.Eof(); rows.MoveNext()) {
        const double ratio = total == 0 ? 0 : RoundTo(NumOr(rows["Col_3"]) / total, 6);
        rows.Edit();
        rows.Set("Col_4", ratio);
        rows.Update();
        if (LineOf(rows) == kTotalLine) continue;
        if (ratio > largest) {
            largest = ratio;
            largestLine = LineOf(rows);
        }
        sum += ratio;
    }
    if (sum != 1) {
        gDB.Execute("Update A7p2 Set Col_4=? Where LineNum=?;", {largest - sum + 1, largestLine});
    }
}

/// What lines 4, 5 and 6 of A leave to spread: the books less the direct allocations. The rows
/// are taken by position.
std::array<double, 3> OtherCapitalCosts() {
    Recordset rows = gDB.OpenRecordset("Select * From A Where LineNum In(4,5,6) Order By LineNum;");
    std::array<double, 3> costs = {};
    for (double& cost : costs) {
        if (rows.Eof()) {
            throw StoreError(StoreError::Kind::Other, "Worksheet A lacks one of the lines 4 to 6.");
        }
        cost = NumOr(rows["Col_1"]) - NumOr(rows["Col_6"]);
        rows.MoveNext();
    }
    return costs;
}

void SpreadCosts(const std::array<double, 3>& costs) {
    static constexpr std::string_view kWrite =
        "Update A7p2 Set Col_5=?,Col_6=?,Col_7=? Where LineNum=?;";
    gDB.Execute(kWrite, {costs[0], costs[1], costs[2], 3});
    Recordset rows = gDB.OpenRecordset("Select * From A7p2 Order by LineNum;");
    for (; !rows.Eof() && LineOf(rows) != kTotalLine; rows.MoveNext()) {
        const double ratio = NumOr(rows["Col_4"]);
        gDB.Execute(kWrite, {RoundTo(ratio * costs[0], 0), RoundTo(ratio * costs[1], 0),
                             RoundTo(ratio * costs[2], 0), rows["LineNum"]});
    }
}

/// The largest share takes what the rounded shares miss of the cost, or have too much of it.
void CloseColumn(int column, double wanted, double sum) {
    if (wanted == sum) return;
    const Recordset largest = gDB.OpenRecordset(
        fmt::format("Select Top 1 * From A7p2 Where LineNum<3 Order By Col_{} Desc;", column));
    if (largest.Eof()) return;
    const std::string field = fmt::format("Col_{}", column);
    gDB.Execute(fmt::format("Update A7p2 Set {}=? Where LineNum=?;", field),
                {NumOr(largest[field]) + wanted - sum, largest["LineNum"]});
}

void CloseColumns() {
    const Recordset total = RequiredRow("A7p2", kTotalLine);
    const Recordset sums = gDB.OpenRecordset(
        "Select Sum(Col_5) As S5, Sum(Col_6) As S6, Sum(Col_7) As S7 From A7p2 Where LineNum<3;",
        dbOpenSnapshot);
    for (int column = 5; column <= 7; ++column) {
        CloseColumn(column, NumOr(total[fmt::format("Col_{}", column)]), NumOr(sums[column - 5]));
    }
}

void CalculatePart2() {
    TotalKeyedColumns();
    gDB.Execute("UPDATE A7p2 SET Col_3=IIF(IsNull(Col_1),0,Col_1)-IIF(IsNull(Col_2),0,Col_2);");
    CalcRatios();
    Calc_A();
    SpreadCosts(OtherCapitalCosts());
    CloseColumns();
    gDB.Execute(
        "UPDATE A7p2 SET Col_8=IIF(IsNull(Col_5),0,Col_5)+IIF(IsNull(Col_6),0,Col_6)"
        "+IIF(IsNull(Col_7),0,Col_7),Col_15=IIF(IsNull(Col_9),0,Col_9)"
        "+IIF(IsNull(Col_10),0,Col_10)+IIF(IsNull(Col_11),0,Col_11)+IIF(IsNull(Col_12),0,Col_12)"
        "+IIF(IsNull(Col_13),0,Col_13)+IIF(IsNull(Col_14),0,Col_14);");
}

}  // namespace

const std::vector<WorksheetField>& Fields_A7(std::string_view item) {
    return PartOf(item) == '1' ? FieldsOfPart1() : FieldsOfPart2();
}

void Build_A7p1() {
    static constexpr std::array<SeedRow, 9> kSeeds = {{{1, "Land"},
                                                       {2, "Land Improvements"},
                                                       {3, "Buildings & Fixtures"},
                                                       {4, "Building Improvements"},
                                                       {5, "Fixed Equipment"},
                                                       {6, "Movable Equipment"},
                                                       {7, "Subtotal"},
                                                       {8, "Reconciling Items"},
                                                       {9, "Total"}}};
    MakeWorksheetTable("A7p1");
    InsertSeedRows("A7p1", "Description", kSeeds);
    MakeWorksheetIndex("A7p1");
    gDB.Execute("Update A7p1 SET Col_1=0, Col_2=0, Col_3=0, Col_4=0, Col_5=0, Col_6=0, Col_7=0;");
    RegisterBuiltWorksheet("A7p1");
}

void Build_A7p2() {
    MakeWorksheetTable("A7p2");
    gDB.Execute(
        "INSERT INTO A7p2 (LineNum,Description) SELECT LineNum, CCName FROM CostCenters WHERE "
        "LineNum<3;");
    gDB.Execute("Insert Into A7p2 (LineNum,Description) Values (3,\"Total\");");
    MakeWorksheetIndex("A7p2");
    RegisterBuiltWorksheet("A7p2");
}

void Calc_A7p1() {
    gDB.Execute(
        "UPDATE A7p1 SET Col_4=IIF(IsNull(Col_2),0,Col_2)+IIF(IsNull(Col_3),0,Col_3) Where LineNum "
        "Not In(7,9);");
    gDB.Execute(
        "UPDATE A7p1 SET Col_6=IIF(IsNull(Col_1),0,Col_1)+IIF(IsNull(Col_4),0,Col_4)"
        "-IIF(IsNull(Col_5),0,Col_5) Where LineNum Not In(7,9);");
    const Recordset sums = gDB.OpenRecordset(
        "Select Sum(Col_1) As T1,Sum(Col_2) As T2,Sum(Col_3) As T3, Sum(Col_4) As T4, Sum(Col_5) "
        "As T5, Sum(Col_6) As T6, Sum(Col_7) As T7 From A7p1 Where LineNum<7;",
        dbOpenSnapshot);
    std::array<double, 7> totals = {};
    for (int i = 0; i < 7; ++i) totals.at(static_cast<std::size_t>(i)) = NumOr(sums[i]);
    WriteRollForward(7, totals);
    const Recordset reconciling = RequiredRow("A7p1", Currency::FromWhole(8));
    for (int i = 0; i < 7; ++i) {
        totals.at(static_cast<std::size_t>(i)) += NumOr(reconciling[i + 2]);
    }
    WriteRollForward(9, totals);
}

void Calc_A7p2() {
    // It brings A up to date and takes its amounts.
    NeedWholeForm("A");
    RunUnnamedAct(CalculatePart2);
}

}  // namespace zolmara
