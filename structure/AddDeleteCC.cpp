#include "structure/AddDeleteCC.h"

#include <fmt/format.h>

#include "core/Dialogs.h"
#include "core/Globals.h"
#include "store/session/Acts.h"
#include "store/session/CoreTables.h"
#include "store/session/Session.h"
#include "structure/CostCenterColumns.h"
#include "structure/LineTitle.h"
#include "structure/Renumber.h"
#include "worksheets/FormLines.h"

namespace zolmara {

namespace {

constexpr std::string_view kKey = "LineNum";
constexpr int kSubtotal = kNonCapitalSubtotal.Whole();
constexpr int kTotalOfA7p2 = kCapitalSubtotal.Whole();
constexpr int kFirstAdded =
    kInterestIncome.Whole() + 1;  ///< the whole lines below it are the form's

bool IsCapital(Currency line) { return line < kCapitalSubtotal; }

Currency LastCostCenter() {
    return CurOr(gDB.Scalar("SELECT Max(LineNum) AS MaxOfLn From CostCenters Where LineNum<99;"));
}

/// True where lifting the rows from the line would push the last one out of its range.
bool IsFull(Currency line, Currency last) {
    const auto end = line.IsWhole() ? Currency::FromWhole(kSubtotal - 1) : LastOfGroup(line);
    if (line.IsWhole()) return last >= end && line <= last;
    return HasLine("CostCenters", kKey, end);
}

/// Why no cost center can be made at the line; empty when it can.
std::string Obstacle(Currency line, NewColumns& columns) {
    const auto last = LastCostCenter();
    const bool isLine = line.Units() % kSubscriptStep.Units() == 0;
    if (!isLine || TablesWithColumn(line).empty()) return "that line is no cost center";
    if (line > last + kWholeStep)
        return fmt::format("the last cost center is {}", NumberText(last));
    if (IsFull(line, last)) return "the lines behind it cannot move up";
    return columns.Obstacle(line);
}

void RefuseImpossible(Currency line, NewColumns& columns) {
    const auto obstacle = Obstacle(line, columns);
    if (obstacle.empty()) return;
    throw StoreError(StoreError::Kind::Other,
                     fmt::format("Unable to add cost center {}: {}.", NumberText(line), obstacle));
}

/// A line reference of A6 is kept at four decimals, so that it goes on matching its line.
void MoveA6Reference(std::string_view field, Currency line) {
    if (line.IsWhole())
        gDB.Execute(
            fmt::format("Update A6 Set {0}=Int(({0}+1)*10000+.5)/10000 Where {0}>=?;", field),
            {line});
    else
        gDB.Execute(fmt::format("Update A6 Set {0}=Int(({0}+.01)*10000+.5)/10000 Where {0}=? And "
                                "{0}<?;",
                                field),
                    {line, NextGroup(line)});
}

void MoveA8Reference(Currency line) {
    if (line.IsWhole())
        gDB.Execute("Update A8 Set Col_5=Col_5+1 Where Col_5>=?;", {line});
    else
        gDB.Execute("Update A8 Set Col_5=Col_5+.01 Where Col_5=? And Col_5<?;",
                    {line, NextGroup(line)});
}

/// On a subscript only references to exactly the line move, though the rows behind it move too.
void MoveLinesUp(Currency line) {
    OpenGap("CostCenters", kKey, line, kSubtotal);
    OpenGap("A", kKey, line, kSubtotal);
    MoveA6Reference("Col_4", line);
    MoveA6Reference("Col_7", line);
    if (IsCapital(line)) OpenGap("A7p2", kKey, line, kTotalOfA7p2);
    MoveA8Reference(line);
}

void InsertRows(Currency line) {
    gDB.Execute("Insert Into CostCenters (LineNum) Values(?);", {line});
    gDB.Execute("Insert Into A (LineNum) Values(?);", {line});
    if (IsCapital(line)) gDB.Execute("Insert Into A7p2 (LineNum) Values(?);", {line});
}

void DeleteRows(Currency line) {
    gDB.Execute("Delete * From CostCenters Where LineNum=?;", {line});
    gDB.Execute("Delete * From A Where LineNum=?;", {line});
    gDB.Execute("Update A6 Set Col_3=Null,Col_4=Null,Col_5=Null Where Col_4=?;", {line});
    gDB.Execute("Update A6 Set Col_6=Null,Col_7=Null,Col_8=Null Where Col_7=?;", {line});
    if (IsCapital(line)) gDB.Execute("Delete * From A7p2 where LineNum=?;", {line});
}

void CloseLines(Currency line) {
    const auto step = ClosingStep(line, KeyBehind("CostCenters", kKey, line));
    CloseGap("CostCenters", kKey, line, step, kSubtotal);
    CloseGap("A", kKey, line, step, kSubtotal);
    if (step == LineStep::Subscript && IsCapital(line))
        CloseGap("A7p2", kKey, line, step, kTotalOfA7p2);
}

/// Where a worksheet repeats a cost center's name. A8 takes it by its own line number.
struct NameStatement {
    std::string_view Item;
    std::string_view Sql;
    bool OnImport;
};
constexpr NameStatement kNameStatements[] = {
    {"A", "UPDATE A SET CCName = ? WHERE LineNum=?;", true},
    {"A6", "UPDATE A6 SET Col_3 = ? WHERE Col_4=?;", true},
    {"A6", "UPDATE A6 SET Col_6 = ? WHERE Col_7=?;", true},
    {"A7p2", "UPDATE A7p2 SET Description = ? WHERE LineNum=?;", true},
    {"A8", "UPDATE A8 SET Col_4 = ? WHERE LineNum=?;", false},
};

void RenameOn(const std::string& item, Currency line, std::string_view name) {
    for (const auto& statement : kNameStatements)
        if (statement.Item == item) gDB.Execute(statement.Sql, {name, line});
}

bool AnyNameIsBlank() {
    return NumOr(gDB.Scalar("SELECT Count(LineNum) AS Cnt From CostCenters WHERE IsNull(CCName) "
                            "Or Len(Trim(CCName))=0;")) > 0;
}

constexpr std::string_view kAddOrDelete =
    "Please either add a new 4.xx cost center or delete the 4.01, which will revert it to 4.00.";

}  // namespace

bool AddCostCenter(Currency line, NewColumns& columns) {
    RefuseImpossible(line, columns);
    bool done = false;
    RunAct("Add " + LineTitle("CostCenters", line, false), [&] {
        MoveLinesUp(line);
        InsertRows(line);
        done = columns.Add(line);
    });
    return done;
}

bool AddCostCenter(Currency line) {
    NewColumns columns;
    RefuseImpossible(line, columns);
    bool done = false;
    RunAct("Add " + LineTitle("CostCenters", line, false), [&] {
        done = AddCostCenter(line, columns);
        columns.Finish();
    });
    return done;
}

LineResult DeleteCostCenter(Currency line) {
    if (!HasLine("CostCenters", kKey, line)) return LineResult::NoSuchLine;
    if (CloseAllForms(true) != 0) return LineResult::Cancelled;
    if (line.IsWhole() && line < Currency::FromWhole(kFirstAdded)) {
        TheDialogs().Beep();
        return LineResult::Refused;
    }
    RunAct("Delete " + LineTitle("CostCenters", line), [&] {
        DeleteRows(line);
        CloseLines(line);
        DeleteCCColumn(line);
    });
    return LineResult::Done;
}

bool RenameCostCenter(Currency line, std::string_view name) {
    if (CloseAllForms(true) != 0) return false;
    RunAct("Rename " + LineTitle("CostCenters", line), [&] {
        auto items =
            gDB.OpenRecordset("SELECT Item From Worksheets Where Calc_Lvl < 999 ORDER BY Item;");
        for (; !items.Eof(); items.MoveNext()) RenameOn(StrOr(items[0]), line, name);
    });
    return true;
}

void CarryCostCenterName(Currency line, std::string_view name) {
    for (const auto& statement : kNameStatements)
        if (statement.OnImport) gDB.Execute(statement.Sql, {name, line});
}

bool CostCentersMayClose() {
    std::string message;
    if (CheckCC4xx(message) != 0) {
        TheDialogs().MsgBox(fmt::format("{}\r\n{}", message, kAddOrDelete), kExclamation,
                            std::string(kProductName));
        return false;
    }
    if (!AnyNameIsBlank()) return true;
    TheDialogs().MsgBox("All Cost Center names must be completed", kExclamation, "Entry Error");
    return false;
}

}  // namespace zolmara
