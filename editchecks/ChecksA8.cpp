// The checks of worksheets A-8 and A-8-1.

#include <fmt/format.h>

#include <map>

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

bool HasAmountAboveZero(Row row, std::string_view field) {
    return IsAboveZero(CellNumber(row, field));
}

// --- Worksheet A-8 -------------------------------------------------------------------------

constexpr RowCheck kA8Checks[] = {
    {"1080A",
     "line {line} when column 3 is entered, column 1 must have an entry, column 2 must be either "
     R"("A" or "B", and column 5 must have an entry.)",
     [](Row row) {
         return !IsZero(CellNumber(row, "Col_3")) &&
                (!BeginsWith(row, "Col_2", "AB") || !HasAmountAboveZero(row, "Col_5") ||
                 IsBlank(row, "Col_1"));
     }},
};
constexpr Section kA8{
    "Worksheet A-8: ", "Select * From A8 Where LineNum<>12 And LineNum<100 Order by LineNum;",
    kA8Checks};

// --- Worksheet A-8-1 Part II, as Part I refers to it ---------------------------------------

/// The symbol of a relationship, in capitals.
std::string SymbolOf(Row row) { return UCase(CellText(row, "Col_1")); }

bool HasSymbol(Row row, std::string_view symbols) {
    const std::string symbol = SymbolOf(row);
    return symbol.size() == 1 && symbols.find(symbol) != std::string_view::npos;
}

bool HasNoOwnership(Row row) {
    return !HasAmountAboveZero(row, "Col_4") && !HasAmountAboveZero(row, "Col_6");
}

constexpr RowCheck kRelationshipChecks[] = {
    {"1105A", "line {line} column 1 must be completed.",
     [](Row row) { return IsBlank(row, "Col_1"); }},
    {"1105A", "line {line} columns 3, 7, and either 4 or 6 must be completed.",
     [](Row row) {
         return HasSymbol(row, "ADF") && (AnyBlank(row, {"Col_3", "Col_7"}) || HasNoOwnership(row));
     }},
    {"1105A", "line {line} columns 3, and 7 must be completed.",
     [](Row row) {
         return HasSymbol(row, "E") && AnyBlank(row, {"Col_3", "Col_7"});
     }},
    {"1105A", "line {line} columns 5, 7, and either 4 or 6 must be completed.",
     [](Row row) {
         return HasSymbol(row, "BC") && (AnyBlank(row, {"Col_5", "Col_7"}) || HasNoOwnership(row));
     }},
};
constexpr Section kRelationship{"Worksheet A-8-1 Part I: A-8-1 Part II, ", "Select * From A81p2;",
                                kRelationshipChecks};

// --- Worksheet A-8-1 Part I ----------------------------------------------------------------

constexpr RowCheck kA81p1Checks[] = {
    {"1090A", "line {line} when column 5 or 6 has an entry, column 1, 3, and 4 must have entries.",
     [](Row row) {
         return (HasAmountAboveZero(row, "Col_5") || HasAmountAboveZero(row, "Col_6")) &&
                (IsZero(CellNumber(row, "Col_1")) || IsBlank(row, "Col_3") ||
                 !HasAmountAboveZero(row, "Col_4"));
     }},
};
constexpr Section kA81p1{"Worksheet A-8-1 Part I: ", "Select * From A81p1 Order By SeqNum;",
                         kA81p1Checks};

void ReportNoRelationship(Row row) {
    AddNonFatal("1105A",
                fmt::format("{}line {} column 4 must have a corresponding record in A81p2.",
                            kA81p1.Prefix, KeyText(row)));
}

/// Part II's lines by their number, as marks to come back to.
std::map<Currency, std::int64_t> MarksByLine(Recordset& rows) {
    std::map<Currency, std::int64_t> marks;
    for (; !rows.Eof(); rows.MoveNext()) marks.emplace(CurOr(rows[0]), rows.Bookmark());
    return marks;
}

// --- Worksheet A-8-1 Part II ---------------------------------------------------------------

bool IsKind(Row row, std::string_view kind) {
    return HasSymbol(row, "G") && UCase(CellText(row, "Col_2")) == kind;
}

constexpr RowCheck kA81p2Checks[] = {
    {"1100A", "line {line} where column 1 is 'G', columns 2, 3, and 7 must be completed.",
     [](Row row) {
         return HasSymbol(row, "G") && AnyBlank(row, {"Col_2", "Col_3", "Col_7"});
     }},
    {"1100A",
     "line {line} If column 2 is 'Financial', column 4 must be completed and greater than zero.",
     [](Row row) { return IsKind(row, "FINANCIAL") && !HasAmountAboveZero(row, "Col_4"); }},
    {"VLQ",
     "line {line} If column 1 is 'G' and column 2 is 'Non-Financial', then both columns 4 and 6 "
     "must be zero.",
     [](Row row) {
         return IsKind(row, "NON-FINANCIAL") &&
                !(IsZero(CellNumber(row, "Col_4")) && IsZero(CellNumber(row, "Col_6")));
     }},
};
constexpr Section kA81p2{"Worksheet A-8-1 Part II: ", "Select * From A81p2;", kA81p2Checks};

}  // namespace

void CheckA8() { RunSection(kA8); }
void CheckA81p2() { RunSection(kA81p2); }

bool LinksAreChecked() {
    const std::optional<DateTime> end = DateOf(gFYEnd);
    return end && *end >= DateTime(2023, 12, 31);
}

void CheckA81p1Links() {
    const std::set<Currency> lines = KeysOf("SELECT SeqNum FROM A81p2 ORDER BY SeqNum;", "SeqNum");
    Recordset rows = gDB.OpenRecordset(
        "SELECT * FROM A81p1 WHERE SeqNum>=1 AND SeqNum<=99 ORDER BY SeqNum;", dbOpenSnapshot);
    for (; !rows.Eof(); rows.MoveNext()) {
        if (IsZero(CellNumber(rows, "Col_5")) || lines.count(CellLine(rows, "Col_4")) > 0) continue;
        AddNonFatal("1091A", fmt::format("Schedule A-8-1, Part I, line {}, column 4 must have a "
                                         "corresponding line number in Schedule A-8-1, Part II.",
                                         KeyText(rows)));
    }
}

void CheckA81p1() {
    Recordset relationships = gDB.OpenRecordset(kRelationship.Statement);
    const std::map<Currency, std::int64_t> marks = MarksByLine(relationships);
    Recordset rows = gDB.OpenRecordset(kA81p1.Statement, dbOpenSnapshot);
    for (; !rows.Eof(); rows.MoveNext()) {
        if (OnLine(rows, kTotalOfEntries.Whole())) continue;
        CheckRow(kA81p1, rows);
        const auto found = marks.find(CellLine(rows, "Col_4"));
        if (found == marks.end()) {
            ReportNoRelationship(rows);
            continue;
        }
        relationships.SetBookmark(found->second);
        CheckRow(kRelationship, relationships);
    }
}

}  // namespace zolmara
