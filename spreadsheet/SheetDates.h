#pragma once

// Dates as workbooks keep them: numbers of days, which a cell's format makes dates.

#include <string>
#include <string_view>

namespace zolmara {

/// True for a number format that shows a date or a time: "mm/dd/yyyy", not "#,##0" or "0.00".
bool IsDateFormat(std::string_view code);
/// The same of a format that workbooks know by its number alone.
bool IsDateFormat(int number);

/// The date of a serial number in the text form of a date, M/D/YYYY. `since1904` for workbooks
/// that count from there. Empty for a number that is no date.
std::string DateOfSerial(double serial, bool since1904 = false);

}  // namespace zolmara
