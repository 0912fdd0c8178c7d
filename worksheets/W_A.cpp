#include "worksheets/W_A.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>

#include "core/Globals.h"
#include "store/session/Acts.h"
#include "store/session/CoreTables.h"
#include "store/session/Session.h"
#include "worksheets/Build.h"
#include "worksheets/CalcMessages.h"
#include "worksheets/Rows.h"
#include "worksheets/Schedules.h"

namespace zolmara {
namespace {

using enum FieldType;
using enum CellKind;

/// The rows of A by line, to post entries to.
class Postings {
public:
    Postings() : rows_(gDB.OpenRecordset("SELECT * FROM A Order By LineNum")) {
        for (; !rows_.Eof(); rows_.MoveNext()) marks_[LineOf(rows_)] = rows_.Bookmark();
    }

    /// Adds to a column of the line; False where A has no such line.
    bool Add(const Variant& line, std::string_view column, double amount) {
        const auto found = marks_.find(CurOr(line));
        if (line.IsNull() || found == marks_.end()) return false;
        rows_.SetBookmark(found->second);
        rows_.Edit();
        rows_.Set(column, NumOr(rows_[column]) + amount);
        rows_.Update();
        return true;
    }

private:
    Recordset rows_;
    std::map<Currency, std::int64_t> marks_;
};

/// Entries that are posted to a column of A line by line.
struct Source {
    std::string_view Sql;
    EntrySource Entries;
    std::string_view Column;  ///< of A
    std::string_view MessageEnd;
};

constexpr std::array<Source, 4> kSources = {{
    {"SELECT * FROM A6 WHERE Col_5 > 0 AND LineNum < 100;", kUpEntries, "Col_2",
     " does not exist."},
    {"SELECT * FROM A6 WHERE Col_7 > 0 AND LineNum < 100;", kDownEntries, "Col_2", "."},
    {"SELECT * FROM A8 WHERE Col_3<>0 And Col_5 is not null;", kAdjustments, "Col_4",
     " does not exist."},
    {"SELECT * FROM A81p1 WHERE Col_1 > 0 AND Col_1 < 100;", kRelatedCosts, "Col_4",
     " does not exist."},
}};

void Post(Postings& postings, const Source& source) {
    Recordset entries = gDB.OpenRecordset(source.Sql, dbOpenSnapshot);
    for (; !entries.Eof(); entries.MoveNext()) {
        const Variant& line = entries[source.Entries.LineField];
        const double amount = NumOr(entries[source.Entries.AmountField]);
        if (postings.Add(line, source.Column, source.Entries.Sign * amount)) continue;
        TellInCalculation(
            fmt::format("No A record found matching the {} record for Cost Center {}{}",
                        source.Entries.Item, Text(line), source.MessageEnd));
    }
}

/// Posts the grand total of a schedule to the lines of its cost centers. The schedules of one
/// column have no cost center in common.
void PostAllocation(const Schedule& schedule, std::string_view column) {
    const Recordset total = RequiredRow(TableOf(schedule, 3), kGrandTotal);
    const std::string sql = fmt::format("Update A Set {}=? Where LineNum=?;", column);
    for (int i = schedule.FirstColumn; i < total.FieldCount(); ++i) {
        if (!IsCostCenterColumn(total.FieldName(i))) continue;
        gDB.Execute(sql, {NumOr(total[i]), LineOfColumn(total.FieldName(i))});
    }
}

void PostAllocations() {
    for (const Schedule& schedule : AllSchedules()) {
        if (schedule.Kind == ScheduleKind::Direct) PostAllocation(schedule, "Col_6");
        if (schedule.Kind == ScheduleKind::Functional) PostAllocation(schedule, "Col_7");
    }
}

/// A subtotal of A: the columns that it sums, over the lines between two others.
struct Subtotal {
    Currency Line;
    std::string_view Columns;
    Currency Above;
    Currency Below;
};

constexpr std::string_view kAllColumns = "12345678";
constexpr Currency kBeforeAll = Currency::FromWhole(-10000);

constexpr Subtotal kCapital = {kCapitalSubtotal, kAllColumns, kBeforeAll, kCapitalSubtotal};
constexpr Subtotal kOtherCapital = {kOtherCapitalSubtotal, "12356", kCapitalSubtotal,
                                    kOtherCapitalSubtotal};
constexpr Subtotal kNonCapital = {kNonCapitalSubtotal, kAllColumns, kOtherCapitalSubtotal,
                                  kNonCapitalSubtotal};

void WriteSums(Currency line, std::string_view columns, std::string_view condition,
               std::initializer_list<Variant> args) {
    std::string sums;
    std::string sets;
    for (const char column : columns) {
        sums += fmt::format("{}Sum(Col_{}) As C{}", sums.empty() ? "" : ", ", column, column);
        sets += fmt::format("{}Col_{}=?", sets.empty() ? "" : ",", column);
    }
    const Recordset totals = gDB.OpenRecordset(
        fmt::format("Select {} From A Where {};", sums, condition), args, dbOpenSnapshot);
    std::vector<Variant> values;
    for (int i = 0; i < totals.FieldCount(); ++i) values.emplace_back(NumOr(totals[i]));
    values.emplace_back(line);
    gDB.Execute(fmt::format("Update A Set {} Where LineNum=?;", sets), values);
}

void WriteSubtotal(const Subtotal& subtotal) {
    WriteSums(subtotal.Line, subtotal.Columns, "LineNum>? And LineNum<?",
              {subtotal.Above, subtotal.Below});
}

void WriteTotal() {
    WriteSums(kTotalOfA, kAllColumns, "LineNum In(?,?,?)",
              {kCapitalSubtotal, kOtherCapitalSubtotal, kNonCapitalSubtotal});
}

void Calculate() {
    gDB.Execute("UPDATE A SET Col_2=0, Col_4=0;");
    Postings postings;
    for (const Source& source : kSources) Post(postings, source);
    gDB.Execute("UPDATE A SET Col_3=IIF(IsNull(Col_1),0,Col_1)+IIF(IsNull(Col_2),0,Col_2);");
    gDB.Execute("UPDATE A SET Col_5=IIF(IsNull(Col_3),0,Col_3)+IIF(IsNull(Col_4),0,Col_4);");
    PostAllocations();
    gDB.Execute(
        "UPDATE A SET Col_8=IIF(IsNull(Col_5),0,Col_5)-IIF(IsNull(Col_6),0,Col_6)"
        "-IIF(IsNull(Col_7),0,Col_7);");
    WriteSubtotal(kCapital);
    WriteSubtotal(kOtherCapital);
    WriteSubtotal(kNonCapital);
    // The other capital related lines carry no adjustment, functional or pooled amount on this
    // form. Columns 3 and 5 keep the adjustment that was in them.
    gDB.Execute("UPDATE A SET Col_4=0,Col_7=0,Col_8=0 Where LineNum>3 and LineNum<8;");
    WriteTotal();
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

void Calc_A() { RunUnnamedAct(Calculate); }

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
