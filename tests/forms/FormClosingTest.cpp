// Lines, the guards on opening and leaving, and what a stored row lets follow.

#include "core/Dialogs.h"
#include "forms/FormSupport.h"
#include "structure/EditLines.h"
#include "structure/modAddS2.h"

namespace zolmara {
namespace {

using test::Cell;

class FormClosing : public test::FormTest {
protected:
    bool MayClose(const char* item) {
        host.Boxes.clear();
        return FormMayClose(Edit(item));
    }
};

constexpr const char* kAmended =
    "Entry Error|If line 1, is Y (amended cost report), then line 2, must be greater than zero, "
    "and vice versa.";

TEST_F(FormClosing, AnAmendedStatementHasANumberAndTheOtherWayRound) {
    EXPECT_TRUE(MayClose("Sp1"));
    EXPECT_TRUE(Key(Edit("Sp1"), 1, "Col_1", "y"));
    EXPECT_FALSE(MayClose("Sp1"));
    EXPECT_EQ(LastBox(), kAmended);
    EXPECT_TRUE(Key(Edit("Sp1"), 2, "Col_1", "3"));
    EXPECT_TRUE(MayClose("Sp1"));
    EXPECT_TRUE(Key(Edit("Sp1"), 1, "Col_1", "no"));
    EXPECT_FALSE(MayClose("Sp1"));
    EXPECT_EQ(LastBox(), kAmended);
    EXPECT_TRUE(FormMayClose(View("Sp1"))) << "a view is always left";
}

TEST_F(FormClosing, CostCentersAreLeftInOrder) {
    EXPECT_TRUE(MayClose("CCs"));
    gDB.Execute("UPDATE CostCenters SET LineNum=4.01 WHERE LineNum=4;");
    EXPECT_FALSE(MayClose("CCs"));
    EXPECT_EQ(host.Boxes.back().Text,
              "There is only one Administrative And General cost center and it must be numbered "
              "4.00\r\nPlease either add a new 4.xx cost center or delete the 4.01, which will "
              "revert it to 4.00.");
    gDB.Execute("DELETE * FROM CostCenters WHERE LineNum=4.01;");
    EXPECT_FALSE(MayClose("CCs"));
    EXPECT_TRUE(host.Boxes.back().Text.starts_with(
        "There must be at least one Administrative And General cost center (4.xx)."));
    gDB.Execute("INSERT INTO CostCenters (LineNum,CCName) VALUES (4.01,'a');");
    gDB.Execute("INSERT INTO CostCenters (LineNum,CCName) VALUES (4.02,'b');");
    EXPECT_TRUE(MayClose("CCs")) << "the rule counts two lines";
    gDB.Execute("UPDATE CostCenters SET CCName='  ' WHERE LineNum=4.02;");
    EXPECT_FALSE(MayClose("CCs"));
    EXPECT_EQ(LastBox(), "Entry Error|All Cost Center names must be completed");
}

TEST_F(FormClosing, TheBasesNeedTheirNames) {
    EXPECT_TRUE(MayClose("ES"));
    gDB.Execute("UPDATE ES SET CCName=Null WHERE LineNum=2;");
    EXPECT_FALSE(MayClose("ES"));
    EXPECT_EQ(LastBox(), "Entry Error|All Cost Center names must be completed");
}

TEST_F(FormClosing, CostCentersOpenOnlyWhenTheOtherWindowsClose) {
    EXPECT_TRUE(FormMayOpen(Edit("CCs")));
    host.CloseResults = {1, 2};
    EXPECT_FALSE(FormMayOpen(Edit("CCs")));
    EXPECT_FALSE(FormMayOpen(Edit("CCs")));
    EXPECT_TRUE(FormMayOpen(View("CCs")));
    EXPECT_TRUE(FormMayOpen(Edit("A")));
}

// --- Lines

TEST_F(FormClosing, ASchedulesLinesComeFromItsComponents) {
    for (const char* item : {"Bp2", "D1p2", "E1p2"}) {
        const LineOutcome add = AddFormLine(Edit(item), Currency(1.0));
        EXPECT_EQ(add.OpenEdit, "S2p2") << item;
        EXPECT_FALSE(add.Changed);
        EXPECT_EQ(host.Boxes.back().Text, "Adding/Deleting lines is done from S2p2");
        EXPECT_EQ(DeleteFormLines(Edit(item), Currency(1.0), {}).OpenEdit, "S2p2");
    }
}

TEST_F(FormClosing, CostCentersAreAskedAboutAndTheCursorGoesToTheNewOne) {
    const WorksheetForm form = Edit("CCs");
    host.Answers = {kCancel, kNo};
    EXPECT_FALSE(AddFormLine(form, Currency(28.0)).Changed);
    EXPECT_EQ(host.Boxes.back().Text, "Add Cost Center 29? No will add Cost Center 28.01.");
    const LineOutcome added = AddFormLine(form, Currency(28.0));
    EXPECT_EQ(added.Line, Currency(28.01));
    EXPECT_TRUE(added.Changed);
    const LineOutcome blocked = AddFormLine(form, Currency(9.0));
    EXPECT_FALSE(blocked.Changed);
    EXPECT_EQ(blocked.Line, Currency(28.01)) << "the cursor goes to the row without a name";
    EXPECT_EQ(LastBox(),
              "Incomplete entry error, table CostCenters|All cost center names must be completed.");
    EXPECT_TRUE(DeleteFormLines(form, Currency(28.01), {}).Changed);
    const int beeps = host.Beeps;
    EXPECT_FALSE(DeleteFormLines(form, Currency(28.0), {}).Changed);
    EXPECT_EQ(host.Beeps, beeps + 1);
}

TEST_F(FormClosing, ADeleteLeavesTheCursorOnTheLineThatCameUp) {
    for (const double line : {1.0, 2.0, 3.0}) AddS2Line(Currency(line), 1);
    EXPECT_EQ(DeleteFormLines(Edit("S2p1"), Currency(2.0), {}).Line, Currency(2.0));
    EXPECT_EQ(FormRows(Edit("S2p1")).Count(), 2);
    EXPECT_FALSE(DeleteFormLines(Edit("S2p1"), std::nullopt, {}).Changed);
}

TEST_F(FormClosing, OtherExpensesAreOfferedFirstOnG1) {
    host.Answers = {kYes};
    EXPECT_EQ(AddFormLine(Edit("G1"), Currency(1.0)).Line, Currency(16.0));
    EXPECT_EQ(host.Boxes[0].Text, "Do you wish to add other expenses, line 16?");
    EXPECT_FALSE(AddFormLine(Edit("G1"), Currency(1.0)).Changed);
    EXPECT_EQ(LastBox(), "Incomplete entry error, table G1|All descriptions must be completed.");
}

TEST_F(FormClosing, MailLinesAndOfficers) {
    EXPECT_EQ(AddFormLine(Edit("S1p1"), Currency(2.0)).Line, Currency(2.01));
    EXPECT_EQ(Text(Cell("S1p1", 2.01, "Description")), "more email address");
    EXPECT_EQ(AddFormLine(Edit("S1p2"), Currency(3.0)).Line, Currency(6.0));
}

TEST_F(FormClosing, AViewAndAFormWithoutLinesAddNothing) {
    EXPECT_FALSE(AddFormLine(View("A6"), Currency(1.0)).Changed);
    EXPECT_FALSE(AddFormLine(Edit("A"), Currency(1.0)).Changed);
    EXPECT_FALSE(DeleteFormLines(Edit("A"), Currency(29.0), {}).Changed);
}

// --- What follows a stored row

TEST_F(FormClosing, TheViewOfTheWorksheetFollowsEachRow) {
    host.Forget();
    EXPECT_TRUE(Key(Edit("A"), 8, "Col_1", 5));
    EXPECT_GE(host.IndexOf("RefreshWorksheetForm: View A"), 0)
        << ::testing::PrintToString(host.Events);
    EXPECT_FALSE(host.Menus.at("mnuReportSubmit"));
    host.Forget();
    EXPECT_TRUE(Key(Edit("CCs"), 9, "ColLabel1", "x"));
    EXPECT_GE(host.IndexOf("RefreshWorksheetForm: View CCs"), 0);
}

TEST_F(FormClosing, ARowThatHoldsWhatIsStoredWritesNothingAndKeepsTheSubmission) {
    test::SetCell("A", 8, "Col_1", 5.0);
    host.Menus.clear();
    const auto commits = gDB.CommitCount();
    EXPECT_TRUE(Key(Edit("A"), 8, "Col_1", "5"));
    EXPECT_EQ(gDB.CommitCount(), commits);
    EXPECT_TRUE(host.Menus.empty());
}

TEST_F(FormClosing, ARowIsOneCommitWithAllThatIsCarried) {
    AddS2Line(Currency(1.0), 1);
    const WorksheetForm form = Edit("S2p1");
    RowEntry row = BeginRow(form, Currency(1.0));
    EXPECT_TRUE(KeyCell(form, row, form.ColumnOf("Col_1"), "Alpha"));
    EXPECT_TRUE(KeyCell(form, row, form.ColumnOf("Col_2"), "140234"));
    EXPECT_TRUE(KeyCell(form, row, form.ColumnOf("Col_10"), "06101"));
    EXPECT_EQ(Text(CellOfRow(form, row, form.ColumnOf("Col_2"))), "14-0234");
    const auto commits = gDB.CommitCount();
    EXPECT_TRUE(CommitRow(form, row));
    EXPECT_EQ(gDB.CommitCount(), commits + 1);
    EXPECT_EQ(Text(Cell("E1p1", 1, "Description")), "Alpha");
    EXPECT_EQ(Text(Cell("E1p1", 1, "Col_0")), "14-0234");
    EXPECT_EQ(Text(Cell("S2p1", 1, "Col_10")), "06101");
    EXPECT_GE(host.IndexOf("RefreshOpenForms: S2p1"), 0) << ::testing::PrintToString(host.Events);
}

TEST_F(FormClosing, ANewCostCentersNameIsCarried) {
    AddLine("CostCenters", Currency(29.0));
    EXPECT_TRUE(Key(Edit("CCs"), 29, "CCName", "Marketing"));
    EXPECT_EQ(Text(Cell("A", 29, "CCName")), "Marketing");
}

TEST_F(FormClosing, A8BeepsWithItsRefusals) {
    const WorksheetForm form = Edit("A8");
    EXPECT_FALSE(Key(form, 1, "Col_2", "C"));
    EXPECT_EQ(LastBox(),
              "Error: Invalid Basis Entry|Basis entries may only be the letters 'A' or 'B'.");
    EXPECT_EQ(host.Beeps, 1);
    EXPECT_TRUE(Key(form, 1, "Col_3", "1.5"));
    EXPECT_EQ(host.Boxes.back().Title, "Entry Warning");
    EXPECT_EQ(host.Beeps, 1) << "a warning does not beep";
    EXPECT_FALSE(Key(form, 1, "Col_5", "5"));
    EXPECT_EQ(host.Boxes.back().Text, "5 is not a valid cost center number");
}

TEST_F(FormClosing, AnotherSymbolThanGEmptiesTheInterrelationshipInTheSameRow) {
    AddLine("A81p2", Currency(1.0));
    const WorksheetForm form = Edit("A81p2");
    RowEntry row = BeginRow(form, Currency(1.0));
    EXPECT_TRUE(KeyCell(form, row, form.ColumnOf("Col_1"), "g"));
    EXPECT_TRUE(KeyCell(form, row, form.ColumnOf("Col_2"), "Financial"));
    EXPECT_TRUE(KeyCell(form, row, form.ColumnOf("Col_1"), "c"));
    EXPECT_TRUE(CellOfRow(form, row, form.ColumnOf("Col_2")).IsNull());
    EXPECT_FALSE(KeyCell(form, row, form.ColumnOf("Col_2"), "Financial"));
    EXPECT_TRUE(CommitRow(form, row));
    EXPECT_EQ(Text(Cell("A81p2", 1, "Col_1")), "C");
    EXPECT_TRUE(Cell("A81p2", 1, "Col_2").IsNull());
}

}  // namespace
}  // namespace zolmara
