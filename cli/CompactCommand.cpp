#include <array>
#include <string>

#include "cli/CliHost.h"
#include "cli/Commands.h"
#include "cli/CrfFile.h"
#include "core/Dialogs.h"
#include "store/session/CloseCrf.h"
#include "store/session/RepairCrf.h"
#include "store/session/Session.h"

namespace zolmara::cli {

namespace {

constexpr std::array kArguments{kFileArgument};

/// A damaged file cannot be opened to be closed: it is repaired first. What is lost is told.
void RepairFirst(const Inputs& inputs) {
    for (const std::string& sentence : RepairCrf(FullPath(inputs.Text("FILE"))).Report)
        TheCliHost().MsgBox(sentence, kExclamation, "");
}

ExitStatus Compact(const Inputs& inputs) {
    RepairFirst(inputs);
    if (!OpenFile(inputs)) return kRefusedOrMessages;
    const auto trouble = CloseCrf();
    if (!trouble) return kDone;
    TheCliHost().MsgBox(*trouble, kCritical, "");
    return kFileTrouble;
}

}  // namespace

const Command kCompact{
    "compact", "Drop temporary tables, repair and compact the file",
    "What closing the file in the desktop program does. A damaged file is made\n"
    "anew from every row that can still be read. Where anything was lost it is\n"
    "listed, and the damaged file is kept beside. The exit status is 4 when the\n"
    "file could not be repaired or compacted; it is then as it was.",
    kArguments, Compact};

}  // namespace zolmara::cli
