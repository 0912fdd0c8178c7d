// The checks of worksheets S and S-1.

#include "core/Globals.h"
#include "editchecks/Catalogue.h"
#include "editchecks/Cells.h"
#include "editchecks/RowChecks.h"
#include "editchecks/modEditChecks.h"
#include "store/session/Session.h"

namespace zolmara {
namespace {

using Row = const Recordset&;

// --- Worksheet S Part I --------------------------------------------------------------------

/// The answer and the number of an amended statement go together.
bool AmendmentDisagrees(std::string_view answer, double number) {
    if (FirstLetter(Variant(answer)) == "Y") return !IsAboveZero(number);
    return !IsZero(number);
}

// --- Worksheet S-1 Part I ------------------------------------------------------------------

constexpr int kLowestControl = 1;
constexpr int kHighestControl = 14;

bool IsControlType(double value) {
    const double type = std::trunc(value);
    return Between<double>(type, kLowestControl, kHighestControl);
}

bool IsYesOrNo(Row row, std::string_view field) { return BeginsWith(row, field, "YN"); }

constexpr RowCheck kS1p1Checks[] = {
    {"1000S", "HO/CO information in columns 1, 4, 5, and 6 must be completed.",
     [](Row row) {
         return OnLine(row, 1) && AnyBlank(row, {"Col_1", "Col_4", "Col_5", "Col_6"});
     }},
    {"1000S", "HO/CO information in columns 1, 2, 3, 4, and 5 must be completed.",
     [](Row row) {
         return OnLine(row, 2) && AnyBlank(row, {"Col_1", "Col_2", "Col_3", "Col_4", "Col_5"});
     }},
    {"1020S", "Line 2, column 2. The HO number must be six alphanumeric characters.",
     [](Row row) {
         return OnLine(row, 2) && !IsSixAlphanumeric(WithoutDashes(CellText(row, "Col_2")));
     }},
    {"1050S", "Line 3, column 1. The type of control must be a value of 1 through 14.",
     [](Row row) { return OnLine(row, 3) && !IsControlType(CellNumber(row, "Col_1")); }},
    {"1060S", R"(Line 4, column 1. must be either "Y" or "N".)",
     [](Row row) { return OnLine(row, 4) && !IsYesOrNo(row, "Col_1"); }},
    {"1060S", R"(Line 4, column 3. must be either "Y" or "N".)",
     [](Row row) { return OnLine(row, 4) && !IsYesOrNo(row, "Col_3"); }},
    {"1060S", R"(Line 4, column 5. must be either "Y" or "N".)",
     [](Row row) { return OnLine(row, 4) && !IsYesOrNo(row, "Col_5"); }},
    {"1070S", R"(Line 4, column 1 is "Y" then column 2 must be either "A", "C", or "R".)",
     [](Row row) {
         return OnLine(row, 4) && BeginsWith(row, "Col_1", "Y") && !BeginsWith(row, "Col_2", "ACR");
     }},
    {"1070S", R"(Line 4, column 1 is "N" then column 2 must be blank.)",
     [](Row row) {
         return OnLine(row, 4) && BeginsWith(row, "Col_1", "N") && !IsBlank(row, "Col_2");
     }},
};
constexpr Section kS1p1{"Worksheet S-1 Part I: ", "SELECT * From S1p1 ORDER BY LineNum;",
                        kS1p1Checks};

// --- Potential errors ----------------------------------------------------------------------

constexpr std::int64_t kShortestPeriod = 28;  ///< days from its first to its last
constexpr std::int64_t kLongestPeriod = 458;

struct PeriodDates {
    std::optional<DateTime> Began;  ///< the home office's operations
    std::optional<DateTime> From;
    std::optional<DateTime> To;
    bool Complete() const { return Began && From && To; }
};

PeriodDates DatesOf(Row row) {
    return {ValidDate(row["Col_3"]), ValidDate(row["Col_4"]), ValidDate(row["Col_5"])};
}

bool BeganTooLate(const PeriodDates& dates) {
    return dates.Complete() && *dates.Began > *dates.From;
}

bool LengthIsOdd(const PeriodDates& dates) {
    return dates.Complete() &&
           !Between(DaysBetween(*dates.From, *dates.To), kShortestPeriod, kLongestPeriod);
}

constexpr RowCheck kPeriodChecks[] = {
    // The columns of this text are those of the form's first edition.
    {"VLQ", "S1p1 Line 2 columns 2, 3, and 4 should contain valid dates.",
     [](Row row) { return OnLine(row, 2) && !DatesOf(row).Complete(); }},
    {"2000S", "Worksheet S-1 Part I: line 2 column 3 should be on or before column 4.",
     [](Row row) { return OnLine(row, 2) && BeganTooLate(DatesOf(row)); }},
    {"2010S",
     "Worksheet S-1 Part I: line 2 column 4 and 5. The cost reporting period should be greater "
     "than 27 days and less than 459.",
     [](Row row) { return OnLine(row, 2) && LengthIsOdd(DatesOf(row)); }},
};
constexpr std::string_view kPeriodAndContact =
    "Select * From S1p1 Where LineNum In(2,5) Order by LineNum;";
constexpr Section kPeriod{"", kPeriodAndContact, kPeriodChecks, Severity::Potential};

constexpr RowCheck kContactChecks[] = {
    {"2020S", "Worksheet S-1 Part I: line 5 all columns should be completed.",
     [](Row row) {
         return OnLine(row, 5) &&
                AnyBlank(row, {"Col_1", "Col_2", "Col_3", "Col_4", "Col_5", "Col_6"});
     }},
};
constexpr Section kContact{"", kPeriodAndContact, kContactChecks, Severity::Potential};

constexpr RowCheck kOfficerChecks[] = {
    {"2030S", "Worksheet S-1 Part II: lines 1 through 5 column 2 should be completed.",
     [](Row row) { return IsBlank(row, "Col_2"); }},
};
constexpr Section kOfficers{"", "Select * From S1p2 Where LineNum<6;", kOfficerChecks,
                            Severity::Potential};

}  // namespace

void CheckSp1() {
    Recordset rows = gDB.OpenRecordset("Select * From Sp1 Order By LineNum;", dbOpenSnapshot);
    if (rows.Eof()) return;
    const std::string answer = CellText(rows, "Col_1");
    rows.MoveNext();
    if (rows.Eof()) return;
    const double number = CellNumber(rows, "Col_1");
    if (!AmendmentDisagrees(answer, number)) return;
    AddNonFatal("1010S", R"(Worksheet S Part I: if Line 1 is "Y" then line 2 must be greater )"
                         "than zero, and visa versa.");
}

void CheckS1p1() { RunSection(kS1p1); }
void CheckPeriod() { RunSection(kPeriod); }
void CheckContact() { RunSection(kContact); }
void CheckOfficers() { RunSection(kOfficers); }

}  // namespace zolmara
