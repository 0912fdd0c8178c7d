#include "print/TextFields.h"

#include <fmt/format.h>

#include <algorithm>

#include "core/Globals.h"
#include "core/WholeDigits.h"

namespace zolmara {
namespace {

std::size_t Size(int width) { return static_cast<std::size_t>(std::max(width, 0)); }

std::string Blanks(std::size_t count) { return std::string(count, ' '); }

std::string AlignRight(std::string_view text, int width) {
    const std::size_t length = TextLength(text);
    return length >= Size(width) ? std::string(text) : Blanks(Size(width) - length).append(text);
}

/// A number's text in its field: asterisks where it takes more than the blank ahead of the field.
std::string InField(const std::string& text, int width) {
    return text.size() > Size(width) + 1 ? std::string(Size(width), '*') : AlignRight(text, width);
}

/// Where a line of a text ends, in characters.
std::size_t LineEnd(std::string_view text, std::size_t width) {
    for (std::size_t i = width + 1; i > 0; --i) {
        if (MidText(text, i, 1) == " ") return i - 1;
    }
    return width;
}

}  // namespace

std::string CenterIn(std::string_view text, int width) {
    const std::string_view cut = LeftText(Trim(text), Size(width));
    return Blanks((Size(width) - TextLength(cut)) / 2).append(cut);
}

std::string PadRight(const Variant& value, int width) {
    const std::string text = Text(value);
    const std::string_view cut = LeftText(text, Size(width));
    return std::string(cut) + Blanks(Size(width) - TextLength(cut));
}

std::string PadLeft(const Variant& value, int width) {
    const std::string text = Text(value);
    const std::size_t length = TextLength(text);
    if (length <= Size(width)) return AlignRight(text, width);
    return std::string(MidText(text, length - Size(width) + 1));
}

namespace {

/// A line of the form, with a subscript of two digits or none: no other line is keyed.
bool IsFormLine(const Variant& value) {
    constexpr std::int64_t kMost = 1000000;
    return value.IsCurrency() && value.AsCurrency().Units() >= 0 &&
           value.AsCurrency().Whole() < kMost &&
           value.AsCurrency().Units() % kSubscriptStep.Units() == 0;
}

std::string FormLineText(Currency line) {
    const std::int64_t subscript = line.Units() / kSubscriptStep.Units() % 100;
    std::string text(fmt::format_int(line.Whole()).c_str());
    if (subscript == 0) return text + "   ";
    return text.append(
        {'.', static_cast<char>('0' + subscript / 10), static_cast<char>('0' + subscript % 10)});
}

}  // namespace

std::string FormatLineNum(const Variant& value, int width) {
    if (IsFormLine(value)) return AlignRight(FormLineText(value.AsCurrency()), width);
    if (IsBlankValue(value)) return Blanks(Size(width));
    std::string text = IsNumeric(value) ? FormatNumber(NumOr(value), "0.00") : Text(value);
    if (text.ends_with(".00")) text.replace(text.size() - 3, 3, "   ");
    return AlignRight(text, width);
}

std::string FormatAmount(const Variant& value, int width) {
    if (value.IsDouble() && IsWholeNumber(value.AsDouble())) {
        const WholeDigits digits(value.AsDouble(), Thousands::Commas);
        if (digits.Size() <= Size(width) + 1) return AlignRight(digits.Text(), width);
    }
    const std::string text = FormatNumber(value, "#,##0");
    if (text.size() <= Size(width) + 1) return text.empty() ? text : AlignRight(text, width);
    return InField(FormatNumber(value, "0"), width);
}

std::string FormatDecimals(const Variant& value, int width, std::string_view pattern) {
    std::string text = FormatNumber(value, pattern);
    while (text.size() > Size(width) && pattern.find('.') != std::string_view::npos) {
        pattern.remove_suffix(pattern.ends_with(".0") ? 2 : 1);
        text = FormatNumber(value, pattern);
    }
    return text.empty() ? text : InField(text, width);
}

std::vector<std::string> CutAtWords(std::string_view text, int width) {
    std::vector<std::string> lines;
    const std::size_t most = std::max<std::size_t>(Size(width), 1);
    while (TextLength(text) > most) {
        const std::size_t end = LineEnd(text, most);
        lines.emplace_back(LeftText(text, end));
        text = LTrim(MidText(text, end + 1));
    }
    if (!text.empty()) lines.emplace_back(text);
    return lines;
}

TextLine& TextLine::At(int column, std::string_view text) {
    std::size_t start = Size(column - 1);
    for (; start < length_ && text.starts_with(' '); ++start) text.remove_prefix(1);
    if (RTrim(text).empty()) return *this;
    if (start > length_) {
        text_.append(start - length_, ' ');
        length_ = start;
    }
    text_ += text;
    length_ += TextLength(text);
    return *this;
}

/// The nearest two blanks become one, and one stands behind.
void TextLine::MoveLeft() {
    const auto blanks = text_.rfind("  ");
    if (blanks == std::string::npos) return;
    text_.erase(blanks, 1);
    text_ += ' ';
}

TextLine& TextLine::AmountAt(int column, std::string_view text) {
    const bool touches = !text.empty() && text.front() != ' ' && length_ == Size(column - 1);
    if (touches && !text_.empty() && text_.back() != ' ') MoveLeft();
    return At(column, text);
}

TextLine& TextLine::AmountIn(int tab, int width, double amount) {
    if (IsWholeNumber(amount)) {
        const WholeDigits digits(amount, Thousands::Commas);
        const std::size_t start = Size(tab + width - 1) - digits.Size();
        if (digits.Size() <= Size(width) && length_ < start) {
            text_.append(start - length_, ' ').append(digits.Text());
            length_ = start + digits.Size();
            return *this;
        }
    }
    const std::string text = FormatAmount(amount, width);
    return AmountAt(tab + width - static_cast<int>(text.size()), text);
}

}  // namespace zolmara
