#pragma once

// The statement as a workbook with live formulas whose results are those of before an entry, so
// that only what has calculated it can come to the figures behind the entry.

#include <string>
#include <vector>

namespace zolmara::bench {

/// A cell of the workbook.
struct BookPlace {
    std::string Sheet;
    int Row = 0;     ///< from 1
    int Column = 0;  ///< from 0
    std::string Address() const;
    auto operator<=>(const BookPlace&) const = default;
};

/// What a cell is to be when it is calculated.
struct BookFigure {
    BookPlace Place;
    double Value = 0;
};

struct StaleBook {
    std::string Path;
    BookPlace Keyed;  ///< the cell of the entry, which has it already
    std::vector<BookFigure> Figures;
};

/// The one entry of the table, put into a file by nobody who calculates: an expense on A, on
/// which the pools and all that follows from them rest.
void KeyFromOutside(const std::string& crf);
inline constexpr double kEntry = 1000;

/// Makes the workbook of a calculated statement by the command line's program, in the folder.
StaleBook MakeStaleBook(const std::string& crf, const std::string& cli, const std::string& folder);

/// Raises when a figure is not what the program itself comes to. `values` stand in the order of
/// the figures.
void CheckFigures(const StaleBook& book, const std::vector<double>& values);

}  // namespace zolmara::bench
