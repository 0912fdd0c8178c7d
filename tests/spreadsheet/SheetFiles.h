#pragma once

// Spreadsheet files for tests, made part by part, also such as no program would write.

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zolmara::test {

using ZipPart = std::pair<std::string, std::string>;  ///< name and content

/// Writes a zip archive.
void WriteZip(const std::string& path, const std::vector<ZipPart>& parts);
/// The parts of one; those of a workbook by their names.
std::string ReadZip(const std::string& path, const std::string& part);

/// A workbook with one sheet of this XML between sheetData, and further parts.
void WriteRawXlsx(const std::string& path, const std::string& sheetData,
                  std::vector<ZipPart> more = {}, const std::string& behind = "");
/// A document of this XML in its one table.
void WriteRawOds(const std::string& path, const std::string& rows, const std::string& doctype = "");

/// A row of cells of text: inline strings.
std::string TextRow(int row, const std::vector<std::string>& cells);

}  // namespace zolmara::test
