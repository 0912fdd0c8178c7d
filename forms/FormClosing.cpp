// What stands at a window's door: the guards on leaving, and what a close sets in order.

#include <fmt/format.h>

#include "core/Dialogs.h"
#include "core/Globals.h"
#include "core/Windows.h"
#include "forms/WorksheetForm.h"
#include "store/PlainWords.h"
#include "store/session/Session.h"
#include "structure/AddDeleteCC.h"
#include "worksheets/W_A6.h"
#include "worksheets/W_S2.h"

namespace zolmara {

namespace {

bool RefuseToClose(std::string_view text) {
    TheDialogs().MsgBox(std::string(text), kExclamation, "Entry Error");
    return false;
}

/// An amended statement has a number, and a number goes with an amended statement.
bool StatusMayClose() {
    auto rows = gDB.OpenRecordset("Select * From Sp1 Order by LineNum;");
    bool amended = false;
    double number = 0;
    for (; !rows.Eof(); rows.MoveNext()) {
        if (CurOr(rows["LineNum"]) == Currency(1)) amended = FirstLetter(rows["Col_1"]) == "Y";
        if (CurOr(rows["LineNum"]) == Currency(2)) number = NumOr(rows["Col_1"]);
    }
    if (amended == (number > 0)) return true;
    return RefuseToClose(
        "If line 1, is Y (amended cost report), then line 2, must be greater than zero, and vice "
        "versa.");
}

bool CentersMayClose() {
    if (!CostCentersMayClose()) return false;
    Calc_S2();
    return true;
}

bool BasesMayClose() {
    const Variant blank = gDB.Scalar(
        "SELECT Count(LineNum) AS Cnt From ES WHERE IsNull(CCName) Or Len(Trim(CCName))=0;");
    return NumOr(blank) == 0 || RefuseToClose("All Cost Center names must be completed");
}

struct Guard {
    std::string_view Item;
    bool (*MayClose)();
};
constexpr Guard kGuards[] = {
    {"Sp1", StatusMayClose}, {"CCs", CentersMayClose}, {"ES", BasesMayClose}};

/// Entries in the order of their codes need no new numbers.
bool IsInSequence() {
    auto rows = gDB.OpenRecordset(
        "SELECT LineNum From A6 WHERE LineNum<100 ORDER BY Col_2, LineNum;", dbOpenSnapshot);
    const auto count = static_cast<std::int64_t>(rows.RecordCount());
    Currency line;
    for (; !rows.Eof(); rows.MoveNext()) {
        line = NextEntryLine(line, count);
        if (CurOr(rows[0]) != line) return false;
    }
    return true;
}

}  // namespace

bool FormMayOpen(const WorksheetForm& form) {
    return form.Mode == FormMode::View || !SameText(form.Item, "CCs") || CloseAllForms(true) == 0;
}

bool FormMayClose(const WorksheetForm& form) {
    if (form.Mode == FormMode::View) return true;
    for (const Guard& guard : kGuards)
        if (SameText(guard.Item, form.Item)) return guard.MayClose();
    return true;
}

void FormCloses(const WorksheetForm& form) {
    if (form.Mode == FormMode::View || !SameText(form.Item, "A6")) return;
    try {
        if (IsInSequence()) return;
        ResequenceLines_A6();
    } catch (const StoreError& error) {
        MsgOrLog(fmt::format("The lines of A6 were not put in order.  {}", PlainWords(error)),
                 kCritical, std::string(kProductName));
        return;
    }
    TheWindows().RefreshWorksheetForm("View", form.Item);
}

}  // namespace zolmara
