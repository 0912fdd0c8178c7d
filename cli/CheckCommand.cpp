#include <array>

#include "cli/Commands.h"
#include "cli/CrfFile.h"
#include "cli/Findings.h"
#include "cli/Output.h"
#include "editchecks/modEditChecks.h"

namespace zolmara::cli {

namespace {

constexpr std::array kArguments{
    kFileArgument,
    Argument{"--explain", ArgumentKind::Flag,
             "Show the figures that a check held against each other, and their difference"}};

ExitStatus StatusOf(std::int16_t level) {
    if (level == kNonFatalLevel) return kBlocked;
    return level == kPotentialLevel ? kRefusedOrMessages : kDone;
}

ExitStatus Check(const Inputs& inputs) {
    if (!OpenFile(inputs)) return kRefusedOrMessages;
    const std::int16_t level = Run_EditChecks();
    if (level != kNoErrorsLevel) {
        if (inputs.Has("--explain")) {
            PrintComparedFindings();
        } else {
            PrintFindings();
        }
    } else if (TheFormat() == OutputFormat::Text) {
        PrintLine(kNoErrorsFound);
    } else {
        PrintMessages({{"Level", "Code", "Message"}, {}});
    }
    return StatusOf(level);
}

}  // namespace

const Command kCheck{
    "check", "Make the edit checks",
    "One line a finding: level, tab, code, tab, message. Status 0 without findings, 2 with\n"
    "potential errors only, 3 with a non-fatal error, which blocks the electronic report.\n"
    "The stored values are checked; run `calc` first after a change.",
    kArguments, Check};

}  // namespace zolmara::cli
