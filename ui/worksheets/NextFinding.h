#pragma once

namespace zolmara::ui {

/// Opens the worksheet of the next finding of the last edit checks that names one; behind the last
/// the first comes again. Beeps where there is none.
void OpenNextFinding();

}  // namespace zolmara::ui
