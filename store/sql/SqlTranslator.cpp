// Method: an expression is written out together with the type of its value. Where a value meets
// a field, by comparison or by being stored, the field's type decides: a literal is converted
// when it is bound, anything else by a conversion function around it. So a CURRENCY field always
// holds and meets numbers of four decimals, and an index on it stays usable, since the field
// itself is never wrapped.
//
// An UPDATE is given the condition that some field really changes. A statement that stores what
// is there already then touches no page.

#include "store/sql/SqlTranslator.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <span>

#include "core/Globals.h"

namespace zolmara::sql {
namespace {

enum class ValueType { Unknown, Number, Currency, Integer, Text, Date };

struct Written {
    std::string Sql;
    ValueType Type = ValueType::Unknown;
    bool IsColumn = false;
    const FieldDef* Field = nullptr;
};

[[noreturn]] void Refuse(const std::string& text) {
    throw StoreError(StoreError::Kind::Other, text);
}

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

bool IsAggregateName(const std::string& name) {
    static constexpr std::string_view kNames[] = {"SUM", "COUNT", "MAX", "MIN",
                                                  "AVG", "FIRST", "LAST"};
    return std::find(std::begin(kNames), std::end(kNames), name) != std::end(kNames);
}

bool HoldsAggregate(const Expr& expr) {
    if (expr.kind == Expr::Kind::Call && IsAggregateName(expr.Text)) return true;
    return std::any_of(expr.Args.begin(), expr.Args.end(),
                       [](const ExprPtr& arg) { return HoldsAggregate(*arg); });
}

/// A function of the dialect: {0}, {1}... in the pattern are its arguments.
struct FunctionRule {
    std::string_view Name;
    std::size_t Arguments;
    std::string_view Pattern;
    ValueType Result;  ///< Unknown means that of the argument TypeFrom
    std::size_t TypeFrom = 0;
};
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

/// CDbl(Null): a new amount field without amounts.
constexpr std::string_view kNullAmount = "CAST(NULL AS REAL)";

struct ScopeEntry {
    TablePtr Table;
    std::string Alias;
};

class Translator {
public:
    Translator(Catalog& catalog, const TokenList& tokens) : catalog_(&catalog), tokens_(tokens) {}
    explicit Translator(const TokenList& tokens) : tokens_(tokens) {}

    Translation Run(const Statement& statement, bool snapshot) {
        result_.Kind = statement.kind;
        switch (statement.kind) {
            case Statement::Kind::Select:
                TranslateSelect(statement.Query, snapshot);
                break;
            case Statement::Kind::SelectInto:
                TranslateSelectInto(statement);
                break;
            case Statement::Kind::InsertValues:
                TranslateInsertValues(statement);
                break;
            case Statement::Kind::InsertSelect:
                TranslateInsertSelect(statement);
                break;
            case Statement::Kind::Update:
                TranslateUpdate(statement);
                break;
            case Statement::Kind::Delete:
                TranslateDelete(statement);
                break;
            case Statement::Kind::CreateIndex:
                TranslateCreateIndex(statement);
                break;
            case Statement::Kind::DropTable:
                result_.Table = NeedTable(statement.Table);
                break;
        }
        return std::move(result_);
    }

    Translation RunFind(const Expr& condition, const TablePtr& table) {
        scope_.push_back({table, table->Def.Name});
        result_.Table = table;
        result_.Sql = fmt::format("SELECT rowid FROM {} WHERE {}", Quoted(table->Def.Name),
                                  Write(condition).Sql);
        return std::move(result_);
    }

private:
    // --- Tables and fields

    TablePtr NeedTable(const std::string& name) {
        if (auto table = catalog_->Find(name)) return table;
        throw StoreError(StoreError::Kind::NoSuchItem, "no such table: " + name);
    }

    const FieldDef& NeedField(const TableDef& table, const std::string& name) {
        const int index = table.FieldIndex(name);
        if (index < 0)
            throw StoreError(StoreError::Kind::NoSuchItem,
                             "no such column: " + table.Name + "." + name);
        return table.Fields[static_cast<std::size_t>(index)];
    }

    void OpenScope(const std::vector<TableRef>& tables) {
        for (const auto& table : tables) scope_.push_back({NeedTable(table.Name), table.Alias});
    }

    Written WriteField(const ScopeEntry& entry, const FieldDef& field) const {
        const auto prefix = scope_.size() > 1 ? Quoted(entry.Alias) + "." : "";
        return {prefix + Quoted(field.Name), TypeOfField(field), true, &field};
    }

    Written WriteColumn(const Expr& expr) {
        const ScopeEntry* found = nullptr;
        const FieldDef* field = nullptr;
        for (const auto& entry : scope_) {
            if (!expr.Qualifier.empty() && !SameText(expr.Qualifier, entry.Alias)) continue;
            const int index = entry.Table->Def.FieldIndex(expr.Text);
            if (index < 0) continue;
            if (found) Refuse("ambiguous column name: " + expr.Text);
            found = &entry;
            field = &entry.Table->Def.Fields[static_cast<std::size_t>(index)];
        }
        if (!found)
            throw StoreError(StoreError::Kind::NoSuchItem, "no such column: " + ColumnText(expr));
        return WriteField(*found, *field);
    }

    static std::string ColumnText(const Expr& expr) {
        return expr.Qualifier.empty() ? expr.Text : expr.Qualifier + "." + expr.Text;
    }

    // --- Literals

    std::string WriteParameter(const Expr& literal, BindAs how, int size = 0) {
        const Parameter parameter{literal.Number, how, size};
        auto& all = result_.Parameters;
        const auto found = std::find(all.begin(), all.end(), parameter);
        const auto position = found - all.begin() + 1;
        if (found == all.end()) all.push_back(parameter);
        return fmt::format("?{}", position);
    }

    static BindAs BindAsFor(ValueType type) {
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

    ValueType LiteralType(const Expr& literal) const {
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

    Written Write(const Expr& expr) {
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
        Refuse("unknown expression");
    }

    Written WriteCall(const Expr& expr) {
        for (const auto& rule : kFunctions) {
            if (rule.Name != expr.Text || rule.Arguments != expr.Args.size()) continue;
            return ApplyRule(rule, expr);
        }
        Refuse(fmt::format("no such function: {} with {} arguments", expr.Text, expr.Args.size()));
    }

    Written ApplyRule(const FunctionRule& rule, const Expr& expr) {
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

    /// A choice between a fixed-point number and another is a plain number, lest the other lose
    /// its decimals; a written value beside a field follows the field.
    static ValueType ChoiceType(const Expr& a, ValueType ofA, const Expr& b, ValueType ofB) {
        if (ofA == ofB || b.kind == Expr::Kind::Null) return ofA;
        if (a.kind == Expr::Kind::Null) return ofB;
        if (ofA != ValueType::Currency && ofB != ValueType::Currency) return ofA;
        const auto written = [](const Expr& expr, ValueType type) {
            return expr.kind == Expr::Kind::Literal && type == ValueType::Number;
        };
        return written(a, ofA) || written(b, ofB) ? ValueType::Currency : ValueType::Number;
    }

    Written WriteUnary(const Expr& expr) {
        const Written arg = Write(*expr.Args[0]);
        if (expr.Text == "NOT") return {"(NOT " + arg.Sql + ")", ValueType::Integer};
        const auto type = arg.Type == ValueType::Currency ? arg.Type : ValueType::Number;
        return {"(" + expr.Text + " " + arg.Sql + ")", type};
    }

    Written WriteBinary(const Expr& expr) {
        const auto& op = expr.Text;
        if (op == "AND" || op == "OR")
            return {
                "(" + Write(*expr.Args[0]).Sql + " " + op + " " + Write(*expr.Args[1]).Sql + ")",
                ValueType::Integer};
        static constexpr std::string_view kArithmetic = "+-*/\\^&MOD";
        if (kArithmetic.find(op) != std::string_view::npos) return WriteArithmetic(expr);
        return WriteComparison(op, *expr.Args[0], *expr.Args[1]);
    }

    Written WriteArithmetic(const Expr& expr) {
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
        Refuse("unknown operator " + expr.Text);
    }

    /// One side of a comparison, fitted to the other side.
    std::string WriteAgainst(const Expr& expr, const Written& written, const Written& other) {
        if (expr.kind == Expr::Kind::Literal) return WriteParameter(expr, BindAsFor(other.Type));
        if (other.Type == ValueType::Currency && written.Type != ValueType::Currency)
            return "zcur(" + written.Sql + ")";
        return written.Sql;
    }

    /// A side is looked at for its type first, without leaving parameters behind.
    Written Peek(const Expr& expr) {
        const auto kept = result_.Parameters;
        auto written = Write(expr);
        if (expr.kind == Expr::Kind::Literal) result_.Parameters = kept;
        return written;
    }

    static std::string_view TextOrder(const Written& left, const Written& right) {
        const bool text = left.Type == ValueType::Text || right.Type == ValueType::Text;
        const bool ordered = left.IsColumn || right.IsColumn;
        return text && !ordered ? " COLLATE NOCASE" : "";
    }

    Written WriteComparison(const std::string& op, const Expr& left, const Expr& right) {
        const auto l = Peek(left);
        const auto r = Peek(right);
        auto sql = fmt::format("({}{}{}{})", WriteAgainst(left, l, r), TextOrder(l, r), op,
                               WriteAgainst(right, r, l));
        return {std::move(sql), ValueType::Integer};
    }

    /// True where the value stands against both fixed-point and other numbers: each comparison
    /// then has its own fit.
    static bool NeedsOwnFits(const Written& value, std::span<const Written> others) {
        if (value.Type == ValueType::Currency) return false;
        const auto fixed = [](const Written& other) { return other.Type == ValueType::Currency; };
        return std::any_of(others.begin(), others.end(), fixed) &&
               !std::all_of(others.begin(), others.end(), fixed);
    }

    Written WriteIn(const Expr& expr) {
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
        return {fmt::format("({}{}{} IN ({}))", WriteAgainst(*expr.Args[0], left, items.front()),
                            order, expr.Negated ? " NOT" : "", list),
                ValueType::Integer};
    }

    Written WriteInByItem(const Expr& expr) {
        std::string sql;
        for (std::size_t i = 1; i < expr.Args.size(); ++i)
            sql += (i > 1 ? " OR " : "") + WriteComparison("=", *expr.Args[0], *expr.Args[i]).Sql;
        return {fmt::format("({}({}))", expr.Negated ? "NOT " : "", sql), ValueType::Integer};
    }

    Written WriteBetween(const Expr& expr) {
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

    Written WriteBetweenByBound(const Expr& expr) {
        return {fmt::format("({}({} AND {}))", expr.Negated ? "NOT " : "",
                            WriteComparison(">=", *expr.Args[0], *expr.Args[1]).Sql,
                            WriteComparison("<=", *expr.Args[0], *expr.Args[2]).Sql),
                ValueType::Integer};
    }

    Written WriteIsNull(const Expr& expr) {
        return {fmt::format("({} IS{} NULL)", Write(*expr.Args[0]).Sql, expr.Negated ? " NOT" : ""),
                ValueType::Integer};
    }

    // --- Storing

    /// A value on its way into a field.
    std::string WriteInto(const FieldDef& field, const Expr& expr) {
        if (expr.kind == Expr::Kind::Literal)
            return WriteParameter(expr, StoreAs(field), field.Size);
        return Converted(field, Write(expr));
    }

    static BindAs StoreAs(const FieldDef& field) {
        return field.Type == FieldType::dbInteger ? BindAs::Integer : BindAsFor(TypeOfField(field));
    }

    static std::string Converted(const FieldDef& field, const Written& value) {
        if (value.Sql == "NULL") return value.Sql;
        switch (field.Type) {
            case FieldType::dbCurrency:
                return value.IsColumn && value.Type == ValueType::Currency
                           ? value.Sql
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

    static bool IsNumber(const Written& value) {
        return value.Type == ValueType::Number || value.Type == ValueType::Currency ||
               value.Type == ValueType::Integer;
    }

    static std::string Call(std::string_view function, const Written& value) {
        return fmt::format("{}({})", function, value.Sql);
    }

    static std::string CutText(const FieldDef& field, const Written& value) {
        const bool fits = value.Field && value.Field->Type == FieldType::dbText &&
                          value.Field->Size <= field.Size;
        if (fits) return value.Sql;
        const auto text = value.Type == ValueType::Text ? value.Sql : Call("ztext", value);
        return fmt::format("substr({},1,{})", text, field.Size);
    }

    // --- SELECT

    void TranslateSelect(const Select& select, bool snapshot) {
        OpenScope(select.From);
        WriteColumns(select);
        result_.IsDynaset = !snapshot && IsPlain(select);
        if (scope_.size() == 1) result_.Table = scope_.front().Table;
        const auto list = result_.IsDynaset ? std::string("rowid") : ColumnList();
        result_.Sql = SelectSql(select, list);
    }

    /// Plain fields of one table, row by row: what can be edited through a recordset.
    bool IsPlain(const Select& select) const {
        if (select.From.size() != 1 || select.Distinct || !select.GroupBy.empty()) return false;
        return std::all_of(result_.Columns.begin(), result_.Columns.end(),
                           [](const OutputColumn& column) { return column.Source >= 0; });
    }

    void WriteColumns(const Select& select) {
        for (const auto& item : select.Items) {
            if (item.Value->kind == Expr::Kind::Star) {
                WriteStar(*item.Value);
            } else {
                AddColumn(Write(*item.Value), item);
            }
        }
    }

    void WriteStar(const Expr& star) {
        bool found = false;
        for (const auto& entry : scope_) {
            if (!star.Qualifier.empty() && !SameText(star.Qualifier, entry.Alias)) continue;
            found = true;
            const auto& fields = entry.Table->Def.Fields;
            for (std::size_t i = 0; i < fields.size(); ++i) {
                result_.Columns.push_back({fields[i], true, static_cast<int>(i)});
                columnSql_.push_back(WriteField(entry, fields[i]).Sql);
            }
        }
        if (!found) Refuse("no such table: " + star.Qualifier);
    }

    void AddColumn(const Written& value, const SelectItem& item) {
        OutputColumn column;
        column.Field.Name = !item.Alias.empty() ? item.Alias
                            : value.Field       ? value.Field->Name
                                                : fmt::format("Expr{}", 1000 + columnSql_.size());
        if (value.Field) {
            const auto name = column.Field.Name;
            column.Field = *value.Field;
            column.Field.Name = name;
            column.Source = scope_.front().Table->Def.FieldIndex(value.Field->Name);
        } else {
            DescribeComputed(value.Type, column);
        }
        result_.Columns.push_back(std::move(column));
        columnSql_.push_back(value.Sql);
    }

    static void DescribeComputed(ValueType type, OutputColumn& column) {
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

    std::string ColumnList() const {
        std::string list;
        for (const auto& sql : columnSql_) list += (list.empty() ? "" : ",") + sql;
        return list;
    }

    std::string SelectSql(const Select& select, const std::string& list) {
        auto sql = fmt::format("SELECT {}{}", select.Distinct ? "DISTINCT " : "", list);
        if (!select.From.empty()) sql += " FROM " + FromSql(select.From);
        sql += WhereSql(select);
        if (!select.GroupBy.empty()) sql += " GROUP BY " + ExprList(select.GroupBy);
        if (select.Having && HavingStays(select)) sql += " HAVING " + Write(*select.Having).Sql;
        sql += OrderSql(select);
        if (select.Top) sql += fmt::format(" LIMIT {}", *select.Top);
        return sql;
    }

    /// Over plain columns and without groups, HAVING chooses the rows ahead of the aggregate.
    static bool HavingStays(const Select& select) {
        return !select.GroupBy.empty() || HoldsAggregate(*select.Having);
    }

    std::string WhereSql(const Select& select) {
        std::string sql;
        if (select.Where) sql = " WHERE " + Write(*select.Where).Sql;
        if (select.Having && !HavingStays(select))
            sql += (sql.empty() ? " WHERE " : " AND ") + Write(*select.Having).Sql;
        return sql;
    }

    std::string ExprList(const std::vector<ExprPtr>& exprs) {
        std::string list;
        for (const auto& expr : exprs) list += (list.empty() ? "" : ",") + Write(*expr).Sql;
        return list;
    }

    std::string FromSql(const std::vector<TableRef>& tables) {
        std::string sql;
        for (std::size_t i = 0; i < tables.size(); ++i) {
            const auto& table = tables[i];
            if (i > 0) sql += !table.On ? "," : table.Left ? " LEFT JOIN " : " JOIN ";
            sql += Quoted(scope_[i].Table->Def.Name) + " AS " + Quoted(table.Alias);
            if (table.On) sql += " ON " + Write(*table.On).Sql;
        }
        return sql;
    }

    std::string OrderSql(const Select& select) {
        std::string list;
        for (const auto& item : select.OrderBy) {
            list += (list.empty() ? "" : ",") + OrderExpr(select, *item.Value);
            if (item.Descending) list += " DESC";
        }
        if (select.Top) list += TieBreaker(list.empty());
        if (IsRowByRow(select)) list += list.empty() ? "rowid" : ",rowid";
        return list.empty() ? "" : " ORDER BY " + list;
    }

    /// Rows of one table come as stored where the statement gives no order of its own; without a
    /// word SQLite would take whatever index is nearest.
    bool IsRowByRow(const Select& select) const {
        if (select.From.size() != 1 || select.Distinct || !select.GroupBy.empty()) return false;
        return std::none_of(select.Items.begin(), select.Items.end(),
                            [](const SelectItem& item) { return HoldsAggregate(*item.Value); });
    }

    /// An item's alias may stand in ORDER BY.
    std::string OrderExpr(const Select& select, const Expr& expr) {
        if (expr.kind == Expr::Kind::Column && expr.Qualifier.empty())
            for (const auto& item : select.Items)
                if (!item.Alias.empty() && SameText(item.Alias, expr.Text))
                    return Write(*item.Value).Sql;
        return Write(expr).Sql;
    }

    /// Of equal rows TOP takes the one with the lowest line.
    std::string TieBreaker(bool first) const {
        if (scope_.size() != 1) return "";
        for (const std::string_view key : {"LineNum", "SeqNum"})
            if (scope_.front().Table->Def.FieldIndex(key) >= 0)
                return (first ? "" : ",") + Quoted(key);
        return "";
    }

    // --- SELECT INTO, INSERT

    void TranslateSelectInto(const Statement& statement) {
        OpenScope(statement.Query.From);
        WriteColumns(statement.Query);
        result_.NewTable.Name = statement.Table;
        for (const auto& column : result_.Columns) {
            FieldDef field = column.Field;
            field.Required = false;
            if (result_.NewTable.FieldIndex(field.Name) >= 0)
                Refuse("duplicate column name: " + field.Name);
            result_.NewTable.Fields.push_back(std::move(field));
        }
        result_.CopiesFields = true;
        for (std::size_t i = 0; i < columnSql_.size(); ++i)
            if (result_.Columns[i].Source < 0 && columnSql_[i] != kNullAmount)
                result_.CopiesFields = false;
        result_.Sql = fmt::format("INSERT INTO {} {}", Quoted(statement.Table),
                                  IsWholeTable(statement.Query)
                                      ? "SELECT * FROM " + Quoted(scope_.front().Table->Def.Name)
                                      : SelectSql(statement.Query, ColumnList()));
    }

    /// A table as it is: SQLite then copies its records without taking them apart.
    static bool IsWholeTable(const Select& select) {
        return select.Items.size() == 1 && select.Items[0].Value->kind == Expr::Kind::Star &&
               select.From.size() == 1 && !select.Where && !select.Distinct && !select.Top &&
               select.GroupBy.empty() && !select.Having && select.OrderBy.empty();
    }

    /// The fields that an INSERT fills: those named, or all.
    std::vector<const FieldDef*> TargetFields(const Statement& statement) {
        std::vector<const FieldDef*> fields;
        const auto& table = result_.Table->Def;
        for (const auto& name : statement.Columns) fields.push_back(&NeedField(table, name));
        if (fields.empty())
            for (const auto& field : table.Fields) fields.push_back(&field);
        return fields;
    }

    static std::string FieldList(const std::vector<const FieldDef*>& fields) {
        std::string list;
        for (const auto* field : fields) list += (list.empty() ? "" : ",") + Quoted(field->Name);
        return list;
    }

    void TranslateInsertValues(const Statement& statement) {
        result_.Table = NeedTable(statement.Table);
        const auto fields = TargetFields(statement);
        if (fields.size() != statement.Values.size())
            Refuse(fmt::format("{} values for {} columns of {}", statement.Values.size(),
                               fields.size(), statement.Table));
        std::string values;
        for (std::size_t i = 0; i < fields.size(); ++i)
            values += (i ? "," : "") + WriteInto(*fields[i], *statement.Values[i]);
        result_.Sql = fmt::format("INSERT INTO {} ({}) VALUES ({})",
                                  Quoted(result_.Table->Def.Name), FieldList(fields), values);
    }

    /// Without a list of fields, the columns of the query find theirs by name.
    void TranslateInsertSelect(const Statement& statement) {
        const auto target = NeedTable(statement.Table);
        OpenScope(statement.Query.From);
        WriteColumns(statement.Query);
        std::vector<const FieldDef*> fields;
        std::string list;
        for (std::size_t i = 0; i < columnSql_.size(); ++i) {
            const auto& column = result_.Columns[i];
            const auto& name =
                i < statement.Columns.size() ? statement.Columns[i] : column.Field.Name;
            fields.push_back(&NeedField(target->Def, name));
            const Written value{columnSql_[i],
                                column.Typed ? TypeOfField(column.Field) : ValueType::Unknown,
                                column.Source >= 0, column.Source >= 0 ? &column.Field : nullptr};
            list += (i ? "," : "") + Converted(*fields.back(), value);
        }
        result_.Table = target;
        result_.Sql = fmt::format("INSERT INTO {} ({}) {}", Quoted(target->Def.Name),
                                  FieldList(fields), SelectSql(statement.Query, list));
        result_.Columns.clear();
    }

    // --- UPDATE, DELETE

    /// The table that an UPDATE over a join writes to: the one its fields are named of.
    std::size_t TargetOfUpdate(const Statement& statement) {
        const auto& first = statement.Set.front();
        for (std::size_t i = 0; i < scope_.size(); ++i) {
            const bool named = first.Qualifier.empty()
                                   ? scope_[i].Table->Def.FieldIndex(first.Field) >= 0
                                   : SameText(first.Qualifier, scope_[i].Alias);
            if (named) return i;
        }
        throw StoreError(StoreError::Kind::NoSuchItem, "no such column: " + first.Field);
    }

    void TranslateUpdate(const Statement& statement) {
        OpenScope(statement.Tables);
        const auto target = TargetOfUpdate(statement);
        result_.Table = scope_[target].Table;
        std::string sets, changes;
        for (const auto& assignment : statement.Set) {
            const auto& field = NeedField(result_.Table->Def, assignment.Field);
            const auto value = WriteInto(field, *assignment.Value);
            const auto name = Quoted(field.Name);
            sets += fmt::format("{}{}={}", sets.empty() ? "" : ",", name, value);
            changes +=
                fmt::format("{}{} IS NOT ({}){}", changes.empty() ? "" : " OR ",
                            WriteField(scope_[target], field).Sql, value, BinaryOrder(field));
        }
        result_.Sql = fmt::format("UPDATE {} AS {} SET {}{} WHERE {}({})",
                                  Quoted(result_.Table->Def.Name), Quoted(scope_[target].Alias),
                                  sets, JoinedTables(target), Conditions(statement), changes);
    }

    /// A change of case is a change.
    static std::string_view BinaryOrder(const FieldDef& field) {
        return TypeOfField(field) == ValueType::Text ? " COLLATE BINARY" : "";
    }

    std::string JoinedTables(std::size_t target) const {
        std::string list;
        for (std::size_t i = 0; i < scope_.size(); ++i) {
            if (i == target) continue;
            list += fmt::format("{}{} AS {}", list.empty() ? " FROM " : ",",
                                Quoted(scope_[i].Table->Def.Name), Quoted(scope_[i].Alias));
        }
        return list;
    }

    std::string Conditions(const Statement& statement) {
        std::string sql;
        for (const auto& table : statement.Tables)
            if (table.On) sql += Write(*table.On).Sql + " AND ";
        if (statement.Where) sql += Write(*statement.Where).Sql + " AND ";
        return sql;
    }

    void TranslateDelete(const Statement& statement) {
        result_.Table = NeedTable(statement.Table);
        scope_.push_back({result_.Table, result_.Table->Def.Name});
        result_.Sql = "DELETE FROM " + Quoted(result_.Table->Def.Name);
        if (statement.Where) result_.Sql += " WHERE " + Write(*statement.Where).Sql;
    }

    void TranslateCreateIndex(const Statement& statement) {
        result_.Table = NeedTable(statement.Table);
        std::vector<const FieldDef*> fields;
        for (const auto& name : statement.Columns) {
            fields.push_back(&NeedField(result_.Table->Def, name));
            if (statement.DisallowNull) result_.RequiredFields.push_back(fields.back()->Name);
        }
        result_.Sql = fmt::format("CREATE {}INDEX {} ON {} ({})", statement.Unique ? "UNIQUE " : "",
                                  Quoted(statement.IndexName), Quoted(result_.Table->Def.Name),
                                  FieldList(fields));
    }

    Catalog* catalog_ = nullptr;
    const TokenList& tokens_;
    Translation result_;
    std::vector<ScopeEntry> scope_;
    std::vector<std::string> columnSql_;
};

}  // namespace

Translation Translate(const Statement& statement, Catalog& catalog, const TokenList& tokens,
                      bool snapshot) {
    return Translator(catalog, tokens).Run(statement, snapshot);
}

Translation TranslateFind(const Expr& condition, const TablePtr& table, const TokenList& tokens) {
    return Translator(tokens).RunFind(condition, table);
}

}  // namespace zolmara::sql
