#pragma once

// The words of a CREATE statement in a file's list of tables, by the database library's own rules
// of names. What stands there was written by whoever made the file.

#include <string>
#include <string_view>
#include <vector>

#include "core/Globals.h"

namespace zolmara {

struct SchemaToken {
    enum class Kind { Word, Quoted, String, Number, Symbol, Strange };
    Kind What = Kind::Strange;
    std::string Text;  ///< without quotes

    /// A word or symbol of the language; a quoted name is none.
    bool Is(std::string_view text) const {
        return (What == Kind::Word || What == Kind::Symbol) && SameText(Text, text);
    }
    bool IsName() const { return What == Kind::Word || What == Kind::Quoted; }
};

/// Splits a statement. A comment, a quote that is not closed, or a letter that belongs to
/// nothing becomes a token of kind Strange.
std::vector<SchemaToken> TokensOfSchema(std::string_view sql);

}  // namespace zolmara
