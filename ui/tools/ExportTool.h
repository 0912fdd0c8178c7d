#pragma once

// "Export To Spreadsheet ...": the open statement as a workbook.

namespace zolmara::ui {

/// Lets the user choose the file, and writes it. A file that stands there is replaced when the user
/// says so.
void ExportToSpreadsheet();

}  // namespace zolmara::ui
