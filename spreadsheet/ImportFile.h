#pragma once

// The import of every kind of file: text, and what spreadsheets write.

#include <string>

namespace zolmara {

/// Imports a file into the open CRF as one batch: .xlsx, .xlsm, .ods and .csv as sheets of cells,
/// anything else as text (ImportAsciiFile). True when there is nothing but the closing message,
/// and notes, to read. A file that cannot be read to its end is told as a message, and nothing is
/// loaded. StoreError::CannotOpen, with nothing changed, when it cannot be opened, and for a
/// workbook of the older kind .xls.
bool ImportFile(const std::string& path);

}  // namespace zolmara
