#include "editchecks/modEditChecks.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <sstream>

#include "core/Globals.h"
#include "core/Status.h"
#include "core/StatusLine.h"
#include "core/Windows.h"
#include "editchecks/Catalogue.h"
#include "store/RunStopped.h"
#include "store/session/Acts.h"
#include "store/session/CoreTables.h"
#include "store/session/LogRun.h"
#include "store/session/Session.h"

namespace zolmara {

std::int16_t gEditLevel = kNoErrorsLevel;

namespace {

/// A step of the run: the codes that it can give, and when it applies.
struct Step {
    std::string_view Codes;
    void (*Run)();
    bool (*Applies)() = nullptr;
    bool BeginsSection = false;  ///< the interface may breathe ahead of it
};

constexpr bool kSection = true;

constexpr Step kRun[] = {
    {"1065", CheckCostCenterRefs},

    {"1081S", CheckUniqueCCNs, nullptr, kSection},
    {"1090", CheckNumericWidths},
    {"1050A", CheckA7p1Line9},
    {"VLQ", CheckS2p1Col11},
    {"1091A", CheckA81p1Links, LinksAreChecked},
    {"VLQ", CheckG1Descriptions},

    {"1110 1120", CheckColumnLabels, nullptr, kSection},
    {"1130 1140 1141", CheckPoolLabels},

    {"1010S", CheckSp1, nullptr, kSection},
    {"1000S 1020S 1050S 1060S 1070S", CheckS1p1},
    {"1080S 1085S 1090S 1100S VLQ", CheckS2p1},
    {"1110S", CheckS2p2},
    {"1121S 1130S", CheckS2p3, RegionsAreChecked},

    {"1000A", CheckALine100, nullptr, kSection},
    {"1020A", CheckA6Totals},
    {"1025A 1040A 1030A", CheckA6Codes},
    {"VLQ 1070A 1060A", CheckA7p2},
    {"1080A", CheckA8},
    {"1090A 1105A", CheckA81p1},
    {"1100A VLQ", CheckA81p2},

    {"1010B 1020B", CheckBp3AgainstA, nullptr, kSection},
    {"VLQ 1060B", CheckB1p3AgainstA},
    {"VLQ 1000C", CheckCp3AgainstA},
    {"1010C", CheckC1Statistics},
    {"VLQ 1020C", CheckC1p3Costs},
    {"VLQ 1000D", CheckDp3AgainstA},
    {"1010D 1015D", CheckD1Statistics},
    {"1020D", CheckD1p3Costs},
    {"1030D 1040D 1050D 1060D", CheckEAgainstA, PoolsAreChecked},
    {"1010D 1020D 1080D 1090D 1280D VLQ", CheckE1p3AgainstA, PoolsAreChecked},
    {"1100E", CheckE1p3AllOther, PoolsAreChecked},

    {"2000", CheckAllNotNegative, nullptr, kSection},

    {"VLQ 2000S 2010S", CheckPeriod, nullptr, kSection},
    {"2020S", CheckContact},
    {"2030S", CheckOfficers},
    {"2000G 2010G", CheckBalanceSheet},
    {"2020G", CheckNetIncome},
    {"2050A", CheckFixedAssets},
    {"2000B", CheckDirectAmounts},
};

void Make(const Step& step) {
    if (step.BeginsSection) TheStatus().DoEvents();
    if (!step.Applies || step.Applies()) step.Run();
}

void RunAllSteps() {
    EmptyErrors();
    double done = 0;
    for (const Step& step : kRun) {
        TheStatus().ShowProgress(done++ / static_cast<double>(std::size(kRun)));
        RunStep(fmt::format("Edit checks {}", step.Codes), [&] { Make(step); });
    }
    if (gEditLevel == kNoErrorsLevel) AddErrorRow(kNoErrorsFound, " ", " ");
}

void ShowFindings() {
    if (TheWindows().FormIsOpen("frmViewError")) {
        TheWindows().SetGrd("frmViewError");
    } else {
        TheWindows().ShowErrors("Edit Check Results");
    }
}

}  // namespace

std::int16_t Run_EditChecks() {
    gEditLevel = kNoErrorsLevel;
    {
        const StatusLine status(" Performing Edit Checks");
        RunUnnamedAct(RunAllSteps);
    }
    ShowFindings();
    return gEditLevel;
}

void AddNonFatal(std::string_view code, std::string_view message) {
    AddErrorRow(kNonFatalError, code, message);
    gEditLevel = kNonFatalLevel;
}

void AddPotential(std::string_view code, std::string_view message) {
    AddErrorRow(kPotentialError, code, message);
    gEditLevel = std::max(gEditLevel, kPotentialLevel);
}

std::vector<std::string> EditCheckCodes() {
    std::vector<std::string> codes;
    for (const Step& step : kRun) {
        std::istringstream words{std::string(step.Codes)};
        for (std::string code; words >> code;) {
            if (std::find(codes.begin(), codes.end(), code) == codes.end()) codes.push_back(code);
        }
    }
    return codes;
}

}  // namespace zolmara
