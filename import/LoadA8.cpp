// The loader of the adjustments.

#include <fmt/format.h>

#include <algorithm>
#include <optional>

#include "core/Globals.h"
#include "import/LoaderTools.h"
#include "import/Loaders.h"
#include "worksheets/W_A8.h"

namespace zolmara {

namespace {

constexpr Range kRows[] = {{1, 11.99}, {13, 99}};
constexpr Currency kFirstOwnRow = Currency::FromWhole(18);
constexpr int kDescription = 1;
constexpr int kAmount = 3;

void PutDescription(TargetRow& target, const std::string& contents, const Variant& /*checked*/) {
    target.Set("Col_1", contents);
}

void PutBasis(TargetRow& target, const std::string& /*contents*/, const Variant& checked) {
    target.Set("Col_2", checked);
}

void PutAmount(TargetRow& target, const std::string& contents, const Variant& /*checked*/) {
    target.Set("Col_3", RoundTo(NumOr(contents), 0));
}

/// A line reference brings its cost center's name; a blank one changes nothing.
void PutReference(TargetRow& target, const std::string& contents, const Variant& checked) {
    if (!IsNumeric(contents)) return;
    target.Set("Col_5", Currency(NumOr(contents)));
    target.Set("Col_4", checked);
}

/// A column that is taken, the refusal of what its check does not pass, and where the rest goes:
/// the contents as they are, or what the check has made of them.
struct TakenColumn {
    int Column;
    std::string_view Refusal;
    void (*Put)(TargetRow& target, const std::string& contents, const Variant& checked);
};

constexpr TakenColumn kColumns[] = {
    {kDescription, "This field cannot be imported: ", PutDescription},
    {2, "The Basis field can only contain the letters 'A' and 'B': ", PutBasis},
    {kAmount, "The Amount value must be numeric: ", PutAmount},
    {5, "The LineNum is not a valid cost center number: ", PutReference},
};

const TakenColumn* FindColumn(Currency column) {
    const auto* const found = std::ranges::find_if(kColumns, [&](const TakenColumn& taken) {
        return column == Currency::FromWhole(taken.Column);
    });
    return found == std::end(kColumns) ? nullptr : found;
}

std::string BrokenRule(const SourceRow& row, const TakenColumn* column) {
    if (!InAny(kRows, row.Row))
        return fmt::format("Row {} of table A8 cannot be imported: ", NumberText(row.Row));
    if (column == nullptr) return "Table A8 only allows imports of columns 1, 2, 3 and 5: ";
    if (row.Row < kFirstOwnRow && column->Column == kDescription)
        return "Table A8 does not allow imports of column 1 on rows 1-17: ";
    return {};
}

/// What the contents become; nothing where they are refused.
std::optional<Variant> Checked(int column, const std::string& contents) {
    Variant value = contents;
    Variant checked;
    if (ValidateCell_A8(column, value, checked) != 0) return std::nullopt;
    if (column == kAmount && !IsNumeric(contents)) return std::nullopt;
    return checked;
}

std::string LoadAdjustment(TargetRow& target, const SourceRow& row) {
    const TakenColumn* const column = FindColumn(row.Col);
    if (auto rule = BrokenRule(row, column); !rule.empty()) return rule;
    if (row.Row >= kFirstOwnRow)
        target.GoToOrAdd(row.Row);
    else if (!target.GoTo(row.Row))
        return "Row does not exist: ";
    const std::optional<Variant> checked = Checked(column->Column, row.Contents);
    if (!checked) return std::string(column->Refusal);
    column->Put(target, row.Contents, *checked);
    return {};
}

}  // namespace

void Load_A8(ImportRun& run) {
    LoadWorksheet(run, "A8", {"A8", "LineNum", "LineNum Not In(12,100)"}, LoadAdjustment);
}

}  // namespace zolmara
