#include <array>
#include <string>

#include "cli/CliHost.h"
#include "cli/Commands.h"
#include "cli/CrfFile.h"
#include "core/Dialogs.h"
#include "store/session/Session.h"

namespace zolmara::cli {

namespace {

constexpr std::array kArguments{kFileArgument};

/// A damaged file cannot be opened to be closed: it is repaired first. What is lost is told.
bool OpenDamagedFile(const Inputs& inputs) {
    try {
        return OpenFile(inputs);
    } catch (const StoreError& error) {
        if (error.kind() != StoreError::Kind::Damaged) throw;
    }
    DropCrf();
    const auto report = DBEngine::RepairDatabase(FullPath(inputs.Text("FILE")));
    for (const std::string& loss : report.Losses) TheCliHost().MsgBox(loss, kExclamation, "");
    return OpenFile(inputs);
}

ExitStatus Compact(const Inputs& inputs) {
    if (!OpenDamagedFile(inputs)) return kRefusedOrMessages;
    mnuReportClose();
    return kDone;
}

}  // namespace

const Command kCompact{"compact", "Drop temporary tables, repair and compact the file",
                       "What closing the file in the desktop program does. A damaged file is made\n"
                       "anew from every row that can still be read; what was lost is listed.",
                       kArguments, Compact};

}  // namespace zolmara::cli
