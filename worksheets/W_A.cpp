#include "worksheets/W_A.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <span>

#include "core/Globals.h"
#include "store/session/Acts.h"
#include "store/session/CoreTables.h"
#include "store/session/Session.h"
#include "worksheets/Build.h"
#include "worksheets/CalcMessages.h"
#include "worksheets/CellRows.h"
#include "worksheets/NumberedSheet.h"
#include "worksheets/Schedules.h"

namespace zolmara {
namespace {

using enum FieldType;
using enum CellKind;

constexpr int kReclassifications = 2;
constexpr int kAdjustmentColumn = 4;
constexpr int kDirect = 6;
constexpr int kFunctional = 7;

/// Adds to a column of the line; False where A has no such line.
bool PostTo(const NumberedSheet& sheet, const Variant& line, int column, double amount) {
    if (line.IsNull()) return false;
    const auto row = sheet.Cells().RowOn(CurOr(line));
    if (!row) return false;
    NumberedRow edit(sheet, *row);
    edit.Set(column, edit.Amount(column) + amount);
    edit.Update();
    return true;
}

/// Entries that are posted to a column of A line by line.
struct Source {
    EntrySource Entries;
    int Column;  ///< of A
    std::string_view MessageEnd;
};

constexpr std::array<Source, 4> kSources = {{
    {kUpEntries, kReclassifications, " does not exist."},
    {kDownEntries, kReclassifications, "."},
    {kAdjustments, kAdjustmentColumn, " does not exist."},
    {kRelatedCosts, kAdjustmentColumn, " does not exist."},
}};

/// Posts the entries in the order in which they are stored.
void Post(const NumberedSheet& sheet, const Source& source) {
    const EntrySource& entries = source.Entries;
    const TableCells& cells = CellsOf(gDB, entries.Item);
    const int linePosition = RequiredPosition(cells, entries.LineField);
    const int amountPosition = RequiredPosition(cells, entries.AmountField);
    for (TableCells::Row row = 0; row < cells.RowCount(); ++row) {
        const Variant line = cells.Value(row, linePosition);
        const double amount = cells.Amount(row, amountPosition);
        const Currency entry = cells.IsNull(row, 0) ? kTotalOfEntries : cells.Line(row);
        if (!TakesEntry(entries, entry, line, amount)) continue;
        if (PostTo(sheet, line, source.Column, entries.Sign * amount)) continue;
        TellInCalculation(
            fmt::format("No A record found matching the {} record for Cost Center {}{}",
                        entries.Item, Text(line), source.MessageEnd));
    }
}

/// Posts the grand total of a schedule to the lines of its cost centers. The schedules of one
/// column have no cost center in common.
void PostAllocation(const NumberedSheet& sheet, const Schedule& schedule, int column) {
    const TableCells& cells = CellsOf(gDB, TableOf(schedule, 3));
    const TableCells::Row total = RequiredRow(cells, kGrandTotal);
    for (int i = schedule.FirstColumn; i < cells.FieldCount(); ++i) {
        if (!IsCostCenterColumn(cells.FieldName(i))) continue;
        sheet.Put(LineOfColumn(cells.FieldName(i)), column, cells.Amount(total, i));
    }
}

void PostAllocations(const NumberedSheet& sheet) {
    for (const Schedule& schedule : AllSchedules()) {
        if (schedule.Kind == ScheduleKind::Direct) PostAllocation(sheet, schedule, kDirect);
        if (schedule.Kind == ScheduleKind::Functional) PostAllocation(sheet, schedule, kFunctional);
    }
}

/// A subtotal of A: the columns that it sums, over the lines between two others.
struct Subtotal {
    Currency Line;
    std::span<const int> Columns;
    Currency Above;
    Currency Below;
};

constexpr std::array<int, 8> kAllColumns = {1, 2, 3, 4, 5, 6, 7, 8};
constexpr std::array<int, 5> kOtherCapitalColumns = {1, 2, 3, 5, 6};
constexpr Currency kBeforeAll = Currency::FromWhole(-10000);

constexpr Subtotal kCapital = {kCapitalSubtotal, kAllColumns, kBeforeAll, kCapitalSubtotal};
constexpr Subtotal kOtherCapital = {kOtherCapitalSubtotal, kOtherCapitalColumns, kCapitalSubtotal,
                                    kOtherCapitalSubtotal};
constexpr Subtotal kNonCapital = {kNonCapitalSubtotal, kAllColumns, kOtherCapitalSubtotal,
                                  kNonCapitalSubtotal};

void WriteSubtotal(const NumberedSheet& sheet, const Subtotal& subtotal) {
    const auto isSummed = [&](Currency line) {
        return subtotal.Above < line && line < subtotal.Below;
    };
    for (const int column : subtotal.Columns)
        sheet.Put(subtotal.Line, column, sheet.Sum(column, isSummed));
}

void WriteTotal(const NumberedSheet& sheet) {
    const auto isSubtotal = [](Currency line) {
        return line == kCapitalSubtotal || line == kOtherCapitalSubtotal ||
               line == kNonCapitalSubtotal;
    };
    for (const int column : kAllColumns)
        sheet.Put(kTotalOfA, column, sheet.Sum(column, isSubtotal));
}

/// The other capital related lines, their subtotal with them, carry no adjustment, functional or
/// pooled amount on this form. Columns 3 and 5 keep the adjustment that was in them.
void ClearOtherCapital(const NumberedSheet& sheet) {
    const auto isOther = [](Currency line) {
        return kCapitalSubtotal < line && line < Currency::FromWhole(8);
    };
    ChangeRows(sheet, isOther, [](NumberedRow& row) {
        for (const int column : {4, 7, 8}) row.Set(column, 0);
    });
}

void CalculateSheet() {
    const NumberedSheet sheet("A");
    ChangeRows(sheet, [](NumberedRow& row) {
        row.Set(kReclassifications, 0);
        row.Set(kAdjustmentColumn, 0);
    });
    for (const Source& source : kSources) Post(sheet, source);
    ChangeRows(sheet, [](NumberedRow& row) {
        row.Set(3, row.Amount(1) + row.Amount(2));
        row.Set(5, row.Amount(3) + row.Amount(4));
    });
    PostAllocations(sheet);
    ChangeRows(sheet, [](NumberedRow& row) {
        row.Set(8, row.Amount(5) - row.Amount(kDirect) - row.Amount(kFunctional));
    });
    for (const Subtotal& subtotal : {kCapital, kOtherCapital, kNonCapital})
        WriteSubtotal(sheet, subtotal);
    ClearOtherCapital(sheet);
    WriteTotal(sheet);
}

bool IsComputedLine_A(Currency line) {
    return std::ranges::any_of(kComputedLines_A, [&](const ComputedLine& computed) {
        return Currency::FromWhole(computed.Line) == line;
    });
}

}  // namespace

const std::vector<WorksheetField>& Fields_A(std::string_view) {
    static const std::vector<WorksheetField> fields = {
        {"LineNum", dbCurrency, 0, "CC #", Key},
        {"CCName", dbText, 40, "Description", Label},
        {"Col_1", dbDouble, 0, "Expenses per Home Office Books", Keyed},
        {"Col_2", dbDouble, 0, "Reclass- ifications", Computed},
        {"Col_3", dbDouble, 0, "Reclassified Trial Balance", Computed},
        {"Col_4", dbDouble, 0, "Adjustments", Computed},
        {"Col_5", dbDouble, 0, "Net Allowable Expenses", Computed},
        {"Col_6", dbDouble, 0, "Direct Allocations to Components", Computed},
        {"Col_7", dbDouble, 0, "Functional Allocations to Components", Computed},
        {"Col_8", dbDouble, 0, "Pooled Allocations", Computed},
    };
    return fields;
}

void Build_A() {
    MakeWorksheetTable("A");
    gDB.Execute("INSERT INTO A SELECT LineNum,CCName FROM CostCenters;");
    static constexpr std::array<SeedRow, 4> kSeeds = {
        {{kCapitalSubtotal.Whole(), "Subtotal CRC"},
         {kOtherCapitalSubtotal.Whole(), "Subtotal Other CRC"},
         {kNonCapitalSubtotal.Whole(), "Subtotal Non-Capital Cost"},
         {kTotalOfA.Whole(), "Total"}}};
    InsertSeedRows("A", "CCName", kSeeds);
    MakeWorksheetIndex("A");
    RegisterBuiltWorksheet("A");
}

void Calc_A() {
    RunUnnamedAct([] { ChangeCells(gDB, CalculateSheet); });
}

std::string ValidateCell_A(Currency lineNum, int column) {
    static const std::string refusal =
        "The cell you are attempting to input or modify does not accept changes.  Select OK to "
        "continue.";
    const Currency whole = Currency::FromWhole(lineNum.Whole());
    if (IsComputedLine_A(whole) || whole == kInterestIncome) return refusal;
    if (column != 1 && column != 2) return refusal;
    if (column == 1 && lineNum <= kInterestIncome) return refusal;
    return {};
}

}  // namespace zolmara
