#pragma once

// What has been printed, on the screen first: from there it goes to a printer of the system or
// into a PDF file, through the platform's dialog.

#include <vector>

#include "ui/printing/QtPageDevice.h"

class QPrinter;

namespace zolmara::ui {

void ShowPreview(const std::vector<PrintJob>& jobs, QPrinter& printer);

}  // namespace zolmara::ui
