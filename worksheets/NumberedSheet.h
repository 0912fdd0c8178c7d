#pragma once

// A worksheet in memory whose columns have numbers on the form: A, A-7, E, G, G-1. What a
// calculation writes here is in the table when the change of cells around it ends.

#include <string_view>
#include <vector>

#include "store/TableCells.h"

namespace zolmara {

class NumberedSheet {
public:
    using Row = TableCells::Row;

    /// The numbers of the open CRF's worksheet. StoreError::NoSuchItem without such a table.
    explicit NumberedSheet(std::string_view item);

    TableCells& Cells() const { return cells_; }
    const std::vector<Row>& Rows() const { return cells_.Rows(); }
    /// Position of a column, 1 being "Col_1". StoreError::NoSuchItem where the table lacks it.
    int At(int column) const;

    /// A number, 0 for Null.
    double Amount(Row row, int column) const { return cells_.Amount(row, At(column)); }
    /// The same of a line, 0 where it is not there.
    double OnLine(Currency line, int column) const;
    /// What Sum in a statement gives on the lines for which the condition holds; 0 without any.
    template <class IsWanted>
    double Sum(int column, const IsWanted& isWanted) const {
        return cells_.Sum(At(column), isWanted);
    }

    /// Sets a cell of a line, if it is there. StoreError for what no field can hold.
    void Set(Currency line, int column, double amount) const;
    /// The same with what a statement carries into a cell, which is its text form of 15 digits.
    void Put(Currency line, int column, double amount) const;

private:
    TableCells& cells_;
    std::vector<int> positions_;  ///< of the columns from 1 on
};

/// A row of such a worksheet while it is changed.
class NumberedRow {
public:
    NumberedRow(const NumberedSheet& sheet, NumberedSheet::Row row)
        : sheet_(sheet), edit_(sheet.Cells(), row) {}

    double Amount(int column) const { return edit_.Amount(sheet_.At(column)); }
    /// StoreError for what no field can hold.
    void Set(int column, double amount) { edit_.Set(sheet_.At(column), amount); }
    void Update() { edit_.Update(); }

private:
    const NumberedSheet& sheet_;
    RowEdit edit_;
};

/// Changes every row of the sheet on the lines for which the condition holds.
template <class IsWanted, class Change>
void ChangeRows(const NumberedSheet& sheet, const IsWanted& isWanted, const Change& change) {
    for (const NumberedSheet::Row row : sheet.Rows()) {
        if (!isWanted(sheet.Cells().Line(row))) continue;
        NumberedRow edit(sheet, row);
        change(edit);
        edit.Update();
    }
}

/// Changes every row.
template <class Change>
void ChangeRows(const NumberedSheet& sheet, const Change& change) {
    ChangeRows(
        sheet, [](Currency) { return true; }, change);
}

}  // namespace zolmara
