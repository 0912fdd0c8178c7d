#include "store/sql/SelectWriter.h"

#include <fmt/format.h>

#include <algorithm>

#include "core/Globals.h"

namespace zolmara::sql {
namespace {

void DescribeComputed(ValueType type, OutputColumn& column) {
    switch (type) {
        case ValueType::Number:
            column.Field.Type = FieldType::dbDouble;
            break;
        case ValueType::Currency:
            column.Field.Type = FieldType::dbCurrency;
            break;
        case ValueType::Integer:
            column.Field.Type = FieldType::dbInteger;
            break;
        case ValueType::Date:
            column.Field.Type = FieldType::dbDate;
            break;
        case ValueType::Text:
            column.Field.Type = FieldType::dbText;
            column.Field.Size = 255;
            break;
        case ValueType::Unknown:
            column.Typed = false;
            break;
    }
}

/// Over plain columns and without groups, HAVING chooses the rows ahead of the aggregate.
bool HavingStays(const Select& select) {
    return !select.GroupBy.empty() || HoldsAggregate(*select.Having);
}

}  // namespace

SelectWriter::SelectWriter(ExprWriter& expressions, const Select& select)
    : expressions_(expressions), select_(select) {
    for (const auto& item : select_.Items) {
        if (item.Value->kind == Expr::Kind::Star)
            WriteStar(*item.Value);
        else
            AddColumn(expressions_.Write(*item.Value), item);
    }
}

// --- Columns

void SelectWriter::WriteStar(const Expr& star) {
    bool found = false;
    for (const auto& entry : expressions_.Scope()) {
        if (!star.Qualifier.empty() && !SameText(star.Qualifier, entry.Alias)) continue;
        found = true;
        const auto& fields = entry.Table->Def.Fields;
        for (std::size_t i = 0; i < fields.size(); ++i) {
            columns_.push_back({fields[i], true, static_cast<int>(i)});
            columnSql_.push_back(expressions_.WriteField(entry, fields[i]).Sql);
        }
    }
    if (!found) RefuseSql("no such table: " + star.Qualifier);
}

void SelectWriter::AddColumn(const Written& value, const SelectItem& item) {
    OutputColumn column;
    column.Field.Name = !item.Alias.empty() ? item.Alias
                        : value.Field       ? value.Field->Name
                                            : fmt::format("Expr{}", 1000 + columnSql_.size());
    if (value.Field) {
        const auto name = column.Field.Name;
        column.Field = *value.Field;
        column.Field.Name = name;
        column.Source = expressions_.Scope().front().Table->Def.FieldIndex(value.Field->Name);
    } else {
        DescribeComputed(value.Type, column);
    }
    columns_.push_back(std::move(column));
    columnSql_.push_back(value.Sql);
}

std::string SelectWriter::ColumnList() const {
    std::string list;
    for (const auto& sql : columnSql_) list += (list.empty() ? "" : ",") + sql;
    return list;
}

bool SelectWriter::IsPlain() const {
    if (select_.From.size() != 1 || select_.Distinct || !select_.GroupBy.empty()) return false;
    return std::all_of(columns_.begin(), columns_.end(),
                       [](const OutputColumn& column) { return column.Source >= 0; });
}

bool SelectWriter::IsWholeTable() const {
    return select_.Items.size() == 1 && select_.Items[0].Value->kind == Expr::Kind::Star &&
           select_.From.size() == 1 && !select_.Where && !select_.Distinct && !select_.Top &&
           select_.GroupBy.empty() && !select_.Having && select_.OrderBy.empty();
}

// --- The query

std::string SelectWriter::Sql(const std::string& list) {
    auto sql = fmt::format("SELECT {}{}", select_.Distinct ? "DISTINCT " : "", list);
    if (!select_.From.empty()) sql += " FROM " + FromSql();
    sql += WhereSql();
    if (!select_.GroupBy.empty()) sql += " GROUP BY " + expressions_.WriteList(select_.GroupBy);
    if (select_.Having && HavingStays(select_))
        sql += " HAVING " + expressions_.Write(*select_.Having).Sql;
    sql += OrderSql();
    if (select_.Top) sql += fmt::format(" LIMIT {}", *select_.Top);
    return sql;
}

std::string SelectWriter::WhereSql() {
    std::string sql;
    if (select_.Where) sql = " WHERE " + expressions_.Write(*select_.Where).Sql;
    if (select_.Having && !HavingStays(select_))
        sql += (sql.empty() ? " WHERE " : " AND ") + expressions_.Write(*select_.Having).Sql;
    return sql;
}

std::string SelectWriter::FromSql() {
    std::string sql;
    for (std::size_t i = 0; i < select_.From.size(); ++i) {
        const auto& table = select_.From[i];
        if (i > 0) sql += !table.On ? "," : table.Left ? " LEFT JOIN " : " JOIN ";
        sql += Quoted(expressions_.Scope()[i].Table->Def.Name) + " AS " + Quoted(table.Alias);
        if (table.On) sql += " ON " + expressions_.Write(*table.On).Sql;
    }
    return sql;
}

std::string SelectWriter::OrderSql() {
    std::string list;
    for (const auto& item : select_.OrderBy) {
        list += (list.empty() ? "" : ",") + OrderExpr(*item.Value);
        if (item.Descending) list += " DESC";
    }
    if (select_.Top) list += TieBreaker(list.empty());
    if (IsRowByRow()) list += list.empty() ? "rowid" : ",rowid";
    return list.empty() ? "" : " ORDER BY " + list;
}

/// Rows of one table come as stored where the statement gives no order of its own; without a
/// word SQLite would take whatever index is nearest.
bool SelectWriter::IsRowByRow() const {
    if (select_.From.size() != 1 || select_.Distinct || !select_.GroupBy.empty()) return false;
    return std::none_of(select_.Items.begin(), select_.Items.end(),
                        [](const SelectItem& item) { return HoldsAggregate(*item.Value); });
}

/// An item's alias may stand in ORDER BY.
std::string SelectWriter::OrderExpr(const Expr& expr) {
    if (expr.kind == Expr::Kind::Column && expr.Qualifier.empty())
        for (const auto& item : select_.Items)
            if (!item.Alias.empty() && SameText(item.Alias, expr.Text))
                return expressions_.Write(*item.Value).Sql;
    return expressions_.Write(expr).Sql;
}

/// Of equal rows TOP takes the one with the lowest line.
std::string SelectWriter::TieBreaker(bool first) const {
    if (expressions_.Scope().size() != 1) return "";
    for (const std::string_view key : {"LineNum", "SeqNum"})
        if (expressions_.Scope().front().Table->Def.FieldIndex(key) >= 0)
            return (first ? "" : ",") + Quoted(key);
    return "";
}

}  // namespace zolmara::sql
