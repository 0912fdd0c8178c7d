#pragma once

// Line numbers are the keys of the worksheets, under a unique index. A gap is opened or closed by
// two statements: the rows that move are lifted above 10000, where they are out of the way of
// every real line, and then fall to their new places.

#include <string_view>

#include "core/Currency.h"

namespace zolmara {

/// What a line is added or removed as: a whole line, or a subscript within its group.
enum class LineStep { Whole, Subscript };

/// How a delete ended.
enum class LineResult {
    Done,
    Refused,  ///< a line that stays: of the form, or a total
    NoSuchLine,
    Cancelled,  ///< the worksheet forms could not be closed
};

/// The line at the head of the group: 4 for 4.01.
constexpr Currency GroupOf(Currency line) { return Currency::FromWhole(line.Whole()); }
/// The first line behind the group: 5 for 4.01.
constexpr Currency NextGroup(Currency line) { return GroupOf(line) + kWholeStep; }
/// The last line that a group can hold: 4.99 for 4.01.
constexpr Currency LastOfGroup(Currency line) { return NextGroup(line) - kSubscriptStep; }

/// Frees the line for a new row: a whole line moves the rows from it and below `bound` up by one,
/// a subscript the rest of its group by .01. `key` is the table's key field.
void OpenGap(std::string_view table, std::string_view key, Currency line, int bound);

/// Closes the place of a deleted line: the rows from it and below `bound` come down by one, or
/// the rest of its group by .01.
void CloseGap(std::string_view table, std::string_view key, Currency line, LineStep step,
              int bound);

/// The first key behind the line; 0 when there is none.
Currency KeyBehind(std::string_view table, std::string_view key, Currency line);

/// How a deleted line's gap is closed: a whole line that leaves no subscripts behind closes as a
/// whole line; anything else closes within the group, so that the first subscript of a deleted
/// whole line becomes the new whole line.
LineStep ClosingStep(Currency line, Currency keyBehind);

/// True where the table has the line.
bool HasLine(std::string_view table, std::string_view key, Currency line);

/// The number of lines of the line's group.
int GroupSize(std::string_view table, std::string_view key, Currency line);

}  // namespace zolmara
