// The loader of the components of the chain, which creates the lines that it names in S-2 and in
// all the schedules of the part.

#include <fmt/format.h>

#include "core/Globals.h"
#include "core/Windows.h"
#include "import/ImportRun.h"
#include "import/LoaderTools.h"
#include "import/Loaders.h"
#include "structure/modAddS2.h"

namespace zolmara {

namespace {

struct PartColumns {
    std::span<const Range> Columns;
    std::string_view List;
};

constexpr Range kColumns1[] = {{1, 11}};
constexpr Range kColumns2[] = {{1, 1.9999}, {2.0001, 2.9999}, {3.0001, 7}};
constexpr Range kColumns3[] = {{1, 2.9999}, {3.0001, 8}};
constexpr PartColumns kParts[] = {
    {kColumns1, "columns 1-11"}, {kColumns2, "columns 1, 4-7"}, {kColumns3, "columns 1, 2, 4-8"}};

constexpr Range kRows[] = {{1, 50.99}};
constexpr Currency kName = Currency::FromWhole(1);
constexpr Currency kCcn = Currency::FromWhole(2);

/// Both tests are made, so that a row may give two messages.
bool PassesRules(ImportRun& run, const std::string& item, int part, const SourceRow& row) {
    const auto& [columns, list] = kParts[part - 1];
    const bool columnPasses = InAny(columns, row.Col);
    const bool rowPasses = InAny(kRows, row.Row);
    if (!columnPasses)
        run.Complain(item, row, fmt::format("Table {} only allows {}: ", item, list));
    if (!rowPasses)
        run.Complain(item, row, fmt::format("Table {} only allows rows 1-50.99: ", item));
    return columnPasses && rowPasses;
}

/// A name or number goes to the schedules too, the other columns to S-2 alone.
void StoreComponent(TargetRow& target, int part, const SourceRow& row) {
    if (row.Col == kName)
        RenameS2Line(row.Row, part, row.Contents, StrOr(target["Col_2"]));
    else if (row.Col == kCcn)
        RenameS2Line(row.Row, part, StrOr(target["Col_1"]), row.Contents);
    else
        target.Set(Ordinal(row.Col, 0), row.Contents);
}

/// Creates a component. Where its line was made, a step behind that which failed does no harm to
/// its name and number.
void Create(TargetRow& target, int part, Currency line) {
    try {
        AddS2Line(line, part);
    } catch (const StoreError& error) {
        if (error.IsFileError() || !target.Refind(line)) throw;
        return;
    }
    target.Refind(line);
}

}  // namespace

void Load_S2px(ImportRun& run, int part) {
    const auto item = fmt::format("S2p{}", part);
    TargetRow target(item, "LineNum");
    LoadRows(run, item, target, [&](const SourceRow& row) -> std::string {
        if (!PassesRules(run, item, part, row)) return {};
        if (!row.Col.IsWhole()) return std::string(kConversionError);
        if (!target.GoTo(row.Row)) Create(target, part, row.Row);
        StoreComponent(target, part, row);
        return {};
    });
    TheWindows().RefreshOpenForms("");
}

}  // namespace zolmara
