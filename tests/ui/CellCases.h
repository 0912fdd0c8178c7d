#pragma once

// What the editors take, put right and refuse, cell by cell, as the form's instructions have it.
// The grid is keyed with these entries and the command is given them; both must meet them alike.

#include <optional>
#include <string>
#include <vector>

namespace zolmara::ui {

/// One entry, and the box that meets it: "Title|text". In it {cell} stands for the cell's place.
struct Try {
    std::string Keys;                   ///< empty for the key Delete
    std::optional<std::string> Stored;  ///< nothing where the cell keeps what it has
    std::string Box = "";
    std::string Also = "";   ///< another cell of the row that follows: "Col_4=Utilities"
    bool OnLeaving = false;  ///< the row is at fault: the box comes when it is left
    bool Picked = false;     ///< Keys is an entry of the cell's list
};
inline constexpr std::nullopt_t kKeeps = std::nullopt;
using Tries = std::vector<Try>;

/// The cells of a worksheet on one line that are keyed alike.
struct Cells {
    std::string Item;
    double Line;
    std::string Fields;  ///< apart by blanks; "CC_*" for every cost center's column
    Tries Keyed;
};

std::vector<Cells> CellsOfA();
std::vector<Cells> CellsOfGAndBases();
std::vector<Cells> CellsOfS();
std::vector<Cells> CellsOfSchedules();

/// Cells that are shown and cannot be keyed.
struct Closed {
    std::string Item;
    double Line;
    std::string Fields;
};
std::vector<Closed> ClosedCells();

/// "Entry Error|" and the text that refuses a closed cell.
const std::string& LockedBox();

/// Puts lines into the open sample statement that it lacks and that are keyed by the cases.
void AddLinesForCases();

// --- Kinds of cells -------------------------------------------------------------------------

std::string Invalid(const std::string& keyed);
std::string Discarded(const std::string& keyed);
std::string Rounded(const std::string& keyed, const char* decimals);
std::string NoDate(const std::string& keyed);

Tries Money();
Tries TwoDecimals();
Tries Percentage();
/// A text up to the size of its field.
Tries Words(int size);
Tries YesNo();
Tries Dates();
Tries Labels();
Tries Names();
/// Entries that are taken, then others that are refused with one box.
Tries Code(const std::string& title, const std::string& text, Tries tries, const Tries& refused);

}  // namespace zolmara::ui
