#include <gtest/gtest.h>

#include "editchecks/Catalogue.h"
#include "editchecks/CheckedCrf.h"

namespace zolmara {
namespace {

using test::CheckedCrf;
using test::Findings;
using test::Only;
using test::SetCell;

class ChecksS : public CheckedCrf {
protected:
    /// Findings of S-1 Part I on one line.
    Findings OnS1p1(std::string_view code) {
        return Only(Found(CheckS1p1), "NF | " + std::string(code) + " |");
    }
};

// --- S Part I ------------------------------------------------------------------------------

const Findings kAmended{
    "NF | 1010S | Worksheet S Part I: if Line 1 is \"Y\" then line 2 must be greater than zero, "
    "and visa versa."};

TEST_F(ChecksS, AStatementThatIsNotAmendedHasNumberZero) {
    EXPECT_EQ(Found(CheckSp1), Findings{});
    SetCell("Sp1", 2, "Col_1", "1");
    EXPECT_EQ(Found(CheckSp1), kAmended);
    SetCell("Sp1", 2, "Col_1", "-1");
    EXPECT_EQ(Found(CheckSp1), kAmended);
}

TEST_F(ChecksS, AnAmendedStatementHasANumberAboveZero) {
    SetCell("Sp1", 1, "Col_1", "yes");
    EXPECT_EQ(Found(CheckSp1), kAmended);
    SetCell("Sp1", 2, "Col_1", "-1");
    EXPECT_EQ(Found(CheckSp1), kAmended);
    SetCell("Sp1", 2, "Col_1", "2");
    EXPECT_EQ(Found(CheckSp1), Findings{});
}

TEST_F(ChecksS, AmendmentCellsThatAreNullOrTextCountAsNoAndZero) {
    SetCell("Sp1", 1, "Col_1", Variant());
    SetCell("Sp1", 2, "Col_1", "none");
    EXPECT_EQ(Found(CheckSp1), Findings{});
    SetCell("Sp1", 1, "Col_1", "Y");
    EXPECT_EQ(Found(CheckSp1), kAmended);
}

TEST_F(ChecksS, ASPartIWithoutItsRowsIsPassedOver) {
    SetCell("Sp1", 1, "Col_1", "Yes");
    EXPECT_EQ(Found(CheckSp1).size(), 1u);
    gDB.Execute("DELETE * FROM Sp1 WHERE LineNum>1;");
    EXPECT_EQ(Found(CheckSp1), Findings{});
    gDB.Execute("DELETE * FROM Sp1;");
    EXPECT_EQ(Found(CheckSp1), Findings{});
}

// --- S-1 Part I ----------------------------------------------------------------------------

TEST_F(ChecksS, HomeOfficeAddressMustBeComplete) {
    const Findings incomplete{
        "NF | 1000S | Worksheet S-1 Part I: HO/CO information in columns 1, 4, 5, and 6 must be "
        "completed."};
    SetRow("S1p1", 2, {{"Col_3", "01/01/1990"}});
    SetRow("S1p1", 1, {{"Col_1", "1 Main St"}, {"Col_4", "Springfield"}, {"Col_5", "IL"}});
    EXPECT_EQ(OnS1p1("1000S"), incomplete);
    SetCell("S1p1", 1, "Col_6", "   ");
    EXPECT_EQ(OnS1p1("1000S"), incomplete);
    SetCell("S1p1", 1, "Col_6", "62701");
    EXPECT_EQ(OnS1p1("1000S"), Findings{});
    for (const char* column : {"Col_1", "Col_4", "Col_5"}) {
        const Variant former = test::Cell("S1p1", 1, column);
        SetCell("S1p1", 1, column, "");
        EXPECT_EQ(OnS1p1("1000S"), incomplete) << column;
        SetCell("S1p1", 1, column, former);
    }
}

TEST_F(ChecksS, HomeOfficeIdentityMustBeComplete) {
    const Findings incomplete{
        "NF | 1000S | Worksheet S-1 Part I: HO/CO information in columns 1, 2, 3, 4, and 5 must be "
        "completed."};
    SetRow("S1p1", 1, {{"Col_1", "a"}, {"Col_4", "b"}, {"Col_5", "c"}, {"Col_6", "d"}});
    EXPECT_EQ(OnS1p1("1000S"), incomplete);  // column 3 is keyed by no one yet
    SetCell("S1p1", 2, "Col_3", "01/01/1990");
    EXPECT_EQ(OnS1p1("1000S"), Findings{});
    for (const char* column : {"Col_1", "Col_2", "Col_4", "Col_5"}) {
        const Variant former = test::Cell("S1p1", 2, column);
        SetCell("S1p1", 2, column, Variant());
        EXPECT_EQ(OnS1p1("1000S"), incomplete) << column;
        SetCell("S1p1", 2, column, former);
    }
}

TEST_F(ChecksS, HomeOfficeNumberHasSixLettersOrDigitsOnceDashesAreGone) {
    const Findings bad{
        "NF | 1020S | Worksheet S-1 Part I: Line 2, column 2. The HO number must be six "
        "alphanumeric characters."};
    for (const char* good : {"12-3456", "123456", "HO-1-2-34", "ab12CD"}) {
        SetCell("S1p1", 2, "Col_2", good);
        EXPECT_EQ(OnS1p1("1020S"), Findings{}) << good;
    }
    for (const char* wrong :
         {"12345", "1234567", "12 456", "12.456", " 123456", "", "12345\xC3\xA9"}) {
        SetCell("S1p1", 2, "Col_2", wrong);
        EXPECT_EQ(OnS1p1("1020S"), bad) << wrong;
    }
    SetCell("S1p1", 2, "Col_2", Variant());
    EXPECT_EQ(OnS1p1("1020S"), bad);
}

TEST_F(ChecksS, TypeOfControlIsOneToFourteen) {
    const Findings bad{
        "NF | 1050S | Worksheet S-1 Part I: Line 3, column 1. The type of control must be a value "
        "of 1 through 14."};
    for (const char* good : {"1", "14", " 7 "}) {
        SetCell("S1p1", 3, "Col_1", good);
        EXPECT_EQ(OnS1p1("1050S"), Findings{}) << good;
    }
    for (const char* wrong : {"0", "15", "-1", "", "church", "99999999999999999999"}) {
        SetCell("S1p1", 3, "Col_1", wrong);
        EXPECT_EQ(OnS1p1("1050S"), bad) << wrong;
    }
    SetCell("S1p1", 3, "Col_1", Variant());
    EXPECT_EQ(OnS1p1("1050S"), bad);
}

TEST_F(ChecksS, AnswersAboutStatementsAreYesOrNo) {
    EXPECT_EQ(
        OnS1p1("1060S"),
        (Findings{"NF | 1060S | Worksheet S-1 Part I: Line 4, column 1. must be either \"Y\" or "
                  "\"N\".",
                  "NF | 1060S | Worksheet S-1 Part I: Line 4, column 3. must be either \"Y\" or "
                  "\"N\".",
                  "NF | 1060S | Worksheet S-1 Part I: Line 4, column 5. must be either \"Y\" or "
                  "\"N\"."}));
    SetRow("S1p1", 4, {{"Col_1", "Yes"}, {"Col_3", "n"}, {"Col_5", "maybe"}});
    EXPECT_EQ(
        OnS1p1("1060S"),
        (Findings{"NF | 1060S | Worksheet S-1 Part I: Line 4, column 5. must be either \"Y\" or "
                  "\"N\"."}));
    SetCell("S1p1", 4, "Col_5", "No");
    EXPECT_EQ(OnS1p1("1060S"), Findings{});
}

TEST_F(ChecksS, StatementsPreparedByACpaTellTheirKind) {
    const Findings bad{
        "NF | 1070S | Worksheet S-1 Part I: Line 4, column 1 is \"Y\" then column 2 must be either "
        "\"A\", \"C\", or \"R\"."};
    SetCell("S1p1", 4, "Col_1", "Yes");
    EXPECT_EQ(OnS1p1("1070S"), bad);
    SetCell("S1p1", 4, "Col_2", "B");
    EXPECT_EQ(OnS1p1("1070S"), bad);
    for (const char* good : {"A", "C", "R", "Audited"}) {
        SetCell("S1p1", 4, "Col_2", good);
        EXPECT_EQ(OnS1p1("1070S"), Findings{}) << good;
    }
}

TEST_F(ChecksS, StatementsNotPreparedByACpaTellNoKind) {
    SetRow("S1p1", 4, {{"Col_1", "No"}, {"Col_2", "A"}});
    EXPECT_EQ(OnS1p1("1070S"),
              (Findings{"NF | 1070S | Worksheet S-1 Part I: Line 4, column 1 is \"N\" then column "
                        "2 must be blank."}));
    SetCell("S1p1", 4, "Col_2", " ");
    EXPECT_EQ(OnS1p1("1070S"), Findings{});
    SetRow("S1p1", 4, {{"Col_1", Variant()}, {"Col_2", "A"}});
    EXPECT_EQ(OnS1p1("1070S"), Findings{});
}

TEST_F(ChecksS, SubscriptedContactLinesAreNoLinesOfThisCatalogue) {
    AddRow("S1p1", 5.01);
    EXPECT_EQ(Only(Found(CheckContact), "PE | 2020S").size(), 1u);  // line 5 alone
}

// --- Potential errors ----------------------------------------------------------------------

class ChecksPeriod : public ChecksS {
protected:
    ChecksPeriod() { Dates("01/01/1990", "10/01/2022", "09/30/2023"); }
    static void Dates(const char* began, const char* from, const char* to) {
        SetRow("S1p1", 2, {{"Col_3", began}, {"Col_4", from}, {"Col_5", to}});
    }
};

const Findings kNoDates{"PE | VLQ | S1p1 Line 2 columns 2, 3, and 4 should contain valid dates."};
const Findings kBeganLate{
    "PE | 2000S | Worksheet S-1 Part I: line 2 column 3 should be on or before column 4."};
const Findings kOddLength{
    "PE | 2010S | Worksheet S-1 Part I: line 2 column 4 and 5. The cost reporting period should be "
    "greater than 27 days and less than 459."};

TEST_F(ChecksPeriod, DatesMustBeDates) {
    EXPECT_EQ(Found(CheckPeriod), Findings{});
    Dates("12/31/1965", "10/01/2022", "09/30/2023");
    EXPECT_EQ(Found(CheckPeriod), kNoDates);
    Dates("01/01/1990", "02/30/2022", "09/30/2023");
    EXPECT_EQ(Found(CheckPeriod), kNoDates);
    Dates("01/01/1990", "10/01/2022", "");
    EXPECT_EQ(Found(CheckPeriod), kNoDates);
    SetCell("S1p1", 2, "Col_3", Variant());
    EXPECT_EQ(Found(CheckPeriod), kNoDates);
}

TEST_F(ChecksPeriod, OperationsBeganOnOrBeforeThePeriod) {
    Dates("10/01/2022", "10/01/2022", "09/30/2023");
    EXPECT_EQ(Found(CheckPeriod), Findings{});
    Dates("10/02/2022", "10/01/2022", "09/30/2023");
    EXPECT_EQ(Found(CheckPeriod), kBeganLate);
}

TEST_F(ChecksPeriod, PeriodIsLongerThan27DaysAndShorterThan459) {
    Dates("01/01/1990", "10/01/2022", "10/28/2022");  // 27 days on
    EXPECT_EQ(Found(CheckPeriod), kOddLength);
    Dates("01/01/1990", "10/01/2022", "10/29/2022");  // 28
    EXPECT_EQ(Found(CheckPeriod), Findings{});
    Dates("01/01/1990", "10/01/2022", "01/02/2024");  // 458
    EXPECT_EQ(Found(CheckPeriod), Findings{});
    Dates("01/01/1990", "10/01/2022", "01/03/2024");  // 459
    EXPECT_EQ(Found(CheckPeriod), kOddLength);
    Dates("01/01/1990", "10/01/2022", "09/01/2022");
    EXPECT_EQ(Found(CheckPeriod), kOddLength);
}

TEST_F(ChecksS, ContactShouldBeComplete) {
    const Findings incomplete{
        "PE | 2020S | Worksheet S-1 Part I: line 5 all columns should be completed."};
    EXPECT_EQ(Found(CheckContact), incomplete);
    for (int n = 1; n <= 6; ++n) SetCell("S1p1", 5, "Col_" + std::to_string(n), "x");
    EXPECT_EQ(Found(CheckContact), Findings{});
    SetCell("S1p1", 5, "Col_6", " ");
    EXPECT_EQ(Found(CheckContact), incomplete);
}

TEST_F(ChecksS, EveryOfficerWithoutANameIsAFinding) {
    const std::string missing =
        "PE | 2030S | Worksheet S-1 Part II: lines 1 through 5 column 2 should be completed.";
    EXPECT_EQ(Found(CheckOfficers), Findings(5, missing));
    for (int line = 1; line <= 4; ++line) SetCell("S1p2", line, "Col_2", "Ann Lee");
    AddRow("S1p2", 6);
    EXPECT_EQ(Found(CheckOfficers), Findings(1, missing));
    SetCell("S1p2", 5, "Col_2", "Ann Lee");
    EXPECT_EQ(Found(CheckOfficers), Findings{});
}

}  // namespace
}  // namespace zolmara
