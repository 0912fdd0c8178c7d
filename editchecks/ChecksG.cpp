// The checks of worksheets G and G-1.

#include <fmt/format.h>

#include "core/Globals.h"
#include "editchecks/Catalogue.h"
#include "editchecks/Cells.h"
#include "editchecks/RowChecks.h"
#include "editchecks/modEditChecks.h"
#include "store/session/Session.h"

namespace zolmara {
namespace {

constexpr RowCheck kDescriptionChecks[] = {
    {"VLQ", "line {line} has an amount, therefore it must also have a description.",
     [](const Recordset& row) {
         return !IsZero(CellNumber(row, "Col_2")) && IsEmpty(row, "Col_1");
     }},
};
constexpr Section kDescriptions{"G-1 ", "SELECT LineNum, Col_1, Col_2 FROM G1 ORDER BY LineNum;",
                                kDescriptionChecks};

constexpr std::string_view kNetIncome = "Select * From G1 Where LineNum=22;";

}  // namespace

void CheckG1Descriptions() { RunSection(kDescriptions); }

void CheckBalanceSheet() {
    const Line assets("Select * From G Where LineNum=32;");
    const Line liabilities("Select * From G Where LineNum=48;");
    if (!liabilities.IsThere()) return;
    const double total = liabilities.Number("Col_1");
    if (assets.IsThere() && Differ(assets.Number("Col_1"), total))
        AddPotential("2000G", "Worksheet G: lines 32 and line 48 should be equal.");
    if (!IsAboveZero(total))
        AddPotential("2010G", "Worksheet G: line 48 should be greater than zero.");
}

void CheckNetIncome() {
    const Line income(kNetIncome);
    if (income.IsThere() && IsZero(income.Number("Col_2")))
        AddPotential("2020G", "Worksheet G-1: line 22 should not equal zero.");
}

}  // namespace zolmara
