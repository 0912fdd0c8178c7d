#include "print/TextFields.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "core/Globals.h"

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

std::string FormatLineNum(const Variant& value, int width) {
    if (IsBlankValue(value)) return Blanks(Size(width));
    std::string text = IsNumeric(value) ? FormatNumber(NumOr(value), "0.00") : Text(value);
    if (text.ends_with(".00")) text.replace(text.size() - 3, 3, "   ");
    return AlignRight(text, width);
}

namespace {

/// The largest number whose text shows every digit of it.
constexpr double kAllDigits = 1e15;

/// A whole number in "#,##0", which nearly every amount is, put together from its last digit on.
class WholeText {
public:
    explicit WholeText(double whole) {
        text_.fill(' ');
        const fmt::format_int digits(static_cast<std::int64_t>(whole));
        for (std::size_t left = digits.size(), put = 0; left > 0; ++put) {
            const char sign = digits.data()[--left];
            if (put > 0 && put % 3 == 0 && sign != '-') text_[--start_] = ',';
            text_[--start_] = sign;
        }
    }

    std::size_t Size() const { return text_.size() - start_; }
    /// With blanks ahead of it up to the width.
    std::string AlignedRight(std::size_t width) const {
        const std::size_t size = std::min(std::max(width, Size()), text_.size());
        return std::string(width > size ? width - size : 0, ' ')
            .append(text_.data() + text_.size() - size, size);
    }

private:
    std::array<char, 24> text_;
    std::size_t start_ = text_.size();
};

bool IsWhole(const Variant& value) {
    return value.IsDouble() && std::trunc(value.AsDouble()) == value.AsDouble() &&
           std::abs(value.AsDouble()) < kAllDigits;
}

}  // namespace

std::string FormatAmount(const Variant& value, int width) {
    if (IsWhole(value)) {
        const WholeText whole(value.AsDouble());
        if (whole.Size() <= Size(width) + 1) return whole.AlignedRight(Size(width));
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

}  // namespace zolmara
