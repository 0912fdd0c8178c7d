// Functions and operators that give a value.

#include <fmt/format.h>

#include "core/Globals.h"
#include "store/sql/ExprWriter.h"

namespace zolmara::sql {
namespace {

constexpr FunctionRule kFunctions[] = {
    {"IIF", 3, "iif({0},{1},{2})", ValueType::Unknown, 1},
    {"ISNULL", 1, "({0} IS NULL)", ValueType::Integer},
    {"UCASE", 1, "zucase({0})", ValueType::Text},
    {"LCASE", 1, "zlcase({0})", ValueType::Text},
    {"TRIM", 1, "trim({0})", ValueType::Text},
    {"LTRIM", 1, "ltrim({0})", ValueType::Text},
    {"RTRIM", 1, "rtrim({0})", ValueType::Text},
    {"LEN", 1, "length({0})", ValueType::Integer},
    {"LEFT", 2, "zleft({0},{1})", ValueType::Text},
    {"RIGHT", 2, "zright({0},{1})", ValueType::Text},
    {"MID", 2, "zmid({0},{1})", ValueType::Text},
    {"MID", 3, "zmid({0},{1},{2})", ValueType::Text},
    {"SPACE", 1, "printf('%*s',{0},'')", ValueType::Text},
    {"FORMAT", 2, "zformat({0},{1})", ValueType::Text},
    {"INSTR", 2, "instr({0},{1})", ValueType::Integer},
    {"CHR", 1, "char({0})", ValueType::Text},
    {"CDBL", 1, "CAST({0} AS REAL)", ValueType::Number},
    {"INT", 1, "zint({0})", ValueType::Unknown},
    {"FIX", 1, "zfix({0})", ValueType::Unknown},
    {"ABS", 1, "abs({0})", ValueType::Unknown},
    {"SUM", 1, "zsum({0})", ValueType::Unknown},
    {"COUNT", 1, "count({0})", ValueType::Integer},
    {"MAX", 1, "max({0})", ValueType::Unknown},
    {"MIN", 1, "min({0})", ValueType::Unknown},
    {"AVG", 1, "avg({0})", ValueType::Number},
    {"FIRST", 1, "zfirst({0})", ValueType::Unknown},
    {"LAST", 1, "zlast({0})", ValueType::Unknown},
};

/// A choice between a fixed-point number and another is a plain number, lest the other lose
/// its decimals; a written value beside a field follows the field.
ValueType ChoiceType(const Expr& a, ValueType ofA, const Expr& b, ValueType ofB) {
    if (ofA == ofB || b.kind == Expr::Kind::Null) return ofA;
    if (a.kind == Expr::Kind::Null) return ofB;
    if (ofA != ValueType::Currency && ofB != ValueType::Currency) return ofA;
    const auto written = [](const Expr& expr, ValueType type) {
        return expr.kind == Expr::Kind::Literal && type == ValueType::Number;
    };
    return written(a, ofA) || written(b, ofB) ? ValueType::Currency : ValueType::Number;
}

}  // namespace

const FunctionRule& NeedFunction(const std::string& name, std::size_t arguments) {
    for (const auto& rule : kFunctions)
        if (rule.Name == name && rule.Arguments == arguments) return rule;
    RefuseSql(fmt::format("no such function: {} with {} arguments", name, arguments));
}

Written ExprWriter::WriteCall(const Expr& expr) {
    const auto& rule = NeedFunction(expr.Text, expr.Args.size());
    std::string sql(rule.Pattern);
    ValueType type = rule.Result;
    std::vector<ValueType> types;
    for (std::size_t i = 0; i < expr.Args.size(); ++i) {
        const Written arg = Write(*expr.Args[i]);
        sql = Replace(sql, fmt::format("{{{}}}", i), arg.Sql);
        types.push_back(arg.Type);
    }
    if (rule.Name == "IIF")
        type = ChoiceType(*expr.Args[1], types[1], *expr.Args[2], types[2]);
    else if (type == ValueType::Unknown && rule.TypeFrom < types.size())
        type = types[rule.TypeFrom];
    return {std::move(sql), type};
}

Written ExprWriter::WriteUnary(const Expr& expr) {
    const Written arg = Write(*expr.Args[0]);
    if (expr.Text == "NOT") return {"(NOT " + arg.Sql + ")", ValueType::Integer};
    const auto type = arg.Type == ValueType::Currency ? arg.Type : ValueType::Number;
    return {"(" + expr.Text + " " + arg.Sql + ")", type};
}

Written ExprWriter::WriteBinary(const Expr& expr) {
    const auto& op = expr.Text;
    if (op == "AND" || op == "OR")
        return {"(" + Write(*expr.Args[0]).Sql + " " + op + " " + Write(*expr.Args[1]).Sql + ")",
                ValueType::Integer};
    static constexpr std::string_view kArithmetic = "+-*/\\^&MOD";
    if (kArithmetic.find(op) != std::string_view::npos) return WriteArithmetic(expr);
    return WriteComparison(op, *expr.Args[0], *expr.Args[1]);
}

Written ExprWriter::WriteArithmetic(const Expr& expr) {
    struct Rule {
        std::string_view Op, Pattern;
        ValueType Type;
    };
    static constexpr Rule kRules[] = {
        {"+", "({0}+{1})", ValueType::Number},
        {"-", "({0}-{1})", ValueType::Number},
        {"*", "({0}*{1})", ValueType::Number},
        {"/", "(CAST({0} AS REAL)/{1})", ValueType::Number},
        {"\\", "(zint16({0})/zint16({1}))", ValueType::Integer},
        {"MOD", "(zint16({0})%zint16({1}))", ValueType::Integer},
        {"^", "zpow({0},{1})", ValueType::Number},
        {"&", "(ifnull(ztext({0}),'')||ifnull(ztext({1}),''))", ValueType::Text},
    };
    const auto left = Write(*expr.Args[0]);
    const auto right = Write(*expr.Args[1]);
    for (const auto& rule : kRules) {
        if (rule.Op != expr.Text) continue;
        return {Replace(Replace(rule.Pattern, "{0}", left.Sql), "{1}", right.Sql), rule.Type};
    }
    RefuseSql("unknown operator " + expr.Text);
}

}  // namespace zolmara::sql
