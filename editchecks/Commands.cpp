// The commands of the main window that end in the edit checks.

#include "core/Globals.h"
#include "core/Windows.h"
#include "editchecks/modEditChecks.h"

namespace zolmara {
namespace {

void EndCalculate(bool mayBuild) {
    TheWindows().EnableMenu("mnuReportSubmit", mayBuild || gDebug);
    TheWindows().EnableMenu("mnuReportCalculate", true);
}

}  // namespace

std::int16_t mnuReportCalculate(void (*calcAll)()) {
    TheWindows().EnableMenu("mnuReportCalculate", false);
    try {
        // Its rows are about to be rewritten.
        if (TheWindows().FormIsOpen("frmViewError")) TheWindows().UnloadForm("frmViewError");
        calcAll();
        Run_EditChecks();
    } catch (...) {
        EndCalculate(false);
        throw;
    }
    EndCalculate(gEditLevel != kNonFatalLevel);
    return gEditLevel;
}

std::int16_t mnuReportEditCheck() { return Run_EditChecks(); }

}  // namespace zolmara
