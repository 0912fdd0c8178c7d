#pragma once

namespace zolmara::cli {

/// Prints the findings of the last edit checks: level, code and message.
void PrintFindings();
/// The same, each with the figures that its check held against each other.
void PrintComparedFindings();

}  // namespace zolmara::cli
