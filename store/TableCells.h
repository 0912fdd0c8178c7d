#pragma once

// The numbers of a table in memory, for calculations: read once, changed there, and written back
// where a row has come out otherwise. They are kept as long as the file is open and follow what
// anybody writes, row by row where that is told, else by reading again.

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/Currency.h"
#include "store/Dao.h"
#include "store/FormerNumbers.h"

struct sqlite3_value;

namespace zolmara {

struct TableInfo;
class SqliteStatement;

class TableCells {
public:
    /// A row's place among the others of the table; it stays while nobody adds or deletes rows.
    using Row = std::size_t;

    const std::string& Name() const;
    int FieldCount() const { return static_cast<int>(width_); }
    const std::string& FieldName(int position) const;
    /// Position of a field by name, without regard to case; -1 when it is not there.
    int Position(std::string_view field) const;

    /// All rows, in the order of their lines: the table's first field.
    const std::vector<Row>& Rows() const { return order_; }
    Currency Line(Row row) const { return lines_[row]; }
    /// How many there are. As stored they are numbered from 0 on.
    std::size_t RowCount() const { return lines_.size(); }
    /// The first row on a line.
    std::optional<Row> RowOn(Currency line) const;

    /// A number, 0 for Null. Texts and dates are not kept and count as Null.
    double Amount(Row row, int position) const;
    bool IsNull(Row row, int position) const;
    /// The same as a recordset has it, by the field's type.
    Variant Value(Row row, int position) const;
    /// The column's sum over the lines for which a condition holds, as Sum in a statement adds it
    /// up; 0 without any. On a row without a line no condition holds.
    template <class IsWanted>
    double Sum(int position, const IsWanted& isWanted) const {
        const bool byLine = HasIndexOfLines();
        double sum = 0;
        for (Row i = 0; i < order_.size(); ++i) {
            const Row row = byLine ? order_[i] : i;
            if (!IsNull(row, 0) && isWanted(lines_[row])) sum += Amount(row, position);
        }
        return sum;
    }
    /// The same over the lines below one.
    double SumBelow(int position, Currency below) const {
        return Sum(position, [&](Currency line) { return line < below; });
    }
    /// All numbers of a row, by position; Null is no number.
    std::span<const double> Amounts(Row row) const { return {CellsOf(row), width_}; }
    /// The row that the store knows by this number.
    std::optional<Row> RowWithId(std::int64_t rowid) const;
    /// False once somebody has written to the table: ask for the cells anew.
    bool AreCurrent() const { return IsInStep() && dirty_.empty(); }
    /// True where a text of the table may hold a line break.
    bool HasLineBreaks() const { return lineBreaks_; }

    // Changes are numbered in one rising order over all tables of the file. What was changed and
    // changed back by the same work has not changed. Where rows come or go, and where the table is
    // read anew, all of it has changed. What work is about to change has not until its end.
    /// The last change to a number of a column, to one of a row, and to any of the table.
    std::int64_t ColumnChange(int position) const {
        return columnChanges_[static_cast<std::size_t>(position)];
    }
    std::int64_t RowChange(Row row) const { return rowChanges_[row]; }
    std::int64_t LastChange() const { return lastChange_; }
    /// The last one to the lines or the fields.
    std::int64_t ShapeChange() const { return shapeChange_; }

private:
    friend class CellCache;
    friend class RowEdit;

    double* CellsOf(Row row) { return cells_.data() + row * width_; }
    const double* CellsOf(Row row) const { return cells_.data() + row * width_; }
    void BringUpToDate(Database::Impl& db, const std::shared_ptr<TableInfo>& table);
    void Load();
    void ReadDirtyRows();
    std::function<void(std::int64_t, std::size_t, std::span<sqlite3_value* const>)> Taker();
    void Take(std::int64_t rowid, std::size_t first, std::span<sqlite3_value* const> values);
    double NumberIn(sqlite3_value* value);
    void PutInOrder();
    bool HasIndexOfLines() const;
    bool IsInStep() const;
    void RowWritten(bool isUpdate, std::int64_t rowid);
    void NumberChanges(Row row, std::span<const double> before);
    void ForgetWhatStands();
    std::vector<int> NumberChanges();
    void Write();
    void WriteRows(const std::vector<int>& fields);
    void WriteRow(SqliteStatement& update, const std::vector<int>& fields, Row row);
    bool AreAllNumbers(const std::vector<int>& fields) const;
    void GiveUp();

    /// Past so many rows that were written to, the table is read anew.
    static constexpr std::size_t kMostDirty = 256;

    Database::Impl* db_ = nullptr;
    std::shared_ptr<TableInfo> info_;
    std::size_t width_ = 0;
    std::vector<std::int64_t> rowids_;  ///< rising
    std::vector<Currency> lines_;
    std::vector<double> cells_;  ///< row by row; Null is no number
    std::vector<Row> order_;
    FormerNumbers edit_;  ///< of the row in RowEdit, in the order in which they were replaced
    std::map<Row, FormerNumbers> before_;  ///< of rows that were changed, as the store has them
    std::vector<std::int64_t> dirty_;      ///< rowids written to by others
    std::int64_t version_ = 0;             ///< of the table, up to which every write is known
    std::vector<char> kinds_;              ///< of the fields: what is kept of them
    std::vector<std::int64_t> columnChanges_;
    std::vector<std::int64_t> rowChanges_;
    std::int64_t lastChange_ = 0;
    std::int64_t shapeChange_ = 0;
    Row reading_ = 0;
    /// A statement sums by the index of the lines, and not through the rows. Known when asked for.
    mutable std::optional<bool> hasIndexOfLines_;
    bool lineBreaks_ = false;
    bool strange_ = false;  ///< what is no number stands in a number's place
    bool lost_ = true;
    bool writing_ = false;
};

/// A row while it is changed. One at a time of a table. Without an Update it is as it was.
class RowEdit {
public:
    RowEdit(TableCells& cells, TableCells::Row row);
    ~RowEdit();
    RowEdit(const RowEdit&) = delete;
    RowEdit& operator=(const RowEdit&) = delete;

    double Amount(int position) const;
    /// StoreError for what no field can hold, in the words of a recordset.
    void Set(int position, double amount);
    void SetNull(int position);
    /// What a statement gives the field. What no field can hold is refused when it is written.
    void Put(int position, double amount);
    /// True once a cell was given another number than it had.
    bool HasChanged() const { return !cells_.edit_.empty(); }
    void Update();

    /// The cell as it stands in the row; no number where it is Null, so that a sum with it is Null.
    double OrNull(int position) const;

private:
    TableCells& cells_;
    TableCells::Row row_;
};

/// Runs work that changes cells, and then writes the rows that differ from the store's, each once;
/// also when the work fails. Within another's work the rows are written at the end of that.
void ChangeCells(Database& db, const std::function<void()>& work);

/// The numbers of a table as the file has them now. The reference holds as long as the file is
/// open; its content until the table is written to by other means. StoreError::NoSuchItem.
TableCells& CellsOf(Database& db, std::string_view table);

/// The same where they are in memory already, none where they would have to be read for it. Behind
/// the end of the file they are there still, and not current. StoreError::NoSuchItem.
std::shared_ptr<const TableCells> KeptCellsOf(Database& db, std::string_view table);

/// Those of all tables that were asked for.
class CellCache {
public:
    TableCells& Of(Database::Impl& db, std::string_view name);
    std::shared_ptr<const TableCells> IfKept(Database::Impl& db, std::string_view name);
    /// A row was inserted, deleted or updated, by whatever statement of this program.
    void RowWritten(bool isUpdate, const char* table, std::int64_t rowid);
    /// The table's version has grown by one, by rows that were told.
    void VersionGrew(const TableInfo& table);
    /// Versions grow that stand for nothing.
    void Over(const std::function<void()>& touch);
    void Clear() { tables_.clear(); }
    /// Runs work that changes cells; see ChangeCells.
    void Change(const std::function<void()>& work);
    /// The number of a change that is made now.
    std::int64_t NextChange() { return ++changes_; }

private:
    void Write();

    int depth_ = 0;
    std::int64_t changes_ = 0;
    std::map<std::string, std::shared_ptr<TableCells>, std::less<>> tables_;
};

}  // namespace zolmara
