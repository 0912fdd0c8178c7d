#pragma once

// How an exported sheet goes on paper: its orientation, its pages across, the height of its rows.

#include <string>
#include <string_view>

#include "forms/WorksheetForm.h"

namespace zolmara {

inline constexpr double kLineHeight = 15;  ///< of a row of one line, in points

/// As the form is printed.
bool IsLandscape(const std::string& item);
/// The width of a column in characters, as workbooks count it.
double CharactersOf(const FormColumn& column);
/// A schedule of many cost centers goes over several pages, with its first columns on each: on one
/// nobody could read it.
int PagesAcross(const WorksheetForm& form, bool landscape);
/// The lines that a text takes in a column so wide, its own line ends counted: its letters are
/// narrower than the figures that widths are told in.
int LinesIn(std::string_view text, double characters);

}  // namespace zolmara
