#include "store/base/SchemaTokens.h"

#include <algorithm>
#include <optional>

namespace zolmara {
namespace {

using Kind = SchemaToken::Kind;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsWordLetter(char c) {
    return IsDigit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == '$' ||
           static_cast<unsigned char>(c) >= 0x80;
}
bool IsNumberLetter(char c) { return IsWordLetter(c) || c == '.'; }
bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f'; }
char Capital(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

/// What closes a quote; nothing for a letter that opens none.
std::optional<char> ClosingOf(char open) {
    if (open == '"' || open == '\'' || open == '`') return open;
    if (open == '[') return ']';
    return std::nullopt;
}

template <class Belongs>
std::size_t EndOf(std::string_view sql, std::size_t at, Belongs belongs) {
    while (at < sql.size() && belongs(sql[at])) ++at;
    return at;
}

}  // namespace

bool SchemaToken::SameLetters(std::string_view text) const {
    return std::ranges::equal(Text, text, {}, Capital, Capital);
}

std::string SchemaToken::Plain() const {
    if (Doubled == '\0') return std::string(Text);
    std::string plain;
    for (std::size_t i = 0; i < Text.size(); ++i) {
        plain += Text[i];
        if (Text[i] == Doubled) ++i;
    }
    return plain;
}

void SchemaTokens::Next() {
    start_ = EndOf(sql_, end_, IsBlank);
    if (AtEnd()) return;
    const char c = sql_[start_];
    if (const auto closing = ClosingOf(c)) return TakeQuote(*closing);
    if (IsDigit(c)) return Take(Kind::Number, EndOf(sql_, start_, IsNumberLetter));
    if (IsWordLetter(c)) return Take(Kind::Word, EndOf(sql_, start_, IsWordLetter));
    const auto rest = sql_.substr(start_);
    if (rest.starts_with("--") || rest.starts_with("/*")) return TakeRest();
    static constexpr std::string_view kSymbols = "(),<>=+-*/.;";
    Take(kSymbols.find(c) == std::string_view::npos ? Kind::Strange : Kind::Symbol, start_ + 1);
}

void SchemaTokens::Pass(std::size_t letters) {
    end_ = start_ + letters;
    Next();
}

void SchemaTokens::Take(Kind what, std::size_t end) {
    end_ = end;
    now_ = {what, sql_.substr(start_, end - start_), '\0'};
}

void SchemaTokens::TakeQuote(char closing) {
    const bool doubles = closing != ']';
    bool any = false;
    for (std::size_t at = start_ + 1;; at += 2, any = true) {
        at = sql_.find(closing, at);
        if (at == std::string_view::npos) return TakeRest();
        if (doubles && at + 1 < sql_.size() && sql_[at + 1] == closing) continue;
        end_ = at + 1;
        now_ = {closing == '\'' ? Kind::String : Kind::Quoted,
                sql_.substr(start_ + 1, at - start_ - 1), any ? closing : '\0'};
        return;
    }
}

}  // namespace zolmara
