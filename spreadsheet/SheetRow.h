#pragma once

// A row of a sheet as a workbook keeps it, before anybody knows what its cells are for.

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace zolmara {

enum class SheetCellKind : std::uint8_t {
    Text,
    Number,   ///< its text form of 15 digits
    Date,     ///< M/D/YYYY
    Truth,    ///< "TRUE" or "FALSE"
    Error,    ///< "#DIV/0!"
    Formula,  ///< one whose result the workbook does not keep
};

struct SheetCell {
    int Column = 0;  ///< from 0
    SheetCellKind Kind = SheetCellKind::Text;
    std::string Text;
};

struct SheetRow {
    std::string Sheet;             ///< its name; empty in a CSV file, which is one sheet
    std::int64_t Row = 0;          ///< from 1, as spreadsheets count
    std::vector<SheetCell> Cells;  ///< those that hold something, by their columns
    std::string Merged = {};       ///< of a row without cells: a range of the sheet that is merged
};

/// Columns behind it are passed over.
inline constexpr int kMaxSheetColumns = 256;

/// "D5"; the column counts from 0, the row from 1.
std::string CellAddressOf(int column, std::int64_t row);
/// "Sheet1!D5"; without a sheet's name the cell alone.
std::string CellAddressOf(const std::string& sheet, int column, std::int64_t row);

using TakeRow = std::function<void(SheetRow&&)>;

}  // namespace zolmara
