#pragma once

// From the words of a command line to a command and its inputs.

#include "cli/Command.h"

namespace zolmara::cli {

/// Reads the command line and runs its command. The result is the status of the process.
int RunCommandLine(int count, const char* const* words);

}  // namespace zolmara::cli
