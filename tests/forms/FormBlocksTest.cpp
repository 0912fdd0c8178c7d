// Blocks of cells: paste, the Delete key, fill down; numbers as spreadsheets write them.

#include "core/Dialogs.h"
#include "forms/FormSupport.h"
#include "forms/PasteText.h"
#include "structure/EditLines.h"
#include "structure/modAddS2.h"

namespace zolmara {
namespace {

using test::Cell;
using Block = std::vector<std::vector<std::string>>;

TEST(PasteText, NumbersInTheStylesOfSpreadsheets) {
    const std::pair<const char*, const char*> numbers[] = {
        {"1,234", "1234"},
        {"(1,234)", "-1234"},
        {"$1,234.00", "1234"},
        {"1 234", "1234"},
        {"1 234 567.5", "1234567.5"},
        {"1\u00a0234", "1234"},
        {"1\u202f234", "1234"},
        {" 12  ", "12"},
        {"12\r", "12"},
        {"\t12\t", "12"},
        {"($1,234.50)", "-1234.5"},
        {"-$5", "-5"},
        {"5-", "-5"},
        {"\u22125", "-5"},
        {"-", "0"},
        {" $ - ", "0"},
        {"0", "0"},
    };
    for (const auto& [pasted, plain] : numbers) EXPECT_EQ(PlainNumber(pasted), plain);
}

TEST(PasteText, WhatIsNoNumberStaysAsItIs) {
    for (const char* text : {"abc", "1 2", "12 34", "1 2345", "n/a", "#REF!", "1/2/2023", "--5"})
        EXPECT_EQ(PlainNumber(text), text);
    EXPECT_EQ(PlainNumber("  two words "), "two words");
    EXPECT_EQ(PlainNumber(""), "");
    EXPECT_EQ(PlainText("\u00a0 x \r\n"), "x");
}

class FormBlocks : public test::FormTest {
protected:
    static int At(const WorksheetForm& form, const char* field) { return form.ColumnOf(field); }
    static BlockResult Paste(const WorksheetForm& form, int row, const char* field,
                             const Block& cells) {
        const FormRows rows(form);
        return PasteBlock(form, rows, row, form.ColumnOf(field), cells);
    }
    static BlockRange Range(const WorksheetForm& form, int first, int last, const char* from,
                            const char* to) {
        return {first, last, form.ColumnOf(from), form.ColumnOf(to)};
    }
};

TEST_F(FormBlocks, ABlockGoesInAsOneCommit) {
    const WorksheetForm form = Edit("A");
    const auto commits = gDB.CommitCount();
    const BlockResult result =
        Paste(form, 0, "Col_1", {{"1,234"}, {"(5)"}, {"$7.00"}, {"8 000"}, {" 9 "}});
    EXPECT_EQ(gDB.CommitCount(), commits + 1);
    EXPECT_EQ(result.Stored, 5);
    EXPECT_TRUE(result.Findings.empty());
    EXPECT_EQ(NumOr(Cell("A", 1, "Col_1")), 1234);
    EXPECT_EQ(NumOr(Cell("A", 2, "Col_1")), -5);
    EXPECT_EQ(NumOr(Cell("A", 4, "Col_1")), 7);
    EXPECT_EQ(NumOr(Cell("A", 5, "Col_1")), 8000);
    EXPECT_EQ(NumOr(Cell("A", 6, "Col_1")), 9);
    EXPECT_FALSE(host.Menus.at("mnuReportSubmit"));
}

TEST_F(FormBlocks, RefusedAndRoundedValuesAreListedAndTheRestStays) {
    const WorksheetForm form = Edit("A");
    test::SetCell("A", 2, "Col_1", 77.0);
    const BlockResult result = Paste(form, 0, "Col_1", {{"12.5"}, {"abc"}, {"3"}});
    EXPECT_EQ(result.Stored, 2);
    ASSERT_EQ(result.Findings.size(), 2U);
    EXPECT_EQ(result.Findings[0].Item, "A");
    EXPECT_EQ(result.Findings[0].Line, Currency(1.0));
    EXPECT_EQ(result.Findings[0].Column, "Expenses per Home Office Books");
    EXPECT_EQ(result.Findings[0].Value, "12.5");
    EXPECT_FALSE(result.Findings[0].Refused);
    EXPECT_EQ(result.Findings[0].Reason,
              "You're attempting to enter invalid data ['12.5'].  The cell you're attempting to "
              "input or modify only accepts 0 digits to the right of the decimal point.  Your "
              "entry or modification is being rounded.");
    EXPECT_TRUE(result.Findings[1].Refused);
    EXPECT_EQ(result.Findings[1].Reason,
              "You're attempting to enter invalid data ['abc'].  The cell you're attempting to "
              "input or modify only accepts numeric data.  Your entry or modification is being "
              "discarded.");
    EXPECT_EQ(NumOr(Cell("A", 1, "Col_1")), 13);
    EXPECT_EQ(NumOr(Cell("A", 2, "Col_1")), 77) << "a refused cell keeps its value";
    EXPECT_EQ(NumOr(Cell("A", 4, "Col_1")), 3);
    EXPECT_TRUE(host.Boxes.empty()) << "no box for a block";
}

TEST_F(FormBlocks, AnEmptyCellEmptiesAndANumberBecomesZero) {
    const WorksheetForm form = Edit("A");
    test::SetCell("A", 1, "Col_1", 77.0);
    EXPECT_TRUE(Paste(form, 0, "Col_1", {{""}}).Findings.empty());
    EXPECT_EQ(NumOr(Cell("A", 1, "Col_1"), -1), 0);
    test::SetCell("S1p2", 1, "Col_2", "Somebody");
    Paste(Edit("S1p2"), 0, "Col_2", {{" "}});
    EXPECT_TRUE(Cell("S1p2", 1, "Col_2").IsNull());
}

TEST_F(FormBlocks, IdentityCellsAreRefusedUnlessNothingWouldChange) {
    const WorksheetForm form = Edit("A");
    const BlockResult result =
        Paste(form, 0, "LineNum", {{"1.00", "CRC-B&F", "5"}, {"9", "Mine", "6"}});
    EXPECT_EQ(NumOr(Cell("A", 1, "Col_1")), 5);
    EXPECT_EQ(NumOr(Cell("A", 2, "Col_1")), 6);
    ASSERT_EQ(result.Findings.size(), 2U);
    EXPECT_EQ(result.Findings[0].Value, "9");
    EXPECT_EQ(result.Findings[0].Column, "CC #");
    EXPECT_EQ(result.Findings[1].Value, "Mine");
    EXPECT_EQ(Text(Cell("A", 2, "CCName")), "CRC-ME");
}

TEST_F(FormBlocks, TheHomeOfficesIdentityIsNotPastedOver) {
    const BlockResult result = Paste(Edit("S1p1"), 1, "Col_1", {{"Mine", "14-0000", "7/1/1987"}});
    EXPECT_EQ(Text(Cell("S1p1", 2, "Col_1")), "Sample Home Office");
    EXPECT_EQ(Text(Cell("S1p1", 2, "Col_3")), "07/01/1987");
    ASSERT_EQ(result.Findings.size(), 2U);
    EXPECT_EQ(result.Findings[0].Column, "Home Office Name");
}

TEST_F(FormBlocks, WhatGoesPastTheLastColumnIsListed) {
    const BlockResult result = Paste(Edit("A"), 0, "Col_1", {{"5", "6"}});
    ASSERT_EQ(result.Findings.size(), 1U);
    EXPECT_EQ(result.Findings[0].Value, "6");
    EXPECT_EQ(result.Findings[0].Reason, "The worksheet has no column there.");
}

TEST_F(FormBlocks, RowsPastTheEndAreRefusedWhereTheWorksheetDoesNotGrow) {
    const WorksheetForm form = Edit("A");
    const int last = FormRows(form).Count() - 1;
    const BlockResult result = Paste(form, last, "Col_1", {{"5"}, {"6"}, {""}});
    EXPECT_EQ(NumOr(Cell("A", 27, "Col_1")), 5);
    ASSERT_EQ(result.Findings.size(), 1U);
    EXPECT_EQ(result.Findings[0].Value, "6");
    EXPECT_EQ(result.Findings[0].Reason, "The worksheet has no line there, and takes none.");
}

TEST_F(FormBlocks, A8GrowsBehindItsLastWholeLine) {
    const WorksheetForm form = Edit("A8");
    const int end = FormRows(form).Count();
    const BlockResult result =
        Paste(form, end, "Col_1", {{"Gifts", "a", "(50)"}, {"", ""}, {"Fines", "B", "7"}});
    EXPECT_EQ(result.Added, (std::vector<Currency>{Currency(18.0), Currency(19.0)}));
    EXPECT_EQ(Text(Cell("A8", 18, "Col_1")), "Gifts");
    EXPECT_EQ(Text(Cell("A8", 18, "Col_2")), "A");
    EXPECT_EQ(NumOr(Cell("A8", 18, "Col_3")), -50);
    EXPECT_EQ(Text(Cell("A8", 19, "Col_1")), "Fines");
}

TEST_F(FormBlocks, ALineOfA8WithoutADescriptionStopsTheNext) {
    const WorksheetForm form = Edit("A8");
    const int end = FormRows(form).Count();
    const BlockResult result = Paste(form, end, "Col_1", {{"", "A", "5"}, {"Fines", "B", "7"}});
    EXPECT_EQ(result.Added, std::vector<Currency>{Currency(18.0)});
    ASSERT_EQ(result.Findings.size(), 3U);
    EXPECT_EQ(result.Findings[0].Reason, "All descriptions must be completed.");
    EXPECT_EQ(result.Findings[0].Line, Currency());
}

TEST_F(FormBlocks, A81GrowsInBothParts) {
    EXPECT_EQ(Paste(Edit("A81p1"), 0, "Col_1",
                    {{"8", "", "Rent", "1.00", "1,000", "900"}, {"9", "", "Power"}})
                  .Added.size(),
              2U);
    EXPECT_EQ(Text(Cell("A81p1", 1, "Col_2")), "Salaries of Officers");
    EXPECT_EQ(NumOr(Cell("A81p1", 1, "Col_5")), 1000);
    const BlockResult second =
        Paste(Edit("A81p2"), 0, "Col_1", {{"g", "Financial", "Owner", "50.00", "Org", "12.5"}});
    EXPECT_EQ(second.Added.size(), 1U);
    EXPECT_TRUE(second.Findings.empty());
    EXPECT_EQ(Text(Cell("A81p2", 1, "Col_2")), "Financial") << "opened by the symbol ahead of it";
    EXPECT_EQ(NumOr(Cell("A81p2", 1, "Col_6")), 12.5);
}

TEST_F(FormBlocks, ARowThatItsRulesRefuseStaysAsItWasAndTheOthersGoIn) {
    for (const double line : {1.0, 2.0}) AddLine("A6", Currency(line));
    const BlockResult result =
        Paste(Edit("A6"), 0, "Col_1", {{"", "A", "", "8"}, {"Rent", "B", "", "9"}});
    EXPECT_EQ(NumOr(Cell("A6", 1, "Col_4")), 0);
    EXPECT_EQ(Text(Cell("A6", 2, "Col_2")), "B");
    ASSERT_EQ(result.Findings.size(), 2U);
    EXPECT_EQ(result.Findings[0].Value, "A");
    EXPECT_EQ(result.Findings[0].Reason,
              "The EXPLANATION may not be left blank for the first reclassification in a given "
              "code.");
}

TEST_F(FormBlocks, PastedComponentNamesAreCarried) {
    for (const double line : {1.0, 2.0}) AddS2Line(Currency(line), 1);
    const BlockResult result =
        Paste(Edit("S2p1"), 0, "Col_1", {{"Alpha", "140234", "o"}, {"Beta", "14", "M"}});
    EXPECT_EQ(Text(Cell("Bp1", 1, "Description")), "Alpha");
    EXPECT_EQ(Text(Cell("Bp1", 1, "Col_0")), "14-0234");
    EXPECT_EQ(Text(Cell("S2p1", 1, "Col_3")), "Owned");
    EXPECT_EQ(Text(Cell("F2p1", 2, "Description")), "Beta");
    ASSERT_EQ(result.Findings.size(), 1U);
    EXPECT_EQ(result.Findings[0].Reason, "Column 2 must be 5 characters long, 6 with hypen.");
}

TEST_F(FormBlocks, HiddenColumnsArePassedOver) {
    AddS2Line(Currency(1.0), 2);
    // Part II has no number: the dates stand right behind the name.
    EXPECT_TRUE(
        Paste(Edit("S2p2"), 0, "Col_1", {{"Shop", "1/1/2023", "12/31/2023"}}).Findings.empty());
    EXPECT_EQ(Text(Cell("S2p2", 1, "Col_4")), "01/01/2023");
    EXPECT_EQ(Text(Cell("S2p2", 1, "Col_5")), "12/31/2023");
}

TEST_F(FormBlocks, ABlockOf100By10WithErrorsInIt) {
    Block cells;
    for (int row = 0; row < 100; ++row)
        cells.push_back({row % 10 == 3 ? "" : "Rent", "A", "", "8", row % 10 == 5 ? "x" : "10", "",
                         "9", "10", "past", "the end"});
    const BlockResult result = Paste(Edit("A6"), 0, "Col_1", cells);
    // 98 whole lines, then hundredths of the 99th: all 100 find their place.
    EXPECT_EQ(result.Added.size(), 100U);
    int texts = 0;
    int past = 0;
    for (const BlockFinding& finding : result.Findings) {
        texts += finding.Value == "x";
        past += finding.Value == "past" || finding.Value == "the end";
    }
    EXPECT_EQ(texts, 10);
    EXPECT_EQ(past, 200);
    EXPECT_EQ(result.Findings.size(), 210U);
    EXPECT_EQ(NumOr(gDB.Scalar("SELECT Sum(Col_8) FROM A6 WHERE LineNum<100;")), 1000);
    EXPECT_EQ(NumOr(gDB.Scalar("SELECT Sum(Col_5) FROM A6 WHERE LineNum<100;")), 900);
}

// --- The Delete key and fill down

TEST_F(FormBlocks, TheDeleteKeyMakesNumbersZeroAndTextsEmpty) {
    AddLine("A81p1", Currency(1.0));
    const WorksheetForm form = Edit("A81p1");
    for (const auto& [field, value] : {std::pair{"Col_3", Variant("Rent")}, {"Col_5", 5.0}})
        test::SetCell("A81p1", 1, field, value);
    const FormRows rows(form);
    const BlockResult result = ClearBlock(form, rows, Range(form, 0, 0, "Col_2", "Col_7"));
    EXPECT_TRUE(Cell("A81p1", 1, "Col_3").IsNull());
    EXPECT_EQ(NumOr(Cell("A81p1", 1, "Col_5"), -1), 0);
    EXPECT_TRUE(result.Findings.empty()) << "cells that cannot be keyed are passed over";
}

TEST_F(FormBlocks, ARowThatMayNotBeEmptiedIsToldAndStays) {
    // The first entry of a code keeps its explanation; the second may do without.
    const WorksheetForm form = Edit("A6");
    for (const int line : {1, 2}) {
        ASSERT_TRUE(AddLine("A6", Currency::FromWhole(line)));
        test::SetCell("A6", line, "Col_1", "Rent");
        test::SetCell("A6", line, "Col_2", "A");
    }
    const FormRows rows(form);
    const BlockResult result = ClearBlock(form, rows, Range(form, 0, 1, "Col_1", "Col_1"));
    EXPECT_EQ(Text(Cell("A6", 1, "Col_1")), "Rent");
    EXPECT_TRUE(Cell("A6", 2, "Col_1").IsNull());
    ASSERT_EQ(result.Findings.size(), 1U);
    EXPECT_EQ(result.Findings[0].Line, Currency(1.0));
    EXPECT_EQ(result.Findings[0].Column, "Explanation");
    EXPECT_TRUE(result.Findings[0].Refused);
    EXPECT_EQ(result.Findings[0].Reason,
              "The EXPLANATION may not be left blank for the first reclassification in a given "
              "code.");
}

TEST_F(FormBlocks, LineNumbersAndCodesAreNotAddedUp) {
    const WorksheetForm a = Edit("A");
    test::SetCell("A", 1, "Col_1", 40.0);
    const BlockSums whole = SumsOfBlock(a, FormRows(a), Range(a, 0, 9, "LineNum", "Col_1"));
    EXPECT_EQ(whole.Sum, 40);
    EXPECT_EQ(whole.Count, 1);
    const WorksheetForm a6 = Edit("A6");
    ASSERT_TRUE(AddLine("A6", Currency(1.0)));
    for (const auto& [field, value] :
         {std::pair{"Col_4", 16.0}, {"Col_5", 100.0}, {"Col_7", 17.0}, {"Col_8", 50.0}})
        test::SetCell("A6", 1, field, value);
    EXPECT_EQ(SumsOfBlock(a6, FormRows(a6), Range(a6, 0, 0, "LineNum", "Col_8")).Sum, 150);
    const WorksheetForm cc = Edit("CCs");
    EXPECT_EQ(SumsOfBlock(cc, FormRows(cc), Range(cc, 0, 5, "LineNum", "StatCode")).Count, 0);
    const WorksheetForm ratios = View("A7p2");
    test::SetCell("A7p2", 1, "Col_4", 0.25);
    EXPECT_EQ(SumsOfBlock(ratios, FormRows(ratios), Range(ratios, 0, 0, "LineNum", "Col_4")).Sum,
              0.25);
}

TEST_F(FormBlocks, FillDownRepeatsTheFirstRow) {
    const WorksheetForm form = Edit("A");
    test::SetCell("A", 1, "Col_1", 40.0);
    const FormRows rows(form);
    const BlockResult result = FillDown(form, rows, Range(form, 0, 3, "LineNum", "Col_1"));
    EXPECT_EQ(result.Stored, 3);
    for (const double line : {2.0, 4.0, 5.0}) EXPECT_EQ(NumOr(Cell("A", line, "Col_1")), 40);
    EXPECT_TRUE(Cell("A", 6, "Col_1").IsNull());
    EXPECT_EQ(Text(Cell("A", 2, "CCName")), "CRC-ME");
}

TEST_F(FormBlocks, SumCountAndAverageOfABlock) {
    const WorksheetForm form = Edit("A");
    test::SetCell("A", 1, "Col_1", 40.0);
    test::SetCell("A", 4, "Col_1", -10.0);
    const FormRows rows(form);
    const BlockSums sums = SumsOfBlock(form, rows, Range(form, 0, 9, "Col_1", "Col_1"));
    EXPECT_EQ(sums.Sum, 30);
    EXPECT_EQ(sums.Count, 2);
    EXPECT_EQ(sums.Average(), 15);
    EXPECT_EQ(SumsOfBlock(form, rows, Range(form, 5, 9, "Col_1", "Col_1")).Average(), 0);
}

TEST_F(FormBlocks, AFileThatIsLockedIsToldAndNothingIsLost) {
    const WorksheetForm form = Edit("A");
    Database other = DBEngine::OpenDatabase(gCRFPath);
    RowEntry row = BeginRow(form, Currency(1.0));
    ASSERT_TRUE(KeyCell(form, row, At(form, "Col_1"), 5));
    const FormRows rows(form);
    RunBatch(other, [&] {
        other.Execute("UPDATE A SET Col_1=1 WHERE LineNum=8;");
        EXPECT_FALSE(CommitRow(form, row));
        EXPECT_TRUE(row.Changed()) << "the row stays keyed";
        EXPECT_EQ(host.Boxes.back().Style, kCritical);
        EXPECT_TRUE(host.Boxes.back().Text.starts_with("Line 1 of A was not saved.  "));
        EXPECT_THROW(PasteBlock(form, rows, 0, At(form, "Col_1"), {{"5"}}), StoreError);
    });
    EXPECT_TRUE(CommitRow(form, row));
    EXPECT_EQ(NumOr(Cell("A", 1, "Col_1")), 5);
}

}  // namespace
}  // namespace zolmara
