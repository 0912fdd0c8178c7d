#pragma once

namespace zolmara::ui {

/// True when another copy of the program runs for this user. Else this one counts as running
/// until it ends.
bool AnotherCopyRuns();

}  // namespace zolmara::ui
