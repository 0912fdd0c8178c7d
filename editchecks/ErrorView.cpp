#include "editchecks/ErrorView.h"

#include <algorithm>

#include "core/Globals.h"
#include "editchecks/modEditChecks.h"
#include "store/session/Session.h"

namespace zolmara {
namespace {

constexpr std::string_view kNonFatalNote =
    "NOTE: This cost report contains Non-Fatal Errors.  These errors must be corrected before you "
    "can buld an Electronic File.";

int HeightOf(const std::string& message) {
    const auto breaks = std::count(message.begin(), message.end(), '\r');
    return kTwipsPerLine * static_cast<int>(1 + breaks);
}

void AddRow(ErrorView& view, Finding finding) {
    if (finding.Level == kNonFatalError) {
        view.CanBuildECR = false;
        view.Note = kNonFatalNote;
        view.ErrorSeen = true;
    }
    if (TextLength(finding.Level) > 1) view.ErrorSeen = true;
    view.RowHeights.push_back(HeightOf(finding.Message));
    view.RowHeight = std::max(view.RowHeight, view.RowHeights.back());
    view.Rows.push_back(std::move(finding));
}

}  // namespace

ErrorView ReadErrorView() {
    ErrorView view;
    if (!TableExists("Error", false)) return view;
    view.CanBuildECR = true;
    view.LongestMessage =
        static_cast<int>(NumOr(gDB.Scalar("Select MAX(LEN(Message)) as Mx FROM Error;")));
    Recordset rows = gDB.OpenRecordset("Select * From Error;", dbOpenSnapshot);
    for (; !rows.Eof(); rows.MoveNext())
        AddRow(view, {StrOr(rows["Level"]), StrOr(rows["Code"]), StrOr(rows["Message"])});
    return view;
}

}  // namespace zolmara
