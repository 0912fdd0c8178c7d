#pragma once

// Puts printed pages on paper.

#include <vector>

#include "ui/printing/QtPageDevice.h"

class QPrinter;

namespace zolmara::ui {

/// Lines of a letter page in a font of this size.
int PageLines(int orientation, double fontSize);

/// Paints all jobs as one document: each page in its own orientation, the text in columns of the
/// form's width, so that no line and no page breaks differently from the print file. False when
/// the printer takes no pages.
bool PaintJobs(const std::vector<PrintJob>& jobs, QPrinter& printer);

}  // namespace zolmara::ui
