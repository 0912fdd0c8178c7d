#include "worksheets/W_G1.h"

#include "core/Globals.h"
#include "store/session/Session.h"
#include "worksheets/Build.h"
#include "worksheets/FormLines.h"
#include "worksheets/Rows.h"

namespace zolmara {
namespace {

using enum FieldType;
using enum CellKind;

void Write(int line, double amount) {
    gDB.Execute("Update G1 Set Col_2=? Where LineNum=?;", {amount, line});
}

/// Revenue on line 1 less everything else up to line 2, a subscript of line 1 too.
double OperatingProfit() {
    double profit = 0;
    Recordset rows = gDB.OpenRecordset("SELECT * FROM G1 WHERE LineNum<=2;");
    for (; !rows.Eof(); rows.MoveNext()) {
        const double amount = NumOr(rows["Col_2"]);
        if (LineOf(rows) == Currency::FromWhole(1)) {
            profit += amount;
        } else {
            profit -= amount;
        }
    }
    return profit;
}

}  // namespace

const std::vector<WorksheetField>& Fields_G1(std::string_view) {
    static const std::vector<WorksheetField> fields = {
        {"LineNum", dbCurrency, 0, "Line #", Key},
        {"Col_1", dbText, 40, "Description", Keyed},
        {"Col_2", dbDouble, 0, "Amount", Keyed},
    };
    return fields;
}

void Build_G1() {
    static constexpr std::array<SeedRow, 12> kSeeds = {
        {{1, "Total operating revenue"},
         {2, "Less: Operating expenses"},
         {3, "Operating profit (loss)"},
         {4, "Contributions, donations, bequests, etc."},
         {5, "Interest Income"},
         {6, "Purchase discounts"},
         {7, "Rebates and refunds of expenses"},
         {8, "Parking lot receipts"},
         {9, "Rental income"},
         {15, "Total other income"},
         {21, "Total other expenses"},
         {22, "Net income or loss for the period"}}};
    MakeWorksheetTable("G1");
    InsertSeedRows("G1", "Col_1", kSeeds);
    MakeWorksheetIndex("G1");
    RegisterBuiltWorksheet("G1");
}

void Calc_G1() {
    Write(2, NumOr(RequiredRow("A", kTotalOfA)["Col_3"]));
    double profit = OperatingProfit();
    Write(3, profit);
    const double income = SumOf("Select Sum(Col_2) As C2 From G1 Where LineNum>=4 And LineNum<15;");
    Write(15, income);
    profit += income;
    const double expenses =
        SumOf("Select Sum(Col_2) As C2 From G1 Where LineNum>=16 And LineNum<21;");
    Write(21, expenses);
    profit -= expenses;
    Write(22, profit);
}

}  // namespace zolmara
