// The checks of worksheets A, A-6, A-7.

#include <fmt/format.h>

#include "core/Globals.h"
#include "editchecks/Catalogue.h"
#include "editchecks/Cells.h"
#include "editchecks/RowChecks.h"
#include "editchecks/modEditChecks.h"
#include "store/session/Session.h"
#include "worksheets/FormLines.h"

namespace zolmara {
namespace {

using Row = const Recordset&;

// --- Worksheet A ---------------------------------------------------------------------------

constexpr RowCheck kALine100Checks[] = {
    {"1000A", "Line 100, columns 1, 3, and 5 must be greater than or equal to zero.",
     [](Row row) {
         return IsBelowZero(CellNumber(row, "Col_1")) || IsBelowZero(CellNumber(row, "Col_3")) ||
                IsBelowZero(CellNumber(row, "Col_5"));
     }},
};
constexpr Section kALine100{"Worksheet A: ", "Select * From A Where LineNum=100;", kALine100Checks};

// --- Worksheet A-6 -------------------------------------------------------------------------

constexpr std::string_view kA6Prefix = "Worksheet A-6: ";

constexpr RowCheck kA6TotalChecks[] = {
    {"1020A", "Line 100, column 5 must equal column 8.",
     [](Row row) { return Differ(CellNumber(row, "Col_5"), CellNumber(row, "Col_8")); }},
};
constexpr Section kA6Totals{kA6Prefix, "Select * From A6 Where LineNum=100;", kA6TotalChecks};

/// The entries of one reclassification code, as far as they have been walked.
struct RunningCode {
    std::string Code;
    double Increases = 0;
    double Decreases = 0;
};

void CloseCode(const RunningCode& code) {
    if (!Differ(code.Increases, code.Decreases)) return;
    AddNonFatal(
        "1025A",
        fmt::format("{}For each reclassification code ({}) the sum of all increases ({}) "
                    "must equal the sum of all decreases ({}).",
                    kA6Prefix, code.Code, NumberText(code.Increases), NumberText(code.Decreases)));
}

void CheckExplanation(Row row) {
    if (IsBlank(row, "Col_2") || !IsBlank(row, "Col_1")) return;
    AddNonFatal("1040A", fmt::format("{}Line {} must have an explanation reported on the first "
                                     "line for each relassification code reported in column 2.",
                                     kA6Prefix, KeyText(row)));
}

/// A line of worksheet A that takes reclassifications; the subtotals on 3 and 7 take none.
bool TakesEntries(const std::set<Currency>& lines, Currency line) {
    const bool subtotal = line == Currency::FromWhole(3) || line == Currency::FromWhole(7);
    return !subtotal && lines.count(line) > 0;
}

/// An amount of an entry and the column of the line it goes to.
struct Side {
    std::string_view Amount;
    std::string_view Target;
    std::string_view Message;
};
constexpr Side kSides[] = {
    {"Col_5", "Col_4", "with an entry in column 5, columns 2 and 4 must have valid entries."},
    {"Col_8", "Col_7", "with an entry in column 8, columns 2 and 7 must have valid entries."},
};

void CheckSide(Row row, const Side& side, const std::set<Currency>& lines) {
    if (IsZero(CellNumber(row, side.Amount))) return;
    if (!IsBlank(row, "Col_2") && TakesEntries(lines, CellLine(row, side.Target))) return;
    AddNonFatal("1030A", fmt::format("{}Line {} {}", kA6Prefix, KeyText(row), side.Message));
}

void BeginCode(RunningCode& running, Row row) {
    CloseCode(running);
    running = {CellText(row, "Col_2")};
    CheckExplanation(row);
}

void AddToCode(RunningCode& running, Row row) {
    if (IsEmpty(row, "Col_2")) return;
    running.Increases += CellNumber(row, "Col_5");
    running.Decreases += CellNumber(row, "Col_8");
}

// --- Worksheet A-7 Part I ------------------------------------------------------------------

constexpr std::string_view kA7p1Prefix = "Worksheet A-7 Part I: ";
constexpr std::string_view kA7p1Line9 = "Select * From A7p1 Where LineNum=9;";

/// The balance sheet's fixed assets are asked for of nonprofit and proprietary home offices.
bool NeedsFixedAssets(double control) { return Between(control, 1.0, 9.0); }

// --- Worksheet A-7 Part II -----------------------------------------------------------------

constexpr std::string_view kA7p2Prefix = "Worksheet A-7 Part II: ";

void CheckRatioBase(Row row) {
    if (!OnLine(row, kCapitalSubtotal.Whole()) || !IsAboveZero(CellNumber(row, "Col_8"))) return;
    if (IsAboveZero(CellNumber(row, "Col_3"))) return;
    AddNonFatal("1070A", fmt::format("{}line 3, if the sum of columns 5, 6, and 7 is greater than "
                                     "zero then column 3 must be greater than zero.",
                                     kA7p2Prefix));
}

void CheckCapitalTotal(Row row, double allowable) {
    const double total = CellNumber(row, "Col_15");
    if (!Differ(total, allowable)) return;
    AddNonFatal(
        "1060A",
        fmt::format("{}total in column 15 ({}) must equal A column 5 ({}) for line number{}.",
                    kA7p2Prefix, NumberText(total), NumberText(allowable), KeyText(row)));
}

}  // namespace

void CheckALine100() { RunSection(kALine100); }
void CheckA6Totals() { RunSection(kA6Totals); }

/// The last code is closed by the row of another code behind it and by nothing else.
void CheckA6Codes() {
    const std::set<Currency> lines =
        KeysOf("Select * From A Where LineNum<99 Order by LineNum;", "LineNum");
    Recordset rows =
        gDB.OpenRecordset("Select * From A6 Where LineNum<99 Order By LineNum;", dbOpenSnapshot);
    RunningCode running;
    for (; !rows.Eof(); rows.MoveNext()) {
        if (!SameText(CellText(rows, "Col_2"), running.Code)) BeginCode(running, rows);
        AddToCode(running, rows);
        for (const Side& side : kSides) CheckSide(rows, side, lines);
    }
}

void CheckA7p1Line9() {
    const Line assets(kA7p1Line9);
    if (!assets.IsThere() || IsAboveZero(assets.Number("Col_6"))) return;
    AddNonFatal("1050A", fmt::format("{}Line 9 column 6 must be greater than zero.", kA7p1Prefix));
}

void CheckFixedAssets() {
    const Line control("Select * From S1p1 Where LineNum=3;");
    const Line assets(kA7p1Line9);
    const Line balance("Select * From G Where LineNum=26;");
    if (!NeedsFixedAssets(control.Number("Col_1"))) return;
    if (!assets.IsThere() || !balance.IsThere()) return;
    const double ending = assets.Number("Col_6");
    if (IsAboveZero(ending) && !Differ(ending, balance.Number("Col_1"))) return;
    AddPotential(
        "2050A",
        fmt::format("{}Line 9 column 6 should be greater than zero when S-1 Part I, line 3 "
                    "has an entry of 1 - 9 and should be equal G Line 26 column 1.",
                    kA7p1Prefix));
}

void CheckA7p2() {
    const auto allowable = AmountsByLine("Select * From A Where LineNum<4;", "Col_5");
    Recordset rows = gDB.OpenRecordset("Select * From A7p2 Order By LineNum;", dbOpenSnapshot);
    for (; !rows.Eof(); rows.MoveNext()) {
        const auto found = allowable.find(CurOr(rows[0]));
        if (found == allowable.end())
            AddNonFatal("VLQ", fmt::format("{}A7p2 and A line numbers are out of sync. Call VLQ.",
                                           kA7p2Prefix));
        CheckRatioBase(rows);
        if (found != allowable.end()) CheckCapitalTotal(rows, found->second);
    }
}

}  // namespace zolmara
