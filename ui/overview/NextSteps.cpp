#include "ui/overview/NextSteps.h"

#include <QAction>
#include <optional>
#include <string>

#include "core/Globals.h"
#include "editchecks/modEditChecks.h"
#include "store/session/Session.h"
#include "store/session/Signature.h"
#include "ui/main/QtHost.h"
#include "ui/main/WorksheetRoads.h"
#include "ui/main/frmMain.h"
#include "ui/overview/StatementNotes.h"

namespace zolmara::ui {
namespace {

void RunMenu(const char* name) {
    const frmMain* const main = TheQtHost().Main();
    if (QAction* const entry = main ? main->Menu(name) : nullptr; entry && main->MenuOn(name))
        entry->trigger();
}

NextStep ByMenu(const QString& text, const char* menu) {
    return {text, [menu] { RunMenu(menu); }};
}

double Count(const std::string& statement) { return NumOr(gDB.Scalar(statement)); }

QString Counted(int count, const char* one, const char* many) {
    return QString("%1 %2").arg(count).arg(count == 1 ? one : many);
}

// --- What must be keyed first --------------------------------------------------------------

/// What a statement cannot do without, each with a count that is 0 where it is missing.
struct Need {
    const char* Text;
    const char* Statement;
    const char* Item;
    int Line;
    const char* Field;
};

constexpr Need kNeeds[] = {
    {"S-1 Part I: no contact is keyed",
     "SELECT Count(*) AS Cnt FROM S1p1 WHERE LineNum=5 And (Len(Col_1)>0 Or Len(Col_2)>0);", "S1p1",
     5, "Col_1"},
    {"S-1 Part I: no type of control is keyed",
     "SELECT Count(*) AS Cnt FROM S1p1 WHERE LineNum=3 And Len(Col_1)>0;", "S1p1", 3, "Col_1"},
    {"S-2: no components are keyed",
     "SELECT Count(*) AS Cnt FROM S2p1 WHERE LineNum<51 And Len(Col_1)>0;", "S2p1", 1, "Col_1"},
    {"A: no expenses are keyed", "SELECT Count(*) AS Cnt FROM A WHERE LineNum<99 And Col_1<>0;",
     "A", 1, "Col_1"},
};

void AddNeeds(std::vector<NextStep>& steps) {
    for (const Need& need : kNeeds) {
        if (!TableExists(need.Item, false) || Count(need.Statement) > 0) continue;
        steps.push_back({need.Text, [&need] {
                             GoToWorksheet("edit", need.Item, Currency::FromWhole(need.Line),
                                           need.Field);
                         }});
    }
}

// --- Calculation, findings, signature ------------------------------------------------------

std::optional<QString> CalculationWanted(const StatementNotes& notes) {
    if (notes.Calculated.empty()) return "Not calculated in this session";
    if (notes.Keyed > 0)
        return Counted(notes.Keyed, "entry", "entries") + " keyed since the last calculation";
    if (notes.Changed) return "The file was changed since the last calculation";
    if (notes.Checked.empty()) return "No edit checks since the last calculation";
    return std::nullopt;
}

int Findings(std::string_view level) {
    return static_cast<int>(
        NumOr(gDB.Scalar("SELECT Count(*) AS Cnt FROM Error WHERE [Level]=?;", {level})));
}

/// Where the files cannot be built yet, the step is what stands in the way.
NextStep StepToSign(bool calculate) {
    const frmMain* const main = TheQtHost().Main();
    if (!calculate && main && main->MenuOn("mnuReportElectronically"))
        return ByMenu("Not signed", "mnuReportElectronically");
    if (!calculate && TableExists("Error", false) && Findings(kNonFatalError) > 0)
        return ByMenu("Not signed: the errors come first", "mnuReportUtilitiesLog");
    return ByMenu("Not signed: calculate first", "mnuReportCalculate");
}

void AddFindings(std::vector<NextStep>& steps) {
    if (!TableExists("Error", false)) return;
    const int errors = Findings(kNonFatalError);
    const int warnings = Findings(kPotentialError);
    if (errors > 0)
        steps.push_back(ByMenu(Counted(errors, "error", "errors") + " of the edit checks",
                               "mnuReportUtilitiesLog"));
    if (warnings > 0)
        steps.push_back(ByMenu(Counted(warnings, "warning", "warnings") + " of the edit checks",
                               "mnuReportUtilitiesLog"));
}

}  // namespace

std::vector<NextStep> ReadNextSteps() {
    std::vector<NextStep> steps;
    AddNeeds(steps);
    const auto calculate = CalculationWanted(TheNotes());
    if (calculate) steps.push_back(ByMenu(*calculate, "mnuReportCalculate"));
    AddFindings(steps);
    if (SignatureText().empty()) steps.push_back(StepToSign(calculate.has_value()));
    if (steps.empty()) steps.push_back({"Nothing: calculated, checked and signed", [] {}});
    return steps;
}

}  // namespace zolmara::ui
