#include <gtest/gtest.h>

#include "editchecks/Catalogue.h"
#include "editchecks/CheckedCrf.h"

namespace zolmara {
namespace {

using test::CheckedCrf;
using test::Findings;
using test::Only;
using test::SetCell;

// --- S-2 Part I ----------------------------------------------------------------------------

class ChecksS2p1 : public CheckedCrf {
protected:
    /// A component with everything that Part I asks for.
    static void AddComponent(double line, Fields fields = {}) {
        AddRow("S2p1", line,
               {{"Col_1", "General Hospital"},
                {"Col_2", "14-0001"},
                {"Col_3", "O"},
                {"Col_4", "10/01/2022"},
                {"Col_5", "09/30/2023"},
                {"Col_8", "Y"},
                {"Col_9", "P"},
                {"Col_10", "06101"}});
        SetRow("S2p1", line, fields);
    }
    static Findings With(Fields fields) {
        gDB.Execute("DELETE * FROM S2p1;");
        AddComponent(3, fields);
        return Found(CheckS2p1);
    }
};

TEST_F(ChecksS2p1, ACompleteComponentIsNoFinding) { EXPECT_EQ(With({}), Findings{}); }

TEST_F(ChecksS2p1, AComponentHasAName) {
    const Findings unnamed{
        "NF | 1080S | Worksheet S-2 Part I: Line 3 must have a component name or be deleted."};
    EXPECT_EQ(With({{"Col_1", Variant()}}), unnamed);
    EXPECT_EQ(With({{"Col_1", "  "}}), unnamed);
}

TEST_F(ChecksS2p1, ABlankRowGetsBothFindingsOfItsCode) {
    AddRow("S2p1", 3);
    EXPECT_EQ(
        Only(Found(CheckS2p1), "NF | 1080S"),
        (Findings{"NF | 1080S | Worksheet S-2 Part I: Line 3 must have a component name or be "
                  "deleted.",
                  "NF | 1080S | Worksheet S-2 Part I: Line 3 must have entries in columns 3, 4, 5, "
                  "and 8."}));
}

TEST_F(ChecksS2p1, ColumnsThreeFourFiveAndEightAreNotEmpty) {
    const Findings missing{
        "NF | 1080S | Worksheet S-2 Part I: Line 3 must have entries in columns 3, 4, 5, and 8."};
    for (const char* column : {"Col_3", "Col_4", "Col_5", "Col_8"}) {
        EXPECT_EQ(With({{column, Variant()}}), missing) << column;
        EXPECT_EQ(With({{column, ""}}), missing) << column;
    }
    EXPECT_EQ(With({{"Col_3", " "}}), Findings{});  // a blank is an entry here
}

TEST_F(ChecksS2p1, ReimbursementIsPTOrO) {
    for (const char* good : {"P", "t", "Other", ""}) EXPECT_EQ(With({{"Col_9", good}}), Findings{});
    EXPECT_EQ(With({{"Col_9", "X"}}),
              (Findings{"NF | 1085S | Worksheet S-2 Part I: Line 3, column 9 must have either "
                        "\"P\", \"T\", or \"O\"."}));
}

TEST_F(ChecksS2p1, CCNHasSixLettersOrDigits) {
    const Findings bad{
        "NF | 1090S | Worksheet S-2 Part I: Line 3, column 2. The component CCN must be six "
        "alphanumeric characters."};
    for (const char* good : {"140001", "14-0001", " 14-S001 "})
        EXPECT_EQ(With({{"Col_2", good}}), Findings{}) << good;
    for (const char* wrong : {"14-001", "1400011", "14 001", "14.001"})
        EXPECT_EQ(With({{"Col_2", wrong}}), bad) << wrong;
    EXPECT_EQ(With({{"Col_2", " - "}, {"Col_9", ""}}), Findings{});  // nothing but a dash
}

TEST_F(ChecksS2p1, AReimbursementNeedsTheCCNAndTheContractor) {
    const Findings bad{
        "NF | 1100S | Worksheet S-2 Part I: Line 3, column 9. An entry in column 9 requires "
        "entries in columns 2 and 10."};
    EXPECT_EQ(With({{"Col_2", ""}}), bad);
    EXPECT_EQ(With({{"Col_10", " "}}), bad);
    EXPECT_EQ(With({{"Col_9", ""}, {"Col_2", ""}, {"Col_10", ""}}), Findings{});
}

TEST_F(ChecksS2p1, EndingDateLiesWithinTheReportingPeriod) {
    const Findings outside{
        "NF | VLQ | Worksheet S-2 Part I: Line 3, column 5. The ending date must fall within the "
        "reporting period."};
    EXPECT_EQ(With({{"Col_5", "10/01/2022"}}), Findings{});
    EXPECT_EQ(With({{"Col_5", "09/30/2022"}}), outside);
    EXPECT_EQ(With({{"Col_5", "10/01/2023"}}), outside);
    EXPECT_EQ(With({{"Col_5", "none"}}), Findings{});
}

TEST_F(ChecksS2p1, WithoutDatesOfItsOwnTheStatementHoldsNoEndingDateAgainstAComponent) {
    gFYStart = Variant();
    EXPECT_EQ(With({{"Col_5", "09/30/2021"}}), Findings{});
    gFYEnd = Variant();
    EXPECT_EQ(With({{"Col_5", "09/30/2024"}}), Findings{});
}

TEST_F(ChecksS2p1, LinesFromFiftyOnAreNotLookedAt) {
    AddRow("S2p1", 50);
    EXPECT_EQ(Found(CheckS2p1), Findings{});
    AddRow("S2p1", 49.99);
    EXPECT_EQ(Found(CheckS2p1).size(), 2u);
}

// --- CCNs more than once -------------------------------------------------------------------

class ChecksCCNs : public ChecksS2p1 {
protected:
    static void AddPeriod(double line, const char* from, const char* to,
                          const char* ccn = "14-0001") {
        AddRow("S2p1", line, {{"Col_2", ccn}, {"Col_4", from}, {"Col_5", to}});
    }
    static std::string Overlap(const char* line) {
        return "NF | 1081S | Each component CCN reported more than once in S-2 Part I must have "
               "different reporting period dates that cannot overlap. CCN 14-0001 has overlapping "
               "dates in line " +
               std::string(line) + ".";
    }
};

TEST_F(ChecksCCNs, AdjoiningPeriodsDoNotOverlap) {
    AddPeriod(1, "07/01/2022", "06/30/2023");
    AddPeriod(2, "07/01/2023", "12/31/2023");
    EXPECT_EQ(Found(CheckUniqueCCNs), Findings{});
}

TEST_F(ChecksCCNs, APeriodThatEndsOnTheNextStartOverlaps) {
    AddPeriod(1, "07/01/2022", "07/01/2023");
    AddPeriod(2, "07/01/2023", "12/31/2023");
    EXPECT_EQ(Found(CheckUniqueCCNs), Findings{Overlap("2")});
}

TEST_F(ChecksCCNs, APeriodBeforeOrWithinAnotherIsSeenToo) {
    AddPeriod(1, "07/01/2022", "06/30/2023");
    AddPeriod(2, "01/01/2022", "07/01/2022");
    AddPeriod(3.01, "08/01/2022", "08/31/2022");
    EXPECT_EQ(Found(CheckUniqueCCNs), (Findings{Overlap("2"), Overlap("3.01")}));
}

TEST_F(ChecksCCNs, AnOverlappingPeriodIsNotRememberedForLaterOnes) {
    AddPeriod(1, "01/01/2022", "01/31/2022");
    AddPeriod(2, "01/15/2022", "12/31/2022");
    AddPeriod(3, "06/01/2022", "06/30/2022");
    EXPECT_EQ(Found(CheckUniqueCCNs), Findings{Overlap("2")});
}

TEST_F(ChecksCCNs, ARowThatOverlapsSeveralPeriodsIsOneFinding) {
    AddPeriod(1, "01/01/2022", "03/31/2022");
    AddPeriod(2, "04/01/2022", "06/30/2022");
    AddPeriod(3, "01/01/2022", "12/31/2022");
    EXPECT_EQ(Found(CheckUniqueCCNs), Findings{Overlap("3")});
}

TEST_F(ChecksCCNs, OtherCCNsAndRowsWithoutCCNOrDatesArePassedOver) {
    AddPeriod(1, "01/01/2022", "12/31/2022");
    AddPeriod(2, "01/01/2022", "12/31/2022", "14-0002");
    AddPeriod(3, "01/01/2022", "", "14-0001");
    AddPeriod(4, "soon", "12/31/2022", "14-0001");
    AddPeriod(5, "01/01/2022", "12/31/2022", "");
    AddPeriod(6, "01/01/2022", "12/31/2022", "");
    EXPECT_EQ(Found(CheckUniqueCCNs), Findings{});
}

TEST_F(ChecksCCNs, LineFiftyIsTheLastOne) {
    AddPeriod(1, "01/01/2022", "12/31/2022");
    AddPeriod(50.01, "01/01/2022", "12/31/2022");
    EXPECT_EQ(Found(CheckUniqueCCNs), Findings{});
    AddPeriod(50, "01/01/2022", "12/31/2022");
    EXPECT_EQ(Found(CheckUniqueCCNs), Findings{Overlap("50")});
}

// --- Medicaid contractor -------------------------------------------------------------------

TEST_F(ChecksS2p1, MedicaidContractorIsANameAndNoNumber) {
    AddRow("S2p1", 1, {{"Col_11", "State Medicaid"}});
    AddRow("S2p1", 2, {{"Col_11", "06101"}});
    AddRow("S2p1", 3, {{"Col_11", ""}});
    AddRow("S2p1", 4.01, {{"Col_11", " 1,234.5 "}});
    AddRow("S2p1", 5);
    const std::string rest =
        " contains numeric data in column 11. This should be the Medicaid Contractor Name rather "
        "than Number or leave blank if not a Medicaid participant.";
    EXPECT_EQ(Found(CheckS2p1Col11), (Findings{"NF | VLQ | Worksheet S2p1: Line 2" + rest,
                                               "NF | VLQ | Worksheet S2p1: Line 4.01" + rest}));
}

// --- S-2 Part II ---------------------------------------------------------------------------

TEST_F(ChecksS2p1, NonHealthcareComponentsHaveANameAndDates) {
    AddRow("S2p2", 1, {{"Col_1", "Realty"}, {"Col_4", "10/01/2022"}, {"Col_5", "09/30/2023"}});
    EXPECT_EQ(Found(CheckS2p2), Findings{});
    AddRow("S2p2", 2, {{"Col_1", " "}, {"Col_4", "10/01/2022"}, {"Col_5", ""}});
    EXPECT_EQ(
        Found(CheckS2p2),
        (Findings{"NF | 1110S | Worksheet S-2 Part II: Line 2 must have a component name or be "
                  "deleted.",
                  "NF | 1110S | Worksheet S-2 Part II: Line 2 must have entries in columns 4 and "
                  "5."}));
}

// --- S-2 Part III --------------------------------------------------------------------------

class ChecksS2p3 : public CheckedCrf {
protected:
    static void AddRegion(double line, const char* number) {
        AddRow("S2p3", line,
               {{"Col_1", "West"},
                {"Col_2", number},
                {"Col_4", "Denver"},
                {"Col_5", "CO"},
                {"Col_7", "N"},
                {"Col_8", "06101"}});
    }
};

TEST_F(ChecksS2p3, RegionsHaveANameAndTheirEntries) {
    AddRegion(1, "12-0001");
    EXPECT_EQ(Found(CheckS2p3), Findings{});
    const Findings missing{
        "NF | 1121S | Worksheet S-2 Part III: Line 1 must have entries in columns 2, 4, 5, 7, and "
        "8."};
    for (const char* column : {"Col_4", "Col_5", "Col_7", "Col_8"}) {
        const Variant former = test::Cell("S2p3", 1, column);
        SetCell("S2p3", 1, column, "");
        EXPECT_EQ(Found(CheckS2p3), missing) << column;
        SetCell("S2p3", 1, column, former);
    }
    SetCell("S2p3", 1, "Col_1", Variant());
    EXPECT_EQ(Found(CheckS2p3),
              (Findings{"NF | 1121S | Worksheet S-2 Part III: Line 1 must have a component name or "
                        "be deleted."}));
}

TEST_F(ChecksS2p3, ARegionWithoutANumberIsToldOfBoth) {
    AddRegion(1, "");
    EXPECT_EQ(
        Found(CheckS2p3),
        (Findings{"NF | 1121S | Worksheet S-2 Part III: Line 1 must have entries in columns 2, 4, "
                  "5, 7, and 8.",
                  "NF | 1130S | Worksheet S-2 Part III: Line 1, column 2 must be six alphanumeric "
                  "characters."}));
}

TEST_F(ChecksS2p3, RegionNumbersHaveSixLettersOrDigits) {
    AddRegion(1, "12-001");
    EXPECT_EQ(Found(CheckS2p3),
              (Findings{"NF | 1130S | Worksheet S-2 Part III: Line 1, column 2 must be six "
                        "alphanumeric characters."}));
}

TEST_F(ChecksS2p3, RegionNumbersAreUniqueWithoutRegardToDashes) {
    AddRegion(1, "12-0001");
    AddRegion(2, "120002");
    AddRegion(2.01, "120001");
    EXPECT_EQ(Found(CheckS2p3),
              (Findings{"NF | 1130S | Worksheet S-2 Part III: Line 2.01 contains a non-unique "
                        "regional HO number in column 2: 12-0001"}));
}

TEST_F(ChecksS2p3, NoNumberTwiceIsTheSameNumberTwice) {
    AddRegion(1, "");
    AddRegion(2, "");
    const auto found = Found(CheckS2p3);
    ASSERT_EQ(found.size(), 5u);
    EXPECT_EQ(found.back(),
              "NF | 1130S | Worksheet S-2 Part III: Line 2 contains a non-unique regional HO "
              "number in column 2: -");
}

TEST_F(ChecksS2p3, RegionsAreCheckedInYearsThatEndAfter9292023) {
    gFYEnd = DateTime(2023, 9, 29);
    EXPECT_FALSE(RegionsAreChecked());
    gFYEnd = DateTime(2023, 9, 30);
    EXPECT_TRUE(RegionsAreChecked());
    gFYEnd = Variant();
    EXPECT_FALSE(RegionsAreChecked());
}

}  // namespace
}  // namespace zolmara
