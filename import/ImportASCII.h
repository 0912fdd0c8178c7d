#pragma once

// ASCII import: fills worksheets of the open CRF from a text file of one cell a line. What is
// found wrong stands in table Error.

#include <string>
#include <string_view>

namespace zolmara {

class LineSource;

/// Set by every message about a bad line or row, and never cleared while the program runs; it
/// keeps the closing message back.
extern bool ImportErrorFlag;

/// The level of a note at the end of an import, which is no fault.
inline constexpr std::string_view kNote = "F.Y.I.";

/// Imports a file into the open CRF as one batch. True when there is nothing but the closing
/// message, and notes, to read. StoreError::CannotOpen, with nothing changed, when the file cannot
/// be read.
bool ImportAsciiFile(const std::string& path);

/// The same with lines from elsewhere; `path` is what the status line names.
bool ImportLines(const std::string& path, LineSource& source);

/// What reads a file that the user has chosen. Other rooms know more kinds of files than text.
using ImportFileProcedure = bool (*)(const std::string& path);

/// Lets the user choose the file and imports it.
void ImportASCII(ImportFileProcedure importFile = ImportAsciiFile);

/// The menu command, with its question ahead unless the developer flag is set.
void mnuReportImportASCII(ImportFileProcedure importFile = ImportAsciiFile);
/// The same with a file that the user has named already.
void mnuReportImportASCII(const std::string& path,
                          ImportFileProcedure importFile = ImportAsciiFile);

}  // namespace zolmara
