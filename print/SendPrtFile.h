#pragma once

// Sends a print file to the printer.

#include <cstdint>
#include <string>

#include "print/PrintRun.h"

namespace zolmara {

/// Prints a file with its page breaks and orientations. `orientation` is that of what stands
/// ahead of its first page change; neither 1 nor 2 takes that of the run's report last set up.
/// What the run writes next says its orientation anew. 0 when done, 1 when no printer is
/// available, 2 when the file cannot be opened. An error of the printer is shown, and what was
/// printed stays printed.
std::int16_t SendPrtFile(const std::string& fileName, std::int16_t orientation, PrintRun& run);

/// The setting of mnuReportUtilitiesHQ.
bool HighQualityPrinting();
/// Saves what the user chose. Off is written where nothing reads it, so the setting stays on and
/// the caption that the menu shows then holds for the session alone.
void SetHighQualityPrinting(bool on);
/// The caption of mnuReportUtilitiesHQ by the setting; it tells what a click on it does.
std::string HighQualityCaption();

}  // namespace zolmara
