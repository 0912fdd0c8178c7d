#pragma once

// Text in columns: what a field of a report looks like, and lines with texts at tabs. Widths and
// tabs count characters; the first column of a line is 1.

#include <string>
#include <string_view>
#include <vector>

#include "core/Variant.h"

namespace zolmara {

/// Trims, cuts to the width, and puts half of the free places, rounded down, ahead.
std::string CenterIn(std::string_view text, int width);
/// The value's text, filled with blanks and cut to the width. A Null counts as empty.
std::string PadRight(const Variant& value, int width);
/// The same, aligned to the right: its last characters where it is too long.
std::string PadLeft(const Variant& value, int width);
/// A line number with two decimals, or with blanks in their place where they are "00", aligned to
/// the right. Blanks for a Null or an empty text.
std::string FormatLineNum(const Variant& value, int width);

/// An amount in whole numbers with thousands commas, aligned to the right. One that is too wide
/// takes the blank ahead of its field, so that the result is longer than the width by one; it
/// loses its commas only when that is not enough. What does not fit even so is asterisks, never a
/// shortened number. A Null gives an empty text.
std::string FormatAmount(const Variant& value, int width);
/// The same for a pattern with decimals; a number that is too wide is rounded to as many
/// decimals as fit.
std::string FormatDecimals(const Variant& value, int width, std::string_view pattern);

/// A text cut at its words into lines of at most the width: at the last blank at or before
/// position width + 1; with none, hard at the width. No line for an empty text.
std::vector<std::string> CutAtWords(std::string_view text, int width);

/// A line that is put together from texts at tabs.
class TextLine {
public:
    TextLine() { text_.reserve(kUsualLine); }

    /// Puts a text at a column. A text that would begin inside the former one gives up blanks at
    /// its own beginning, and stands behind the former one for what remains.
    TextLine& At(int column, std::string_view text);
    /// Puts an amount at a column. One that has taken the blank ahead of its field would run into
    /// the amount before it, and the two would read as one: what stands before it moves to the left
    /// by one, where there are blanks to give.
    TextLine& AmountAt(int column, std::string_view text);
    /// Puts what FormatAmount gives for a number into the field at a tab, at its right end, by
    /// AmountAt.
    TextLine& AmountIn(int tab, int width, double amount);
    const std::string& Text() const { return text_; }

private:
    void MoveLeft();

    /// As wide as a page that lies.
    static constexpr std::size_t kUsualLine = 176;

    std::string text_;
    std::size_t length_ = 0;
};

}  // namespace zolmara
