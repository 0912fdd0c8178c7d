#include "structure/EditLines.h"

#include <fmt/format.h>

#include "core/BusyPointer.h"
#include "core/Dialogs.h"
#include "core/Globals.h"
#include "core/Windows.h"
#include "store/session/Acts.h"
#include "store/session/Session.h"
#include "structure/AddDeleteCC.h"
#include "structure/LineRules.h"
#include "structure/LineTitle.h"
#include "structure/modAddS2.h"

namespace zolmara {

namespace {

int PartOf(std::string_view item) { return item.back() - '0'; }

void InsertLine(const LineRules& rules, Currency line) {
    OpenGap(rules.Item, rules.Key, line, rules.AddBound);
    gDB.Execute(fmt::format("Insert Into {} ({}) Values(?);", rules.Item, rules.Key), {line});
}

void InsertEntry(Currency line) {
    gDB.Execute("Insert Into A6 (LineNum, Col_4, Col_5, Col_7, Col_8) Values (?, 0, 0, 0, 0);",
                {line});
}

void LiftMailLines(Currency line) {
    gDB.Execute("UPDATE S1p1 SET LineNum = LineNum+1000 WHERE LineNum > ? AND LineNum < ?;",
                {line, NextGroup(line)});
}

void LiftOfficers(Currency line) {
    gDB.Execute("UPDATE S1p2 SET LineNum = LineNum+1000 WHERE LineNum > ?;", {line});
}

void InsertMailLine(Currency line) {
    LiftMailLines(line - kSubscriptStep);
    gDB.Execute("UPDATE S1p1 SET LineNum = LineNum-999.99 WHERE LineNum >= 1000;");
    gDB.Execute("INSERT INTO S1p1 (LineNum,Description) VALUES (?,'more email address');", {line});
}

void InsertOfficer(Currency line) {
    LiftOfficers(line - kWholeStep);
    gDB.Execute("UPDATE S1p2 SET LineNum = LineNum-999 WHERE LineNum >= 1000;");
    gDB.Execute("INSERT INTO S1p2 (LineNum) VALUES (?);", {line});
}

void DeleteRow(const LineRules& rules, Currency line) {
    gDB.Execute(fmt::format("Delete * From {} Where {}=?;", rules.Item, rules.Key), {line});
}

/// On G-1 a group that is empty after the delete closes as a whole line, whatever its last line
/// was.
LineStep StepToClose(const LineRules& rules, Currency line) {
    if (rules.Item == "G1")
        return GroupSize(rules.Item, rules.Key, line) == 0 ? LineStep::Whole : LineStep::Subscript;
    return ClosingStep(line, KeyBehind(rules.Item, rules.Key, line));
}

void CloseRows(const LineRules& rules, Currency line) {
    switch (rules.Keeper) {
        case LineKeeper::Gap:
            CloseGap(rules.Item, rules.Key, line, StepToClose(rules, line), rules.DeleteBound);
            break;
        case LineKeeper::MailLines:
            LiftMailLines(line);
            gDB.Execute("UPDATE S1p1 SET LineNum = LineNum-1000.01 WHERE LineNum >= 1000;");
            break;
        case LineKeeper::Officers:
            LiftOfficers(line);
            gDB.Execute("UPDATE S1p2 SET LineNum = LineNum-1001 WHERE LineNum >= 1000;");
            break;
        default:
            break;
    }
}

bool MayDelete(const LineRules& rules, Currency line) {
    const bool ofTheForm = line.IsWhole() && line <= Currency::FromWhole(rules.FormLines);
    return !ofTheForm && IsShownLine(rules, line);
}

LineResult DeleteOwnLine(const LineRules& rules, Currency line) {
    if (!HasLine(rules.Item, rules.Key, line)) return LineResult::NoSuchLine;
    if (!MayDelete(rules, line)) {
        TheDialogs().Beep();
        return LineResult::Refused;
    }
    RunAct("Delete " + LineTitle(rules.Item, line), [&] {
        DeleteRow(rules, line);
        CloseRows(rules, line);
    });
    return LineResult::Done;
}

constexpr std::string_view kNoneSelected =
    "You requested to Delete a line while no line was selected [highlighted].  To delete a line, "
    "first select the line to be deleted by clicking on the left margin area adjacent to that "
    "line.  That will highlight the line's entire row.  Then, clicking on the Delete button will "
    "delete the selected line.";

void Refresh(std::string_view item, const LineRules& rules) {
    if (rules.Keeper == LineKeeper::Components)
        TheWindows().RefreshOpenForms(std::string(item));
    else
        TheWindows().RefreshWorksheetForm("view", std::string(item));
}

}  // namespace

bool AddLine(std::string_view item, Currency line) {
    const auto* rules = FindLineRules(item, line);
    if (rules == nullptr) return false;
    bool done = true;
    RunAct("Add " + LineTitle(item, line, false), [&] {
        switch (rules->Keeper) {
            case LineKeeper::CostCenters:
                done = AddCostCenter(line);
                break;
            case LineKeeper::Components:
                AddS2Line(line, PartOf(item));
                break;
            case LineKeeper::Gap:
                InsertLine(*rules, line);
                break;
            case LineKeeper::Entries:
                InsertEntry(line);
                break;
            case LineKeeper::MailLines:
                InsertMailLine(line);
                break;
            case LineKeeper::Officers:
                InsertOfficer(line);
                break;
        }
    });
    return done;
}

bool IsLineDeletable(std::string_view item, Currency line) {
    const auto* rules = FindLineRules(item, line);
    return rules != nullptr && MayDelete(*rules, line);
}

LineResult DeleteLine(std::string_view item, Currency line) {
    const auto* rules = FindLineRules(item, line);
    if (rules == nullptr) return LineResult::NoSuchLine;
    if (rules->Keeper == LineKeeper::CostCenters) return DeleteCostCenter(line);
    if (rules->Keeper == LineKeeper::Components) return DeleteS2Line(line, PartOf(item));
    return DeleteOwnLine(*rules, line);
}

LineResult DeleteSelectedA6(std::span<const Currency> lines) {
    if (lines.empty()) {
        TheDialogs().Beep();
        TheDialogs().MsgBox(std::string(kNoneSelected), kCritical,
                            "Error: No line Selected to Delete");
        return LineResult::Refused;
    }
    auto result = LineResult::Done;
    RunAct("Delete lines of A-6", [&] {
        for (auto line : lines)
            if (const auto one = DeleteLine("A6", line); one != LineResult::Done) result = one;
    });
    return result;
}

std::optional<Currency> cmdAdd(std::string_view item, std::optional<Currency> current,
                               std::optional<LineStep> wish) {
    const BusyPointer busy;
    const auto offer = OfferLine(item, current);
    if (!offer.Refused() && item == "CostCenters" && CloseAllForms(true) != 0) return std::nullopt;
    const auto line = ChooseLine(offer, wish);
    if (!line || !AddLine(item, *line)) return std::nullopt;
    Refresh(item, *FindLineRules(item, *line));
    return line;
}

LineResult cmdDelete(std::string_view item, Currency line) {
    const BusyPointer busy;
    const auto result = DeleteLine(item, line);
    if (result == LineResult::Done) Refresh(item, *FindLineRules(item, line));
    return result;
}

}  // namespace zolmara
