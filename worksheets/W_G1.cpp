#include "worksheets/W_G1.h"

#include "store/session/Session.h"
#include "worksheets/Build.h"
#include "worksheets/CellRows.h"
#include "worksheets/FormLines.h"
#include "worksheets/NumberedSheet.h"

namespace zolmara {
namespace {

using enum FieldType;
using enum CellKind;

constexpr int kAmount = 2;  ///< the column of the amounts

constexpr Currency Line(int whole) { return Currency::FromWhole(whole); }

/// Revenue on line 1 less everything else up to line 2, a subscript of line 1 too, in the order in
/// which the rows are stored.
double OperatingProfit(const NumberedSheet& sheet) {
    const TableCells& cells = sheet.Cells();
    double profit = 0;
    for (NumberedSheet::Row row = 0; row < cells.RowCount(); ++row) {
        if (cells.IsNull(row, 0) || cells.Line(row) > Line(2)) continue;
        const double amount = sheet.Amount(row, kAmount);
        if (cells.Line(row) == Line(1)) {
            profit += amount;
        } else {
            profit -= amount;
        }
    }
    return profit;
}

/// The lines from one up to but not including another.
double SumOfLines(const NumberedSheet& sheet, int from, int below) {
    return sheet.Sum(kAmount,
                     [&](Currency line) { return Line(from) <= line && line < Line(below); });
}

void Calculate() {
    const NumberedSheet sheet("G1");
    const NumberedSheet expenses("A");
    const auto write = [&](int line, double amount) { sheet.Put(Line(line), kAmount, amount); };
    write(2, expenses.Amount(RequiredRow(expenses.Cells(), kTotalOfA), 3));
    double profit = OperatingProfit(sheet);
    write(3, profit);
    const double income = SumOfLines(sheet, 4, 15);
    write(15, income);
    profit += income;
    const double otherExpenses = SumOfLines(sheet, 16, 21);
    write(21, otherExpenses);
    profit -= otherExpenses;
    write(22, profit);
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

void Calc_G1() { ChangeCells(gDB, Calculate); }

}  // namespace zolmara
