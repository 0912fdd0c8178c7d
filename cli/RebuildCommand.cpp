#include <array>

#include "cli/Commands.h"
#include "cli/CrfFile.h"
#include "import/Rebuild.h"

namespace zolmara::cli {

namespace {

constexpr std::array kArguments{
    kFileArgument, Argument{"ITEM", ArgumentKind::Required, "The worksheet: A, A6, Bp1, F2p1, ..."},
    kNoBackup};

ExitStatus Rebuild(const Inputs& inputs) {
    if (!OpenFile(inputs)) return kRefusedOrMessages;
    BackUpAhead(inputs);
    return RebuildWorksheet(inputs.Text("ITEM")) ? kDone : kRefusedOrMessages;
}

}  // namespace

const Command kRebuild{
    "rebuild", "Make a worksheet anew from nothing",
    "All that was keyed on it is lost; a backup is made first. Its rows and columns follow the\n"
    "present cost centers and components.",
    kArguments, Rebuild};

}  // namespace zolmara::cli
