#pragma once

// What commands say that take over from another Cost Report File.

#include <span>

#include "cli/Command.h"
#include "import/ImportWorksheets.h"

namespace zolmara::cli {

/// One line a message: severity, tab, message. kDone when there are none.
ExitStatus PrintImportMessages(std::span<const ImportMessage> messages);

}  // namespace zolmara::cli
