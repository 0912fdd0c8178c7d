#pragma once

namespace zolmara::cli {

/// Prints the findings of the last edit checks: level, code and message.
void PrintFindings();

}  // namespace zolmara::cli
