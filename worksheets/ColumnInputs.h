#pragma once

// Which columns of a schedule come out as they are, and are not calculated again.
//
// A column's inputs are the columns that its calculation reads or writes, whole and in whatever
// table they are; the column itself is one of them. The tables in memory number their changes, so
// that a column has changed where its number is above the last one that its table had when the
// calculation before first looked at it.
//
// What holds: a column is left out only where none of its inputs has changed since then. The
// calculation before was made from the same numbers and changed none of the column's own, so that
// another would change none either. A row's sum across all columns is left out by the same rule,
// its inputs being the row. Whatever is not known has changed. Sums are always made from all their
// cells, in their order, and never by adding a difference.
//
// A full calculation is the same procedure where nothing is known.

#include <cstdint>
#include <initializer_list>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "store/TableCells.h"

namespace zolmara {

/// A table as a calculation finds it, against what the one before found.
class TableChanges {
public:
    TableChanges(const TableCells& cells, std::int64_t seen) : cells_(&cells), seen_(seen) {}

    /// True where the table has changed at all; its lines or fields; a column; a row.
    bool Any() const { return cells_->LastChange() > seen_; }
    bool Shape() const { return cells_->ShapeChange() > seen_; }
    /// A column that the table lacks counts as changed.
    bool Column(int position) const {
        return position >= cells_->FieldCount() || cells_->ColumnChange(position) > seen_;
    }
    bool Row(TableCells::Row row) const { return cells_->RowChange(row) > seen_; }

private:
    const TableCells* cells_;
    std::int64_t seen_;
};

/// The columns from one position up to but not including another of which an input has changed.
/// They are made from the columns in their own place in each of the tables.
std::vector<int> ColumnsToCalculate(int from, int end, std::initializer_list<TableChanges> inputs);

/// What the calculation of a column found in it ahead of any residual.
struct ColumnFinding {
    double Sum = 0;       ///< of the components
    bool IsEmpty = true;  ///< no component so far
    Currency Line;        ///< of the largest by absolute value, the lowest line of several
    double Size = 0;      ///< its absolute value; a Null is the smallest of all

    void Add(Currency line, double amount, bool isNull);
    static constexpr double kNullSize = -1;
};

/// The same of a table's columns, by their positions.
struct TableFindings {
    std::vector<ColumnFinding> Columns;
    std::set<Currency> WithResidual;  ///< lines whose cells took what rounding left
    bool AreNew = false;              ///< made by the calculation that goes on
};

/// What worksheets that are calculated together keep for their next calculation.
class KeptColumns {
public:
    /// The next calculation begins: what this one looked at is what that one goes by.
    void Begin();
    /// What has changed in a table. The calculation must ask ahead of changing the table.
    TableChanges ChangesOf(const TableCells& cells);
    TableFindings& FindingsOf(const TableCells& cells) { return findings_[cells.Name()]; }

private:
    static constexpr std::int64_t kNever = -1;  ///< ahead of all changes

    std::map<std::string, std::int64_t> before_;  ///< the last changes when it first looked
    std::map<std::string, std::int64_t> now_;
    std::map<std::string, TableFindings> findings_;
};

}  // namespace zolmara
