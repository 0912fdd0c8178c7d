#include "worksheets/W_A7.h"

#include <array>
#include <optional>

#include "core/Globals.h"
#include "store/session/Acts.h"
#include "store/session/Session.h"
#include "worksheets/Build.h"
#include "worksheets/CellRows.h"
#include "worksheets/FormLines.h"
#include "worksheets/NumberedSheet.h"
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

// --- Part I ----------------------------------------------------------------------------------

constexpr Currency Line(int whole) { return Currency::FromWhole(whole); }

constexpr std::size_t kColumnsOfPart1 = 7;
using RollForward = std::array<double, kColumnsOfPart1>;

void WriteRollForward(const NumberedSheet& sheet, int line, const RollForward& amounts) {
    for (std::size_t i = 0; i < amounts.size(); ++i)
        sheet.Put(Line(line), static_cast<int>(i) + 1, amounts[i]);
}

void CalculatePart1() {
    const NumberedSheet sheet("A7p1");
    const auto isNoTotal = [](Currency line) { return line != Line(7) && line != Line(9); };
    ChangeRows(sheet, isNoTotal, [](NumberedRow& row) {
        row.Set(4, row.Amount(2) + row.Amount(3));
        row.Set(6, row.Amount(1) + row.Amount(4) - row.Amount(5));
    });
    RollForward totals = {};
    for (std::size_t i = 0; i < totals.size(); ++i)
        totals[i] =
            sheet.Sum(static_cast<int>(i) + 1, [](Currency line) { return line < Line(7); });
    WriteRollForward(sheet, 7, totals);
    const NumberedSheet::Row reconciling = RequiredRow(sheet.Cells(), Line(8));
    for (std::size_t i = 0; i < totals.size(); ++i)
        totals[i] += sheet.Amount(reconciling, static_cast<int>(i) + 1);
    WriteRollForward(sheet, 9, totals);
}

// --- Part II ---------------------------------------------------------------------------------

constexpr Currency kTotalLine = kCapitalSubtotal;

bool IsCapitalLine(Currency line) { return line < kTotalLine; }

void TotalKeyedColumns(const NumberedSheet& sheet) {
    for (const int column : {1, 2, 9, 10, 11, 12, 13, 14})
        sheet.Put(kTotalLine, column, sheet.Sum(column, IsCapitalLine));
}

void CalcRatios(const NumberedSheet& sheet) {
    const double total = sheet.OnLine(kTotalLine, 3);
    double largest = 0;
    Currency largestLine;
    double sum = 0;
    for (const NumberedSheet::Row row : sheet.Rows()) {
        NumberedRow edit(sheet, row);
        const double ratio = total == 0 ? 0 : RoundTo(edit.Amount(3) / total, 6);
        edit.Set(4, ratio);
        edit.Update();
        const Currency line = sheet.Cells().Line(row);
        if (line == kTotalLine) continue;
        if (ratio > largest) {
            largest = ratio;
            largestLine = line;
        }
        sum += ratio;
    }
    if (sum != 1) sheet.Put(largestLine, 4, largest - sum + 1);
}

constexpr std::array<int, 3> kSpread = {5, 6, 7};  ///< columns that lines 4 to 6 of A go to
using SpreadAmounts = std::array<double, 3>;

/// What lines 4, 5 and 6 of A leave to spread: the books less the direct allocations.
SpreadAmounts OtherCapitalCosts() {
    const NumberedSheet expenses("A");
    SpreadAmounts costs = {};
    for (std::size_t i = 0; i < costs.size(); ++i) {
        const auto row = expenses.Cells().RowOn(Line(static_cast<int>(i) + 4));
        if (!row) {
            throw StoreError(StoreError::Kind::Other, "Worksheet A lacks one of the lines 4 to 6.");
        }
        costs[i] = expenses.Amount(*row, 1) - expenses.Amount(*row, 6);
    }
    return costs;
}

void SpreadCosts(const NumberedSheet& sheet, const SpreadAmounts& costs) {
    for (std::size_t i = 0; i < costs.size(); ++i) sheet.Put(kTotalLine, kSpread[i], costs[i]);
    for (const NumberedSheet::Row row : sheet.Rows()) {
        if (sheet.Cells().Line(row) == kTotalLine) break;
        NumberedRow edit(sheet, row);
        for (std::size_t i = 0; i < costs.size(); ++i)
            edit.Set(kSpread[i], ThroughText(RoundTo(edit.Amount(4) * costs[i], 0)));
        edit.Update();
    }
}

/// The line with the largest share, the lowest of several; a Null is the smallest of all.
std::optional<NumberedSheet::Row> LargestShare(const NumberedSheet& sheet, int column) {
    const TableCells& cells = sheet.Cells();
    const int position = sheet.At(column);
    std::optional<NumberedSheet::Row> largest;
    const auto isAbove = [&](NumberedSheet::Row row) {
        if (cells.IsNull(row, position)) return false;
        return cells.IsNull(*largest, position) ||
               cells.Amount(row, position) > cells.Amount(*largest, position);
    };
    for (const NumberedSheet::Row row : sheet.Rows()) {
        if (cells.Line(row) >= kTotalLine) break;
        if (!largest || isAbove(row)) largest = row;
    }
    return largest;
}

/// The largest share takes what the rounded shares miss of the cost, or have too much of it.
void CloseColumn(const NumberedSheet& sheet, int column, double wanted, double sum) {
    if (wanted == sum) return;
    const auto largest = LargestShare(sheet, column);
    if (!largest) return;
    sheet.Put(sheet.Cells().Line(*largest), column, sheet.Amount(*largest, column) + wanted - sum);
}

void CloseColumns(const NumberedSheet& sheet) {
    const NumberedSheet::Row total = RequiredRow(sheet.Cells(), kTotalLine);
    for (const int column : kSpread)
        CloseColumn(sheet, column, sheet.Amount(total, column), sheet.Sum(column, IsCapitalLine));
}

void TotalRows(const NumberedSheet& sheet) {
    ChangeRows(sheet, [](NumberedRow& row) {
        row.Set(8, row.Amount(5) + row.Amount(6) + row.Amount(7));
        row.Set(15, row.Amount(9) + row.Amount(10) + row.Amount(11) + row.Amount(12) +
                        row.Amount(13) + row.Amount(14));
    });
}

void CalculatePart2() {
    const NumberedSheet sheet("A7p2");
    TotalKeyedColumns(sheet);
    ChangeRows(sheet, [](NumberedRow& row) { row.Set(3, row.Amount(1) - row.Amount(2)); });
    CalcRatios(sheet);
    Calc_A();
    SpreadCosts(sheet, OtherCapitalCosts());
    CloseColumns(sheet);
    TotalRows(sheet);
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

void Calc_A7p1() { ChangeCells(gDB, CalculatePart1); }

void Calc_A7p2() {
    // It brings A up to date and takes its amounts.
    NeedWholeForm("A");
    RunUnnamedAct([] { ChangeCells(gDB, CalculatePart2); });
}

}  // namespace zolmara
