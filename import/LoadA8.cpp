// The loader of the adjustments.

#include <fmt/format.h>

#include "core/Globals.h"
#include "core/Windows.h"
#include "import/LoaderTools.h"
#include "import/Loaders.h"
#include "worksheets/W_A8.h"

namespace zolmara {

namespace {

constexpr Range kRows[] = {{1, 11.99}, {13, 99}};
constexpr Range kColumns[] = {{1, 1}, {2, 2}, {3, 3}, {5, 5}};
constexpr Currency kFirstOwnRow = Currency::FromWhole(18);
constexpr int kDescription = 1;
constexpr int kBasis = 2;
constexpr int kAmount = 3;
constexpr int kLine = 5;

std::string BrokenRule(const SourceRow& row) {
    if (!InAny(kRows, row.Row))
        return fmt::format("Row {} of table A8 cannot be imported: ", NumberText(row.Row));
    if (!InAny(kColumns, row.Col)) return "Table A8 only allows imports of columns 1, 2, 3 and 5: ";
    if (row.Row < kFirstOwnRow && row.Col == kWholeStep)
        return "Table A8 does not allow imports of column 1 on rows 1-17: ";
    return {};
}

std::string RefusalOf(int column) {
    switch (column) {
        case kBasis:
            return "The Basis field can only contain the letters 'A' and 'B': ";
        case kAmount:
            return "The Amount value must be numeric: ";
        case kLine:
            return "The LineNum is not a valid cost center number: ";
        default:
            return "This field cannot be imported: ";
    }
}

bool IsAccepted(int column, const std::string& contents, Variant& outName) {
    Variant value = contents;
    if (ValidateCell_A8(column, value, outName) != 0) return false;
    return column != kAmount || IsNumeric(contents);
}

/// A line reference brings its cost center's name; a blank one changes nothing.
void StoreReference(TargetRow& target, const std::string& contents, const Variant& name) {
    if (!IsNumeric(contents)) return;
    target.Set("Col_5", Currency(NumOr(contents)));
    target.Set("Col_4", name);
}

void StoreAdjustment(TargetRow& target, int column, const std::string& contents,
                     const Variant& outName) {
    if (column == kDescription) target.Set("Col_1", contents);
    if (column == kBasis) target.Set("Col_2", outName);
    if (column == kAmount) target.Set("Col_3", RoundTo(NumOr(contents), 0));
    if (column == kLine) StoreReference(target, contents, outName);
}

std::string LoadAdjustment(TargetRow& target, const SourceRow& row) {
    if (auto rule = BrokenRule(row); !rule.empty()) return rule;
    if (row.Row >= kFirstOwnRow)
        target.GoToOrAdd(row.Row);
    else if (!target.GoTo(row.Row))
        return "Row does not exist: ";
    const int column = Ordinal(row.Col, 0);
    Variant outName;
    if (!IsAccepted(column, row.Contents, outName)) return RefusalOf(column);
    StoreAdjustment(target, column, row.Contents, outName);
    return {};
}

}  // namespace

void Load_A8() {
    TargetRow target("A8", "LineNum", "LineNum Not In(12,100)");
    LoadRows("A8", target, [&](const SourceRow& row) { return LoadAdjustment(target, row); });
    TheWindows().RefreshOpenForms("");
}

}  // namespace zolmara
