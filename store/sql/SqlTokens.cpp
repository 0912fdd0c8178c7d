#include "store/sql/SqlTokens.h"

#include <cctype>

#include "core/Globals.h"
#include "store/base/StoreError.h"

namespace zolmara::sql {
namespace {

bool IsNameStart(char c) {
    return std::isalpha(static_cast<unsigned char>(c)) || c == '_' || (c & 0x80);
}
bool IsNamePart(char c) { return IsNameStart(c) || std::isdigit(static_cast<unsigned char>(c)); }
bool IsDigit(char c) { return std::isdigit(static_cast<unsigned char>(c)) != 0; }

class Reader {
public:
    explicit Reader(std::string_view text) : text_(text) { list_.Key.reserve(text.size()); }

    TokenList Read() {
        while (SkipBlanks()) ReadToken();
        list_.Tokens.push_back({TokenKind::End, "", -1});
        return std::move(list_);
    }

private:
    bool SkipBlanks() {
        while (at_ < text_.size() && std::isspace(static_cast<unsigned char>(text_[at_]))) ++at_;
        return at_ < text_.size();
    }

    void ReadToken() {
        const char c = text_[at_];
        if (IsNameStart(c)) return ReadWord();
        if (IsDigit(c) || (c == '.' && at_ + 1 < text_.size() && IsDigit(text_[at_ + 1])))
            return ReadNumber();
        switch (c) {
            case '[':
                return ReadBracketName();
            case '"':
            case '\'':
                return ReadText(c);
            case '#':
                return ReadDate();
            case '?':
                ++at_;
                return AddLiteral(LiteralKind::Argument, Variant());
            default:
                return ReadSymbol();
        }
    }

    void ReadWord() {
        const auto start = at_;
        while (at_ < text_.size() && IsNamePart(text_[at_])) ++at_;
        Add(TokenKind::Word, std::string(text_.substr(start, at_ - start)));
        // Right$( is Right( with a text for its result.
        if (text_.substr(at_).starts_with("$(")) ++at_;
    }

    void ReadBracketName() {
        const auto close = text_.find(']', at_);
        if (close == std::string_view::npos) Fail("a name in brackets is not closed");
        Add(TokenKind::Name, std::string(text_.substr(at_ + 1, close - at_ - 1)));
        at_ = close + 1;
    }

    void ReadNumber() {
        const auto start = at_;
        while (at_ < text_.size() && (IsDigit(text_[at_]) || text_[at_] == '.')) ++at_;
        ReadExponent();
        const auto digits = text_.substr(start, at_ - start);
        // The count of TOP is part of the statement's shape.
        if (!list_.Tokens.empty() && SameText(list_.Tokens.back().Text, "TOP"))
            return Add(TokenKind::Word, std::string(digits));
        const auto value = ParseNumber(digits);
        if (!value) Fail("\"" + std::string(digits) + "\" is no number");
        AddLiteral(LiteralKind::Number, Variant(*value));
    }

    void ReadExponent() {
        if (at_ >= text_.size() || (text_[at_] != 'e' && text_[at_] != 'E')) return;
        auto next = at_ + 1;
        if (next < text_.size() && (text_[next] == '+' || text_[next] == '-')) ++next;
        if (next >= text_.size() || !IsDigit(text_[next])) return;
        for (at_ = next; at_ < text_.size() && IsDigit(text_[at_]);) ++at_;
    }

    /// A quote inside a text is written twice.
    void ReadText(char quote) {
        std::string value;
        for (++at_;; ++at_) {
            if (at_ >= text_.size()) Fail("a text is not closed");
            if (text_[at_] != quote) {
                value += text_[at_];
            } else if (at_ + 1 < text_.size() && text_[at_ + 1] == quote) {
                value += quote;
                ++at_;
            } else {
                break;
            }
        }
        ++at_;
        AddLiteral(LiteralKind::Text, Variant(std::move(value)));
    }

    void ReadDate() {
        const auto close = text_.find('#', at_ + 1);
        if (close == std::string_view::npos) Fail("a date is not closed");
        const auto date = ParseDate(text_.substr(at_ + 1, close - at_ - 1));
        if (!date) Fail("what stands between # signs is no date");
        at_ = close + 1;
        AddLiteral(LiteralKind::Date, Variant(*date));
    }

    void ReadSymbol() {
        static constexpr std::string_view kPairs[] = {"<>", "<=", ">="};
        for (const auto pair : kPairs) {
            if (text_.substr(at_, 2) == pair) {
                at_ += 2;
                return Add(TokenKind::Symbol, std::string(pair));
            }
        }
        static constexpr std::string_view kSingles = "()*,;.=<>+-/\\^&";
        const char c = text_[at_];
        if (kSingles.find(c) == std::string_view::npos)
            Fail(std::string("unexpected character \"") + c + "\"");
        ++at_;
        Add(TokenKind::Symbol, std::string(1, c));
    }

    void Add(TokenKind kind, std::string text) {
        list_.Key += kind == TokenKind::Name ? "[" + text + "]" : text;
        list_.Key += ' ';
        list_.Tokens.push_back({kind, std::move(text), -1});
    }

    void AddLiteral(LiteralKind kind, Variant value) {
        list_.Key += '?';
        list_.Key += static_cast<char>(kind);
        list_.Key += ' ';
        list_.Tokens.push_back({TokenKind::Literal, "", static_cast<int>(list_.Kinds.size())});
        list_.Kinds.push_back(kind);
        list_.Values.push_back(std::move(value));
    }

    [[noreturn]] void Fail(const std::string& what) const {
        throw StoreError(StoreError::Kind::Other,
                         "Syntax error in statement: " + what + ": " + std::string(text_));
    }

    std::string_view text_;
    std::size_t at_ = 0;
    TokenList list_;
};

}  // namespace

TokenList Tokenize(std::string_view text) { return Reader(text).Read(); }

}  // namespace zolmara::sql
