// The loader of the cost center structure, which creates the cost centers that it names.

#include <fmt/format.h>

#include "core/Globals.h"
#include "core/Status.h"
#include "import/ImportRun.h"
#include "import/LoaderTools.h"
#include "import/Loaders.h"
#include "structure/AddDeleteCC.h"
#include "structure/CostCenterColumns.h"

namespace zolmara {

namespace {

constexpr Range kRows[] = {{1, 2}, {4, 6}, {8, 98}};  ///< of whole parts
constexpr Range kNoBasis = {3, 7.9999};               ///< rows without statistic labels
constexpr Currency kNameColumn = {};
constexpr Currency kCodeColumn = Currency::FromWhole(6);
constexpr Currency kFirstWithoutCode = Currency::FromWhole(3);
constexpr Range kLabelColumns[] = {{4, 4}, {5, 5}};

/// Each rule that a row breaks is told.
bool PassesRules(ImportRun& run, const SourceRow& row) {
    bool passes = true;
    auto fail = [&](std::string_view rule) {
        run.Complain("CostCenter", row, fmt::format("CostCenter only allows {}: ", rule));
        passes = false;
    };
    if (!InAny(kRows, Currency::FromWhole(row.Row.Whole())))
        fail("rows 1, 2, 4, 6, 8-98 and their subscripts");
    if (InAny(kLabelColumns, row.Col) && InRange(kNoBasis, row.Row))
        fail("column 4 and 5 on rows 1-2.99 and 8-98.99");
    if (row.Col == kCodeColumn && row.Row >= kFirstWithoutCode) fail("column 6 on rows 1-2.99");
    return passes;
}

/// Creates a cost center. One that cannot be made is told by the caller.
bool Create(TargetRow& target, NewColumns& columns, Currency line) {
    try {
        if (!AddCostCenter(line, columns)) return false;
    } catch (const StoreError& error) {
        if (error.IsFileError()) throw;
        return false;
    }
    TheStatus().DoEvents();
    return target.Refind(line);
}

std::string LoadOneCostCenter(ImportRun& run, TargetRow& target, NewColumns& columns,
                              const SourceRow& row) {
    if (!PassesRules(run, row)) return {};
    if (!target.GoTo(row.Row)) {
        if (row.Col != kNameColumn)
            return "CostCenter must create new cost centers with column 0: ";
        if (!Create(target, columns, row.Row))
            return "CostCenter was unable to create cost center : ";
    }
    target.Set(Ordinal(row.Col, 1), row.Contents);
    if (row.Col == kNameColumn) CarryCostCenterName(row.Row, row.Contents);
    return {};
}

}  // namespace

/// Each table is rebuilt once, however many cost centers are new; also where the load stops, since
/// their rows stand.
void Load_CostCenter(ImportRun& run) {
    TargetRow target("CostCenters", "LineNum");
    NewColumns columns;
    try {
        LoadRows(run, "CostCenter", target, [&](const SourceRow& row) {
            return LoadOneCostCenter(run, target, columns, row);
        });
    } catch (const StoreError& error) {
        if (!error.IsFileError()) columns.Finish();
        throw;
    }
    columns.Finish();
}

}  // namespace zolmara
