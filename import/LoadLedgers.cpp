// Loaders of the worksheets with whole dollar amounts on fixed lines: A and A-7.

#include <fmt/format.h>

#include "core/Globals.h"
#include "core/Windows.h"
#include "import/LoaderTools.h"
#include "import/Loaders.h"
#include "worksheets/W_A.h"

namespace zolmara {

namespace {

struct Ledger {
    std::string_view Item;
    std::string_view Where;  ///< the lines that take amounts
    std::span<const Range> Columns;
    std::string_view ColumnList;
    std::string_view Missing;
    bool HasCellCheck;
};

constexpr Range kColumnsA[] = {{1, 1}};
constexpr Range kColumnsA7p1[] = {{1, 1}, {2, 2}, {3, 3}, {5, 5}, {7, 7}};
constexpr Range kColumnsA7p2[] = {{1, 1}, {2, 2}, {9, 14.9999}};

constexpr Ledger kA = {"A", "", kColumnsA, "column 1", "does not have row", true};
constexpr Ledger kA7p1 = {
    "A7p1", "LineNum<7 Or LineNum=8", kColumnsA7p1, "column 1, 2, 3, 5 or 7", "does not allow row",
    false};
constexpr Ledger kA7p2 = {
    "A7p2", "LineNum<3", kColumnsA7p2, "column 1, 2, 9-14", "does not allow row", false};

std::string BrokenRule(const Ledger& ledger, const SourceRow& row) {
    if (!InAny(ledger.Columns, row.Col))
        return fmt::format("Table {} only allows {}: ", ledger.Item, ledger.ColumnList);
    if (!IsNumeric(row.Contents))
        return fmt::format("Table {} only allows numeric input: ", ledger.Item);
    if (ledger.HasCellCheck && !ValidateCell_A(row.Row, Ordinal(row.Col, 1)).empty())
        return "The cell you are attempting to input or modify does not accept changes: ";
    return {};
}

/// The first amount of a line replaces what the cell holds, those behind it add to theirs.
void StoreAmount(TargetRow& target, const SourceRow& row) {
    const int field = Ordinal(row.Col, 1);
    const double amount = RoundTo(NumOr(row.Contents), 0);
    const bool adds = target.Editing() && field >= 0;
    target.Set(field, adds ? NumOr(target[field]) + amount : amount);
}

void LoadLedger(const Ledger& ledger) {
    TargetRow target(ledger.Item, "LineNum", ledger.Where);
    LoadRows(ledger.Item, target, [&](const SourceRow& row) -> std::string {
        if (auto rule = BrokenRule(ledger, row); !rule.empty()) return rule;
        if (!target.GoTo(row.Row))
            return fmt::format("Table {} {} {}: ", ledger.Item, ledger.Missing,
                               NumberText(row.Row));
        StoreAmount(target, row);
        return {};
    });
    TheWindows().RefreshOpenForms("");
}

}  // namespace

void Load_A() { LoadLedger(kA); }
void Load_A7p1() { LoadLedger(kA7p1); }
void Load_A7p2() { LoadLedger(kA7p2); }

}  // namespace zolmara
