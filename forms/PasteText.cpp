#include "forms/PasteText.h"

#include "core/Characters.h"
#include "core/Globals.h"

namespace zolmara {

namespace {

/// Blanks that spreadsheets and web pages put into numbers: hard, narrow and figure blanks.
constexpr std::string_view kBlanks[] = {"\u00a0", "\u202f", "\u2007", "\u2009"};
constexpr std::string_view kMinusSigns[] = {"\u2212", "\u2013", "\u2014"};

std::string PlainBlanks(std::string_view pasted) {
    std::string text(pasted);
    for (const std::string_view blank : kBlanks) text = Replace(text, blank, " ");
    for (char& c : text)
        if (c == '\t' || c == '\r' || c == '\n') c = ' ';
    return text;
}

/// Blanks inside a number part its thousands: three digits stand behind each.
bool PartsThousands(std::string_view text, std::size_t at) {
    if (at == 0 || !IsDigit(text[at - 1]) || text.size() < at + 4) return false;
    for (std::size_t i = at + 1; i <= at + 3; ++i)
        if (!IsDigit(text[i])) return false;
    return at + 4 == text.size() || !IsDigit(text[at + 4]);
}

std::string WithoutThousandsBlanks(std::string_view text) {
    std::string joined;
    for (std::size_t i = 0; i < text.size(); ++i)
        if (text[i] != ' ' || !PartsThousands(text, i)) joined += text[i];
    return joined;
}

/// "1,234-" is a negative too, and "$ -" is an accountant's nothing.
std::string SignAhead(std::string text) {
    if (text.size() < 2 || text.back() != '-') return text;
    text.pop_back();
    return "-" + std::string(Trim(text));
}

}  // namespace

std::string PlainText(std::string_view pasted) {
    const std::string text = PlainBlanks(pasted);
    const std::string_view trimmed = Trim(text);
    return std::string(trimmed);
}

std::string PlainNumber(std::string_view pasted) {
    const std::string plain = PlainText(pasted);
    std::string text = plain;
    for (const std::string_view sign : kMinusSigns) text = Replace(text, sign, "-");
    const std::string bare = Replace(Replace(text, "$", ""), " ", "");
    if (bare == "-" || bare == "(-)") return "0";
    const auto number = ParseNumber(SignAhead(WithoutThousandsBlanks(text)));
    return number ? NumberText(*number) : plain;
}

}  // namespace zolmara
