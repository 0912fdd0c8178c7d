// The buttons cmdAdd and cmdDelete of a window.

#include <fmt/format.h>

#include "core/Dialogs.h"
#include "core/Globals.h"
#include "core/Windows.h"
#include "forms/WorksheetForm.h"
#include "store/PlainWords.h"
#include "store/session/Session.h"
#include "structure/EditLines.h"

namespace zolmara {

namespace {

bool IsSchedule(const WorksheetForm& form) {
    return SameText(form.Name, "frmEditBpx") || SameText(form.Name, "frmEditEpx");
}

/// A schedule's rows are the components of its part of S-2.
LineOutcome SendToComponents(const WorksheetForm& form) {
    const std::string item = fmt::format("S2p{}", form.Item.back());
    TheDialogs().MsgBox(fmt::format("Adding/Deleting lines is done from {}", item), kInformation,
                        std::string(kProductName));
    return {std::nullopt, false, item};
}

bool TakesLines(const WorksheetForm& form) {
    return form.Mode == FormMode::Edit && HasFreeLines(form.Table);
}

/// A line of the worksheet near the one that has gone.
std::optional<Currency> LineNear(const WorksheetForm& form, Currency line) {
    const std::string from = fmt::format("FROM [{}] WHERE {}", form.Table, form.Key);
    const bool ahead = SameText(form.Table, "A6") || SameText(form.Table, "S1p1");
    const std::string sql = ahead ? fmt::format("SELECT Max({}) {}<=?;", form.Key, from)
                                  : fmt::format("SELECT Min({}) {}>=?;", form.Key, from);
    const Variant found = gDB.Scalar(sql, {line});
    return found.IsNull() ? std::nullopt : std::optional(CurOr(found));
}

LineOutcome DeleteEntries(const WorksheetForm& form, std::span<const Currency> selected) {
    if (DeleteSelectedA6(selected) == LineResult::Refused) return {};
    TheWindows().EnableMenu("mnuReportSubmit", false);
    TheWindows().RefreshWorksheetForm("View", form.Item);
    return {LineNear(form, selected.front()), true, ""};
}

/// A file that takes no writes is told; nothing of the act stays.
template <class Act>
LineOutcome Guarded(const WorksheetForm& form, Act act) {
    try {
        return act();
    } catch (const StoreError& error) {
        MsgOrLog(fmt::format("The lines of {} were not changed.  {}", form.Item, PlainWords(error)),
                 kCritical, std::string(kProductName));
        return {};
    }
}

LineOutcome Add(const WorksheetForm& form, std::optional<Currency> current) {
    const auto line = cmdAdd(form.Table, current);
    if (!line) return {OfferLine(form.Table, current).BlankLine, false, ""};
    TheWindows().EnableMenu("mnuReportSubmit", false);
    return {line, true, ""};
}

LineOutcome Delete(const WorksheetForm& form, Currency line) {
    if (cmdDelete(form.Table, line) != LineResult::Done) return {};
    TheWindows().EnableMenu("mnuReportSubmit", false);
    return {LineNear(form, line), true, ""};
}

}  // namespace

LineOutcome AddFormLine(const WorksheetForm& form, std::optional<Currency> current) {
    if (IsSchedule(form)) return SendToComponents(form);
    if (!TakesLines(form)) return {};
    return Guarded(form, [&] { return Add(form, current); });
}

LineOutcome DeleteFormLines(const WorksheetForm& form, std::optional<Currency> current,
                            std::span<const Currency> selected) {
    if (IsSchedule(form)) return SendToComponents(form);
    if (!TakesLines(form)) return {};
    if (SameText(form.Table, "A6"))
        return Guarded(form, [&] { return DeleteEntries(form, selected); });
    if (!current) return {};
    return Guarded(form, [&] { return Delete(form, *current); });
}

}  // namespace zolmara
