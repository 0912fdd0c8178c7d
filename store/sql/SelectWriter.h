#pragma once

// SELECT, by itself or as the source of another statement.

#include <string>
#include <vector>

#include "store/sql/ExprWriter.h"
#include "store/sql/SqlTranslator.h"

namespace zolmara::sql {

/// Writes a query over the tables that the writer of its expressions knows.
class SelectWriter {
public:
    /// Finds the query's columns.
    SelectWriter(ExprWriter& expressions, const Select& select);

    const std::vector<OutputColumn>& Columns() const { return columns_; }
    /// The columns as written out, in their order.
    const std::vector<std::string>& ColumnSql() const { return columnSql_; }
    std::string ColumnList() const;
    /// Plain fields of one table, row by row: what can be edited through a recordset.
    bool IsPlain() const;
    /// A table as it is: SQLite then copies its records without taking them apart.
    bool IsWholeTable() const;
    /// The whole query with this list of columns.
    std::string Sql(const std::string& list);

private:
    void WriteStar(const Expr& star);
    void AddColumn(const Written& value, const SelectItem& item);
    std::string WhereSql();
    std::string FromSql();
    std::string OrderSql();
    bool IsRowByRow() const;
    std::string OrderExpr(const Expr& expr);
    std::string TieBreaker(bool first) const;

    ExprWriter& expressions_;
    const Select& select_;
    std::vector<OutputColumn> columns_;
    std::vector<std::string> columnSql_;
};

}  // namespace zolmara::sql
