// The checks of the pooled allocation, E and E-1.

#include <fmt/format.h>

#include "core/Globals.h"
#include "editchecks/Catalogue.h"
#include "editchecks/Cells.h"
#include "editchecks/modEditChecks.h"
#include "store/session/CoreTables.h"
#include "store/session/Session.h"
#include "worksheets/FormLines.h"

namespace zolmara {
namespace {

constexpr std::string_view kLinesOfA = "Select * From A;";
constexpr std::string_view kGrandTotalOfE1 = "Select * From E1p3 Where LineNum=52;";

/// True where the line of worksheet A is there and has another amount.
bool DiffersFromLine(double amount, const std::map<Currency, double>& lines, Currency line) {
    const auto found = lines.find(line);
    return found != lines.end() && Differ(amount, found->second);
}

// --- E -------------------------------------------------------------------------------------

/// A pool of E: its code, the form's column and the line of worksheet A that it spreads.
struct Pool {
    std::string_view Code;
    int Column;
    int Line;
};
constexpr Pool kPools[] = {{"1030D", 3, 1}, {"1040D", 4, 2}, {"1050D", 5, 8}, {"1060D", 6, 9}};

// --- E-1 -----------------------------------------------------------------------------------

/// The first pool's position; the form counts that column as 3.
constexpr std::size_t kFirstPool = 5;
constexpr std::size_t kBeforeColumns = 2;

/// Only whole lines have a number in the contractor's list.
std::string PoolCode(Currency line) {
    return line.IsWhole() ? fmt::format("1{:02}0D", line.Whole()) : "VLQ";
}

}  // namespace

bool PoolsAreChecked() {
    for (const char* statement :
         {"SELECT Count([LineNum]) AS Cnt From S2p2 WHERE Len([Col_1])>0;",
          "SELECT Count([LineNum]) AS Cnt From S2p3 WHERE Len([Col_1])>0;"}) {
        if (NumOr(gDB.Scalar(statement)) > 0) return true;
    }
    return false;
}

void CheckEAgainstA() {
    const auto pooled = AmountsByLine(kLinesOfA, "Col_8");
    const Line total("Select * From E Where LineNum=4;");
    if (!total.IsThere()) return;
    for (const Pool& pool : kPools) {
        const Currency line = Currency::FromWhole(pool.Line);
        if (!DiffersFromLine(total.Number(CostCenterColumn(line)), pooled, line)) continue;
        AddNonFatal(pool.Code,
                    fmt::format("Worksheet E, line 4, column {} must equal A, line {} column 8.",
                                pool.Column, pool.Line));
    }
}

void CheckE1p3AgainstA() {
    const auto pooled = AmountsByLine(kLinesOfA, "Col_8");
    const Line total(kGrandTotalOfE1);
    if (!total.IsThere()) return;
    for (std::size_t i = kFirstPool; i < total.Count(); ++i) {
        if (!IsCostCenterColumn(total.Field(i))) continue;
        const Currency line = LineOfColumn(total.Field(i));
        if (!DiffersFromLine(total.Number(i), pooled, line)) continue;
        AddNonFatal(PoolCode(line),
                    fmt::format("Worksheet E-1, line 52, column {} must equal A, line {} column 8.",
                                i - kBeforeColumns, NumberText(line)));
    }
}

void CheckE1p3AllOther() {
    const double apart =
        NumOr(gDB.Scalar("Select Sum(Col_8) As S8 From A Where LineNum In(8,9,28);"));
    const Line subtotal("Select * From A Where LineNum=99;");
    const Line total(kGrandTotalOfE1);
    if (!subtotal.IsThere() || !total.IsThere()) return;
    if (!Differ(total.Number("Col_7"), subtotal.Number("Col_8") - apart)) return;
    AddNonFatal("1100E",
                "Worksheet E-1, line 52, column 7 must equal A, line 99, column 8 minus lines 8, "
                "9, and 28 column 8.");
}

}  // namespace zolmara
