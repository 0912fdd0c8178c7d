#pragma once

// Expressions of the dialect, written out for SQLite together with the type of their value.
//
// Where a value meets a field, by comparison or by being stored, the field's type decides: a
// literal is converted when it is bound, anything else by a conversion function around it. So a
// CURRENCY field always holds and meets numbers of four decimals, and an index on it stays usable,
// since the field itself is never wrapped.

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "store/base/StoreError.h"
#include "store/base/TableSql.h"
#include "store/sql/Parameter.h"
#include "store/sql/SqlParser.h"

namespace zolmara::sql {

enum class ValueType { Unknown, Number, Currency, Integer, Text, Date };

/// An expression written out.
struct Written {
    std::string Sql;
    ValueType Type = ValueType::Unknown;
    bool IsColumn = false;
    const FieldDef* Field = nullptr;
};

/// A table that a statement's names are looked for in.
struct ScopeEntry {
    TablePtr Table;
    std::string Alias;
};

/// CDbl(Null): a new amount field without amounts.
inline constexpr std::string_view kNullAmount = "CAST(NULL AS REAL)";

ValueType TypeOfField(const FieldDef& field);
/// True where an aggregate function stands anywhere in the expression.
bool HoldsAggregate(const Expr& expr);
/// The field of a table; StoreError::NoSuchItem when it is not there.
const FieldDef& NeedField(const TableDef& table, const std::string& name);
/// A value on its way into a field of the type.
std::string Converted(const FieldDef& field, const Written& value);
[[noreturn]] void RefuseSql(const std::string& text);

/// A function of the dialect: {0}, {1}... in the pattern are its arguments.
struct FunctionRule {
    std::string_view Name;
    std::size_t Arguments;
    std::string_view Pattern;
    ValueType Result;  ///< Unknown means that of the argument TypeFrom
    std::size_t TypeFrom = 0;
};
/// The function of so many arguments; StoreError when there is none.
const FunctionRule& NeedFunction(const std::string& name, std::size_t arguments);

/// Writes the expressions of one statement. Literals become parameters, one for each way in which
/// a literal is bound.
class ExprWriter {
public:
    explicit ExprWriter(const TokenList& tokens) : tokens_(tokens) {}

    void AddTable(TablePtr table, std::string alias) {
        scope_.push_back({std::move(table), std::move(alias)});
    }
    const std::vector<ScopeEntry>& Scope() const { return scope_; }
    const std::vector<Parameter>& Parameters() const { return parameters_; }

    Written Write(const Expr& expr);
    /// Expressions with commas between them.
    std::string WriteList(const std::vector<ExprPtr>& exprs);
    Written WriteField(const ScopeEntry& entry, const FieldDef& field) const;
    /// An expression as the value of a field.
    std::string WriteInto(const FieldDef& field, const Expr& expr);

private:
    Written WriteColumn(const Expr& expr);
    std::string WriteParameter(const Expr& literal, BindAs how, int size = 0);
    ValueType LiteralType(const Expr& literal) const;

    Written WriteCall(const Expr& expr);
    Written WriteUnary(const Expr& expr);
    Written WriteBinary(const Expr& expr);
    Written WriteArithmetic(const Expr& expr);

    Written Peek(const Expr& expr);
    std::string WriteAgainst(const Expr& expr, const Written& written, const Written& other);
    Written WriteComparison(const std::string& op, const Expr& left, const Expr& right);
    Written WriteIn(const Expr& expr);
    Written WriteInByItem(const Expr& expr);
    Written WriteBetween(const Expr& expr);
    Written WriteBetweenByBound(const Expr& expr);
    Written WriteIsNull(const Expr& expr);

    const TokenList& tokens_;
    std::vector<ScopeEntry> scope_;
    std::vector<Parameter> parameters_;
};

}  // namespace zolmara::sql
