#pragma once

// The page of a report: its head, and running text.

#include <cstdint>
#include <string>
#include <string_view>

#include "print/PrintFile.h"
#include "print/PrintRun.h"

namespace zolmara {

/// A line that begins with it begins a page; kPortrait or kLandscape may follow.
inline constexpr char kFormFeed = '\f';

/// What stands in the first head of every file with reports, and of one with findings.
inline constexpr std::string_view kReportMark = " Zolmara 287 System [Version: ";
inline constexpr std::string_view kFindingsMark = "Error Report For";

/// Begins a page; its orientation is written where it differs from the last one in the file.
void StartPage(PrintRun& run);

/// Begins a page with the head of the form. `pageNumber` grows by one; `linesUsed` becomes the
/// number of lines written. The worksheet "S" alone shows the form's approval.
void PrintPageHeader(PrintRun& run, std::string_view worksheetLabel, std::int16_t& pageNumber,
                     std::int16_t& linesUsed);

/// Writes a text centred on a line of its own; a centre below 1 is that of the page.
void PrintCentered(std::string_view text, const PrintRun& run, int center = 0);
/// The column at which a centred text begins; below 1 for a text that is wider than the page.
int CenteredColumn(std::string_view text, const PrintRun& run, int center = 0);

/// Writes a text at a column, cut at its words, and gives the number of lines. With a file below
/// 1 it writes nothing and only counts.
std::int16_t PrintWrapped(FileNumber file, int column, int width, std::string_view text);

/// For running text: writes a line at a column as long as the text is longer than the width, each
/// up to its last blank, else ".", else ")", else the width. Gives what is left for the caller to
/// write.
std::string PrintRunOn(FileNumber file, int column, std::string_view text, int width,
                       std::int16_t& linesUsed);

}  // namespace zolmara
