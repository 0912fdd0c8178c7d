#pragma once

// Turns a statement of the dialect into the SQLite statement of the same meaning.

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "store/base/TableSql.h"
#include "store/sql/Parameter.h"
#include "store/sql/SqlParser.h"

namespace zolmara::sql {

struct OutputColumn {
    FieldDef Field;
    bool Typed = true;  ///< false where a value's own type is all that is known
    int Source = -1;    ///< position of the table's field, in a dynaset
};

/// A statement made ready: SQLite's text, its parameters in order, and what it is about.
struct Translation {
    Statement::Kind Kind = Statement::Kind::Select;
    std::string Sql;
    std::vector<Parameter> Parameters;
    TablePtr Table;                ///< what an action writes to, what a dynaset shows
    std::vector<TablePtr> Tables;  ///< all that the statement names
    TableDef NewTable;             ///< of SELECT INTO
    bool CopiesFields = false;     ///< SELECT INTO of fields, whose values were checked, and Nulls
    std::vector<OutputColumn> Columns;
    /// A select whose rows are rows of one table: Sql gives their rowids.
    bool IsDynaset = false;
    // CREATE INDEX ... WITH DISALLOW NULL
    std::vector<std::string> RequiredFields;
};

/// The table of a name; null when there is none.
using FindTable = std::function<TablePtr(const std::string& name)>;

/// Translates a parsed statement against the tables as they are. StoreError for a table, field or
/// function that is not there. With `snapshot`, a select is never a dynaset.
Translation Translate(const Statement& statement, const FindTable& find, const TokenList& tokens,
                      bool snapshot = false);

/// The rowids of a table's rows for which a condition holds.
Translation TranslateFind(const Expr& condition, const TablePtr& table, const TokenList& tokens);

}  // namespace zolmara::sql
