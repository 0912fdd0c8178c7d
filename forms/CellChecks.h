#pragma once

// The checks that the rules of cells are made of. Each works on an entry: it may refuse it, put
// its value into the form in which it is kept, or let other cells of the row follow.

#include <span>
#include <string>
#include <string_view>

#include "forms/CellRules.h"

namespace zolmara {

/// The numeric check of all grids. An all-blank value becomes 0. A number of more decimals is
/// rounded and anything else refused, with the text that is to be shown; decimals is then
/// kNotNumeric. An empty text means that the value passed.
std::string CheckNumericCell(Variant& value, int& decimals);
inline constexpr int kNotNumeric = 65535;

/// One of a fixed list of answers: the letters that stand for it, and what is stored.
struct Answer {
    char Letter;
    std::string_view Stored;
};

/// What a check of the rule table may need to know beyond the entry.
struct CheckArgument {
    int Decimals = 0;
    std::span<const Answer> Answers = {};
    std::string_view Refusal = {};                   ///< of an answer
    std::span<const std::string_view> Entries = {};  ///< of a list: "1 - Square Feet"
    std::string_view Menu = {};                      ///< the list's name
    bool OnlyPicked = false;                         ///< the list's cell is locked for typing
};

using CellCheck = void (*)(CellEntry& entry, const CheckArgument& argument);

// --- Of any worksheet
void Check_Text(CellEntry& entry, const CheckArgument& argument);
void Check_Number(CellEntry& entry, const CheckArgument& argument);
void Check_Answer(CellEntry& entry, const CheckArgument& argument);
void Check_Date(CellEntry& entry, const CheckArgument& argument);

// --- A family
void Check_A(CellEntry& entry, const CheckArgument& argument);
void Check_A6(CellEntry& entry, const CheckArgument& argument);
void Check_A8(CellEntry& entry, const CheckArgument& argument);
void Check_A81CostCenter(CellEntry& entry, const CheckArgument& argument);
void Check_A81Symbol(CellEntry& entry, const CheckArgument& argument);
void Check_A81Relationship(CellEntry& entry, const CheckArgument& argument);
void Check_A81Percentage(CellEntry& entry, const CheckArgument& argument);
void Check_G(CellEntry& entry, const CheckArgument& argument);

// --- Cost centers and bases
void Check_CCName(CellEntry& entry, const CheckArgument& argument);
void Check_CCLabel(CellEntry& entry, const CheckArgument& argument);
/// An entry of the list fills the code and both labels. It is given in full or by its code.
void Check_Basis(CellEntry& entry, const CheckArgument& argument);

// --- S family
void Check_Digit(CellEntry& entry, const CheckArgument& argument);
void Check_State(CellEntry& entry, const CheckArgument& argument);
void Check_Zip(CellEntry& entry, const CheckArgument& argument);
void Check_Control(CellEntry& entry, const CheckArgument& argument);
void Check_Began(CellEntry& entry, const CheckArgument& argument);
void Check_Available(CellEntry& entry, const CheckArgument& argument);
void Check_Ccn(CellEntry& entry, const CheckArgument& argument);
void Check_Contractor(CellEntry& entry, const CheckArgument& argument);
void Check_RegionNumber(CellEntry& entry, const CheckArgument& argument);
void Check_RegionState(CellEntry& entry, const CheckArgument& argument);

// --- Of the row as it will be, once its cells have passed
EntryMessage CheckRow_A6(const RowEntry& row);
EntryMessage CheckRow_A81p2(const RowEntry& row);

/// The text of the entry, trimmed of blanks.
std::string KeyedText(const CellEntry& entry);
/// Another cell of the entry's row, as keyed or else as stored.
Variant RowCell(const CellEntry& entry, std::string_view field);
Variant RowCell(const RowEntry& row, std::string_view field);
/// "You're attempting to enter invalid data ['x'].  " with the value that was keyed.
std::string InvalidDataText(const Variant& value);

}  // namespace zolmara
