#include "calc/Calc_All.h"

#include <fmt/format.h>

#include <array>
#include <utility>

#include "calc/KeptResults.h"
#include "calc/LineBreaks.h"
#include "core/Globals.h"
#include "core/Status.h"
#include "core/Windows.h"
#include "store/RunStopped.h"
#include "store/TableCells.h"
#include "store/session/Acts.h"
#include "store/session/Session.h"
#include "worksheets/CalcMessages.h"
#include "worksheets/ColumnInputs.h"
#include "worksheets/Schedules.h"
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

void CalcWorksheet(const std::string& item, KeptColumns& columns) {
    NeedWholeForm(item, columns);
    RemoveLineBreaks(item);
    const Worksheet* sheet = FindWorksheet(item);
    if (sheet != nullptr && sheet->Calc != nullptr) sheet->Calc(sheet->Item, columns);
}

/// A worksheet of the registry.
struct Entry {
    std::string Item;
    std::string Level;
    std::string Name;
};

/// Worksheets that are calculated together or not at all: the parts of a schedule that follow one
/// another, since the third part moves amounts on the others.
using Unit = std::vector<Entry>;

bool BelongTogether(const Entry& one, const Entry& next) {
    const Schedule* schedule = FindSchedule(one.Item);
    return schedule != nullptr && schedule == FindSchedule(next.Item) && one.Level == next.Level;
}

std::vector<Unit> UnitsOf(Recordset& worksheets) {
    std::vector<Unit> units;
    for (; !worksheets.Eof(); worksheets.MoveNext()) {
        Entry entry{Text(worksheets["Item"]), Text(worksheets["Calc_Lvl"]),
                    Text(worksheets["ItemName"])};
        if (units.empty() || !BelongTogether(units.back().back(), entry)) units.emplace_back();
        units.back().push_back(std::move(entry));
    }
    return units;
}

/// How far a run is.
struct Progress {
    double Done = 0;
    double All;
};

/// What the calculations of a unit go by and keep for the next.
struct Kept {
    TableWatch Tables{gDB};
    KeptColumns Columns;
};

void CalcUnit(const Unit& unit, Progress& progress, Kept& kept) {
    for (const Entry& entry : unit) {
        TheStatus().ShowCalcMsg(fmt::format(" Calculating level {}: {}", entry.Level, entry.Name));
        TheStatus().ShowProgress(progress.Done / progress.All);
        RunStep(entry.Name, [&] { CalcWorksheet(entry.Item, kept.Columns); });
        progress.Done += 1;
        // What the windows read meanwhile is no input.
        const TableWatch::Rest rest(kept.Tables);
        TheStatus().DoEvents();
    }
}

enum class Extent { All, Changed };

void CalcWorksheets(KeptResults& kept, Recordset& worksheets, Extent extent) {
    Progress progress{.All = static_cast<double>(worksheets.RecordCount())};
    for (const Unit& unit : UnitsOf(worksheets)) {
        const std::string& first = unit.front().Item;
        if (extent == Extent::Changed && kept.Stands(first)) {
            progress.Done += static_cast<double>(unit.size());
            continue;
        }
        const std::int64_t told = CalculationMessages();
        Kept now;
        if (extent == Extent::Changed) now.Columns = kept.TakeColumns(first);
        ChangeCells(gDB, [&] { CalcUnit(unit, progress, now); });
        kept.Keep(first, now.Tables, std::move(now.Columns), CalculationMessages() != told);
    }
    TheStatus().ShowProgress(1);
}

void RunAsAct(Recordset& worksheets, Extent extent) {
    KeptResults& kept = KeptResults::OfOpenCrf();
    const bool alone = !gDB.InBatch();
    try {
        RunAct("Calculate", [&] {
            ClearLog("C");
            kept.BeginRun(alone);
            CalcWorksheets(kept, worksheets, extent);
            kept.EndRun();
        });
        kept.AfterBatch();
    } catch (...) {
        kept.Forget();
        throw;
    }
}

void Run(Extent extent) {
    Recordset worksheets = gDB.OpenRecordset(
        "SELECT Item, Calc_Lvl, ItemName FROM Worksheets WHERE Calc_Lvl < 900 ORDER BY Calc_Lvl, "
        "ItemName;",
        dbOpenSnapshot);
    if (worksheets.Eof()) {
        throw StoreError(StoreError::Kind::Other, "The Cost Report File has no worksheets.");
    }
    const CalculatingState state;
    RunAsAct(worksheets, extent);
    TheStatus().ShowCalcMsg(" Calculations completed.");
    TheWindows().RefreshOpenForms("");
}

}  // namespace

void Calc_All() { Run(Extent::All); }

void Calc_Changed() { Run(Extent::Changed); }

}  // namespace zolmara
