#include "store/sql/ExprWriter.h"

#include <fmt/format.h>

#include <algorithm>

#include "core/Globals.h"

namespace zolmara::sql {
namespace {

bool IsAggregateName(const std::string& name) {
    static constexpr std::string_view kNames[] = {"SUM", "COUNT", "MAX", "MIN",
                                                  "AVG", "FIRST", "LAST"};
    return std::find(std::begin(kNames), std::end(kNames), name) != std::end(kNames);
}

std::string ColumnText(const Expr& expr) {
    return expr.Qualifier.empty() ? expr.Text : expr.Qualifier + "." + expr.Text;
}

}  // namespace

void RefuseSql(const std::string& text) { throw StoreError(StoreError::Kind::Other, text); }

ValueType TypeOfField(const FieldDef& field) {
    switch (field.Type) {
        case FieldType::dbInteger:
            return ValueType::Integer;
        case FieldType::dbCurrency:
            return ValueType::Currency;
        case FieldType::dbDouble:
            return ValueType::Number;
        case FieldType::dbText:
        case FieldType::dbMemo:
            return ValueType::Text;
        case FieldType::dbDate:
            return ValueType::Date;
    }
    return ValueType::Unknown;
}

bool HoldsAggregate(const Expr& expr) {
    if (expr.kind == Expr::Kind::Call && IsAggregateName(expr.Text)) return true;
    return std::any_of(expr.Args.begin(), expr.Args.end(),
                       [](const ExprPtr& arg) { return HoldsAggregate(*arg); });
}

const FieldDef& NeedField(const TableDef& table, const std::string& name) {
    const int index = table.FieldIndex(name);
    if (index < 0)
        throw StoreError(StoreError::Kind::NoSuchItem,
                         "no such column: " + table.Name + "." + name);
    return table.Fields[static_cast<std::size_t>(index)];
}

// --- Names and literals

Written ExprWriter::WriteField(const ScopeEntry& entry, const FieldDef& field) const {
    const auto prefix = scope_.size() > 1 ? Quoted(entry.Alias) + "." : "";
    return {prefix + Quoted(field.Name), TypeOfField(field), true, &field};
}

Written ExprWriter::WriteColumn(const Expr& expr) {
    const ScopeEntry* found = nullptr;
    const FieldDef* field = nullptr;
    for (const auto& entry : scope_) {
        if (!expr.Qualifier.empty() && !SameText(expr.Qualifier, entry.Alias)) continue;
        const int index = entry.Table->Def.FieldIndex(expr.Text);
        if (index < 0) continue;
        if (found) RefuseSql("ambiguous column name: " + expr.Text);
        found = &entry;
        field = &entry.Table->Def.Fields[static_cast<std::size_t>(index)];
    }
    if (!found)
        throw StoreError(StoreError::Kind::NoSuchItem, "no such column: " + ColumnText(expr));
    return WriteField(*found, *field);
}

std::string ExprWriter::WriteParameter(const Expr& literal, BindAs how, int size) {
    const Parameter parameter{literal.Number, how, size};
    auto& all = parameters_;
    const auto found = std::find(all.begin(), all.end(), parameter);
    const auto position = found - all.begin() + 1;
    if (found == all.end()) all.push_back(parameter);
    return fmt::format("?{}", position);
}

ValueType ExprWriter::LiteralType(const Expr& literal) const {
    switch (tokens_.Kinds[static_cast<std::size_t>(literal.Number)]) {
        case LiteralKind::Number:
            return ValueType::Number;
        case LiteralKind::Text:
            return ValueType::Text;
        case LiteralKind::Date:
            return ValueType::Date;
        case LiteralKind::Argument:
            break;
    }
    return ValueType::Unknown;
}

// --- Expressions

Written ExprWriter::Write(const Expr& expr) {
    switch (expr.kind) {
        case Expr::Kind::Literal:
            return {WriteParameter(expr, BindAs::Plain), LiteralType(expr)};
        case Expr::Kind::Null:
            return {"NULL"};
        case Expr::Kind::Truth:
            return {fmt::format("({})", expr.Number), ValueType::Integer};
        case Expr::Kind::Column:
            return WriteColumn(expr);
        case Expr::Kind::Star:
            return {"*"};
        case Expr::Kind::Call:
            return WriteCall(expr);
        case Expr::Kind::Unary:
            return WriteUnary(expr);
        case Expr::Kind::Binary:
            return WriteBinary(expr);
        case Expr::Kind::In:
            return WriteIn(expr);
        case Expr::Kind::Between:
            return WriteBetween(expr);
        case Expr::Kind::IsNull:
            return WriteIsNull(expr);
    }
    RefuseSql("unknown expression");
}

std::string ExprWriter::WriteList(const std::vector<ExprPtr>& exprs) {
    std::string list;
    for (const auto& expr : exprs) list += (list.empty() ? "" : ",") + Write(*expr).Sql;
    return list;
}

}  // namespace zolmara::sql
