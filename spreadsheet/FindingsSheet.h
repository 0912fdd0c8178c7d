#pragma once

// The findings of the last edit checks as a sheet, each with a link to its cell.

#include "spreadsheet/BookLayout.h"
#include "spreadsheet/Workbook.h"

namespace zolmara {

/// Adds the sheet where the open CRF has findings.
void WriteFindings(Workbook& book, const BookLayout& layout);

}  // namespace zolmara
