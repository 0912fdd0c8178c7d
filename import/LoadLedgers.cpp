// Loaders of the worksheets with whole dollar amounts on fixed lines: A and A-7.

#include <fmt/format.h>

#include "core/Globals.h"
#include "core/Windows.h"
#include "import/ImportASCII.h"
#include "import/LoaderTools.h"
#include "import/Loaders.h"
#include "store/session/CoreTables.h"
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

/// The cells whose amounts, of before the import, were added to. A second import of the same file
/// doubles them, so the user hears of it.
class AddedTo {
public:
    explicit AddedTo(std::string_view item) : item_(item) {}

    /// Notes a cell ahead of its amount. One that this file itself has filled is no news.
    void Note(const SourceRow& row, const Variant& stood, bool adds) {
        const bool again = last_ && last_->Row == row.Row && last_->Col == row.Col;
        last_ = row;
        if (again || !adds || NumOr(stood) == 0) return;
        if (++count_ <= kMostNamed)
            list_ += fmt::format("{}line {} column {}", list_.empty() ? "" : ", ",
                                 NumberText(row.Row), NumberText(row.Col));
    }
    void Tell() const {
        if (count_ == 0) return;
        const auto others =
            count_ > kMostNamed ? fmt::format(" and {} others", count_ - kMostNamed) : "";
        AddErrorRow(kNote, "",
                    fmt::format("Table {}: amounts of the file were added to what stood in {}{}.",
                                item_, list_, others));
    }

private:
    static constexpr int kMostNamed = 10;
    std::string_view item_;
    std::optional<SourceRow> last_;
    std::string list_;
    int count_ = 0;
};

/// The first amount of a line replaces what the cell holds, those behind it add to theirs.
void StoreAmount(TargetRow& target, const SourceRow& row, AddedTo& addedTo) {
    const int field = Ordinal(row.Col, 1);
    const double amount = RoundTo(NumOr(row.Contents), 0);
    const bool adds = target.Editing() && field >= 0;
    addedTo.Note(row, field >= 0 ? target[field] : Variant(), adds);
    target.Set(field, adds ? NumOr(target[field]) + amount : amount);
}

void LoadLedger(ImportRun& run, const Ledger& ledger) {
    TargetRow target(ledger.Item, "LineNum", ledger.Where);
    AddedTo addedTo(ledger.Item);
    LoadRows(run, ledger.Item, target, [&](const SourceRow& row) -> std::string {
        if (auto rule = BrokenRule(ledger, row); !rule.empty()) return rule;
        if (!target.GoTo(row.Row))
            return fmt::format("Table {} {} {}: ", ledger.Item, ledger.Missing,
                               NumberText(row.Row));
        StoreAmount(target, row, addedTo);
        return {};
    });
    addedTo.Tell();
    TheWindows().RefreshOpenForms("");
}

}  // namespace

void Load_A(ImportRun& run) { LoadLedger(run, kA); }
void Load_A7p1(ImportRun& run) { LoadLedger(run, kA7p1); }
void Load_A7p2(ImportRun& run) { LoadLedger(run, kA7p2); }

}  // namespace zolmara
