// The checks of the S worksheets, the cost centers and the pooled allocation bases.

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "core/Clock.h"
#include "core/Dialogs.h"
#include "core/Globals.h"
#include "forms/CellChecks.h"
#include "store/session/Session.h"

namespace zolmara {

namespace {

bool IsDigits(std::string_view text) {
    return !text.empty() && std::ranges::all_of(text, [](char c) { return Between(c, '0', '9'); });
}

std::string WithoutDashes(const CellEntry& entry) { return Replace(KeyedText(entry), "-", ""); }

/// "14-0234" of "140234".
std::string DashedNumber(const std::string& number) {
    return std::string(LeftText(number, 2)) + "-" + std::string(MidText(number, 3));
}

constexpr std::string_view kInvalidEntry = "Error: Invalid Entry";
constexpr std::size_t kLabelSize = 10;

/// The parts of a basis: "1 - Square Feet" is code 1, "Square" and "Feet".
struct Basis {
    int Code;
    std::string Label1;
    std::string Label2;
};

Basis BasisOf(std::string_view entry) {
    const std::string_view words = entry.substr(entry.find("- ") + 2);
    const auto blank = words.find(' ');
    return {static_cast<int>(Val(entry.substr(0, 2))), std::string(words.substr(0, blank)),
            blank == std::string_view::npos ? "" : std::string(words.substr(blank + 1))};
}

void PickBasis(CellEntry& entry, const Basis& basis) {
    const std::pair<std::string, Variant> cells[] = {
        {"StatLabel1", basis.Label1}, {"StatLabel2", basis.Label2}, {"StatCode", basis.Code}};
    for (const auto& [field, value] : cells)
        if (SameText(field, entry.Field))
            entry.Value = value;
        else
            entry.Others.emplace_back(field, value);
}

}  // namespace

void Check_CCName(CellEntry& entry, const CheckArgument& /*argument*/) {
    constexpr std::string_view kTitle = "Table CostCenters entry error";
    if (entry.IsBlank())
        return entry.Refuse("A cost center may not be blank, please enter a cost center title.",
                            kTitle);
    const Variant others = gDB.Scalar(
        "SELECT Count(LineNum) AS Cnt From CostCenters WHERE Trim(Ucase([CCName]))=? "
        "And LineNum <> ?;",
        {UCase(KeyedText(entry)), entry.NewRow ? Currency() : entry.Line});
    if (NumOr(others) > 0)
        entry.Refuse(
            "This cost center name has already been used, please enter a unique cost "
            "center title.",
            kTitle);
}

void Check_CCLabel(CellEntry& entry, const CheckArgument& /*argument*/) {
    const std::string text = Text(entry.Value);
    if (TextLength(text) <= kLabelSize) return;
    entry.Warn(fmt::format("This field may not exceed {} characters.", kLabelSize), "Entry Error",
               kExclamation);
    entry.Value = LeftText(text, kLabelSize);
}

void Check_Basis(CellEntry& entry, const CheckArgument& argument) {
    const std::string keyed = KeyedText(entry);
    for (const std::string_view line : argument.Entries) {
        const Basis basis = BasisOf(line);
        if (SameText(line, keyed) || NumberText(double(basis.Code)) == keyed)
            return PickBasis(entry, basis);
    }
    entry.Refuse(kLockedCellText);
}

void Check_Digit(CellEntry& entry, const CheckArgument& /*argument*/) {
    const std::string text = KeyedText(entry);
    if (text.size() != 1 || !IsDigits(text)) return entry.Refuse("Please enter a number 0-9.");
    entry.Value = text;
}

void Check_State(CellEntry& entry, const CheckArgument& /*argument*/) {
    const std::string state = KeyedText(entry);
    if (TextLength(state) != 2)
        return entry.Refuse("Please only use the two character state code.");
    entry.Value = state;
}

void Check_Zip(CellEntry& entry, const CheckArgument& /*argument*/) {
    const std::string zip = KeyedText(entry);
    const bool plain = zip.size() == 5 && IsDigits(zip);
    const bool extended =
        zip.size() == 10 && zip[5] == '-' && IsDigits(zip.substr(0, 5)) && IsDigits(zip.substr(6));
    if (!plain && !extended) return entry.Refuse("Zip code must be formated XXXXX or XXXXX-XXXXX");
    entry.Value = zip;
}

void Check_Control(CellEntry& entry, const CheckArgument& /*argument*/) {
    const auto number = ParseNumber(KeyedText(entry));
    if (!number || *number != std::trunc(*number) || !Between(*number, 1.0, 14.0))
        return entry.Refuse("The Type of Control must be 1 - 14.", "Input Error");
    entry.Value = NumberText(*number);
}

void Check_Began(CellEntry& entry, const CheckArgument& argument) {
    Check_Date(entry, argument);
    const auto began = DateOf(entry.Value);
    const auto end = DateOf(gFYEnd);
    if (!entry.Refused && began && end && *began > *end)
        entry.Warn("This date should be on or before the reporting period ending date.");
}

void Check_Available(CellEntry& entry, const CheckArgument& argument) {
    Check_Date(entry, argument);
    if (entry.Refused) return;
    const auto date = DateOf(entry.Value);
    if (!date || *date <= Now()) entry.Refuse("Line 4, Column 4 must be a future date.");
}

void Check_Ccn(CellEntry& entry, const CheckArgument& /*argument*/) {
    const std::string number = WithoutDashes(entry);
    if (TextLength(number) != 6)
        return entry.Refuse("Column 2 must be 5 characters long, 6 with hypen.");
    if (!IsDigits(MidText(number, 3)))
        return entry.Refuse("The last four characters must be numeric.");
    entry.Value = UCase(DashedNumber(number));
}

void Check_Contractor(CellEntry& entry, const CheckArgument& /*argument*/) {
    const std::string text = KeyedText(entry);
    if (text.size() == 5 && IsDigits(text) && Val(text) > 0) {
        entry.Value = text;
        return;
    }
    entry.Refuse(InvalidDataText(entry.Value) +
                     "The cell you're attempting to input or modify only accepts five digit "
                     "numeric data greater than zero.",
                 kInvalidEntry);
}

void Check_RegionNumber(CellEntry& entry, const CheckArgument& /*argument*/) {
    constexpr std::size_t kSize = 7;
    const std::string number = DashedNumber(WithoutDashes(entry));
    if (TextLength(number) > kSize)
        return entry.Refuse(InvalidDataText(entry.Value) +
                                "The cell you're attempting to input or modify only accepts seven "
                                "characters.",
                            kInvalidEntry);
    entry.Value = number;
}

void Check_RegionState(CellEntry& entry, const CheckArgument& /*argument*/) {
    const std::string state = KeyedText(entry);
    if (TextLength(state) != 2)
        return entry.Refuse(InvalidDataText(entry.Value) + "Enter the two character state code.",
                            kInvalidEntry);
    entry.Value = state;
}

}  // namespace zolmara
