#pragma once

// The words of a CREATE statement in a file's list of tables, by the database library's own rules
// of names. What stands there was written by whoever made the file.

#include <string>
#include <string_view>

namespace zolmara {

struct SchemaToken {
    enum class Kind { Word, Quoted, String, Number, Symbol, Strange };
    Kind What = Kind::Strange;
    std::string_view Text;  ///< in the statement, without quotes
    char Doubled = '\0';    ///< the quote that stands twice in the text for once, if any

    /// A word or symbol of the language; a quoted name is none. The language has no letters beyond
    /// ASCII.
    bool Is(std::string_view text) const {
        return (What == Kind::Word || What == Kind::Symbol) && Text.size() == text.size() &&
               SameLetters(text);
    }
    bool IsName() const { return What == Kind::Word || What == Kind::Quoted; }
    std::string Plain() const;

private:
    bool SameLetters(std::string_view text) const;
};

/// Walks a statement. A comment, a quote that is not closed, or a letter that belongs to nothing is
/// a token of kind Strange; behind the first two comes nothing more. The statement must outlive the
/// walk.
class SchemaTokens {
public:
    explicit SchemaTokens(std::string_view sql) : sql_(sql) { Next(); }

    bool AtEnd() const { return start_ == sql_.size(); }
    const SchemaToken& Now() const { return now_; }
    void Next();
    /// The present token as it is written, and the statement from there on.
    std::string_view Written() const { return sql_.substr(start_, end_ - start_); }
    std::string_view Rest() const { return sql_.substr(start_); }
    /// Passes so many letters of the rest, which end where a token does.
    void Pass(std::size_t letters);

private:
    void Take(SchemaToken::Kind what, std::size_t end);
    void TakeQuote(char closing);
    void TakeRest() { Take(SchemaToken::Kind::Strange, sql_.size()); }

    std::string_view sql_;
    std::size_t start_ = 0;  ///< of the present token
    std::size_t end_ = 0;
    SchemaToken now_;
};

}  // namespace zolmara
