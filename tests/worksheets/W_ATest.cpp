#include <gtest/gtest.h>

#include "store/DatabaseImpl.h"
#include "worksheets/Sheets.h"
#include "worksheets/W_A.h"

namespace zolmara {
namespace {

using namespace test;

class W_ATest : public SheetTest {
protected:
    void Reclassify(double line, const Variant& up, const Variant& upAmount, const Variant& down,
                    const Variant& downAmount) {
        gDB.Execute("INSERT INTO A6 (LineNum,Col_4,Col_5,Col_7,Col_8) VALUES (?,?,?,?,?);",
                    {Currency(line), up, upAmount, down, downAmount});
    }
    void Related(double sequence, const Variant& line, const Variant& net) {
        gDB.Execute("INSERT INTO A81p1 (SeqNum,Col_1,Col_7) VALUES (?,?,?);",
                    {Currency(sequence), line, net});
    }
};

TEST_F(W_ATest, BuildTakesTheCostCentersAndTheFourComputedLines) {
    EXPECT_EQ(Rows("A"), 30);
    EXPECT_EQ(TextCell("A", 1, "CCName"), "CRC-B&F");
    EXPECT_EQ(TextCell("A", 28, "CCName"), "Interest Income");
    EXPECT_EQ(TextCell("A", 3, "CCName"), "Subtotal CRC");
    EXPECT_EQ(TextCell("A", 7, "CCName"), "Subtotal Other CRC");
    EXPECT_EQ(TextCell("A", 99, "CCName"), "Subtotal Non-Capital Cost");
    EXPECT_EQ(TextCell("A", 100, "CCName"), "Total");
    for (int column = 1; column <= 8; ++column) {
        EXPECT_TRUE(IsNullCell("A", 100, "Col_" + std::to_string(column)));
        EXPECT_TRUE(IsNullCell("A", 8, "Col_" + std::to_string(column)));
    }
}

TEST_F(W_ATest, ThreeReclassificationsOf100PostUpAndDown) {
    for (const int line : {1, 2, 3}) Reclassify(line, 8, 100, 9, 100);
    Calc_A();
    EXPECT_EQ(Num("A", 8, "Col_2"), 300);
    EXPECT_EQ(Num("A", 9, "Col_2"), -300);
    EXPECT_EQ(Num("A", 100, "Col_2"), 0);
    EXPECT_TRUE(host.Boxes.empty());
}

TEST_F(W_ATest, ANegativeUpAmountDoesNotPost) {
    Reclassify(1, 8, -100, nullptr, nullptr);
    Calc_A();
    EXPECT_EQ(Num("A", 8, "Col_2"), 0);
}

TEST_F(W_ATest, ANegativeDownAmountAddsToTheCostCenter) {
    Reclassify(1, nullptr, nullptr, 9, -40);
    Calc_A();
    EXPECT_EQ(Num("A", 9, "Col_2"), 40);
}

TEST_F(W_ATest, ANullDownAmountCountsAs0) {
    Reclassify(1, nullptr, nullptr, 9, nullptr);
    Calc_A();
    EXPECT_EQ(Num("A", 9, "Col_2"), 0);
}

TEST_F(W_ATest, TheTotalRowOfA6IsNotPosted) {
    SetCell("A6", 100, "Col_4", 8);
    SetCell("A6", 100, "Col_5", 70);
    Calc_A();
    EXPECT_EQ(Num("A", 8, "Col_2"), 0);
}

TEST_F(W_ATest, AnEntryOnASubscriptFindsItsLine) {
    AddCenters({8.01});
    Reclassify(1, 8.01, 25, 8, 25);
    Calc_A();
    EXPECT_EQ(Num("A", 8.01, "Col_2"), 25);
    EXPECT_EQ(Num("A", 8, "Col_2"), -25);
}

TEST_F(W_ATest, MissingLinesAreToldAndTheRunGoesOn) {
    Reclassify(1, 60, 5, 61, 6);
    Reclassify(2, 8, 7, 9, 7);
    SetCell("A8", 1, "Col_3", 9);
    SetCell("A8", 1, "Col_5", 62.5);
    Related(1, 63, 4);
    SetCell("A", 8, "Col_1", 10);
    Calc_A();
    const std::string start = "No A record found matching the ";
    EXPECT_EQ(host.Texts(), (std::vector<std::string>{
                                start + "A6 record for Cost Center 60 does not exist.",
                                start + "A6 record for Cost Center 61.",
                                start + "A8 record for Cost Center 62.5 does not exist.",
                                start + "A81p1 record for Cost Center 63 does not exist."}));
    for (const Box& box : host.Boxes) EXPECT_EQ(box.Style, 48);
    EXPECT_EQ(Num("A", 8, "Col_3"), 17);
    EXPECT_EQ(Num("A", 100, "Col_3"), 10);
}

TEST_F(W_ATest, MissingLinesAreBoxesAlsoWhileARunLogs) {
    gLogType = "C";
    Reclassify(1, 60, 5, nullptr, nullptr);
    Calc_A();
    EXPECT_EQ(host.Boxes.size(), 1u);
    EXPECT_EQ(gDB.Scalar("SELECT Count(*) FROM Log WHERE LogType = 'C';"), Variant(0));
}

TEST_F(W_ATest, AdjustmentsComeFromA8AndA81) {
    SetCell("A8", 1, "Col_3", 100);
    SetCell("A8", 1, "Col_5", 8);
    SetCell("A8", 2, "Col_3", -30);
    SetCell("A8", 2, "Col_5", 8);
    SetCell("A8", 3, "Col_3", 1000);  // on no line: posts nothing
    Related(1, 8, 5);
    Related(2, 9, -6);
    Related(3, 0, 7);
    Calc_A();
    EXPECT_EQ(Num("A", 8, "Col_4"), 75);
    EXPECT_EQ(Num("A", 9, "Col_4"), -6);
    EXPECT_EQ(Num("A", 100, "Col_4"), 69);
    EXPECT_TRUE(host.Boxes.empty());
}

TEST_F(W_ATest, ACostCenterOn401IsSummedIntoLine7AndHasNoAdjustment) {
    AddCenters({4.01});
    SetCell("A", 4.01, "Col_1", 200);
    SetCell("A", 4, "Col_1", 50);
    SetCell("A", 5, "Col_1", 7);
    SetCell("A8", 1, "Col_3", 11);
    SetCell("A8", 1, "Col_5", 4.01);
    Calc_A();
    EXPECT_EQ(Num("A", 4.01, "Col_4"), 0);
    EXPECT_EQ(Num("A", 4.01, "Col_5"), 211) << "computed with the adjustment in it";
    EXPECT_EQ(Num("A", 4.01, "Col_8"), 0);
    EXPECT_EQ(Num("A", 7, "Col_1"), 257);
    EXPECT_EQ(Num("A", 7, "Col_5"), 268);
    EXPECT_EQ(Num("A", 7, "Col_4"), 0);
    EXPECT_EQ(Num("A", 7, "Col_8"), 0);
    EXPECT_EQ(Num("A", 100, "Col_4"), 0);
    EXPECT_EQ(Num("A", 100, "Col_5"), 268);
}

TEST_F(W_ATest, LinesWithSubscriptsFrom8To98MakeLine99) {
    AddCenters({1.01, 8.01, 98, 98.99});
    SetCell("A", 1, "Col_1", 1000);
    SetCell("A", 1.01, "Col_1", 300);
    SetCell("A", 2, "Col_1", 500);
    SetCell("A", 6, "Col_1", 10000);
    SetCell("A", 8, "Col_1", 1);
    SetCell("A", 8.01, "Col_1", 2);
    SetCell("A", 28, "Col_1", -4);
    SetCell("A", 98, "Col_1", 8);
    SetCell("A", 98.99, "Col_1", 16);
    SetCell("A", 99, "Col_1", 123456);  // of an earlier run
    SetCell("A", 100, "Col_1", 123456);
    Calc_A();
    EXPECT_EQ(Num("A", 3, "Col_1"), 1800);
    EXPECT_EQ(Num("A", 7, "Col_1"), 10000);
    EXPECT_EQ(Num("A", 99, "Col_1"), 23);
    EXPECT_EQ(Num("A", 100, "Col_1"), 11823);
    EXPECT_EQ(Num("A", 99, "Col_8"), 23);
    EXPECT_EQ(Num("A", 100, "Col_8"), 1823) << "other capital costs are not pooled";
}

TEST_F(W_ATest, GrandTotalsOfTheSchedulesGoToColumns6And7) {
    AddCenters({4.01});
    SetCell("Bp3", 52, "CC_100", 10);
    SetCell("Bp3", 52, "CC_401", 20);
    SetCell("Bp3", 52, "Col_7", 999);  // the schedule's own total is no cost center
    SetCell("B1p3", 52, "CC_800", 30);
    SetCell("Cp3", 52, "CC_200", 40);
    SetCell("Dp3", 52, "CC_2800", -50);
    SetCell("A", 1, "Col_1", 110);
    SetCell("A", 2, "Col_6", 777);  // of an earlier run
    Calc_A();
    EXPECT_EQ(Num("A", 1, "Col_6"), 10);
    EXPECT_EQ(Num("A", 1, "Col_8"), 100);
    EXPECT_EQ(Num("A", 2, "Col_6"), 0);
    EXPECT_EQ(Num("A", 2, "Col_7"), 40);
    EXPECT_EQ(Num("A", 2, "Col_8"), -40);
    EXPECT_EQ(Num("A", 4.01, "Col_6"), 20);
    EXPECT_EQ(Num("A", 8, "Col_6"), 30);
    EXPECT_EQ(Num("A", 28, "Col_7"), -50);
    EXPECT_EQ(Num("A", 28, "Col_8"), 50);
    EXPECT_EQ(Num("A", 7, "Col_6"), 20);
    EXPECT_EQ(Num("A", 100, "Col_6"), 60);
    EXPECT_EQ(Num("A", 100, "Col_7"), -10);
}

TEST_F(W_ATest, AnEmptyTrialBalanceGivesZeros) {
    Calc_A();
    for (const int line : {1, 3, 4, 7, 8, 99, 100}) {
        for (int column = 2; column <= 8; ++column) {
            const std::string field = "Col_" + std::to_string(column);
            EXPECT_EQ(Cell("A", line, field), Variant(0.0)) << line << field;
        }
    }
    EXPECT_TRUE(IsNullCell("A", 8, "Col_1")) << "a keyed cell stays as it is";
    EXPECT_EQ(Cell("A", 100, "Col_1"), Variant(0.0));
}

TEST_F(W_ATest, FractionsAreNotRounded) {
    SetCell("A", 8, "Col_1", 0.25);
    SetCell("A", 9, "Col_1", 0.5);
    Calc_A();
    EXPECT_EQ(Num("A", 99, "Col_5"), 0.75);
}

TEST_F(W_ATest, TwoRunsGiveTheSame) {
    Reclassify(1, 8, 100, 4, 60);
    SetCell("A8", 1, "Col_3", 11);
    SetCell("A8", 1, "Col_5", 9);
    SetCell("A", 1, "Col_1", 90.5);
    Calc_A();
    const auto first = Dump();
    Calc_A();
    EXPECT_EQ(Dump(), first);
}

TEST_F(W_ATest, ARowIsWrittenOnceAndOneThatStaysNotAtAll) {
    Reclassify(1, 8, 100, 9, 100);
    SetCell("A", 8, "Col_1", 1000);
    Calc_A();
    const auto written = [] {
        const auto before = sqlite3_total_changes64(gDB.impl().Handle);
        Calc_A();
        return sqlite3_total_changes64(gDB.impl().Handle) - before;
    };
    EXPECT_EQ(written(), 0) << "what was posted is posted again to the same figures";
    SetCell("A", 8, "Col_1", 1500);
    EXPECT_EQ(written(), 3) << "lines 8, 99 and 100";
    EXPECT_EQ(Num("A", 8, "Col_8"), 1600);
    EXPECT_EQ(Num("A", 100, "Col_8"), 1500);
}

TEST_F(W_ATest, AnAmountBeyondAllMeasureNamesItsCell) {
    SetCell("A", 8, "Col_1", 1e308);
    SetCell("A", 9, "Col_1", 1e308);
    try {
        Calc_A();
        FAIL() << "a sum that no field can hold was stored";
    } catch (const StoreError& error) {
        EXPECT_STREQ(error.what(), "A line 99 Col_1 takes numbers only, not \"inf\"");
    }
    EXPECT_FALSE(gDB.InBatch());
    EXPECT_EQ(Num("A", 8, "Col_8"), 1e308) << "what was made before the failure stays";
}

TEST_F(W_ATest, AMissingScheduleIsAFailure) {
    gDB.DeleteTable("Dp3");
    EXPECT_THROW(Calc_A(), StoreError);
}

TEST_F(W_ATest, AScheduleWithoutGrandTotalIsAFailure) {
    gDB.Execute("DELETE FROM Cp3 WHERE LineNum=52;");
    EXPECT_THROW(Calc_A(), StoreError);
}

TEST(ValidateCell_ATest, RefusesComputedLinesAndColumns) {
    const std::string refusal =
        "The cell you are attempting to input or modify does not accept changes.  Select OK to "
        "continue.";
    for (const double line : {3.0, 7.0, 28.0, 28.01, 99.0, 100.0, 3.5}) {
        EXPECT_EQ(ValidateCell_A(Currency(line), 2), refusal) << line;
    }
    for (const int column : {0, 3, 9, -1, 100}) {
        EXPECT_EQ(ValidateCell_A(Currency(8), column), refusal) << column;
    }
    EXPECT_EQ(ValidateCell_A(Currency(27), 1), refusal);
    EXPECT_EQ(ValidateCell_A(Currency(1), 1), refusal);
    EXPECT_EQ(ValidateCell_A(Currency(29), 1), "");
    EXPECT_EQ(ValidateCell_A(Currency(30.01), 1), "");
    EXPECT_EQ(ValidateCell_A(Currency(1), 2), "");
    EXPECT_EQ(ValidateCell_A(Currency(98.99), 2), "");
}

}  // namespace
}  // namespace zolmara
