#include <array>

#include "calc/Calc_All.h"
#include "cli/Commands.h"
#include "cli/CrfFile.h"
#include "cli/Output.h"
#include "store/session/Session.h"

namespace zolmara::cli {

namespace {

constexpr std::array kArguments{kFileArgument};

ExitStatus Calc(const Inputs& inputs) {
    if (!OpenFile(inputs)) return kRefusedOrMessages;
    Calc_All();
    auto log = gDB.OpenRecordset("SELECT Severity, Message FROM Log WHERE LogType='C';");
    const Listing messages = ListingOf(log);
    if (messages.Rows.empty() && TheFormat() == OutputFormat::Text) return kDone;
    PrintMessages(messages);
    return messages.Rows.empty() ? kDone : kRefusedOrMessages;
}

}  // namespace

const Command kCalc{"calc", "Calculate all worksheets",
                    "Rows of the calculation log are printed, one a line: severity, tab, message.",
                    kArguments, Calc};

}  // namespace zolmara::cli
