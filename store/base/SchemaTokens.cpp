#include "store/base/SchemaTokens.h"

#include <optional>

namespace zolmara {
namespace {

using Kind = SchemaToken::Kind;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsWordLetter(char c) {
    return IsDigit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == '$' ||
           static_cast<unsigned char>(c) >= 0x80;
}
bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f'; }

/// What closes a quote; nothing for a letter that opens none.
std::optional<char> ClosingOf(char open) {
    if (open == '"' || open == '\'' || open == '`') return open;
    if (open == '[') return ']';
    return std::nullopt;
}

class Splitter {
public:
    explicit Splitter(std::string_view sql) : sql_(sql) {}

    std::vector<SchemaToken> Split() {
        for (; at_ < sql_.size();) {
            if (IsBlank(sql_[at_]))
                ++at_;
            else
                Next();
        }
        return std::move(tokens_);
    }

private:
    void Add(Kind what, std::string text) { tokens_.push_back({what, std::move(text)}); }

    void Next() {
        const char c = sql_[at_];
        if (const auto closing = ClosingOf(c)) return Quote(*closing);
        if (IsDigit(c)) return Number();
        if (IsWordLetter(c)) return Word();
        const auto rest = sql_.substr(at_);
        if (rest.starts_with("--") || rest.starts_with("/*")) return Strange();
        ++at_;
        static constexpr std::string_view kSymbols = "(),<>=+-*/.;";
        Add(kSymbols.find(c) == std::string_view::npos ? Kind::Strange : Kind::Symbol,
            std::string(1, c));
    }

    void Word() {
        const auto start = at_;
        while (at_ < sql_.size() && IsWordLetter(sql_[at_])) ++at_;
        Add(Kind::Word, std::string(sql_.substr(start, at_ - start)));
    }

    void Number() {
        const auto start = at_;
        while (at_ < sql_.size() && (IsWordLetter(sql_[at_]) || sql_[at_] == '.')) ++at_;
        Add(Kind::Number, std::string(sql_.substr(start, at_ - start)));
    }

    void Quote(char closing) {
        std::string text;
        const bool doubles = closing != ']';
        const Kind what = closing == '\'' ? Kind::String : Kind::Quoted;
        for (++at_; at_ < sql_.size(); ++at_) {
            if (sql_[at_] != closing) {
                text += sql_[at_];
            } else if (doubles && at_ + 1 < sql_.size() && sql_[at_ + 1] == closing) {
                text += sql_[at_++];
            } else {
                ++at_;
                return Add(what, std::move(text));
            }
        }
        Strange();
    }

    void Strange() {
        at_ = sql_.size();
        Add(Kind::Strange, "");
    }

    std::string_view sql_;
    std::size_t at_ = 0;
    std::vector<SchemaToken> tokens_;
};

}  // namespace

std::vector<SchemaToken> TokensOfSchema(std::string_view sql) { return Splitter(sql).Split(); }

}  // namespace zolmara
