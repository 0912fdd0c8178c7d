#include <date/date.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <string>
#include <vector>

#include "core/DateTime.h"

namespace zolmara {
namespace {

/// A piece of a date text: a run of digits, a run of letters, or one sign.
struct Token {
    enum class Kind { Number, Word, Sign, Blank } Is;
    std::string_view Text;
    int Value = 0;
};

using Tokens = std::vector<Token>;

Token::Kind KindOf(char c) {
    if (c >= '0' && c <= '9') return Token::Kind::Number;
    if ((c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z')) return Token::Kind::Word;
    return c == ' ' ? Token::Kind::Blank : Token::Kind::Sign;
}

/// Nothing where a number is longer than any part of a date is.
std::optional<Tokens> Split(std::string_view text) {
    Tokens tokens;
    for (std::size_t at = 0; at < text.size();) {
        Token token{KindOf(text[at]), {}, 0};
        std::size_t end = at + 1;
        while (end < text.size() && token.Is != Token::Kind::Sign && KindOf(text[end]) == token.Is)
            ++end;
        token.Text = text.substr(at, end - at);
        if (token.Is == Token::Kind::Number) {
            if (token.Text.size() > 4) return std::nullopt;
            std::from_chars(token.Text.data(), token.Text.data() + token.Text.size(), token.Value);
        }
        tokens.push_back(token);
        at = end;
    }
    return tokens;
}

/// Walks over the pieces of a text.
class Reader {
public:
    explicit Reader(const Tokens& tokens) : tokens_(tokens) {}

    bool AtEnd() const { return at_ == tokens_.size(); }
    const Token* Peek() const { return AtEnd() ? nullptr : &tokens_[at_]; }
    bool Is(Token::Kind kind) const { return !AtEnd() && tokens_[at_].Is == kind; }
    const Token& Next() { return tokens_[at_++]; }

    const Token* Take(Token::Kind kind) { return Is(kind) ? &Next() : nullptr; }
    bool TakeSign(char sign) {
        if (!Is(Token::Kind::Sign) || Peek()->Text[0] != sign) return false;
        ++at_;
        return true;
    }
    bool SkipBlanks() { return Take(Token::Kind::Blank) != nullptr; }
    /// What may stand between the parts of a date with a month's name.
    void SkipSeparators() {
        while (SkipBlanks() || TakeSign(',') || TakeSign('-') || TakeSign('.')) {
        }
    }

private:
    const Tokens& tokens_;
    std::size_t at_ = 0;
};

std::string Lower(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](char c) { return static_cast<char>(std::tolower(c)); });
    return lower;
}

/// 1 to 12 for a month's name or its first letters (three or more); 0 for another word.
int MonthByName(std::string_view word) {
    static constexpr std::array<std::string_view, 12> kMonths{
        "january", "february", "march",     "april",   "may",      "june",
        "july",    "august",   "september", "october", "november", "december"};
    const std::string name = Lower(word);
    if (name.size() < 3) return 0;
    for (std::size_t month = 0; month < kMonths.size(); ++month) {
        if (kMonths[month].starts_with(name)) return static_cast<int>(month) + 1;
    }
    return 0;
}

/// A year of two digits is one of 1930 to 2029.
std::optional<int> YearOf(const Token* token) {
    if (!token) return std::nullopt;
    if (token->Text.size() == 4 && token->Value >= 100) return token->Value;
    if (token->Text.size() > 2) return std::nullopt;
    return token->Value < 30 ? 2000 + token->Value : 1900 + token->Value;
}

std::optional<DateTime> MakeDay(std::optional<int> year, int month, int day) {
    if (!year || month < 1 || day < 1 || day > 31) return std::nullopt;
    const date::year_month_day at = date::year{*year} / month / day;
    if (!at.ok()) return std::nullopt;
    return DateTime(*year, static_cast<unsigned>(month), static_cast<unsigned>(day));
}

/// The rest of M/D/Y behind its month.
std::optional<DateTime> ReadSlashes(Reader& in, const Token& month) {
    const Token* day = in.Take(Token::Kind::Number);
    if (!day || month.Text.size() > 2 || day->Text.size() > 2 || !in.TakeSign('/'))
        return std::nullopt;
    return MakeDay(YearOf(in.Take(Token::Kind::Number)), month.Value, day->Value);
}

/// The rest of YYYY-MM-DD behind its year.
std::optional<DateTime> ReadDashes(Reader& in, const Token& year) {
    const Token* month = in.Take(Token::Kind::Number);
    if (!month || month->Text.size() > 2 || !in.TakeSign('-')) return std::nullopt;
    const Token* day = in.Take(Token::Kind::Number);
    if (!day || day->Text.size() > 2) return std::nullopt;
    return MakeDay(YearOf(&year), month->Value, day->Value);
}

/// A day, a month's name and a year, where the first of them may be the day or the name.
std::optional<DateTime> ReadNamed(Reader& in, const Token* day) {
    in.SkipSeparators();
    const Token* name = in.Take(Token::Kind::Word);
    const int month = name ? MonthByName(name->Text) : 0;
    if (month == 0) return std::nullopt;
    in.SkipSeparators();
    if (!day) day = in.Take(Token::Kind::Number);
    if (!day || day->Text.size() > 2) return std::nullopt;
    in.SkipSeparators();
    return MakeDay(YearOf(in.Take(Token::Kind::Number)), month, day->Value);
}

std::optional<DateTime> ReadDay(Reader& in) {
    if (in.Is(Token::Kind::Word)) return ReadNamed(in, nullptr);
    const Token* first = in.Take(Token::Kind::Number);
    if (!first) return std::nullopt;
    if (in.TakeSign('/')) return ReadSlashes(in, *first);
    if (first->Text.size() == 4 && in.TakeSign('-')) return ReadDashes(in, *first);
    return ReadNamed(in, first);
}

/// The hour of a clock of twelve, by the word behind the time; nothing where it does not fit.
std::optional<int> HourOf(int hour, std::string_view half) {
    if (half.empty()) return hour < 24 ? std::optional(hour) : std::nullopt;
    if (hour < 1 || hour > 12) return std::nullopt;
    return hour % 12 + (half == "pm" ? 12 : 0);
}

/// A time of day in seconds: H:MM or H:MM:SS, with AM or PM behind it or not.
std::optional<int> ReadTime(Reader& in) {
    const Token* hour = in.Take(Token::Kind::Number);
    if (!hour || !in.TakeSign(':')) return std::nullopt;
    const Token* minute = in.Take(Token::Kind::Number);
    const Token* second = in.TakeSign(':') ? in.Take(Token::Kind::Number) : hour;
    if (!minute || !second || minute->Value > 59) return std::nullopt;
    const int seconds = second == hour ? 0 : second->Value;
    in.SkipBlanks();
    const Token* half = in.Take(Token::Kind::Word);
    const std::string word = half ? Lower(half->Text) : "";
    if (seconds > 59 || (half && word != "am" && word != "pm")) return std::nullopt;
    const std::optional<int> at = HourOf(hour->Value, word);
    if (!at) return std::nullopt;
    return *at * 3600 + minute->Value * 60 + seconds;
}

}  // namespace

std::optional<DateTime> ParseStoreDate(std::string_view text) {
    static constexpr std::string_view kShape = "0000-00-00 00:00:00";
    if (text.size() != kShape.size()) return std::nullopt;
    std::array<int, 6> parts{};
    std::size_t part = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool digit = KindOf(text[i]) == Token::Kind::Number;
        if (kShape[i] == '0' ? !digit : text[i] != kShape[i]) return std::nullopt;
        if (digit) {
            parts[part] = parts[part] * 10 + (text[i] - '0');
        } else {
            ++part;
        }
    }
    if (parts[3] > 23 || parts[4] > 59 || parts[5] > 59) return std::nullopt;
    const std::optional<DateTime> day = MakeDay(parts[0], parts[1], parts[2]);
    if (!day) return std::nullopt;
    return DateTime::FromSeconds(day->Seconds() + parts[3] * 3600 + parts[4] * 60 + parts[5]);
}

std::optional<DateTime> ParseDate(std::string_view text) {
    const std::optional<Tokens> tokens = Split(text);
    if (!tokens) return std::nullopt;
    Reader in(*tokens);
    in.SkipBlanks();
    const std::optional<DateTime> day = ReadDay(in);
    if (!day) return std::nullopt;
    const bool gap = in.SkipBlanks();
    if (in.AtEnd()) return day;
    const std::optional<int> time = gap ? ReadTime(in) : std::nullopt;
    in.SkipBlanks();
    if (!time || !in.AtEnd()) return std::nullopt;
    return DateTime::FromSeconds(day->Seconds() + *time);
}

}  // namespace zolmara
