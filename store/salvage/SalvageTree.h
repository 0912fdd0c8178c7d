#pragma once

// The walk through the trees of a damaged database file: which rows each table still has, and
// where rows are missing.

#include <cstdint>
#include <limits>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "store/base/TableDef.h"
#include "store/salvage/PageReader.h"
#include "store/salvage/RecordReader.h"

namespace zolmara::salvage {

/// What a column takes, by its declared type.
enum class Accepts { Anything, WholeNumber, Number, Text };

struct Column {
    std::string Name;
    Accepts Takes = Accepts::Anything;
    FieldDef Field{};
};

/// A table as its definition has it.
struct TableShape {
    std::string Name;
    PageNo Root = 0;
    std::vector<Column> Columns;
    int RowIdColumn = -1;     ///< a column that stands for the rowid and is stored as Null
    bool HasLineNum = false;  ///< the first column is LineNum or SeqNum
    bool IsSchema = false;    ///< the file's own list of tables and indexes
};

/// True where the table could hold the record.
bool FitsShape(const Record& record, const TableShape& table);

/// True where the column can hold the value; a column of a type that the store does not declare
/// holds anything.
bool CanHold(const Column& column, const Value& value);

/// True where the table could hold the record but for a few cells, each of which another kind of
/// value stands in.
bool NearlyFitsShape(const Record& record, const TableShape& table);

/// The record of a table's row. Where it cannot be read but for one bit of its header, what is
/// sure of it, with Lost for the rest.
std::optional<Record> ReadRow(const PageFile& file, PageNo page, const Cell& cell,
                              const TableShape& table);

/// Rowids above After, up to and with UpTo.
struct RowIdRange {
    std::int64_t After = std::numeric_limits<std::int64_t>::min();
    std::int64_t UpTo = std::numeric_limits<std::int64_t>::max();

    bool Holds(std::int64_t rowId) const { return After < rowId && rowId <= UpTo; }
};

/// A place where rows are missing, or may be.
struct Gap {
    RowIdRange Range;
    std::optional<std::size_t> Rows;  ///< how many, where that is known
};

/// A row that was found, and where.
struct RowPlace {
    std::int64_t RowId = 0;
    PageNo Page = 0;
    Cell Place;
    double LineNum = 0;     ///< where the table has one
    bool Confirmed = true;  ///< the table's index does not speak against it
    bool Loose = false;     ///< from a page that no tree led to
};

/// What an index tells of its table: the value of one column, by rowid.
struct IndexFacts {
    bool Complete = false;  ///< every page of the index was readable
    int Column = -1;        ///< position in the table; -1 without an index
    std::unordered_map<std::int64_t, Value> Keys;
};

/// A table's rows as found so far.
struct TableRows {
    TableShape Shape;
    IndexFacts Index;
    std::set<PageNo> Refused;   ///< pages that are not believed to be this table's
    std::vector<PageNo> Pages;  ///< pages that the walk took
    std::vector<RowPlace> Rows;
    std::vector<Gap> Gaps;
    std::map<std::size_t, std::size_t> Widths;  ///< records on sound pages, by number of columns
};

/// Pages that are taken, by number: true where a tree has them.
using PageSet = std::vector<bool>;

/// Walks a table from its root. Rows go into `table.Rows`, what cannot be read into
/// `table.Gaps`; the pages read are taken in `claimed`.
void WalkTable(const PageFile& file, TableRows& table, PageSet& claimed);

/// Reads an index of a table with rowids: the value of its first column for each rowid. `columns`
/// is the number of columns of the index without the rowid.
IndexFacts WalkIndex(const PageFile& file, PageNo root, std::size_t columns);

/// What an index says of a row.
enum class Witness { Silent, Confirms, Contradicts };
Witness AskIndex(const IndexFacts& index, std::int64_t rowId, const Record& record);

/// True where a complete index contradicts more than half of the rows.
bool IndexContradicts(const IndexFacts& index, const std::vector<std::int64_t>& rowIds,
                      const std::vector<Record>& records);

/// A row's place, with the line number that the record has.
RowPlace PlaceOf(const TableRows& table, PageNo page, const Cell& cell, const Record& record);

}  // namespace zolmara::salvage
