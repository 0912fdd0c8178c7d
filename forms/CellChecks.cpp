#include "forms/CellChecks.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "core/Dialogs.h"
#include "core/Globals.h"
#include "forms/CellAddress.h"
#include "store/session/Session.h"
#include "worksheets/W_A.h"
#include "worksheets/W_A6.h"
#include "worksheets/W_A8.h"

namespace zolmara {

namespace {

/// The number behind "Col_".
int ColumnNumber(const CellEntry& entry) { return static_cast<int>(Val(entry.Field.substr(4))); }

struct RefusalWords {
    int Column;
    std::string_view Title;
    std::string_view Text;
};

// The title of column 7 speaks of the up line; the form has it so.
constexpr RefusalWords kA6Words[] = {
    {2, "Error: Invalid CODE Entry",
     "A valid CODE [any letter from 'A' through 'Z'] must be entered."},
    {4, "Error: Invalid 'UpLineNum' Entry", "The UpLineNum is not a valid cost center number"},
    {5, "Error: Invalid Non-numeric 'UpAmount' Entry",
     "Valid 'UpAmount' entries are numeric only."},
    {7, "Error: Invalid 'UpLineNum' Entry", "The DnLineNum is not a valid cost center number"},
    {8, "Error: Invalid Non-numeric 'DnAmount' Entry",
     "Valid 'DnAmount' entries are numeric only."},
};

constexpr RefusalWords kA8Words[] = {
    {1, "Error: Invalid Length Entry",
     "The Description may only contain up to 36 characters.  Select OK to continue."},
    {2, "Error: Invalid Basis Entry", "Basis entries may only be the letters 'A' or 'B'."},
    {3, "Error: Invalid Non-numeric 'UpSalary' Entry",
     "Amount entries must be numeric.  Select OK to continue."},
    {5, "Error: Invalid Negative 'UpLineNum' Entry", " is not a valid cost center number"},
};

template <std::size_t Count>
void RefuseWithWords(CellEntry& entry, const RefusalWords (&words)[Count], std::string_view front) {
    const int column = ColumnNumber(entry);
    for (const RefusalWords& row : words)
        if (row.Column == column)
            return entry.Refuse(fmt::format("{}{}", front, row.Text), row.Title);
    entry.Refuse(kLockedCellText);
}

/// The lines of the balance sheet that are subtracted, and so are kept without a sign.
constexpr int kDeductionLines[] = {6, 13, 15, 17, 19, 21, 23};

constexpr std::string_view kSymbolTitle = "Error: Invalid Symbol Entry";
constexpr std::string_view kSymbolText =
    "Valid Symbol entries are 'A' through 'G' only.  Select OK to continue.";

bool IsSymbol(std::string_view text) { return text.size() == 1 && Between(text[0], 'A', 'G'); }

EntryMessage CheckPercentage(const Variant& value, std::string_view name) {
    if (value.IsNull()) return {};
    if (!IsNumeric(value))
        return {fmt::format("Valid {} entries are numeric only.  Select OK to continue.", name),
                fmt::format("Error: Invalid Non-Numeric '{}' Entry", name), kCritical};
    if (NumOr(value) < 0)
        return {fmt::format("Valid {} entries may not be negative numbers.  Select OK to "
                            "continue.",
                            name),
                fmt::format("Error: Invalid Negative '{}' Entry", name), kCritical};
    return {};
}

/// An amount that is keyed beside no cost center would be lost as soon as the row is stored.
EntryMessage AmountWithoutLine(const RowEntry& row) {
    for (const int column : {4, 7}) {
        const std::string amountField = fmt::format("Col_{}", column + 1);
        const Variant* amount = row.Find(amountField);
        if (amount == nullptr || NumOr(*amount) == 0) continue;
        if (NumOr(RowCell(row, fmt::format("Col_{}", column))) != 0) continue;
        const auto words = std::ranges::find(kA6Words, column, &RefusalWords::Column);
        return {std::string(words->Text), std::string(words->Title), kCritical, false, amountField};
    }
    return {};
}

Variant StoredCell(std::string_view table, Currency line, std::string_view field) {
    return gDB.Scalar(
        fmt::format("SELECT [{}] FROM [{}] WHERE {}=?;", field, table, LineKeyOf(table)), {line});
}

}  // namespace

std::string KeyedText(const CellEntry& entry) { return std::string(Trim(Text(entry.Value))); }

Variant RowCell(const CellEntry& entry, std::string_view field) {
    const Variant* keyed = entry.Row == nullptr ? nullptr : entry.Row->Find(field);
    return keyed != nullptr ? *keyed : StoredCell(entry.Item, entry.Line, field);
}

Variant RowCell(const RowEntry& row, std::string_view field) {
    const Variant* keyed = row.Find(field);
    return keyed != nullptr ? *keyed : StoredCell(row.Table, row.Line, field);
}

std::string InvalidDataText(const Variant& value) {
    return fmt::format("You're attempting to enter invalid data ['{}'].  ", Text(value));
}

std::string CheckNumericCell(Variant& value, int& decimals) {
    if (IsBlankValue(value)) {
        value = 0;
        return "";
    }
    constexpr std::string_view kOnly =
        "The cell you're attempting to input or modify only accepts ";
    if (!IsNumeric(value)) {
        decimals = kNotNumeric;
        return fmt::format("{}{}numeric data.  Your entry or modification is being discarded.",
                           InvalidDataText(value), kOnly);
    }
    const double number = NumOr(value);
    if (IsExactTo(number, decimals)) {
        value = number;
        return "";
    }
    const std::string text = fmt::format(
        "{}{}{} digits to the right of the decimal point.  Your entry or modification is being "
        "rounded.",
        InvalidDataText(value), kOnly, decimals);
    value = RoundTo(number, decimals);
    return text;
}

void Check_Text(CellEntry& /*entry*/, const CheckArgument& /*argument*/) {}

void Check_Number(CellEntry& entry, const CheckArgument& argument) {
    int decimals = argument.Decimals;
    const std::string text = CheckNumericCell(entry.Value, decimals);
    if (text.empty()) return;
    if (decimals == kNotNumeric)
        entry.Refuse(text);
    else
        entry.Warn(text);
}

void Check_Answer(CellEntry& entry, const CheckArgument& argument) {
    const std::string text = UCase(KeyedText(entry));
    if (!text.empty()) {
        for (const char letter : {text.front(), text.back()})
            for (const Answer& answer : argument.Answers)
                if (answer.Letter == letter) {
                    entry.Value = answer.Stored;
                    return;
                }
    }
    entry.Refuse(argument.Refusal);
}

void Check_Date(CellEntry& entry, const CheckArgument& /*argument*/) {
    if (const auto date = DateOf(entry.Value)) {
        entry.Value = FormatDate(*date, "mm/dd/yyyy");
        return;
    }
    entry.Refuse(InvalidDataText(entry.Value) +
                     "The cell you're attempting to input or modify only accepts date data.  Your "
                     "entry or modification is being discarded.  Select OK to continue.",
                 "Error: Invalid Non-Date Entry");
}

void Check_A(CellEntry& entry, const CheckArgument& argument) {
    constexpr int kFirstAmount = 2;  // behind LineNum and CCName
    const std::string refusal = ValidateCell_A(entry.Line, kFirstAmount);
    if (!refusal.empty()) return entry.Refuse(refusal);
    Check_Number(entry, argument);
}

void Check_A6(CellEntry& entry, const CheckArgument& argument) {
    const int column = ColumnNumber(entry);
    if (column == 5 || column == 8) Check_Number(entry, argument);
    if (entry.Refused) return;
    Variant name;
    if (ValidateCell_A6(column, entry.Value, name) != 0)
        return RefuseWithWords(entry, kA6Words, "");
    if (IsBlankValue(entry.Value))
        entry.Value = nullptr;
    else if (column == 4 || column == 7)
        entry.Value = CurOr(entry.Value).ToDouble();
}

void Check_A8(CellEntry& entry, const CheckArgument& argument) {
    const int column = ColumnNumber(entry);
    const std::string keyed = Text(entry.Value);
    entry.Beeps = true;
    if (column == 3 && !IsBlankValue(entry.Value) && !IsNumeric(entry.Value))
        return RefuseWithWords(entry, kA8Words, "");
    if (column == 3) Check_Number(entry, argument);
    Variant outName;
    if (ValidateCell_A8(column, entry.Value, outName) != 0)
        return RefuseWithWords(entry, kA8Words, column == 5 ? keyed : "");
    if (column == 2) entry.Value = outName;
    if (IsBlankValue(entry.Value)) entry.Value = nullptr;
    if (column == 5) entry.Others.emplace_back("Col_4", outName);
}

void Check_A81CostCenter(CellEntry& entry, const CheckArgument& /*argument*/) {
    const Currency line = CurOr(entry.Value);
    const Variant name = gDB.Scalar("SELECT CCName FROM CostCenters WHERE LineNum=?;", {line});
    const Variant found =
        gDB.Scalar("SELECT Count(LineNum) AS Cnt FROM CostCenters WHERE LineNum=?;", {line});
    if (NumOr(found) == 0)
        return entry.Refuse(fmt::format("No cost center found for ({}).  Select OK to continue.",
                                        Text(entry.Value)),
                            "Error: Invalid Entry");
    entry.Value = line;
    entry.Others.emplace_back("Col_2", name);
}

void Check_A81Symbol(CellEntry& entry, const CheckArgument& /*argument*/) {
    const std::string symbol = UCase(KeyedText(entry));
    if (!IsSymbol(symbol)) return entry.Refuse(kSymbolText, kSymbolTitle);
    entry.Value = symbol;
    if (symbol != "G") entry.Others.emplace_back("Col_2", nullptr);
}

void Check_A81Relationship(CellEntry& entry, const CheckArgument& /*argument*/) {
    const std::string text = UCase(KeyedText(entry));
    if (text != "FINANCIAL" && text != "NON-FINANCIAL")
        entry.Refuse(
            "If the Symbol in column 1 is 'G', the Interrelationship must be either 'Financial' "
            "or 'Non-Financial.'",
            "Invalid Entry");
}

void Check_A81Percentage(CellEntry& entry, const CheckArgument& argument) {
    Check_Number(entry, argument);
    if (!entry.Refused && NumOr(entry.Value) < 0)
        entry.Refuse(
            "Valid Percentage entries may not be negative numbers.  Select OK to continue.",
            "Error: Invalid Negative 'Percentage_1' Entry");
}

void Check_G(CellEntry& entry, const CheckArgument& argument) {
    Check_Number(entry, argument);
    const bool deduction = std::ranges::any_of(
        kDeductionLines, [&](int line) { return entry.Line == Currency(line); });
    if (!entry.Refused && deduction) entry.Value = std::abs(NumOr(entry.Value));
}

EntryMessage CheckRow_A6(const RowEntry& row) {
    if (const EntryMessage lost = AmountWithoutLine(row); !lost.Text.empty()) return lost;
    if (!IsBlankValue(RowCell(row, "Col_1"))) return {};
    const Variant earlier = gDB.Scalar(
        "SELECT Count(Len([Col_1])) AS Cnt From A6 Where LineNum < ? And Col_2 = ? "
        "And Len([Col_1])>0;",
        {row.Line, Text(RowCell(row, "Col_2"))});
    if (NumOr(earlier) > 0) return {};
    return {"The EXPLANATION may not be left blank for the first reclassification in a given code.",
            "Error: Blank EXPLANATION Item", kCritical, true};
}

EntryMessage CheckRow_A81p2(const RowEntry& row) {
    if (!IsSymbol(UCase(Text(RowCell(row, "Col_1")))))
        return {std::string(kSymbolText), std::string(kSymbolTitle), kCritical};
    const EntryMessage first = CheckPercentage(RowCell(row, "Col_4"), "Percentage_1");
    return first.Text.empty() ? CheckPercentage(RowCell(row, "Col_6"), "Percentage_2") : first;
}

}  // namespace zolmara
