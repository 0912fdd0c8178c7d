#pragma once

// The headings of a grid's columns: the column's number on its own line, and below it the title
// in as many lines as the column's width asks for.

#include <QString>
#include <functional>

namespace zolmara::ui {

/// The width of a text in the units of the column's width.
using TextWidth = std::function<double(const QString& text)>;

/// Breaks a title between its words where the next word would pass the width. Each word counts a
/// twentieth more than it measures. Two blanks are one; a word wider than the column goes on behind
/// its hyphens, or stands alone.
/// "|" always begins a new line.
QString FoldTitle(const QString& title, double width, const TextWidth& measure);

/// The whole heading; a column without a number has its title alone.
QString Heading(const QString& number, const QString& title, double width,
                const TextWidth& measure);

}  // namespace zolmara::ui
