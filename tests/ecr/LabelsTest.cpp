#include "ecr/EcrSupport.h"
#include "ecr/Labels.h"

namespace zolmara::test {
namespace {

class Header : public EcrCrf {
protected:
    Lines Written(const DateTime& stamp = DateTime(2024, 3, 15, 14, 5, 0)) {
        return Records([&](EcrRun& run) { ECR_Type1(run, stamp); });
    }
};

TEST_F(Header, TheWorkedExample) {
    gProviderNumber = "123456";
    gFYStart = DateTime(2023, 1, 1);
    gFYEnd = DateTime(2023, 12, 31);
    EXPECT_EQ(Written(), (Lines{"1           1   12345620230012023365HB02P00320240752023365",
                                "1           2       287-22", "1           4       14:05"}));
}

TEST_F(Header, TheDashOfTheNumberIsLeftOut) {
    EXPECT_EQ(ShortProviderNumber(), "123456");
    EXPECT_EQ(Written().at(0).substr(16, 6), "123456");
}

TEST_F(Header, ANumberOfEightCharactersLosesTheOnesInTheMiddle) {
    gProviderNumber = "12AB3456";
    EXPECT_EQ(ShortProviderNumber(), "123456");
}

TEST_F(Header, ANumberWithLeadingZerosKeepsThem) {
    gProviderNumber = "01-0007";
    EXPECT_EQ(Written().at(0).substr(16, 6), "010007");
}

TEST_F(Header, ANumberThatBeginsWithALetterReadsAsZero) {
    gProviderNumber = "A1-3456";
    EXPECT_EQ(Written().at(0).substr(16, 6), "000000");
}

TEST_F(Header, AShortNumberStandsTwice) {
    gProviderNumber = "12";
    EXPECT_EQ(ShortProviderNumber(), "1212");
    gProviderNumber.clear();
    EXPECT_EQ(ShortProviderNumber(), "");
    EXPECT_EQ(Written().at(0).substr(16, 6), "000000");
}

TEST_F(Header, NullDatesAreBlank) {
    gFYStart = Variant();
    gFYEnd = Variant();
    EXPECT_EQ(Written().at(0).substr(22, 14), std::string(14, ' '));
}

TEST_F(Header, ADateThatIsNoneIsZeros) {
    gFYStart = DateTime(1965, 12, 31);
    EXPECT_EQ(Written().at(0).substr(22, 7), "0000000");
}

TEST_F(Header, MidnightAndTheLastMinute) {
    EXPECT_EQ(Written(DateTime(2024, 1, 1)).at(2), "1           4       00:00");
    const Lines late = Written(DateTime(2024, 12, 31, 23, 59, 0));
    EXPECT_EQ(late.at(2), "1           4       23:59");
    EXPECT_EQ(late.at(0).substr(44, 7), "2024366");
}

// --- Names ---------------------------------------------------------------------------------

class LabelRecords : public EcrCrf {
protected:
    Lines Written() {
        return Records([](EcrRun& run) { ECR_Type2(run); });
    }
    /// Leaves a single cost center in the table.
    void OnlyCenter(double line, const Variant& name, const Variant& label1, const Variant& label2,
                    const Variant& code) {
        gDB.Execute("DELETE * FROM CostCenters;");
        gDB.Execute("DELETE * FROM ES;");
        AddRow(
            "CostCenters", line,
            {{"CCName", name}, {"StatLabel1", label1}, {"StatLabel2", label2}, {"StatCode", code}});
    }
    void OnlyPool(double line, const Variant& name, const Variant& label1, const Variant& code) {
        gDB.Execute("DELETE * FROM CostCenters;");
        gDB.Execute("DELETE * FROM ES;");
        AddRow("ES", line, {{"CCName", name}, {"StatLabel1", label1}, {"StatCode", code}});
    }
};

TEST_F(LabelRecords, ThoseOfANewStatement) {
    const Lines lines = Written();
    ASSERT_EQ(lines.size(), 26u + 2 * 3 + 4 * 3);
    EXPECT_EQ(lines.at(0), "2A000000    1           " + InField("CRC-B&F", 36));
    EXPECT_EQ(lines.at(1), "2A000000    2           " + InField("CRC-ME", 36));
    EXPECT_EQ(lines.at(2),
              "2A000000    4           " + InField("INSURANCE PREMIUMS-OTHER CRC", 36));
    EXPECT_EQ(lines.at(25), "2A000000   28           " + InField("INTEREST INCOME", 36));
    const Lines labels(lines.begin() + 26, lines.end());
    EXPECT_EQ(labels, (Lines{"2C100000    4    1  SQUARE    ", "2C100000    5    1  FEET      ",
                             "2C100000    6    1  1", "2C100000    4    2  DOLLAR    ",
                             "2C100000    5    2  VALUE     ", "2C100000    6    2  2",
                             "2E000000    4    1  TOTAL     ", "2E000000    5    1  COSTS     ",
                             "2E000000    6    1  1         ", "2E100001    4    1  TOTAL     ",
                             "2E100001    5    1  COSTS     ", "2E100001    6    1  1         ",
                             "2E100002    4    1  TOTAL     ", "2E100002    5    1  COSTS     ",
                             "2E100002    6    1  1         ", "2E100003    4    1  TOTAL     ",
                             "2E100003    5    1  COSTS     ", "2E100003    6    1  1         "}));
}

TEST_F(LabelRecords, TheFirstSubscriptOfANameIsBlankAndTheSecondIsOne) {
    OnlyCenter(4.01, "One", Variant(), Variant(), Variant());
    AddRow("CostCenters", 4.02, {{"CCName", "Two"}});
    AddRow("CostCenters", 4.25, {{"CCName", "Quarter"}});
    EXPECT_EQ(Written(), (Lines{"2A000000    4           " + InField("ONE", 36),
                                "2A000000    4 1         " + InField("TWO", 36),
                                "2A000000    425         " + InField("QUARTER", 36)}));
}

TEST_F(LabelRecords, ALabelOfACostCenterHasItsWholeSubscript) {
    OnlyCenter(4.01, "One", "Hours", Variant(), Variant());
    EXPECT_EQ(Written().at(1), "2D100000    4    4 1HOURS     ");
}

TEST_F(LabelRecords, CapitalCentersAreOnC1AndTheOthersOnD1) {
    OnlyCenter(2.99, "A", "X", Variant(), Variant());
    EXPECT_EQ(Written().at(1).substr(0, 8), "2C100000");
    OnlyCenter(3, "A", "X", Variant(), Variant());
    EXPECT_EQ(Written().at(1).substr(0, 8), "2D100000");
}

TEST_F(LabelRecords, WithoutLabelsTheCodeIsNotWrittenEither) {
    OnlyCenter(9, "A", Variant(), Variant(), 3);
    EXPECT_EQ(Written().size(), 1u);
}

TEST_F(LabelRecords, EitherLabelBringsTheOthers) {
    OnlyCenter(9, "A", Variant(), "Feet", 3);
    EXPECT_EQ(Written(), (Lines{"2A000000    9           " + InField("A", 36),
                                "2D100000    5    9  FEET      ", "2D100000    6    9  3"}));
}

TEST_F(LabelRecords, AnEmptyLabelGivesNoRecord) {
    OnlyCenter(9, "A", "", "()", 0);
    EXPECT_EQ(Written(),
              (Lines{"2A000000    9           " + InField("A", 36), "2D100000    6    9  0"}));
}

TEST_F(LabelRecords, ALabelOfNineCharactersInBracketsIsStrippedAndThenFilled) {
    OnlyCenter(9, "A", "(PATIENTS)", "(Nine Lttr)", Variant());
    EXPECT_EQ(Written(),
              (Lines{"2A000000    9           " + InField("A", 36),
                     "2D100000    4    9  PATIENTS  ", "2D100000    5    9  NINE LTTR "}));
}

TEST_F(LabelRecords, ALongLabelAndALongNameAreCut) {
    OnlyCenter(9, std::string(40, 'n'), "Accumulated cost", Variant(), Variant());
    EXPECT_EQ(Written(), (Lines{"2A000000    9           " + std::string(36, 'N'),
                                "2D100000    4    9  ACCUMULATE"}));
}

TEST_F(LabelRecords, ANameWithALineBreakStaysOneRecord) {
    OnlyCenter(9, "A\r\nB", Variant(), Variant(), Variant());
    EXPECT_EQ(Written(), Lines{"2A000000    9           " + InField("A B", 36)});
}

TEST_F(LabelRecords, ANullNameIsBlank) {
    OnlyCenter(9, Variant(), Variant(), Variant(), Variant());
    EXPECT_EQ(Written(), Lines{"2A000000    9           " + std::string(36, ' ')});
}

TEST_F(LabelRecords, APoolsWorksheetFollowsFromItsName) {
    OnlyPool(4, "E-1 Part III", "Total", Variant());
    EXPECT_EQ(Written(), Lines{"2E100003    4    1  TOTAL     "});
    OnlyPool(1, "E-1 Part III", "Total", Variant());
    EXPECT_EQ(Written(), Lines{"2E000000    4    1  TOTAL     "});
}

TEST_F(LabelRecords, APoolsCodeIsTenCharactersOfText) {
    OnlyPool(2, "E-1 Part I", "(T)", 12);
    EXPECT_EQ(Written(),
              (Lines{"2E100001    4    1  T         ", "2E100001    6    1  12        "}));
}

TEST_F(LabelRecords, EmptyTablesGiveNone) {
    gDB.Execute("DELETE * FROM CostCenters;");
    gDB.Execute("DELETE * FROM ES;");
    EXPECT_EQ(Written(), Lines{});
}

}  // namespace
}  // namespace zolmara::test
