#pragma once

// Reads the text of a statement in the store's dialect into tokens, lifting its literals out.

#include <string>
#include <string_view>
#include <vector>

#include "core/Variant.h"

namespace zolmara::sql {

enum class TokenKind {
    Word,     ///< a bare name or keyword
    Name,     ///< a name in brackets
    Literal,  ///< number, text, date or `?`; its value is in the literals
    Symbol,   ///< operator or punctuation
    End,
};

/// What a literal was written as. The kind is part of a statement's shape, its value is not.
enum class LiteralKind : char { Number = 'N', Text = 'S', Date = 'D', Argument = 'P' };

struct Token {
    TokenKind Kind = TokenKind::End;
    std::string Text;
    int Literal = -1;  ///< position in the literals
};

struct TokenList {
    std::vector<Token> Tokens;  ///< closed by an End token
    std::vector<LiteralKind> Kinds;
    std::vector<Variant> Values;  ///< Null for an argument
    /// The statement with its literals blanked: equal keys are the same statement.
    std::string Key;
};

/// Splits a statement. StoreError on a text or date that is not closed, or a stray character.
TokenList Tokenize(std::string_view text);

}  // namespace zolmara::sql
