#pragma once

// Where every cell of a statement stands in an exported workbook: one sheet a table, its fields in
// the columns in their order, its lines below a head.

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "worksheets/CellSource.h"
#include "worksheets/Descriptions.h"

namespace zolmara {

/// Rows of a sheet from one to another, both included, counted from 1.
struct RowSpan {
    int First = 0;
    int Last = 0;
    int Count() const { return Last - First + 1; }
};

/// A column that closes: its cells need helper cells.
struct ClosedColumn {
    std::string Field;
    int Column = 0;
    const Closing* Group = nullptr;
    int FirstHelper = 0;  ///< the row of its first helper cell
};

/// The helper cells of a closed column, below one another.
enum class Helper { Got, Want, Largest, Place, Taker, Difference };
inline constexpr int kHelpers = 6;

struct SheetLayout {
    std::string Item;  ///< the table
    std::vector<std::string> Fields;
    std::vector<Currency> Lines;
    int FirstRow = 0;     ///< of the first line, from 1
    int FirstHelper = 0;  ///< of the first helper cell; they stand behind an empty row
    std::map<std::string, int> ColumnOf;
    std::vector<ClosedColumn> Closed;

    /// The row of a line, from 1; 0 when it has none.
    int RowOf(Currency line) const;
    /// The rows of the lines in a span, which always stand together; nothing without any.
    std::optional<RowSpan> RowsOf(const LineSpan& span) const;
    int LastRow() const { return FirstRow + static_cast<int>(Lines.size()) - 1; }
    const ClosedColumn* ClosedAt(const std::string& field, const Closing* group) const;
};

/// The description of each cell of a column.
class ColumnRules {
public:
    ColumnRules(const std::string& item, const std::string& field);
    /// None for a cell that nothing computes.
    const CellDescription* On(Currency line) const;

private:
    std::vector<const CellDescription*> rules_;
};

class BookLayout {
public:
    /// Of tables of the open CRF; each sheet's lines stand below `headRows` rows.
    BookLayout(CellSource& cells, const std::vector<std::string>& items, int headRows);

    const std::vector<SheetLayout>& Sheets() const { return sheets_; }
    /// The sheet of a table; null when it is not in the workbook.
    const SheetLayout* Find(const std::string& item) const;
    /// The sheets whose rows share by a closing, of which `own` is one. None when the workbook
    /// lacks one of them.
    std::vector<const SheetLayout*> SheetsOf(const Closing& group, const SheetLayout& own) const;
    /// True where every line that both sheets have stands on the same row.
    bool SameRows(const SheetLayout& one, const SheetLayout& other) const;

private:
    void FindClosed(SheetLayout& sheet) const;

    std::vector<SheetLayout> sheets_;
    mutable std::map<std::pair<const SheetLayout*, const SheetLayout*>, bool> sameRows_;
};

/// "C", "$C$5", "'A6'!$C$5".
std::string ColumnLetters(int column);
std::string Absolute(const SheetLayout& sheet, int column, int row);

}  // namespace zolmara
