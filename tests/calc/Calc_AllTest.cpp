#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>

#include "calc/Calc_All.h"
#include "calc/LineBreaks.h"
#include "store/harness/Faults.h"
#include "structure/modAddS2.h"
#include "worksheets/Sheets.h"

namespace zolmara {
namespace {

using namespace test;

class Calc_AllTest : public SheetTest {
protected:
    /// What the status line showed, in order.
    std::vector<std::string> Shown() const {
        const std::string event = "ShowCalcMsg: ";
        std::vector<std::string> shown;
        for (const std::string& text : host.Events) {
            if (text.starts_with(event)) shown.push_back(text.substr(event.size()));
        }
        return shown;
    }
    /// The text of the failure of a run.
    static std::string Failure() {
        try {
            Calc_All();
        } catch (const StoreError& error) {
            return error.what();
        }
        return "";
    }
    void ExpectAtRest() {
        for (const char* menu : {"mnuEdit", "mnuHelp", "mnuReport", "mnuView"}) {
            EXPECT_TRUE(host.Menus[menu]) << menu;
        }
        EXPECT_EQ(host.CalcMsg, "");
        EXPECT_EQ(gLogType, "");
    }
};

TEST_F(Calc_AllTest, WorksheetsRunByLevelThenName) {
    Calc_All();
    const std::vector<std::string> shown = Shown();
    ASSERT_EQ(shown.size(), 47u);
    const std::vector<std::string> first = {
        " Calculating level 0: A-6",          " Calculating level 0: A-7  Part-1",
        " Calculating level 0: A-81  Part-1", " Calculating level 0: A-81  Part-2",
        " Calculating level 0: S  Part-1",    " Calculating level 0: S-1  Part-1"};
    EXPECT_TRUE(std::equal(first.begin(), first.end(), shown.begin()));
    EXPECT_EQ(shown[10], " Calculating level 5: A-8");
    EXPECT_EQ(shown[11], " Calculating level 7: B-1  Part-1");
    EXPECT_EQ(shown[13], " Calculating level 7: B-1  Part-3");
    EXPECT_EQ(shown[14], " Calculating level 8: B  Part-1");
    EXPECT_EQ(shown[17], " Calculating level 9: A-7  Part-2");
    EXPECT_EQ(shown[30], " Calculating level 13: A");
    EXPECT_EQ(shown[45], " Calculating level 23: G-1");
    EXPECT_EQ(shown[46], " Calculations completed.");
}

TEST_F(Calc_AllTest, TheMainWindowIsClosedForTheRun) {
    host.OnDoEvents = [this] {
        for (const char* menu : {"mnuEdit", "mnuHelp", "mnuReport", "mnuView"}) {
            EXPECT_FALSE(host.Menus[menu]) << menu;
        }
        EXPECT_EQ(gLogType, "C");
    };
    Calc_All();
    EXPECT_EQ(host.DoEventsCount, 46);
    EXPECT_EQ(host.Progress, 1);
    EXPECT_LT(host.IndexOf("EnableMenu: mnuEdit=False"),
              host.IndexOf("ShowCalcMsg:  Calculating level 0: A-6"));
    EXPECT_LT(host.IndexOf("ShowCalcMsg:  Calculations completed."),
              host.IndexOf("RefreshOpenForms"));
    EXPECT_LT(host.IndexOf("RefreshOpenForms"), host.IndexOf("EnableMenu: mnuEdit=True"));
    EXPECT_LT(host.IndexOf("EnableMenu: mnuView=True"), host.IndexOf("HideCalcMsg"));
    ExpectAtRest();
}

TEST_F(Calc_AllTest, OnlyTheCalculationsOwnLogRowsGo) {
    gDB.Execute("INSERT INTO Log (LogType, Message) VALUES ('C','old run');");
    gDB.Execute("INSERT INTO Log (LogType, Message) VALUES ('I','import');");
    gLogType = "I";
    Calc_All();
    EXPECT_EQ(gDB.Scalar("SELECT Count(*) FROM Log WHERE LogType='C';"), Variant(0));
    EXPECT_EQ(gDB.Scalar("SELECT Count(*) FROM Log WHERE LogType='I';"), Variant(1));
    EXPECT_EQ(gLogType, "");
}

TEST_F(Calc_AllTest, ARunIsOneCommit) {
    SetCell("A", 8, "Col_1", 5);
    const std::int64_t before = gDB.CommitCount();
    Calc_All();
    EXPECT_EQ(gDB.CommitCount(), before + 1);
    EXPECT_FALSE(gDB.InBatch());
}

TEST_F(Calc_AllTest, NamesThatAreNoWorksheetArePassedOver) {
    gDB.AppendTable({.Name = "X9",
                     .Fields = {{.Name = "LineNum", .Type = FieldType::dbCurrency}},
                     .Indexes = {}});
    RegisterWorksheet("X9", "Make", 3);
    Calc_All();
    EXPECT_EQ(Shown().size(), 48u);
    EXPECT_EQ(Shown()[10], " Calculating level 3: X-9");
}

TEST_F(Calc_AllTest, AnEmptyRegistryIsAFailure) {
    gDB.Execute("DELETE FROM Worksheets WHERE Calc_Lvl<900;");
    EXPECT_THROW(Calc_All(), StoreError);
    EXPECT_EQ(gLogType, "");
}

// --- Failures ------------------------------------------------------------------------------

TEST_F(Calc_AllTest, AFailureStopsTheRunAtItsWorksheetAndNamesIt) {
    SetCell("A6", 100, "Col_5", 77);
    SetCell("G", 10, "Col_1", 77);
    gDB.DeleteTable("C1p2");
    const std::string text = Failure();
    EXPECT_TRUE(text.starts_with("C-1  Part-2: ")) << text;
    EXPECT_GT(text.size(), 13u);
    EXPECT_EQ(Num("A6", 100, "Col_5"), 0) << "levels before the stop are calculated";
    EXPECT_EQ(Num("G", 10, "Col_1"), 77) << "levels behind it are not";
    EXPECT_EQ(host.IndexOf("ShowCalcMsg:  Calculations completed."), -1);
    EXPECT_EQ(host.IndexOf("RefreshOpenForms"), -1);
    EXPECT_FALSE(gDB.InBatch());
    ExpectAtRest();
}

TEST_F(Calc_AllTest, AMissingColumnIsAFailureOfItsWorksheet) {
    gDB.DeleteField("G", "Col_1");
    EXPECT_TRUE(Failure().starts_with("G: "));
    ExpectAtRest();
}

TEST_F(Calc_AllTest, AMissingCostCenterLineIsABoxAndTheRunGoesOn) {
    gDB.Execute("INSERT INTO A6 (LineNum,Col_4,Col_5) VALUES (1,60,5);");
    SetCell("G", 1, "Col_1", 5);
    Calc_All();
    // A-7 Part II brings A up to date, and A has its own turn later.
    ASSERT_EQ(host.Boxes.size(), 2u);
    EXPECT_EQ(host.Boxes[0].Text,
              "No A record found matching the A6 record for Cost Center 60 does not exist.");
    EXPECT_EQ(Num("G", 10, "Col_1"), 5);
}

TEST_F(Calc_AllTest, ALineNumberOutOfAllRangeIsToldAsMissing) {
    gDB.Execute("INSERT INTO A6 (LineNum,Col_4,Col_5) VALUES (1,1E+300,5);");
    Calc_All();
    ASSERT_EQ(host.Boxes.size(), 2u);
    EXPECT_TRUE(host.Boxes[0].Text.ends_with(" does not exist.")) << host.Boxes[0].Text;
}

TEST_F(Calc_AllTest, AmountsBeyondAllMeasureEndInAMessageAtMost) {
    SetComponents(1, {1, 2});
    SetComponents(3, {1});
    for (const double line : {1.0, 2.0, 8.0, 9.0, 20.0}) SetCell("A", line, "Col_1", 1e308);
    for (const double line : {1.0, 2.0}) {
        SetCell("C1p1", line, "CC_100", 1e308);
        SetCell("E1p1", line, "Col_1", 1e308);
        SetCell("A7p2", line, "Col_1", 1e308);
    }
    SetCell("C1p3", 53, "CC_100", 1e308);
    Failure();
    EXPECT_FALSE(gDB.InBatch());
    ExpectAtRest();
}

// --- Line breaks ---------------------------------------------------------------------------

TEST_F(Calc_AllTest, LineBreaksAreCutOutOfTextFields) {
    SetCell("S1p2", 1, "Col_1", "AB\r\nCD");
    SetCell("S1p2", 1, "Col_2", "\r\rEF\n");
    SetCell("S1p2", 2, "Col_1", "\n");
    SetCell("S1p2", 3, "Col_1", "");
    SetCell("S1p2", 4, "Col_1", nullptr);
    gDB.Execute("INSERT INTO A81p2 (SeqNum,Col_3) VALUES (1,?);", {"G\rH"});
    AddS2Line(Currency::FromWhole(1), 2);
    SetCell("S2p2", 1, "Col_1", "I\nJ");
    SetCell("S2p2", 1, "Col_7", "K\r\nL");
    Calc_All();
    EXPECT_EQ(TextCell("S1p2", 1, "Col_1"), "ABCD");
    EXPECT_EQ(TextCell("S1p2", 1, "Col_2"), "EF");
    EXPECT_EQ(Cell("S1p2", 2, "Col_1"), Variant(""));
    EXPECT_EQ(Cell("S1p2", 3, "Col_1"), Variant(""));
    EXPECT_TRUE(IsNullCell("S1p2", 4, "Col_1"));
    EXPECT_EQ(TextCell("A81p2", 1, "Col_3"), "GH");
    EXPECT_EQ(TextCell("S2p2", 1, "Col_1"), "IJ");
    EXPECT_EQ(TextCell("S2p2", 1, "Col_7"), "KL");
}

TEST_F(Calc_AllTest, TheCoreTablesAreNotScrubbed) {
    SetCell("ES", 1, "StatLabel1", "A\rB");
    SetCell("CostCenters", 8, "CCName", "C\nD");
    Calc_All();
    EXPECT_EQ(TextCell("ES", 1, "StatLabel1"), "A\rB");
    EXPECT_EQ(TextCell("CostCenters", 8, "CCName"), "C\nD");
}

TEST_F(Calc_AllTest, ARowWithoutLineBreaksIsNotWritten) {
    SetCell("S1p2", 1, "Col_2", "X\nY");
    const std::int64_t before = gDB.CommitCount();
    RemoveLineBreaks("S1p2");
    EXPECT_EQ(gDB.CommitCount(), before + 1) << "both characters, one update";
    RemoveLineBreaks("S1p2");
    EXPECT_EQ(gDB.CommitCount(), before + 1);
}

TEST_F(Calc_AllTest, OtherCharactersStay) {
    const std::string text = "tab\tquote' é 漢";
    SetCell("S1p2", 1, "Col_2", text + "\r");
    RemoveLineBreaks("S1p2");
    EXPECT_EQ(TextCell("S1p2", 1, "Col_2"), text);
}

// --- The whole statement -------------------------------------------------------------------

/// A small chain whose figures are worked out by hand.
class WholeStatement : public Calc_AllTest {
protected:
    WholeStatement() {
        RunBatch(gDB, [] {
            SetComponents(1, {1, 2});
            SetComponents(3, {1});
            SetCell("A", 1, "Col_1", 30000);
            SetCell("A", 4, "Col_1", 1001);
            SetCell("A", 8, "Col_1", 5000);
            SetCell("A", 14, "Col_1", 900);
            SetCell("A", 28, "Col_1", -70);
            gDB.Execute(
                "INSERT INTO A6 (LineNum,Col_2,Col_4,Col_5,Col_7,Col_8) VALUES "
                "(1,'A',8,100,14,100);");
            gDB.Execute("INSERT INTO A81p1 (SeqNum,Col_1,Col_5,Col_6) VALUES (1,8,50,20);");
            SetCell("A8", 1, "Col_3", -10);
            SetCell("A8", 1, "Col_5", 8);
            SetCell("A7p2", 1, "Col_1", 3);
            SetCell("A7p2", 2, "Col_1", 1);
            SetCell("Bp1", 1, "CC_100", 7100);
            SetCell("B1p3", 1, "CC_800", 20);
            SetCell("C1p1", 1, "CC_100", 8240);
            SetCell("C1p1", 2, "CC_100", 10560);
            SetCell("C1p3", 53, "CC_100", 22900);
            SetCell("D1p1", 1, "CC_800", 1);
            SetCell("D1p3", 1, "CC_800", 2);
            SetCell("D1p3", 53, "CC_800", 100);
            SetCell("E1p1", 1, "Col_1", 1);
            SetCell("E1p1", 2, "Col_1", 1);
            SetCell("E1p3", 1, "Col_1", 2);
            SetCell("G1", 1, "Col_2", 50000);
        });
        Calc_All();
    }
};

TEST_F(WholeStatement, TrialBalance) {
    EXPECT_EQ(Num("A", 8, "Col_2"), 100);
    EXPECT_EQ(Num("A", 8, "Col_4"), 20) << "-10 from A-8, 30 from A-8-1";
    EXPECT_EQ(Num("A8", 12, "Col_3"), 30);
    EXPECT_EQ(Num("A8", 100, "Col_3"), 20);
    EXPECT_EQ(Num("A", 8, "Col_5"), 5120);
    EXPECT_EQ(Num("A", 8, "Col_6"), 20);
    EXPECT_EQ(Num("A", 8, "Col_7"), 100);
    EXPECT_EQ(Num("A", 8, "Col_8"), 5000);
    EXPECT_EQ(Num("A", 1, "Col_8"), 0) << "30000 - 7100 - 22900";
    EXPECT_EQ(Num("A", 14, "Col_8"), 800);
    EXPECT_EQ(Num("A", 100, "Col_8"), 5730);
    EXPECT_EQ(Num("A", 100, "Col_3"), 36831);
}

TEST_F(WholeStatement, CapitalCosts) {
    EXPECT_EQ(Num("A7p2", 1, "Col_4"), 0.75);
    EXPECT_EQ(Num("A7p2", 1, "Col_5"), 751) << "750.75 and 250.25";
    EXPECT_EQ(Num("A7p2", 2, "Col_5"), 250);
    EXPECT_EQ(Num("A7p2", 3, "Col_8"), 1001);
}

TEST_F(WholeStatement, FunctionalAllocation) {
    EXPECT_EQ(Num("Cp1", 2, "CC_100"), 12863);
    EXPECT_EQ(Num("Dp1", 1, "CC_800"), 33) << "33.333333 a unit";
    EXPECT_EQ(Num("Dp3", 1, "CC_800"), 67);
    EXPECT_EQ(Num("Dp3", 52, "CC_800"), 100);
}

TEST_F(WholeStatement, PooledAllocation) {
    EXPECT_EQ(Num("E", 1, "CC_800"), 2500);
    EXPECT_EQ(Num("E", 3, "CC_800"), 2500);
    EXPECT_EQ(Num("E", 4, "Col_7"), 800);
    EXPECT_EQ(Num("E", 1, "CC_2800"), -35);
    EXPECT_EQ(Num("E1p1", 1, "CC_800"), 1250);
    // -17.5 each rounds to -18: -36 against -35, the first gives 1 back.
    EXPECT_EQ(Num("E1p1", 1, "CC_2800"), -17);
    EXPECT_EQ(Num("E1p1", 2, "CC_2800"), -18);
    EXPECT_EQ(Num("E1p3", 52, "CC_800"), 5000);
}

TEST_F(WholeStatement, Summaries) {
    EXPECT_EQ(Num("Fp1", 1, "Col_4"), 17137) << "7100 direct, 10037 functional";
    EXPECT_EQ(Num("Fp3", 52, "Col_4"), 30000);
    EXPECT_EQ(Num("F1p1", 1, "Col_4"), 1283) << "33 functional, 1250 pooled";
    EXPECT_EQ(Num("F1p1", 1, "Col_8"), 200);
    EXPECT_EQ(Num("F1p3", 52, "Col_9"), 5920) << "120 + 5000 + 800";
    EXPECT_EQ(Num("F2p3", 52, "Col_4"), -70);
    EXPECT_EQ(Num("G1", 22, "Col_2"), 13169);
}

TEST_F(WholeStatement, ASecondRunChangesNothing) {
    const auto first = Dump();
    Calc_All();
    EXPECT_EQ(Dump(), first);
}

TEST_F(WholeStatement, ASecondRunWritesNothing) {
    const std::int64_t before = gDB.CommitCount();
    FaultsArm(folder.Path().c_str(), 0, ENOSPC, "");
    Calc_All();
    EXPECT_EQ(FaultsDisarm(), 0) << "no page, no journal";
    EXPECT_EQ(gDB.CommitCount(), before);
}

}  // namespace
}  // namespace zolmara
