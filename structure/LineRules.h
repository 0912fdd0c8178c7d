#pragma once

// The constants by which each worksheet with free lines adds and deletes them.

#include <span>
#include <string_view>

#include "core/Currency.h"

namespace zolmara {

/// Who makes and removes the row of a line.
enum class LineKeeper {
    CostCenters,  ///< rows and columns across the CRF
    Components,   ///< S-2 and its mirrors
    Gap,          ///< the worksheet alone, under the common convention
    Entries,      ///< A-6, which is numbered at the end and not renumbered
    MailLines,    ///< S-1 Part I, e-mail lines as subscripts under a line of the form
    Officers,     ///< S-1 Part II, whole lines behind the form's five
};

struct LineRules {
    std::string_view Item;
    LineKeeper Keeper;
    std::string_view Key;
    std::string_view Shown;       ///< condition of the rows that the editor shows
    std::string_view MaxLimit;    ///< condition on the highest whole line
    int LastWhole = 0;            ///< the whole line that cannot grow
    int AddBound = 0;             ///< of a whole gap that is opened
    int DeleteBound = 0;          ///< of a whole gap that is closed
    int GroupLimit = 0;           ///< lines in a group, the whole line among them
    int FormLines = 0;            ///< whole lines up to this one are the form's and stay
    std::string_view NameField;   ///< must not be blank on any row at an add; empty: no check
    std::string_view NamesBlank;  ///< the refusal then
};

/// The rules of an item, by its exact name and, on G-1 with its two sections, by the line. None
/// for a worksheet without free lines.
const LineRules* FindLineRules(std::string_view item, Currency line);

/// True where the worksheet has the line and its editor shows it.
bool IsShownLine(const LineRules& rules, Currency line);

/// The first line of the second section of free lines of G-1.
inline constexpr int kOtherExpenses = 16;

}  // namespace zolmara
