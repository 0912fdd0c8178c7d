// Where a value meets a field: by comparison, and on its way into it.

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "store/sql/ExprWriter.h"

namespace zolmara::sql {
namespace {

BindAs BindAsFor(ValueType type) {
    switch (type) {
        case ValueType::Currency:
            return BindAs::Currency;
        case ValueType::Text:
            return BindAs::Text;
        case ValueType::Date:
            return BindAs::Date;
        case ValueType::Number:
        case ValueType::Integer:
            return BindAs::Number;
        case ValueType::Unknown:
            break;
    }
    return BindAs::Plain;
}

BindAs StoreAs(const FieldDef& field) {
    return field.Type == FieldType::dbInteger ? BindAs::Integer : BindAsFor(TypeOfField(field));
}

std::string_view TextOrder(const Written& left, const Written& right) {
    const bool text = left.Type == ValueType::Text || right.Type == ValueType::Text;
    const bool ordered = left.IsColumn || right.IsColumn;
    return text && !ordered ? " COLLATE NOCASE" : "";
}

/// True where the value stands against both fixed-point and other numbers: each comparison
/// then has its own fit.
bool NeedsOwnFits(const Written& value, std::span<const Written> others) {
    if (value.Type == ValueType::Currency) return false;
    const auto fixed = [](const Written& other) { return other.Type == ValueType::Currency; };
    return std::any_of(others.begin(), others.end(), fixed) &&
           !std::all_of(others.begin(), others.end(), fixed);
}

bool IsNumber(const Written& value) {
    return value.Type == ValueType::Number || value.Type == ValueType::Currency ||
           value.Type == ValueType::Integer;
}

std::string Call(std::string_view function, const Written& value) {
    return fmt::format("{}({})", function, value.Sql);
}

std::string CutText(const FieldDef& field, const Written& value) {
    const bool fits =
        value.Field && value.Field->Type == FieldType::dbText && value.Field->Size <= field.Size;
    if (fits) return value.Sql;
    const auto text = value.Type == ValueType::Text ? value.Sql : Call("ztext", value);
    return fmt::format("substr({},1,{})", text, field.Size);
}

}  // namespace

// --- Comparison

/// One side of a comparison, fitted to the other side.
std::string ExprWriter::WriteAgainst(const Expr& expr, const Written& written,
                                     const Written& other) {
    if (expr.kind == Expr::Kind::Literal) return WriteParameter(expr, BindAsFor(other.Type));
    if (other.Type == ValueType::Currency && written.Type != ValueType::Currency)
        return "zcur(" + written.Sql + ")";
    return written.Sql;
}

/// A side is looked at for its type first, without leaving parameters behind.
Written ExprWriter::Peek(const Expr& expr) {
    const auto kept = parameters_;
    auto written = Write(expr);
    if (expr.kind == Expr::Kind::Literal) parameters_ = kept;
    return written;
}

Written ExprWriter::WriteComparison(const std::string& op, const Expr& left, const Expr& right) {
    const auto l = Peek(left);
    const auto r = Peek(right);
    auto sql = fmt::format("({}{}{}{})", WriteAgainst(left, l, r), TextOrder(l, r), op,
                           WriteAgainst(right, r, l));
    return {std::move(sql), ValueType::Integer};
}

Written ExprWriter::WriteIn(const Expr& expr) {
    const auto left = Peek(*expr.Args[0]);
    std::vector<Written> items;
    for (std::size_t i = 1; i < expr.Args.size(); ++i) items.push_back(Peek(*expr.Args[i]));
    if (NeedsOwnFits(left, items)) return WriteInByItem(expr);
    std::string list;
    std::string_view order;
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (order.empty()) order = TextOrder(left, items[i]);
        list += (i > 0 ? "," : "") + WriteAgainst(*expr.Args[i + 1], items[i], left);
    }
    return {fmt::format("({}{}{} IN ({}))", WriteAgainst(*expr.Args[0], left, items.front()), order,
                        expr.Negated ? " NOT" : "", list),
            ValueType::Integer};
}

Written ExprWriter::WriteInByItem(const Expr& expr) {
    std::string sql;
    for (std::size_t i = 1; i < expr.Args.size(); ++i)
        sql += (i > 1 ? " OR " : "") + WriteComparison("=", *expr.Args[0], *expr.Args[i]).Sql;
    return {fmt::format("({}({}))", expr.Negated ? "NOT " : "", sql), ValueType::Integer};
}

Written ExprWriter::WriteBetween(const Expr& expr) {
    const auto value = Peek(*expr.Args[0]);
    const std::array bounds{Peek(*expr.Args[1]), Peek(*expr.Args[2])};
    const auto& [low, high] = bounds;
    if (NeedsOwnFits(value, bounds)) return WriteBetweenByBound(expr);
    return {fmt::format("({}{}{} BETWEEN {} AND {})", WriteAgainst(*expr.Args[0], value, low),
                        TextOrder(value, low), expr.Negated ? " NOT" : "",
                        WriteAgainst(*expr.Args[1], low, value),
                        WriteAgainst(*expr.Args[2], high, value)),
            ValueType::Integer};
}

Written ExprWriter::WriteBetweenByBound(const Expr& expr) {
    return {fmt::format("({}({} AND {}))", expr.Negated ? "NOT " : "",
                        WriteComparison(">=", *expr.Args[0], *expr.Args[1]).Sql,
                        WriteComparison("<=", *expr.Args[0], *expr.Args[2]).Sql),
            ValueType::Integer};
}

Written ExprWriter::WriteIsNull(const Expr& expr) {
    return {fmt::format("({} IS{} NULL)", Write(*expr.Args[0]).Sql, expr.Negated ? " NOT" : ""),
            ValueType::Integer};
}

// --- Storing

std::string ExprWriter::WriteInto(const FieldDef& field, const Expr& expr) {
    if (expr.kind == Expr::Kind::Literal) return WriteParameter(expr, StoreAs(field), field.Size);
    return Converted(field, Write(expr));
}

std::string Converted(const FieldDef& field, const Written& value) {
    if (value.Sql == "NULL") return value.Sql;
    switch (field.Type) {
        case FieldType::dbCurrency:
            return value.IsColumn && value.Type == ValueType::Currency ? value.Sql
                                                                       : "zcur(" + value.Sql + ")";
        case FieldType::dbDouble:
            return IsNumber(value) ? value.Sql : Call("znum", value);
        case FieldType::dbInteger:
            return value.IsColumn && value.Type == ValueType::Integer ? value.Sql
                                                                      : Call("zint16", value);
        case FieldType::dbDate:
            return value.Type == ValueType::Date ? value.Sql : Call("zdate", value);
        case FieldType::dbMemo:
            return value.Type == ValueType::Text ? value.Sql : Call("ztext", value);
        case FieldType::dbText:
            return CutText(field, value);
    }
    return value.Sql;
}

}  // namespace zolmara::sql
