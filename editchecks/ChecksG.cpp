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
    const auto amounts = AmountsByLine("Select * From G Order By LineNum;", "Col_1");
    const auto amountOn = [&](int line) {
        const auto found = amounts.find(Currency::FromWhole(line));
        return found == amounts.end() ? 0 : found->second;
    };
    if (Differ(amountOn(32), amountOn(48)))
        AddPotential("2000G", "Worksheet G: lines 32 and line 48 should be equal.");
    if (!IsAboveZero(amountOn(48)))
        AddPotential("2010G", "Worksheet G: line 48 should be greater than zero.");
}

void CheckNetIncome() {
    if (IsZero(Line(kNetIncome).Number("Col_2")))
        AddPotential("2020G", "Worksheet G-1: line 22 should not equal zero.");
}

}  // namespace zolmara
