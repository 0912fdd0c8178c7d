#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "calc/Calc_All.h"
#include "editchecks/CheckedCrf.h"
#include "editchecks/ErrorView.h"
#include "editchecks/modEditChecks.h"

namespace zolmara {
namespace {

using test::CheckedCrf;
using test::Findings;
using test::Only;
using test::SetCell;

class RunEditChecks : public CheckedCrf {
protected:
    RunEditChecks() {
        MakeClean();
        host.Forget();
    }
    bool SubmitEnabled() { return host.Menus.at("mnuReportSubmit"); }
};

// --- Levels --------------------------------------------------------------------------------

TEST_F(RunEditChecks, ACleanReportGivesOneRow) {
    EXPECT_EQ(Run_EditChecks(), 0);
    EXPECT_EQ(test::AllFindings(), Findings{"No errors found |   |  "});
    EXPECT_TRUE(ReadErrorView().CanBuildECR);
}

TEST_F(RunEditChecks, APotentialErrorAloneIsLevelTwo) {
    SetCell("S1p2", 1, "Col_2", "");
    EXPECT_EQ(Run_EditChecks(), 2);
    EXPECT_EQ(gEditLevel, 2);
    EXPECT_EQ(test::AllFindings().size(), 1u);
}

TEST_F(RunEditChecks, APotentialErrorDoesNotLowerALevel) {
    SetCell("A7p1", 9, "Col_6", 0);  // blocks, and is questioned at the end of the run too
    EXPECT_EQ(Run_EditChecks(), 3);
    EXPECT_EQ(test::AllFindings().size(), 2u);
}

TEST_F(RunEditChecks, ANegativeDirectAmountIsLevelThreeAlone) {
    AddRow("Bp1", 1, {{"CC_400", -1}});
    EXPECT_EQ(Run_EditChecks(), 3);
    EXPECT_EQ(test::AllFindings(),
              Findings{"NF | 2000B | B Part I, Line 1: Amounts should be greater than or equal to "
                       "zero."});
}

TEST_F(RunEditChecks, EveryRunForgetsTheFindingsOfTheLast) {
    SetCell("S1p2", 1, "Col_2", "");
    Run_EditChecks();
    SetCell("S1p2", 1, "Col_2", "Ann Lee");
    EXPECT_EQ(Run_EditChecks(), 0);
    EXPECT_EQ(test::AllFindings().size(), 1u);
}

TEST_F(RunEditChecks, AQuoteInAMessageIsKept) {
    SetCell("S1p1", 4, "Col_5", "?");
    Run_EditChecks();
    EXPECT_EQ(
        test::AllFindings(),
        Findings{"NF | 1060S | Worksheet S-1 Part I: Line 4, column 5. must be either \"Y\" or "
                 "\"N\"."});
}

TEST_F(RunEditChecks, AQuoteInTheUsersTextIsKept) {
    for (double line : {1.0, 2.0})
        AddRow("S2p1", line,
               {{"Col_1", "The \"Clinic\""},
                {"Col_2", "14'\"01"},
                {"Col_3", "O"},
                {"Col_4", "10/01/2022"},
                {"Col_5", "09/30/2023"},
                {"Col_8", "N"}});
    Run_EditChecks();
    const Findings found = Only(test::AllFindings(), "NF | 1081S");
    ASSERT_EQ(found.size(), 1u);
    EXPECT_NE(found[0].find("CCN 14'\"01 has overlapping dates in line 2."), std::string::npos);
}

// --- Order ---------------------------------------------------------------------------------

std::vector<std::string> CodesOf(const Findings& findings) {
    std::vector<std::string> codes;
    for (const std::string& finding : findings) {
        const std::size_t from = finding.find(" | ") + 3;
        codes.push_back(finding.substr(from, finding.find(" | ", from) - from));
    }
    return codes;
}

TEST_F(RunEditChecks, FindingsStandInTheOrderOfTheRun) {
    SetCell("G1", 22, "Col_2", 0);        // 2020G
    SetCell("S1p2", 1, "Col_2", "");      // 2030S
    AddRow("B1p1", 1, {{"CC_800", -1}});  // 2000B
    SetCell("G", 6, "Col_1", -1);         // 2000
    SetCell("Bp3", 52, "CC_100", 5);      // 1010B
    SetCell("A", 100, "Col_1", -1);       // 1000A
    SetCell("Sp1", 2, "Col_1", "1");      // 1010S
    SetCell("C1p3", 53, "CC_200", 5);     // 1110 and 1020C
    SetCell("CostCenters", 2, "StatCode", 0);
    AddRow("G1", 10, {{"Col_2", 5}});  // VLQ
    SetCell("A", 9, "Col_1", 1e12);    // 1090
    AddRow("A", 40);                   // 1065
    Run_EditChecks();
    EXPECT_EQ(CodesOf(test::AllFindings()),
              (std::vector<std::string>{"1065", "1090", "VLQ", "1110", "1010S", "1000A", "1010B",
                                        "1020C", "1020C", "2000", "2030S", "2020G", "2000B"}));
}

TEST_F(RunEditChecks, EveryCodeIsListedOnce) {
    const std::vector<std::string> codes = EditCheckCodes();
    EXPECT_EQ(codes.size(), 63u);
    for (const std::string& code : codes) {
        EXPECT_EQ(std::count(codes.begin(), codes.end(), code), 1) << code;
        EXPECT_LE(code.size(), 5u) << code;
    }
}

// --- Dates ---------------------------------------------------------------------------------

TEST_F(RunEditChecks, RegionsAreJudgedFromThe30thOfSeptember2023On) {
    AddRow("S2p3", 1);
    gFYEnd = DateTime(2023, 9, 29);
    EXPECT_EQ(Run_EditChecks(), 0);
    gFYEnd = DateTime(2023, 9, 30);
    EXPECT_EQ(Run_EditChecks(), 3);
    EXPECT_EQ(CodesOf(test::AllFindings()), (std::vector<std::string>{"1121S", "1121S", "1130S"}));
}

TEST_F(RunEditChecks, LinksOfA81AreJudgedFromThe31stOfDecember2023On) {
    AddRow("A81p1", 1, {{"Col_1", 8}, {"Col_3", "Fee"}, {"Col_4", 4}, {"Col_5", 5}});
    gFYEnd = DateTime(2023, 12, 30);
    Run_EditChecks();
    EXPECT_EQ(CodesOf(test::AllFindings()), std::vector<std::string>{"1105A"});
    gFYEnd = DateTime(2023, 12, 31);
    Run_EditChecks();
    EXPECT_EQ(CodesOf(test::AllFindings()), (std::vector<std::string>{"1091A", "1105A"}));
}

TEST_F(RunEditChecks, PoolsAreJudgedWithComponentsOfPartIIOrIII) {
    SetCell("A", 1, "Col_8", 5);
    EXPECT_EQ(Run_EditChecks(), 0);
    AddRow("S2p2", 1, {{"Col_1", "Realty"}, {"Col_4", "10/01/2022"}, {"Col_5", "09/30/2023"}});
    Run_EditChecks();
    EXPECT_EQ(CodesOf(test::AllFindings()), (std::vector<std::string>{"1030D", "1010D"}));
}

// --- What a run leaves alone ---------------------------------------------------------------

TEST_F(RunEditChecks, ARunIsOneCommitAndChangesNothingButTheFindings) {
    const std::string net = Text(test::Cell("G1", 22, "Col_2"));
    const std::int64_t before = gDB.CommitCount();
    SetCell("S1p2", 1, "Col_2", "");
    Run_EditChecks();
    EXPECT_EQ(gDB.CommitCount(), before + 2);  // the cell, the run
    EXPECT_EQ(Text(test::Cell("G1", 22, "Col_2")), net);
}

TEST_F(RunEditChecks, ATableErrorThatIsNotThereIsMadeAndRegistered) {
    gDB.DeleteTable("Error");
    gDB.Execute("DELETE * FROM Worksheets WHERE Item='Error';");
    EXPECT_EQ(Run_EditChecks(), 0);
    EXPECT_EQ(test::Rows("Error"), 1);
    EXPECT_EQ(NumOr(gDB.Scalar("SELECT Calc_Lvl FROM Worksheets WHERE Item='Error';")), 999);
}

TEST_F(RunEditChecks, AMissingTableIsAnErrorThatNamesIt) {
    SetCell("Sp1", 2, "Col_1", "1");
    gDB.DeleteTable("Cp3");
    try {
        Run_EditChecks();
        FAIL() << "a run without Cp3 must fail";
    } catch (const StoreError& error) {
        EXPECT_NE(std::string(error.what()).find("Cp3"), std::string::npos) << error.what();
    }
    EXPECT_EQ(host.CalcMsg, "");
    EXPECT_FALSE(gDB.InBatch());
    EXPECT_EQ(host.IndexOf("ShowErrors: Edit Check Results"), -1);
}

TEST_F(RunEditChecks, MissingRowsAreNoFailure) {
    for (const char* item : {"A",   "A6",   "A7p1", "A7p2", "A8",   "A81p1",       "Bp3",  "B1p3",
                             "Cp3", "C1p3", "Dp3",  "D1p3", "E",    "E1p1",        "E1p2", "E1p3",
                             "G",   "G1",   "Sp1",  "S1p1", "S1p2", "CostCenters", "ES"})
        gDB.Execute("DELETE * FROM " + std::string(item) + ";");
    EXPECT_EQ(Run_EditChecks(), 0);
    EXPECT_EQ(CodesOf(test::AllFindings()), std::vector<std::string>{" "});
}

TEST_F(RunEditChecks, AMissingLineOfAIsToldWhereItsCheckNamesIt) {
    gDB.Execute("DELETE * FROM A;");
    Run_EditChecks();
    // The 2 lines of A-7 Part II and its subtotal, 21 columns each of B-1 and D, 2 each of C, C-1.
    EXPECT_EQ(CodesOf(test::AllFindings()), std::vector<std::string>(49, "VLQ"));
}

// --- The host ------------------------------------------------------------------------------

TEST_F(RunEditChecks, TheStatusLineStandsDuringTheRunAndTheFindingsAreShownBehindIt) {
    std::vector<std::string> statusWhileYielding;
    host.OnDoEvents = [&] { statusWhileYielding.push_back(host.CalcMsg); };
    Run_EditChecks();
    EXPECT_EQ(host.Events,
              (std::vector<std::string>{"ShowCalcMsg:  Performing Edit Checks", "HideCalcMsg",
                                        "ShowErrors: Edit Check Results"}));
    EXPECT_GE(statusWhileYielding.size(), 5u);
    EXPECT_EQ(Findings(statusWhileYielding.size(), " Performing Edit Checks"), statusWhileYielding);
}

TEST_F(RunEditChecks, AResultsWindowThatIsOpenReloads) {
    host.OpenForms.insert("frmViewError");
    Run_EditChecks();
    EXPECT_NE(host.IndexOf("SetGrd: frmViewError"), -1);
    EXPECT_EQ(host.IndexOf("ShowErrors: Edit Check Results"), -1);
}

// --- Commands ------------------------------------------------------------------------------

TEST_F(RunEditChecks, CalculateGoesThroughItsStepsInOrder) {
    host.OpenForms.insert("frmViewError");
    EXPECT_EQ(mnuReportCalculate(Calc_All), 0);
    const std::vector<std::string>& events = host.Events;
    const auto at = [&](const char* event) { return host.IndexOf(event); };
    ASSERT_FALSE(events.empty());
    EXPECT_EQ(at("EnableMenu: mnuReportCalculate=False"), 0);
    EXPECT_EQ(at("UnloadForm: frmViewError"), 1);
    EXPECT_LT(1, at("ShowCalcMsg:  Calculating level 0: A-6"));
    EXPECT_LT(at("ShowCalcMsg:  Calculating level 0: A-6"),
              at("ShowCalcMsg:  Performing Edit Checks"));
    EXPECT_LT(at("ShowCalcMsg:  Performing Edit Checks"), at("ShowErrors: Edit Check Results"));
    ASSERT_GE(events.size(), 2u);
    EXPECT_EQ(events[events.size() - 2], "EnableMenu: mnuReportSubmit=True");
    EXPECT_EQ(events.back(), "EnableMenu: mnuReportCalculate=True");
}

TEST_F(RunEditChecks, CalculateWithPotentialErrorsLeavesTheBuildOn) {
    SetCell("S1p2", 1, "Col_2", "");
    EXPECT_EQ(mnuReportCalculate(Calc_All), 2);
    EXPECT_TRUE(SubmitEnabled());
}

TEST_F(RunEditChecks, CalculateWithAFindingThatBlocksTurnsTheBuildOff) {
    SetCell("S1p1", 3, "Col_1", "15");
    EXPECT_EQ(mnuReportCalculate(Calc_All), 3);
    EXPECT_FALSE(SubmitEnabled());
    EXPECT_TRUE(host.Menus.at("mnuReportCalculate"));
}

TEST_F(RunEditChecks, TheDeveloperBuildsWhateverTheFindingsAre) {
    gDebug = true;
    SetCell("S1p1", 3, "Col_1", "15");
    EXPECT_EQ(mnuReportCalculate(Calc_All), 3);
    EXPECT_TRUE(SubmitEnabled());
}

TEST_F(RunEditChecks, AFailedCalculationTurnsTheBuildOffAndCalculateOn) {
    host.Menus["mnuReportSubmit"] = true;
    const auto fail = [] { throw StoreError(StoreError::Kind::Other, "no disk"); };
    EXPECT_THROW(mnuReportCalculate(fail), StoreError);
    EXPECT_FALSE(SubmitEnabled());
    EXPECT_TRUE(host.Menus.at("mnuReportCalculate"));
}

TEST_F(RunEditChecks, TheCommandForChecksAloneLeavesTheBuildAsItIs) {
    SetCell("S1p1", 3, "Col_1", "15");
    EXPECT_EQ(mnuReportEditCheck(), 3);
    EXPECT_EQ(host.IndexOf("EnableMenu: mnuReportSubmit=False"), -1);
    EXPECT_EQ(host.IndexOf("EnableMenu: mnuReportSubmit=True"), -1);
}

}  // namespace
}  // namespace zolmara
