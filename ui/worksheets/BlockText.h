#pragma once

// A block of cells as spreadsheets put it on the clipboard: cells apart by tabs, rows by line
// ends, a cell with a tab, line end or quote in it between quotes.

#include <QString>
#include <QStringList>
#include <string>
#include <string_view>
#include <vector>

namespace zolmara::ui {

/// The rows of a text; the line end behind the last row begins no further one.
std::vector<QStringList> ReadBlock(const QString& text);

/// Appends a cell, between quotes where it needs them.
void AppendCell(std::string& text, std::string_view cell);
/// The text of rows; each row ends with a line end.
QString WriteBlock(const std::vector<QStringList>& rows);

}  // namespace zolmara::ui
