// Every cost center that a worksheet names must be in the cost centers.

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <set>

#include "core/Globals.h"
#include "editchecks/Catalogue.h"
#include "editchecks/Cells.h"
#include "editchecks/modEditChecks.h"
#include "store/session/Session.h"
#include "worksheets/FormLines.h"

namespace zolmara {
namespace {

constexpr Currency kLowest = Currency::FromWhole(0);
constexpr Currency kHighest = kNonCapitalSubtotal;

/// The subtotals and totals of worksheet A are lines, but no cost centers.
bool IsSubtotalLine(std::int64_t whole) {
    static constexpr std::array<Currency, 5> kLines{
        Currency(), kCapitalSubtotal, kOtherCapitalSubtotal, kNonCapitalSubtotal, kTotalOfA};
    return std::ranges::find(kLines, Currency::FromWhole(whole)) != kLines.end();
}

void ReportUndefined(std::string_view table, const Recordset& row, Currency named,
                     Currency offset) {
    const std::string shifted = NumberText(named + offset);
    const std::string tail = offset == Currency() ? "" : fmt::format(" as ({})", shifted);
    AddNonFatal("1065",
                fmt::format("Worksheet {}: {} ({}) cost center ({}) is not defined in the "
                            "Cost Centers Worksheet{}",
                            table, row.FieldName(0), KeyText(row), NumberText(named), tail));
}

void CheckRefs(const std::set<Currency>& centers, std::string_view table, std::string_view field,
               Currency low, Currency high, Currency offset) {
    Recordset rows = gDB.OpenRecordset(
        fmt::format("SELECT * FROM {0} WHERE {1}>=? and {1}<=? ORDER BY {1};", table, field),
        {low - offset, high - offset}, dbOpenSnapshot);
    for (; !rows.Eof(); rows.MoveNext()) {
        const Currency named = CellLine(rows, field);
        const Currency center = named + offset;
        if (IsSubtotalLine(center.Whole()) || centers.count(center) > 0) continue;
        ReportUndefined(table, rows, named, offset);
    }
}

std::set<Currency> DefinedCenters() {
    return KeysOf("SELECT * FROM CostCenters ORDER BY LineNum;", "LineNum");
}

struct Reference {
    std::string_view Table;
    std::string_view Field;
};
constexpr Reference kReferences[] = {
    {"A", "LineNum"}, {"A6", "Col_4"}, {"A6", "Col_7"}, {"A8", "Col_5"}, {"A81p1", "Col_1"}};

}  // namespace

void CheckCCRefs(std::string_view table, std::string_view field, Currency low, Currency high,
                 Currency offset) {
    CheckRefs(DefinedCenters(), table, field, low, high, offset);
}

void CheckCostCenterRefs() {
    const std::set<Currency> centers = DefinedCenters();
    for (const Reference& reference : kReferences)
        CheckRefs(centers, reference.Table, reference.Field, kLowest, kHighest, Currency());
}

}  // namespace zolmara
