#include "print/PrintRun.h"

namespace zolmara {
namespace {

void SetPage(PrintRun& run, std::int16_t orient, std::int16_t width, std::int16_t center,
             std::int16_t lines) {
    run.gPageOrient = orient;
    run.gPageWidth = width;
    run.gPageCenter = center;
    run.gPageLines = lines;
}

}  // namespace

void PrintRun::SetPageLandscape() { SetPage(*this, kLandscape, 176, 88, 70); }
void PrintRun::SetPagePortrait() { SetPage(*this, kPortrait, 137, 69, 92); }

PrintRun PrintRun::For(FileNumber file) const {
    PrintRun run = *this;
    run.File = file;
    run.gPageOrientDone = 0;
    return run;
}

}  // namespace zolmara
