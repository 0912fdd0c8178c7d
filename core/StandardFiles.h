#pragma once

namespace zolmara {

/// Makes sure that the three standard files are open, at the beginning of a program. A program may
/// be started without them; the next file that it opens, the Cost Report File at last, would then
/// be where everything is printed. Input without a file has nothing in it, output fails as one
/// that is closed, and messages go nowhere.
void HoldStandardFiles();

}  // namespace zolmara
