#include "ui/tools/Tools.h"

#include "ui/main/QtHost.h"
#include "ui/main/frmMain.h"

namespace zolmara::ui {

std::vector<Tool>& Tools() {
    static std::vector<Tool> tools = {};
    return tools;
}

void RefreshTools() {
    if (frmMain* const main = TheQtHost().Main()) main->RefreshTools();
}

}  // namespace zolmara::ui
