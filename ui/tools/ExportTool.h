#pragma once

// The commands of "Tools" that write spreadsheets. Each lets the user choose the file; one that
// stands there is replaced when the user says so.

#include <string>

namespace zolmara::ui {

/// "Export To Spreadsheet ...": the open statement as a workbook, or the worksheet that is named.
void ExportToSpreadsheet(const std::string& item = "");

/// "Save Keyed Cells As ...": in the form that an import takes. What has no place in it is listed
/// in a window.
void SaveKeyedCells();

/// "Save A Template To Fill ...": a workbook with every cell that can be keyed.
void SaveTemplate();

}  // namespace zolmara::ui
