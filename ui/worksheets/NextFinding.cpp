#include "ui/worksheets/NextFinding.h"

#include "core/Dialogs.h"
#include "editchecks/ErrorView.h"
#include "store/session/Session.h"
#include "ui/dialogs/frmViewError.h"
#include "ui/main/Done.h"
#include "ui/main/OpenForms.h"
#include "ui/main/WorksheetRoads.h"
#include "ui/worksheets/FindingTarget.h"

namespace zolmara::ui {
namespace {

/// Where the last call stood, while the findings are not on the screen.
std::size_t position = 0;

bool OpenAt(const ErrorView& view, std::size_t at, frmViewError* window) {
    const auto target = TargetOf(view.Rows[at].Message);
    if (!target) return false;
    position = at + 1;
    if (window) window->Select(static_cast<int>(at));
    GoToWorksheet("edit", target->Item, target->Line, target->Column);
    return true;
}

}  // namespace

void OpenNextFinding() {
    if (!CrfIsOpen() || !TableExists("Error", false)) return TheDialogs().Beep();
    const ErrorView view = ReadErrorView();
    auto* window = dynamic_cast<frmViewError*>(FindForm("frmViewError"));
    if (window) position = static_cast<std::size_t>(window->Selected()) + 1;
    for (std::size_t step = 0; step < view.Rows.size(); ++step)
        if (OpenAt(view, (position + step) % view.Rows.size(), window)) return;
    TheDialogs().Beep();
    TellDone("No finding leads to a worksheet");
}

}  // namespace zolmara::ui
