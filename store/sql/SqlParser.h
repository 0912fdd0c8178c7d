#pragma once

// The dialect's statements as trees. Names are kept as written; literals are kept by position.

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "store/sql/SqlTokens.h"

namespace zolmara::sql {

struct Expr;
using ExprPtr = std::unique_ptr<Expr>;

struct Expr {
    enum class Kind {
        Literal,  ///< Number is its position among the literals
        Null,
        Truth,    ///< True or False; Number is -1 or 0
        Column,   ///< Qualifier (may be empty), Text
        Star,     ///< "*" or, with a Qualifier, "T.*"
        Call,     ///< Text is the function; Args
        Unary,    ///< Text is "-", "+" or "NOT"; Args[0]
        Binary,   ///< Text is the operator; Args[0], Args[1]
        In,       ///< Args[0] among the rest
        Between,  ///< Args[0] between Args[1] and Args[2]
        IsNull,   ///< Args[0]
    };
    Kind kind;
    std::string Qualifier;
    std::string Text;
    int Number = 0;
    int Depth = 1;         ///< of the tree below it
    bool Negated = false;  ///< NOT IN, NOT BETWEEN, IS NOT NULL
    std::vector<ExprPtr> Args;
};

struct SelectItem {
    ExprPtr Value;
    std::string Alias;
};

struct TableRef {
    std::string Name;
    std::string Alias;  ///< the name itself without one
    ExprPtr On;         ///< how it joins the tables ahead of it; none for the first
    bool Left = false;
};

struct OrderItem {
    ExprPtr Value;
    bool Descending = false;
};

struct Select {
    bool Distinct = false;
    std::optional<int> Top;
    std::vector<SelectItem> Items;
    std::string Into;
    std::vector<TableRef> From;
    ExprPtr Where;
    std::vector<ExprPtr> GroupBy;
    ExprPtr Having;
    std::vector<OrderItem> OrderBy;
};

struct Assignment {
    std::string Qualifier;
    std::string Field;
    ExprPtr Value;
};

struct Statement {
    enum class Kind {
        Select,
        SelectInto,
        InsertValues,
        InsertSelect,
        Update,
        Delete,
        CreateIndex,
        DropTable
    };
    Kind kind = Kind::Select;
    std::string Table;                 ///< target of INSERT, DELETE, CREATE INDEX, DROP TABLE
    std::vector<std::string> Columns;  ///< of INSERT and CREATE INDEX
    std::vector<ExprPtr> Values;       ///< of INSERT ... VALUES
    Select Query;                      ///< of SELECT and INSERT ... SELECT
    std::vector<TableRef> Tables;      ///< of UPDATE
    std::vector<Assignment> Set;
    ExprPtr Where;  ///< of UPDATE and DELETE
    std::string IndexName;
    bool Unique = false;
    bool DisallowNull = false;
};

/// Parses one statement. StoreError with the statement's text on anything else.
Statement Parse(const TokenList& tokens, std::string_view text);
/// Parses a condition alone, as in FindFirst.
ExprPtr ParseCondition(const TokenList& tokens, std::string_view text);

}  // namespace zolmara::sql
