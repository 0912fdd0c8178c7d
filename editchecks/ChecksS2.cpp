// The checks of worksheet S-2, the components.

#include <fmt/format.h>

#include <map>
#include <set>
#include <vector>

#include "core/Globals.h"
#include "editchecks/Catalogue.h"
#include "editchecks/Cells.h"
#include "editchecks/RowChecks.h"
#include "editchecks/modEditChecks.h"
#include "store/session/Session.h"

namespace zolmara {
namespace {

using Row = const Recordset&;

constexpr std::string_view kNameOrDelete = "Line {line} must have a component name or be deleted.";

bool HasNoName(Row row) { return IsBlank(row, "Col_1"); }

// --- Part I --------------------------------------------------------------------------------

bool HasBadCCN(Row row) {
    const std::string plain = WithoutDashes(CellText(row, "Col_2"));
    const std::string_view ccn = Trim(plain);
    return !ccn.empty() && !IsSixAlphanumeric(ccn);
}

bool EndsOutsideYear(Row row) {
    const std::optional<DateTime> end = ValidDate(row["Col_5"]);
    if (!end) return false;
    const std::optional<DateTime> first = DateOf(gFYStart);
    const std::optional<DateTime> last = DateOf(gFYEnd);
    return (first && *end < *first) || (last && *end > *last);
}

constexpr RowCheck kS2p1Checks[] = {
    {"1080S", kNameOrDelete, HasNoName},
    {"1080S", "Line {line} must have entries in columns 3, 4, 5, and 8.",
     [](Row row) {
         return AnyEmpty(row, {"Col_3", "Col_4", "Col_5", "Col_8"});
     }},
    {"1085S", R"(Line {line}, column 9 must have either "P", "T", or "O".)",
     [](Row row) { return !IsEmpty(row, "Col_9") && !BeginsWith(row, "Col_9", "PTO"); }},
    {"1090S", "Line {line}, column 2. The component CCN must be six alphanumeric characters.",
     HasBadCCN},
    {"1100S", "Line {line}, column 9. An entry in column 9 requires entries in columns 2 and 10.",
     [](Row row) {
         return !IsEmpty(row, "Col_9") && AnyBlank(row, {"Col_2", "Col_10"});
     }},
    {"VLQ", "Line {line}, column 5. The ending date must fall within the reporting period.",
     EndsOutsideYear},
};
constexpr Section kS2p1{
    "Worksheet S-2 Part I: ", "Select * From S2p1 Where LineNum<50 Order By LineNum;", kS2p1Checks};

constexpr RowCheck kCol11Checks[] = {
    {"VLQ",
     "Line {line} contains numeric data in column 11. This should be the Medicaid Contractor Name "
     "rather than Number or leave blank if not a Medicaid participant.",
     [](Row row) { return IsNumeric(row["Col_11"]); }},
};
constexpr Section kCol11{"Worksheet S2p1: ", "SELECT LineNum, Col_11 FROM S2p1 ORDER BY LineNum;",
                         kCol11Checks};

struct Period {
    DateTime From;
    DateTime To;
};

bool Overlap(const Period& a, const Period& b) { return a.From <= b.To && a.To >= b.From; }

bool OverlapsAny(const Period& period, const std::vector<Period>& others) {
    return std::any_of(others.begin(), others.end(),
                       [&](const Period& other) { return Overlap(period, other); });
}

std::optional<Period> PeriodOf(Row row) {
    const std::optional<DateTime> from = ValidDate(row["Col_4"]);
    const std::optional<DateTime> to = ValidDate(row["Col_5"]);
    if (!from || !to) return std::nullopt;
    return Period{*from, *to};
}

// --- Part II -------------------------------------------------------------------------------

constexpr RowCheck kS2p2Checks[] = {
    {"1110S", kNameOrDelete, HasNoName},
    {"1110S", "Line {line} must have entries in columns 4 and 5.",
     [](Row row) {
         return AnyEmpty(row, {"Col_4", "Col_5"});
     }},
};
constexpr Section kS2p2{"Worksheet S-2 Part II: ",
                        "Select * From S2p2 Where LineNum<50 Order By LineNum;", kS2p2Checks};

// --- Part III ------------------------------------------------------------------------------

constexpr RowCheck kS2p3Checks[] = {
    {"1121S", kNameOrDelete, HasNoName},
    {"1121S", "Line {line} must have entries in columns 2, 4, 5, 7, and 8.",
     [](Row row) {
         return AnyEmpty(row, {"Col_2", "Col_4", "Col_5", "Col_7", "Col_8"});
     }},
    {"1130S", "Line {line}, column 2 must be six alphanumeric characters.",
     [](Row row) { return !IsSixAlphanumeric(WithoutDashes(CellText(row, "Col_2"))); }},
};
constexpr Section kS2p3{"Worksheet S-2 Part III: ",
                        "Select * From S2p3 Where LineNum<50 Order By LineNum;", kS2p3Checks};

void ReportSameNumber(Row row, const std::string& number) {
    AddNonFatal("1130S",
                fmt::format("{}Line {} contains a non-unique regional HO number in column 2: {}-{}",
                            kS2p3.Prefix, KeyText(row), LeftText(number, 2), MidText(number, 3)));
}

}  // namespace

void CheckUniqueCCNs() {
    Recordset rows = gDB.OpenRecordset(
        "Select * From S2p1 Where LineNum >= 1 And LineNum <= 50 Order By LineNum;",
        dbOpenSnapshot);
    std::map<std::string, std::vector<Period>> seen;
    for (; !rows.Eof(); rows.MoveNext()) {
        const std::optional<Period> period = PeriodOf(rows);
        if (IsBlank(rows, "Col_2") || !period) continue;
        const std::string ccn = CellText(rows, "Col_2");
        if (!OverlapsAny(*period, seen[ccn])) {
            seen[ccn].push_back(*period);
            continue;
        }
        AddNonFatal("1081S",
                    fmt::format("Each component CCN reported more than once in S-2 Part I must "
                                "have different reporting period dates that cannot overlap. CCN "
                                "{} has overlapping dates in line {}.",
                                ccn, KeyText(rows)));
    }
}

void CheckS2p1Col11() { RunSection(kCol11); }
void CheckS2p1() { RunSection(kS2p1); }
void CheckS2p2() { RunSection(kS2p2); }

bool RegionsAreChecked() {
    const std::optional<DateTime> end = DateOf(gFYEnd);
    return end && *end > DateTime(2023, 9, 29);
}

void CheckS2p3() {
    Recordset rows = gDB.OpenRecordset(kS2p3.Statement, dbOpenSnapshot);
    std::set<std::string> seen;
    for (; !rows.Eof(); rows.MoveNext()) {
        CheckRow(kS2p3, rows);
        const std::string number = WithoutDashes(CellText(rows, "Col_2"));
        if (!seen.insert(number).second) ReportSameNumber(rows, number);
    }
}

}  // namespace zolmara
