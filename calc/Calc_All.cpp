#include "calc/Calc_All.h"

#include <fmt/format.h>

#include <array>

#include "calc/LineBreaks.h"
#include "core/Globals.h"
#include "core/Status.h"
#include "core/Windows.h"
#include "store/RunStopped.h"
#include "store/session/Acts.h"
#include "store/session/Session.h"
#include "worksheets/WholeForm.h"
#include "worksheets/Worksheet.h"

namespace zolmara {
namespace {

/// The main window while a run goes on: its menus are off and the status line shows.
class CalculatingState {
public:
    CalculatingState() { EnableMenus(false); }
    ~CalculatingState() {
        EnableMenus(true);
        TheStatus().HideCalcMsg();
        gLogType.clear();
    }
    CalculatingState(const CalculatingState&) = delete;
    CalculatingState& operator=(const CalculatingState&) = delete;

private:
    static void EnableMenus(bool enabled) {
        static constexpr std::array<const char*, 4> kMenus = {"mnuEdit", "mnuHelp", "mnuReport",
                                                              "mnuView"};
        for (const char* menu : kMenus) TheWindows().EnableMenu(menu, enabled);
    }
};

void CalcWorksheet(const std::string& item) {
    NeedWholeForm(item);
    RemoveLineBreaks(item);
    const Worksheet* sheet = FindWorksheet(item);
    if (sheet != nullptr && sheet->Calc != nullptr) sheet->Calc(sheet->Item);
}

void CalcWorksheets(Recordset& worksheets) {
    const auto count = static_cast<double>(worksheets.RecordCount());
    for (double done = 0; !worksheets.Eof(); worksheets.MoveNext()) {
        const std::string name = Text(worksheets["ItemName"]);
        TheStatus().ShowCalcMsg(
            fmt::format(" Calculating level {}: {}", Text(worksheets["Calc_Lvl"]), name));
        TheStatus().ShowProgress(done / count);
        RunStep(name, [&] { CalcWorksheet(Text(worksheets["Item"])); });
        done += 1;
        TheStatus().DoEvents();
    }
    TheStatus().ShowProgress(1);
}

}  // namespace

void Calc_All() {
    Recordset worksheets = gDB.OpenRecordset(
        "SELECT Item, Calc_Lvl, ItemName FROM Worksheets WHERE Calc_Lvl < 900 ORDER BY Calc_Lvl, "
        "ItemName;",
        dbOpenSnapshot);
    if (worksheets.Eof()) {
        throw StoreError(StoreError::Kind::Other, "The Cost Report File has no worksheets.");
    }
    const CalculatingState state;
    RunAct("Calculate", [&] {
        ClearLog("C");
        CalcWorksheets(worksheets);
    });
    TheStatus().ShowCalcMsg(" Calculations completed.");
    TheWindows().RefreshOpenForms("");
}

}  // namespace zolmara
