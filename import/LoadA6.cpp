// The loader of the reclassifications.

#include <fmt/format.h>

#include "core/Globals.h"
#include "core/Windows.h"
#include "import/LoaderTools.h"
#include "import/Loaders.h"
#include "worksheets/W_A6.h"

namespace zolmara {

namespace {

constexpr Range kRows = {1, 99.9999};
constexpr Range kColumns[] = {{1, 1}, {2, 2}, {4, 4}, {5, 5}, {7, 7}, {8, 8}};

/// The words for a refused cell name the field in error.
struct Refusal {
    int Column;
    std::string_view Words;
};
constexpr Refusal kRefusals[] = {
    {2, "The CODE field can only contain a letter from 'A' through 'Z': "},
    {4, "The UpLineNum is not a valid cost center number: "},
    {5, "The UpAmount value must be numeric: "},
    {7, "The DnLineNum is not a valid cost center number: "},
    {8, "The DnAmount value must be numeric: "},
};

std::string RefusalOf(int column) {
    for (const auto& refusal : kRefusals)
        if (refusal.Column == column) return std::string(refusal.Words);
    return "Table A6 only allows imports of columns 1-2, 4-5, and 7-8";
}

std::string BrokenRule(const SourceRow& row) {
    if (!InAny(std::span(&kRows, 1), row.Row))
        return fmt::format("Table A6 row {} is not allowed.", NumberText(row.Row));
    if (!InAny(kColumns, row.Col))
        return "Table A6 only allows imports of columns 1-2, 4-5, and 7-8";
    return {};
}

/// A line reference and, in the field ahead of it, the cost center's name. References are kept at
/// four decimals, like the lines that they name.
void StoreReference(TargetRow& target, int column, const Variant& value, const Variant& name) {
    const double line = NumOr(value);
    target.Set(column, IsNumeric(value) ? Variant(Currency(line).ToDouble()) : Variant());
    target.Set(column - 1, line == 0 ? Variant() : name);
}

std::string LoadEntry(TargetRow& target, const SourceRow& row) {
    if (auto rule = BrokenRule(row); !rule.empty()) return rule;
    target.GoToOrAdd(row.Row);
    const int column = Ordinal(row.Col, 0);
    Variant value = row.Contents;
    Variant name;
    if (ValidateCell_A6(column, value, name) != 0) return RefusalOf(column);
    if (column == 4 || column == 7)
        StoreReference(target, column, value, name);
    else
        target.Set(column, IsBlankValue(value) ? Variant() : value);
    return {};
}

void RefreshA6Forms() {
    for (const auto* form : {"frmEditA6", "frmViewA6"})
        if (TheWindows().FormIsOpen(form)) TheWindows().SetGrd(form);
}

}  // namespace

void Load_A6(ImportRun& run) {
    LoadWorksheet(run, "A6", {"A6", "LineNum"}, LoadEntry);
    RefreshA6Forms();
}

}  // namespace zolmara
