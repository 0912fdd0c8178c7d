#pragma once

// Texts in files of separated values, which spreadsheets open with a double click and read as if
// they had been keyed.

#include <string>
#include <string_view>

namespace zolmara {

/// The text with an apostrophe ahead where a spreadsheet would take it for a formula: it begins
/// with "=", "+", "-", "@", a tab or a line end. One that begins with an apostrophe and such a
/// sign gets another, so that WithoutCsvMark gives every text back.
std::string CsvMarked(std::string_view text);
/// What CsvMarked was given.
std::string_view WithoutCsvMark(std::string_view text);

/// In quotes where a separator, quote, blank or line end asks for them.
std::string CsvQuoted(std::string_view text);

}  // namespace zolmara
