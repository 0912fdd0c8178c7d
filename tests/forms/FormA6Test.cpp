// The windows of worksheet A-6.

#include "forms/FormSupport.h"
#include "structure/EditLines.h"

namespace zolmara {
namespace {

using test::Cell;
using Words = std::vector<std::string>;

class FormA6 : public test::FormTest {
protected:
    FormA6() { AddLine("A6", Currency(1.0)); }

    /// A row with everything in it.
    void KeyRow(double line, const char* code, double up, double amount) {
        RowEntry row = BeginRow(form, Currency(line));
        KeyCell(form, row, form.ColumnOf("Col_1"), "Rent");
        KeyCell(form, row, form.ColumnOf("Col_2"), code);
        KeyCell(form, row, form.ColumnOf("Col_4"), up);
        KeyCell(form, row, form.ColumnOf("Col_5"), amount);
        ASSERT_TRUE(CommitRow(form, row));
    }

    WorksheetForm form = Edit("A6");
};

TEST_F(FormA6, HeadingsLocksAndRows) {
    EXPECT_EQ(form.Name, "frmEditA6");
    EXPECT_EQ(form.Caption, "Edit Worksheet A6");
    EXPECT_EQ(form.RowSource, "SELECT * FROM A6 WHERE LineNum < 100 ORDER BY LineNum;");
    EXPECT_EQ(Titles(form),
              (Words{"Line #", "Explanation", "Code", "Up Cost Center", "Up CC Line #", "Up Amount",
                     "Dn Cost Center", "Dn CC Line #", "Dn Amount"}));
    EXPECT_EQ(KeyedFields(form), (Words{"Col_1", "Col_2", "Col_4", "Col_5", "Col_7", "Col_8"}));
    EXPECT_EQ(FormRows(form).Count(), 1);
    EXPECT_EQ(FormRows(View("A6")).Count(), 2);
}

TEST_F(FormA6, ARowIsStoredAsAWholeWhenItIsLeft) {
    RowEntry row = BeginRow(form, Currency(1.0));
    EXPECT_TRUE(KeyCell(form, row, form.ColumnOf("Col_1"), "Rent"));
    EXPECT_TRUE(KeyCell(form, row, form.ColumnOf("Col_2"), "a"));
    EXPECT_TRUE(KeyCell(form, row, form.ColumnOf("Col_4"), "8"));
    EXPECT_TRUE(KeyCell(form, row, form.ColumnOf("Col_5"), "12.5"));
    EXPECT_EQ(host.Boxes.size(), 1U);
    EXPECT_EQ(host.Boxes[0].Title, "Entry Warning");
    EXPECT_TRUE(Cell("A6", 1, "Col_1").IsNull());
    EXPECT_TRUE(CommitRow(form, row));
    EXPECT_FALSE(row.Changed());
    EXPECT_EQ(Text(Cell("A6", 1, "Col_2")), "A");
    EXPECT_EQ(Text(Cell("A6", 1, "Col_3")), "Salaries of Officers");
    EXPECT_EQ(NumOr(Cell("A6", 1, "Col_5")), 13);
    EXPECT_FALSE(host.Menus.at("mnuReportSubmit"));
}

TEST_F(FormA6, ARefusedCellLeavesTheRowAsItWas) {
    RowEntry row = BeginRow(form, Currency(1.0));
    EXPECT_FALSE(KeyCell(form, row, form.ColumnOf("Col_2"), "AB"));
    EXPECT_EQ(LastBox(),
              "Error: Invalid CODE Entry|A valid CODE [any letter from 'A' through 'Z'] must be "
              "entered.");
    EXPECT_FALSE(row.Changed());
}

TEST_F(FormA6, TheFirstRowOfACodeNeedsAnExplanationAndTheSecondDoesNot) {
    RowEntry row = BeginRow(form, Currency(1.0));
    EXPECT_TRUE(KeyCell(form, row, form.ColumnOf("Col_2"), "A"));
    EXPECT_FALSE(CommitRow(form, row));
    EXPECT_EQ(LastBox(),
              "Error: Blank EXPLANATION Item|The EXPLANATION may not be left blank for the first "
              "reclassification in a given code.");
    EXPECT_EQ(host.Beeps, 1);
    EXPECT_TRUE(row.Changed());
    EXPECT_TRUE(KeyCell(form, row, form.ColumnOf("Col_1"), "Rent"));
    EXPECT_TRUE(CommitRow(form, row));
    AddLine("A6", Currency(2.0));
    EXPECT_TRUE(Key(form, 2, "Col_2", "A"));
}

TEST_F(FormA6, AnAmountBesideNoCostCenterIsRefusedInsteadOfLost) {
    RowEntry row = BeginRow(form, Currency(1.0));
    KeyCell(form, row, form.ColumnOf("Col_1"), "Rent");
    KeyCell(form, row, form.ColumnOf("Col_2"), "A");
    EXPECT_TRUE(KeyCell(form, row, form.ColumnOf("Col_8"), "60"));
    EXPECT_FALSE(CommitRow(form, row));
    EXPECT_EQ(LastBox(),
              "Error: Invalid 'UpLineNum' Entry|The DnLineNum is not a valid cost center number");
    EXPECT_TRUE(KeyCell(form, row, form.ColumnOf("Col_7"), "9"));
    EXPECT_TRUE(CommitRow(form, row));
    EXPECT_EQ(NumOr(Cell("A6", 1, "Col_8")), 60);
    // A line that is emptied takes its amount with it.
    EXPECT_TRUE(Key(form, 1, "Col_7", ""));
    EXPECT_TRUE(Cell("A6", 1, "Col_8").IsNull());
}

TEST_F(FormA6, ViewsOfA6AndAFollowEachRow) {
    host.OpenForms = {"frmViewA6", "frmViewA"};
    KeyRow(1, "A", 8, 100);
    EXPECT_EQ(NumOr(Cell("A6", 100, "Col_5")), 100);
    EXPECT_EQ(NumOr(Cell("A", 8, "Col_2")), 100);
    EXPECT_TRUE(gLogType.empty());
}

TEST_F(FormA6, LinesAreNumberedByCodeWhenTheWindowCloses) {
    KeyRow(1, "C", 8, 100);
    AddLine("A6", Currency(2.0));
    KeyRow(2, "B", 9, 50);
    EXPECT_TRUE(FormMayClose(form));
    FormCloses(form);
    EXPECT_EQ(Text(Cell("A6", 1, "Col_2")), "B");
    EXPECT_EQ(Text(Cell("A6", 2, "Col_2")), "C");
    const auto commits = gDB.CommitCount();
    FormCloses(form);
    EXPECT_EQ(gDB.CommitCount(), commits) << "lines in order are not written again";
}

TEST_F(FormA6, AddGoesToTheNextLineAndDeleteTakesTheSelectedOnes) {
    const LineOutcome added = AddFormLine(form, Currency(1.0));
    EXPECT_EQ(added.Line, Currency(2.0));
    EXPECT_TRUE(added.Changed);
    EXPECT_EQ(NumOr(Cell("A6", 2, "Col_4"), -1), 0);
    EXPECT_FALSE(DeleteFormLines(form, Currency(2.0), {}).Changed);
    EXPECT_EQ(host.Boxes.back().Title, "Error: No line Selected to Delete");
    const std::vector<Currency> both{Currency(1.0), Currency(2.0)};
    EXPECT_TRUE(DeleteFormLines(form, Currency(2.0), both).Changed);
    EXPECT_EQ(FormRows(form).Count(), 0);
    EXPECT_EQ(AddFormLine(form, std::nullopt).Line, Currency(1.0));
}

TEST_F(FormA6, SumsOfTheCodeWhileARowIsKeyed) {
    KeyRow(1, "A", 8, 100);
    RowEntry row = BeginRow(form, Currency(1.0));
    KeyCell(form, row, form.ColumnOf("Col_7"), "9");
    KeyCell(form, row, form.ColumnOf("Col_8"), "60");
    const CodeSums sums = SumsOfCode("a", &row);
    EXPECT_EQ(sums.Increases, 100);
    EXPECT_EQ(sums.Decreases, 60);
    EXPECT_EQ(sums.Difference(), 40);
}

TEST_F(FormA6, ABlockIsPastedInTheStylesOfSpreadsheetsAndGrows) {
    const FormRows rows(form);
    const BlockResult result = PasteBlock(form, rows, 0, form.ColumnOf("Col_1"),
                                          {{"Rent", "a", "", "8", "1,234 "},
                                           {"Power", "B", "", "9", "(1,234)"},
                                           {"Water", "B", "", "10", "$1,234.50"},
                                           {"Gas", "B", "", "11", "1 234"},
                                           {"Oil", "B", "", "99", "5"},
                                           {"", "?", "", "", ""}});
    EXPECT_EQ(NumOr(Cell("A6", 1, "Col_5")), 1234);
    EXPECT_EQ(NumOr(Cell("A6", 2, "Col_5")), -1234);
    EXPECT_EQ(NumOr(Cell("A6", 3, "Col_5")), 1235);
    EXPECT_EQ(NumOr(Cell("A6", 4, "Col_5")), 1234);
    EXPECT_EQ(result.Added.size(), 4U);
    ASSERT_EQ(result.Findings.size(), 4U);
    EXPECT_FALSE(result.Findings[0].Refused);
    EXPECT_EQ(result.Findings[0].Line, Currency(3.0));
    EXPECT_EQ(result.Findings[0].Column, "Up Amount");
    EXPECT_EQ(result.Findings[0].Value, "$1,234.50");
    EXPECT_TRUE(result.Findings[1].Refused);
    EXPECT_EQ(result.Findings[1].Column, "Up CC Line #");
    EXPECT_EQ(result.Findings[1].Reason, "The UpLineNum is not a valid cost center number");
    EXPECT_EQ(result.Findings[2].Value, "5") << "an amount beside no cost center";
    EXPECT_EQ(Text(Cell("A6", 5, "Col_1")), "Oil") << "the rest of its row stays";
    EXPECT_EQ(result.Findings[3].Value, "?");
    EXPECT_EQ(FormRows(form).Count(), 5) << "a line into which nothing went is not left behind";
    EXPECT_TRUE(host.Boxes.empty());
}

}  // namespace
}  // namespace zolmara
