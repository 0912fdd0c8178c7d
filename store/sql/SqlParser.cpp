#include "store/sql/SqlParser.h"

#include <algorithm>
#include <charconv>

#include "core/Globals.h"
#include "store/base/StoreError.h"

namespace zolmara::sql {
namespace {

ExprPtr Make(Expr::Kind kind, std::string text = "") {
    auto expr = std::make_unique<Expr>();
    expr->kind = kind;
    expr->Text = std::move(text);
    return expr;
}

/// How deep brackets nest and how long a chain of operators may be: what follows the tree, here
/// and in SQLite, takes a frame of the stack for each step down.
constexpr int kDeepest = 150;

/// Words that end a table name or a select item and so are no alias.
bool IsClauseWord(const std::string& word) {
    static constexpr std::string_view kWords[] = {"FROM",  "WHERE", "GROUP", "HAVING", "ORDER",
                                                  "INNER", "LEFT",  "ON",    "SET",    "INTO",
                                                  "AND",   "OR",    "JOIN",  "VALUES", "AS"};
    for (const auto clause : kWords)
        if (SameText(word, clause)) return true;
    return false;
}

class Parser {
public:
    Parser(const TokenList& tokens, std::string_view text) : tokens_(tokens.Tokens), text_(text) {}

    Statement ParseStatement() {
        Statement statement = ReadStatement();
        while (AcceptSymbol(";")) {
        }
        ExpectEnd();
        return statement;
    }

    ExprPtr ParseWholeCondition() {
        auto expr = ReadExpr();
        ExpectEnd();
        return expr;
    }

private:
    // --- Statements

    Statement ReadStatement() {
        if (IsWord("SELECT")) return ReadSelectStatement();
        if (AcceptWord("INSERT")) return ReadInsert();
        if (AcceptWord("UPDATE")) return ReadUpdate();
        if (AcceptWord("DELETE")) return ReadDelete();
        if (AcceptWord("CREATE")) return ReadCreateIndex();
        if (AcceptWord("DROP")) return ReadDropTable();
        Fail("unknown statement");
    }

    Statement ReadSelectStatement() {
        Statement statement;
        statement.Query = ReadSelect();
        statement.kind =
            statement.Query.Into.empty() ? Statement::Kind::Select : Statement::Kind::SelectInto;
        statement.Table = statement.Query.Into;
        return statement;
    }

    Select ReadSelect() {
        ExpectWord("SELECT");
        Select select;
        select.Distinct = AcceptWord("DISTINCT") || AcceptWord("DISTINCTROW");
        if (AcceptWord("TOP")) select.Top = ReadCount();
        do select.Items.push_back(ReadSelectItem());
        while (AcceptSymbol(","));
        if (AcceptWord("INTO")) select.Into = ReadName();
        if (AcceptWord("FROM")) select.From = ReadTables();
        if (AcceptWord("WHERE")) select.Where = ReadExpr();
        if (AcceptWord("GROUP")) {
            ExpectWord("BY");
            do select.GroupBy.push_back(ReadExpr());
            while (AcceptSymbol(","));
        }
        if (AcceptWord("HAVING")) select.Having = ReadExpr();
        if (AcceptWord("ORDER")) ReadOrderBy(select);
        return select;
    }

    void ReadOrderBy(Select& select) {
        ExpectWord("BY");
        do {
            OrderItem item{ReadExpr(), false};
            if (AcceptWord("DESC"))
                item.Descending = true;
            else
                AcceptWord("ASC");
            select.OrderBy.push_back(std::move(item));
        } while (AcceptSymbol(","));
    }

    int ReadCount() {
        int count = 0;
        const auto& digits = Peek().Text;
        const auto end = digits.data() + digits.size();
        if (std::from_chars(digits.data(), end, count).ptr != end || count < 1)
            Fail("TOP wants a number");
        ++at_;
        return count;
    }

    SelectItem ReadSelectItem() {
        SelectItem item;
        item.Value = ReadExpr();
        if (AcceptWord("AS")) item.Alias = ReadName();
        return item;
    }

    // --- Tables: names, inner and left joins, brackets around joins, comma lists

    std::vector<TableRef> ReadTables() {
        std::vector<TableRef> tables = ReadJoin();
        while (AcceptSymbol(",")) Append(tables, ReadJoin());
        return tables;
    }

    std::vector<TableRef> ReadJoin() {
        std::vector<TableRef> tables = ReadTableOrBrackets();
        while (IsWord("INNER") || IsWord("LEFT") || IsWord("JOIN")) {
            const bool left = AcceptWord("LEFT");
            if (left) AcceptWord("OUTER");
            AcceptWord("INNER");
            ExpectWord("JOIN");
            auto joined = ReadTableOrBrackets();
            ExpectWord("ON");
            joined.back().On = ReadExpr();
            joined.back().Left = left;
            Append(tables, std::move(joined));
        }
        return tables;
    }

    std::vector<TableRef> ReadTableOrBrackets() {
        if (AcceptSymbol("(")) {
            if (++depth_ > kDeepest) Fail("too deeply nested");
            auto tables = ReadJoin();
            --depth_;
            ExpectSymbol(")");
            return tables;
        }
        TableRef table;
        table.Name = ReadName();
        table.Alias = table.Name;
        if (AcceptWord("AS"))
            table.Alias = ReadName();
        else if (Peek().Kind == TokenKind::Word && !IsClauseWord(Peek().Text))
            table.Alias = ReadName();
        std::vector<TableRef> tables;
        tables.push_back(std::move(table));
        return tables;
    }

    static void Append(std::vector<TableRef>& tables, std::vector<TableRef> more) {
        for (auto& table : more) tables.push_back(std::move(table));
    }

    // --- Action statements

    Statement ReadInsert() {
        Statement statement;
        ExpectWord("INTO");
        statement.Table = ReadName();
        if (AcceptSymbol("(")) {
            do statement.Columns.push_back(ReadName());
            while (AcceptSymbol(","));
            ExpectSymbol(")");
        }
        if (!AcceptWord("VALUES")) {
            statement.kind = Statement::Kind::InsertSelect;
            statement.Query = ReadSelect();
            return statement;
        }
        statement.kind = Statement::Kind::InsertValues;
        ExpectSymbol("(");
        do statement.Values.push_back(ReadExpr());
        while (AcceptSymbol(","));
        ExpectSymbol(")");
        return statement;
    }

    Statement ReadUpdate() {
        Statement statement;
        statement.kind = Statement::Kind::Update;
        statement.Tables = ReadTables();
        ExpectWord("SET");
        do statement.Set.push_back(ReadAssignment());
        while (AcceptSymbol(","));
        if (AcceptWord("WHERE")) statement.Where = ReadExpr();
        return statement;
    }

    Assignment ReadAssignment() {
        Assignment assignment;
        assignment.Field = ReadName();
        if (AcceptSymbol(".")) {
            assignment.Qualifier = assignment.Field;
            assignment.Field = ReadName();
        }
        ExpectSymbol("=");
        assignment.Value = ReadExpr();
        return assignment;
    }

    Statement ReadDelete() {
        Statement statement;
        statement.kind = Statement::Kind::Delete;
        AcceptSymbol("*");
        ExpectWord("FROM");
        statement.Table = ReadName();
        if (AcceptWord("WHERE")) statement.Where = ReadExpr();
        return statement;
    }

    Statement ReadCreateIndex() {
        Statement statement;
        statement.kind = Statement::Kind::CreateIndex;
        statement.Unique = AcceptWord("UNIQUE");
        ExpectWord("INDEX");
        statement.IndexName = ReadName();
        ExpectWord("ON");
        statement.Table = ReadName();
        ExpectSymbol("(");
        do {
            statement.Columns.push_back(ReadName());
            if (!AcceptWord("DESC")) AcceptWord("ASC");
        } while (AcceptSymbol(","));
        ExpectSymbol(")");
        if (AcceptWord("WITH")) ReadIndexOption(statement);
        return statement;
    }

    void ReadIndexOption(Statement& statement) {
        if (AcceptWord("PRIMARY")) {
            statement.Unique = statement.DisallowNull = true;
        } else if (AcceptWord("DISALLOW")) {
            ExpectWord("NULL");
            statement.DisallowNull = true;
        } else {
            ExpectWord("IGNORE");
            ExpectWord("NULL");
        }
    }

    Statement ReadDropTable() {
        Statement statement;
        statement.kind = Statement::Kind::DropTable;
        ExpectWord("TABLE");
        statement.Table = ReadName();
        return statement;
    }

    // --- Expressions, from the loosest binding operator to the tightest

    ExprPtr Join(std::string op, ExprPtr left, ExprPtr right) {
        auto expr = Make(Expr::Kind::Binary, std::move(op));
        expr->Args.push_back(std::move(left));
        expr->Args.push_back(std::move(right));
        return Measured(std::move(expr));
    }

    ExprPtr Measured(ExprPtr expr) const {
        for (const auto& arg : expr->Args) expr->Depth = std::max(expr->Depth, arg->Depth + 1);
        if (expr->Depth > kDeepest) Fail("too long a chain of operators");
        return expr;
    }

    ExprPtr ReadExpr() {
        if (++depth_ > kDeepest) Fail("too deeply nested");
        auto left = ReadAnd();
        while (AcceptWord("OR")) left = Join("OR", std::move(left), ReadAnd());
        --depth_;
        return left;
    }

    ExprPtr ReadAnd() {
        auto left = ReadNot();
        while (AcceptWord("AND")) left = Join("AND", std::move(left), ReadNot());
        return left;
    }

    ExprPtr ReadNot() {
        if (!AcceptWord("NOT")) return ReadComparison();
        if (++depth_ > kDeepest) Fail("too deeply nested");
        auto expr = Make(Expr::Kind::Unary, "NOT");
        expr->Args.push_back(ReadNot());
        --depth_;
        return Measured(std::move(expr));
    }

    ExprPtr ReadComparison() {
        auto left = ReadConcat();
        for (;;) {
            static constexpr std::string_view kOperators[] = {"=", "<>", "<=", ">=", "<", ">"};
            bool found = false;
            for (const auto op : kOperators) {
                if (!found && AcceptSymbol(op)) {
                    left = Join(std::string(op), std::move(left), ReadConcat());
                    found = true;
                }
            }
            if (found) continue;
            const bool negated = IsWord("NOT") && AcceptWord("NOT");
            if (AcceptWord("IN"))
                left = ReadIn(std::move(left), negated);
            else if (AcceptWord("BETWEEN"))
                left = ReadBetween(std::move(left), negated);
            else if (AcceptWord("IS"))
                left = ReadIsNull(std::move(left));
            else
                return left;
        }
    }

    ExprPtr ReadIn(ExprPtr left, bool negated) {
        auto expr = Make(Expr::Kind::In);
        expr->Negated = negated;
        expr->Args.push_back(std::move(left));
        ExpectSymbol("(");
        do expr->Args.push_back(ReadExpr());
        while (AcceptSymbol(","));
        ExpectSymbol(")");
        return Measured(std::move(expr));
    }

    ExprPtr ReadBetween(ExprPtr left, bool negated) {
        auto expr = Make(Expr::Kind::Between);
        expr->Negated = negated;
        expr->Args.push_back(std::move(left));
        expr->Args.push_back(ReadConcat());
        ExpectWord("AND");
        expr->Args.push_back(ReadConcat());
        return Measured(std::move(expr));
    }

    ExprPtr ReadIsNull(ExprPtr left) {
        auto expr = Make(Expr::Kind::IsNull);
        expr->Negated = AcceptWord("NOT");
        ExpectWord("NULL");
        expr->Args.push_back(std::move(left));
        return Measured(std::move(expr));
    }

    ExprPtr ReadConcat() { return ReadBinary<0>(); }

    /// Operators of one strength, left to right.
    template <int Level>
    ExprPtr ReadBinary() {
        static constexpr std::string_view kLevels[][3] = {
            {"&", "", ""}, {"+", "-", ""}, {"MOD", "", ""}, {"\\", "", ""}, {"*", "/", ""}};
        if constexpr (Level == 5) {
            return ReadUnary();
        } else {
            auto left = ReadBinary<Level + 1>();
            for (bool more = true; more;) {
                more = false;
                for (const auto op : kLevels[Level]) {
                    if (op.empty() || !(AcceptSymbol(op) || (op == "MOD" && AcceptWord(op))))
                        continue;
                    left = Join(std::string(op), std::move(left), ReadBinary<Level + 1>());
                    more = true;
                    break;
                }
            }
            return left;
        }
    }

    ExprPtr ReadUnary() {
        for (const std::string_view sign : {"-", "+"}) {
            if (!AcceptSymbol(sign)) continue;
            if (++depth_ > kDeepest) Fail("too deeply nested");
            auto expr = Make(Expr::Kind::Unary, std::string(sign));
            expr->Args.push_back(ReadUnary());
            --depth_;
            return Measured(std::move(expr));
        }
        return ReadPower();
    }

    ExprPtr ReadPower() {
        auto left = ReadPrimary();
        while (AcceptSymbol("^")) left = Join("^", std::move(left), ReadPrimary());
        return left;
    }

    ExprPtr ReadPrimary() {
        const Token& token = Peek();
        if (token.Kind == TokenKind::Literal) {
            auto expr = Make(Expr::Kind::Literal);
            expr->Number = token.Literal;
            ++at_;
            return expr;
        }
        if (AcceptSymbol("(")) {
            auto expr = ReadExpr();
            ExpectSymbol(")");
            return expr;
        }
        if (AcceptSymbol("*")) return Make(Expr::Kind::Star);
        if (token.Kind == TokenKind::Word && !IsFollowedByDot()) return ReadWordExpr();
        return ReadColumn();
    }

    bool IsFollowedByDot() const {
        const Token& next = tokens_[at_ + 1];
        return next.Kind == TokenKind::Symbol && next.Text == ".";
    }

    ExprPtr ReadWordExpr() {
        if (AcceptWord("NULL")) return Make(Expr::Kind::Null);
        for (const bool truth : {true, false}) {
            if (!AcceptWord(truth ? "TRUE" : "FALSE")) continue;
            auto expr = Make(Expr::Kind::Truth);
            expr->Number = truth ? -1 : 0;
            return expr;
        }
        const Token& next = tokens_[at_ + 1];
        if (next.Kind == TokenKind::Symbol && next.Text == "(") return ReadCall();
        if (IsClauseWord(Peek().Text)) Fail("\"" + Peek().Text + "\" stands where a value should");
        return ReadColumn();
    }

    ExprPtr ReadCall() {
        auto expr = Make(Expr::Kind::Call, UCase(Peek().Text));
        at_ += 2;
        if (AcceptSymbol(")")) return expr;
        do expr->Args.push_back(ReadExpr());
        while (AcceptSymbol(","));
        ExpectSymbol(")");
        return Measured(std::move(expr));
    }

    ExprPtr ReadColumn() {
        auto expr = Make(Expr::Kind::Column, ReadName());
        if (!AcceptSymbol(".")) return expr;
        expr->Qualifier = std::move(expr->Text);
        if (AcceptSymbol("*")) {
            expr->kind = Expr::Kind::Star;
            expr->Text.clear();
        } else {
            expr->Text = ReadName();
        }
        return expr;
    }

    // --- Tokens

    const Token& Peek() const { return tokens_[at_]; }
    bool IsWord(std::string_view word) const {
        return Peek().Kind == TokenKind::Word && SameText(Peek().Text, word);
    }
    bool AcceptWord(std::string_view word) {
        if (!IsWord(word)) return false;
        ++at_;
        return true;
    }
    bool AcceptSymbol(std::string_view symbol) {
        if (Peek().Kind != TokenKind::Symbol || Peek().Text != symbol) return false;
        ++at_;
        return true;
    }
    void ExpectWord(std::string_view word) {
        if (!AcceptWord(word)) Fail(std::string(word) + " expected");
    }
    void ExpectSymbol(std::string_view symbol) {
        if (!AcceptSymbol(symbol)) Fail("\"" + std::string(symbol) + "\" expected");
    }
    void ExpectEnd() {
        if (Peek().Kind != TokenKind::End) Fail("nothing more expected");
    }
    std::string ReadName() {
        if (Peek().Kind != TokenKind::Word && Peek().Kind != TokenKind::Name)
            Fail("a name expected");
        return tokens_[at_++].Text;
    }

    [[noreturn]] void Fail(const std::string& what) const {
        throw StoreError(StoreError::Kind::Other,
                         "Syntax error in statement: " + what + ": " + std::string(text_));
    }

    const std::vector<Token>& tokens_;
    std::string_view text_;
    std::size_t at_ = 0;
    int depth_ = 0;
};

}  // namespace

Statement Parse(const TokenList& tokens, std::string_view text) {
    return Parser(tokens, text).ParseStatement();
}

ExprPtr ParseCondition(const TokenList& tokens, std::string_view text) {
    return Parser(tokens, text).ParseWholeCondition();
}

}  // namespace zolmara::sql
