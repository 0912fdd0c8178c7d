#include <fmt/format.h>

#include <algorithm>
#include <filesystem>

#include "print/PrintSupport.h"
#include "print/Report.h"
#include "print/Reports.h"
#include "store/Files.h"
#include "support/StatementMeter.h"
#include "worksheets/Worksheet.h"

namespace zolmara::test {
namespace {

using Lines = std::vector<std::string>;

class ReportTest : public TestCrf {
protected:
    Lines Printed(std::string_view name) const { return PrintedLines(folder.File(name)); }

    PrintRun run;

    /// Reclassifications 1.00, 1.01 and so on, in place of all that were there.
    static void MakeReclassifications(int count) {
        gDB.Execute("DELETE * FROM A6;");
        RunBatch(gDB, [&] {
            for (int i = 0; i < count; ++i) {
                gDB.Execute("INSERT INTO A6 (LineNum,Col_1,Col_5) VALUES (?,?,?);",
                            {Currency::FromUnits(10000 + i * 100), "Entry", i});
            }
        });
    }
};

/// The columns from..to of a line, counted from 1.
std::string Columns(const std::string& line, std::size_t from, std::size_t to) {
    return std::string(MidText(line, from, to - from + 1));
}

// --- Pages ---------------------------------------------------------------------------------

TEST_F(ReportTest, AnEmptyTableYieldsAnEmptyReport) {
    gDB.Execute("DELETE * FROM A6;");
    Print_A6(run);
    EXPECT_EQ(FileBytes(folder.File("A6.prt")), "");
}

TEST_F(ReportTest, EveryReportOfAnEmptyWorksheetIsEmpty) {
    for (const Worksheet& sheet : AllWorksheets())
        gDB.Execute(fmt::format("DELETE * FROM {};", sheet.Item));
    Print_A(run);
    Print_A7(run);
    Print_A8(run);
    Print_A81(run);
    Print_Bx("Bp1", run);
    Print_Ex("E1p3", run);
    Print_Fx("F2p2", run);
    Print_G(run);
    Print_G1(run);
    Print_S1(run);
    Print_S2(run);
    Print_Sp1(run);
    for (const std::string_view name :
         {"A", "A7", "A8", "A81", "Bp1", "E1p3", "F2p2", "G", "G1", "S1", "S2", "SS"}) {
        EXPECT_EQ(FileBytes(folder.File(fmt::format("{}.prt", name))), "") << name;
    }
}

TEST_F(ReportTest, APageOfReclassificationsHoldsFiftySixRows) {
    // The head takes 10 lines, title and column heads 5; rows begin while the counter is at most
    // 70, from 15 to 70.
    MakeReclassifications(56);
    Print_A6(run);
    EXPECT_EQ(PageCount(Printed("A6.prt")), 1);
    EXPECT_EQ(Printed("A6.prt").size(), 71U);
}

TEST_F(ReportTest, OneRowMoreContinuesOnAPageWhoseHeadSaysSo) {
    MakeReclassifications(57);
    Print_A6(run);
    const Lines lines = Printed("A6.prt");
    ASSERT_EQ(PageCount(lines), 2);
    EXPECT_EQ(LinesWith(lines, ", continued").size(), 1U);
    const Lines second = PageOf(lines, 2);
    EXPECT_EQ(Trim(second.at(2)), "In lieu of Form CMS-287-22, continued");
    EXPECT_EQ(Trim(second.at(10)), "Reclassifications");
    EXPECT_EQ(second.at(13).substr(0, 4), "Line");
    EXPECT_EQ(Columns(second.at(15), 1, 12), "  1.56 Entry");
    EXPECT_EQ(second.size(), 16U);
}

TEST_F(ReportTest, ATotalBeginsWhileTheCounterIsAtTheLimitAndItsRulesGoWithIt) {
    MakeReclassifications(55);
    gDB.Execute("INSERT INTO A6 (LineNum,Col_1,Col_5,Col_8) VALUES (100,'TOTAL',5,5);");
    Print_A6(run);
    // 15 lines of head and 55 rows leave the counter at 70.
    const Lines lines = Printed("A6.prt");
    EXPECT_EQ(PageCount(lines), 1);
    ASSERT_EQ(lines.size(), 73U);
    EXPECT_EQ(Columns(lines[70], 97, 108), std::string(12, '-'));
    EXPECT_EQ(Columns(lines[71], 1, 12), "100    TOTAL");
    EXPECT_EQ(Columns(lines[72], 97, 108), std::string(12, '='));
}

TEST_F(ReportTest, OneRowMoreTakesTheTotalToTheNextPage) {
    MakeReclassifications(56);
    gDB.Execute("INSERT INTO A6 (LineNum,Col_1,Col_5,Col_8) VALUES (100,'TOTAL',5,5);");
    Print_A6(run);
    const Lines lines = Printed("A6.prt");
    ASSERT_EQ(PageCount(lines), 2);
    EXPECT_EQ(PageOf(lines, 1).size(), 71U);
    const Lines second = PageOf(lines, 2);
    ASSERT_EQ(second.size(), 18U);
    EXPECT_EQ(Columns(second[16], 1, 12), "100    TOTAL");
}

TEST_F(ReportTest, HeaderLinesTakeRowsFromThePage) {
    gDB.Execute("UPDATE HeaderLines SET LineText='Draft';");
    MakeReclassifications(54);
    Print_A6(run);
    EXPECT_EQ(PageCount(Printed("A6.prt")), 2);
    EXPECT_EQ(PageOf(Printed("A6.prt"), 1).size(), 71U);
}

TEST_F(ReportTest, AnOpenFileIsWrittenAndLeftOpen) {
    const FileNumber file = OpenPrintFile(folder.File("both.prt"));
    PrintRun both(file);
    Print_G(both);
    Print_A6(both);
    PrintLine(file, "the end");
    ClosePrintFile(file);
    const Lines lines = Printed("both.prt");
    EXPECT_EQ(PageOf(lines, 1).at(0), "==== page, portrait");
    EXPECT_EQ(PageOf(lines, 2).at(0), "==== page, landscape");
    EXPECT_EQ(lines.back(), "the end");
    EXPECT_FALSE(FileExists(folder.File("G.prt")));
}

TEST_F(ReportTest, AFileOfItsOwnIsSentToThePrinter) {
    FakePrinter printer;
    host.PrinterDevice = &printer;
    Print_A6(run);
    EXPECT_EQ(printer.Calls.at(0), "Orientation 2");
    EXPECT_EQ(printer.Calls.back(), "EndDoc");
    EXPECT_EQ(printer.Lines().size(), Printed("A6.prt").size());
}

TEST_F(ReportTest, AFileThatCannotBeWrittenIsAnErrorAndNothingIsPrinted) {
    FakePrinter printer;
    host.PrinterDevice = &printer;
    gCRFDir = folder.File("none");
    EXPECT_THROW(Print_A6(run), StoreError);
    EXPECT_TRUE(printer.Calls.empty());
}

TEST_F(ReportTest, AFailureOnTheWayLeavesNoFileThatLooksWhole) {
    const std::string former = "\f\x02\r\n  Zolmara 287 System [Version: 3.0.0]\r\n";
    WriteWholeFile(folder.File("S1.prt"), former);
    gDB.DeleteTable("S1p2");
    EXPECT_THROW(Print_S1(run), StoreError);
    EXPECT_EQ(FileBytes(folder.File("S1.prt")), former);
    EXPECT_TRUE(host.Boxes.empty());
}

// --- Rows ----------------------------------------------------------------------------------

TEST_F(ReportTest, TheTotalOfReclassificationsBringsItsRulesOnLine100Only) {
    MakeReclassifications(2);
    Print_A6(run);
    EXPECT_TRUE(LinesWith(Printed("A6.prt"), "============").empty());
    gDB.Execute("INSERT INTO A6 (LineNum,Col_1,Col_5,Col_8) VALUES (100,'TOTAL',1,1);");
    Print_A6(run);
    const Lines lines = Printed("A6.prt");
    ASSERT_EQ(lines.size(), 20U);
    const std::string rule(12, '-');
    EXPECT_EQ(lines.at(17), std::string(96, ' ') + rule + std::string(45, ' ') + rule);
    EXPECT_EQ(Columns(lines.at(18), 1, 12), "100    TOTAL");
    EXPECT_EQ(lines.at(19), Replace(lines.at(17), "-", "="));
}

TEST_F(ReportTest, AmountsStandUnderTheirColumnNumbers) {
    gDB.Execute("UPDATE A SET Col_1=111,Col_2=222,Col_5=-5555555,Col_8=888 WHERE LineNum=10;");
    Print_A(run);
    const std::string row = LinesWith(Printed("A.prt"), "-5,555,555").at(0);
    EXPECT_EQ(Columns(row, 1, 6), " 10   ");
    EXPECT_EQ(Columns(row, 64, 75), "         111");
    EXPECT_EQ(Columns(row, 77, 88), "         222");
    EXPECT_EQ(Columns(row, 116, 127), "  -5,555,555");
    EXPECT_EQ(Columns(row, 155, 166), "         888");
    EXPECT_EQ(row.size(), 166U);
}

TEST_F(ReportTest, TwelveDigitAmountsInAllColumnsKeepTheirDigits) {
    gDB.Execute(
        "UPDATE A SET Col_1=-123456789012,Col_2=-123456789013,Col_3=123456789014,"
        "Col_4=-123456789015 WHERE LineNum=10;");
    Print_A(run);
    const std::string row = LinesWith(Printed("A.prt"), "123456789012").at(0);
    // The second and the fourth take the blank ahead of their fields: what stands before each of
    // them gives way by one.
    EXPECT_EQ(Columns(row, 61, 114), "-123456789012 -123456789013 123456789014 -123456789015");
}

TEST_F(ReportTest, ALongNameGoesOnInFurtherLinesOfItsColumn) {
    MakeReclassifications(1);
    gDB.Execute(
        "UPDATE A6 SET Col_1=?,Col_3=?,Col_4=4.01,Col_6=?,Col_7=28;",
        {std::string(40, 'e'), "CRC-Buildings and Fixtures of the Annexe", std::string(40, 'x')});
    Print_A6(run);
    const Lines lines = Printed("A6.prt");
    ASSERT_EQ(lines.size(), 17U);
    EXPECT_EQ(Columns(lines[15], 8, 45), std::string(36, 'e') + "  ");
    EXPECT_EQ(Columns(lines[15], 51, 94),
              "CRC-Buildings and Fixtures of the" + std::string(7, ' ') + "4.01");
    EXPECT_EQ(Columns(lines[16], 51, 88), "Annexe" + std::string(32, ' '));
    EXPECT_EQ(Columns(lines[15], 110, 152), std::string(37, 'x') + " 28   ");
    EXPECT_EQ(Columns(lines[16], 110, 112), "xxx");
}

TEST_F(ReportTest, ARowOfSeveralLinesIsNotSplitBetweenPages) {
    MakeReclassifications(56);
    gDB.Execute("UPDATE A6 SET Col_3=? WHERE Col_5=55;", {std::string(39, 'n')});
    Print_A6(run);
    const Lines second = PageOf(Printed("A6.prt"), 2);
    ASSERT_EQ(second.size(), 17U);
    EXPECT_EQ(Columns(second.at(15), 51, 88), std::string(38, 'n'));
    EXPECT_EQ(Columns(second.at(16), 51, 52), "n");
}

TEST_F(ReportTest, ALineBreakInATextIsABlank) {
    gDB.Execute("UPDATE A8 SET Col_1=? WHERE LineNum=1;", {"one\r\ntwo\f\x02three"});
    Print_A8(run);
    EXPECT_EQ(PageCount(Printed("A8.prt")), 1);
    EXPECT_EQ(LinesWith(Printed("A8.prt"), "one two  three").size(), 1U);
}

TEST_F(ReportTest, CharactersOutsideTheCodePageAreQuestionMarksInTheirPlace) {
    gDB.Execute("UPDATE A8 SET Col_1=?,Col_3=5 WHERE LineNum=1;", {"\u4e2d\u6587 caf\u00e9"});
    Print_A8(run);
    const std::string row = LinesWith(Printed("A8.prt"), "?? caf\u00e9").at(0);
    EXPECT_EQ(Columns(row, 77, 88), "           5");
    EXPECT_NE(FileBytes(folder.File("A8.prt")).find("?? caf\xe9"), std::string::npos);
}

/// Fills every text of a table to its size, in words or without a blank.
void FillTexts(std::string_view table, std::string_view piece) {
    for (const FieldDef& field : gDB.Table(table).Fields) {
        if (field.Type != FieldType::dbText) continue;
        std::string text;
        while (text.size() < static_cast<std::size_t>(field.Size)) text += piece;
        text.resize(static_cast<std::size_t>(field.Size));
        gDB.Execute(fmt::format("UPDATE {} SET {}=?;", table, field.Name), {text});
    }
}

TEST_F(ReportTest, NoTextHoweverLongLeavesItsPage) {
    for (const std::string_view item : {"S2p1", "S2p2", "S2p3"})
        gDB.Execute(fmt::format("INSERT INTO {} (LineNum) VALUES (1);", item));
    gDB.Execute("INSERT INTO A81p2 (SeqNum,Col_4,Col_6) VALUES (1,100,100);");
    for (const std::string_view piece : {"word and ", "xxxxxxxxxx"}) {
        for (const Worksheet& sheet : AllWorksheets()) FillTexts(sheet.Item, piece);
        const FileNumber file = OpenPrintFile(folder.File("all.prt"));
        PrintRun wide(file);
        Print_A(wide);
        Print_A6(wide);
        Print_A81(wide);
        Print_S1(wide);
        Print_S2(wide);
        Print_Bx("B1p3", wide);
        Print_Ex("E1p1", wide);
        Print_Fx("F1p1", wide);
        ClosePrintFile(file);
        for (const std::string& line : Printed("all.prt"))
            EXPECT_LE(TextLength(line), 176U) << line;
        const FileNumber second = OpenPrintFile(folder.File("all.prt"));
        PrintRun portrait(second);
        Print_A7(portrait);
        Print_A8(portrait);
        Print_G(portrait);
        Print_G1(portrait);
        Print_Sp1(portrait);
        ClosePrintFile(second);
        // The words "Line No." of A-8 end one column further.
        for (const std::string& line : Printed("all.prt"))
            EXPECT_LE(TextLength(line), 138U) << line;
    }
}

// --- Single reports ------------------------------------------------------------------------

TEST_F(ReportTest, TheTwoPartsOfA7HaveHeadsAndPageNumbersOfTheirOwn) {
    Print_A7(run);
    const Lines lines = Printed("A7.prt");
    ASSERT_EQ(PageCount(lines), 2);
    EXPECT_TRUE(LinesWith(lines, ", continued").empty());
    EXPECT_EQ(PageOf(lines, 1).at(0), "==== page, portrait");
    EXPECT_EQ(Trim(PageOf(lines, 1).at(10)),
              "Part I Analysis of changes in capital asset balances");
    EXPECT_EQ(Trim(PageOf(lines, 2).at(10)), "Part II - Reconciliation of Capital Cost Centers");
}

TEST_F(ReportTest, TheRatiosOfA7HaveSixDecimals) {
    gDB.Execute("UPDATE A7p2 SET Col_3=100,Col_4=0.333333,Col_15=77 WHERE LineNum=1;");
    Print_A7(run);
    const Lines part = PageOf(Printed("A7.prt"), 2);
    EXPECT_EQ(Columns(LinesWith(part, "0.333333").at(0), 59, 83), "         100     0.333333");
    EXPECT_EQ(LinesWith(part, "          77").at(0).size(), 135U);
}

TEST_F(ReportTest, TheSectionWordOfGFollowsTheRowThatOpensThePage) {
    Print_G(run);
    const Lines first = Printed("G.prt");
    EXPECT_EQ(first.at(13), "Line   ASSETS");
    EXPECT_EQ(LinesWith(first, "     LIABILITIES"), Lines{"     LIABILITIES"});
    gDB.Execute("DELETE * FROM G WHERE LineNum<33;");
    Print_G(run);
    const Lines second = Printed("G.prt");
    EXPECT_EQ(second.at(13), "Line   LIABILITIES");
    // What the head says is not said again under it.
    EXPECT_EQ(LinesWith(second, "ASSETS"),
              (Lines{"     CURRENT ASSETS", "     FIXED ASSETS", "     OTHER ASSETS"}));
}

TEST_F(ReportTest, SectionsOfAStandAheadOfTheirFirstLine) {
    Print_A(run);
    const Lines lines = Printed("A.prt");
    const auto after = [&](const std::string& section) {
        const auto found = std::ranges::find(lines, "     " + section);
        return found == lines.end() ? std::string("not found") : Columns(*(found + 1), 1, 6);
    };
    EXPECT_EQ(after("CAPITAL RELATED COST CENTERS"), "  1   ");
    EXPECT_EQ(after("OTHER CAPITAL RELATED COST CENTERS"), "  4   ");
    EXPECT_EQ(after("NON-CAPITAL COST CENTERS"), "  8   ");
}

TEST_F(ReportTest, PercentagesOfOwnershipHaveTwoDecimals) {
    gDB.Execute("INSERT INTO A81p2 (SeqNum,Col_1,Col_4,Col_6) VALUES (1,'A',33.333,100);");
    Print_A81(run);
    const std::string row = LinesWith(Printed("A81.prt"), "33.33").at(0);
    EXPECT_EQ(Columns(row, 83, 92), "     33.33");
    EXPECT_EQ(Columns(row, 129, 138), "    100.00");
}

TEST_F(ReportTest, S1SaysTheFormsApprovalNowhere) {
    Print_S1(run);
    EXPECT_TRUE(LinesWith(Printed("S1.prt"), "Form Approved").empty());
    EXPECT_EQ(LinesWith(Printed("S1.prt"), "Worksheet S-1 Part I  ").size(), 1U);
    EXPECT_EQ(LinesWith(Printed("S1.prt"), "Worksheet S-1 Part II  ").size(), 1U);
}

TEST_F(ReportTest, AFurtherContactLineOfS1IsAnEmailAddress) {
    gDB.Execute(
        "INSERT INTO S1p1 (LineNum,Description,Col_6) VALUES (5.01,'more email address',"
        "'second@example.org');");
    Print_S1(run);
    const Lines lines = Printed("S1.prt");
    const std::string row = LinesWith(lines, "second@example.org").at(0);
    EXPECT_EQ(Columns(row, 1, 25), "  5.01 more email address");
    EXPECT_EQ(Columns(row, 116, 133), "second@example.org");
    const auto found = std::ranges::find(lines, row);
    EXPECT_EQ(*(found - 2), std::string(118, ' ') + "Email Address");
}

// --- Cost ----------------------------------------------------------------------------------

TEST_F(ReportTest, FiveThousandRowsCostFiveTimesAThousand) {
    const StatementMeter meter;
    gDB = DBEngine::OpenDatabase(gCRFPath);
    const auto print = [&] { Print_A6(run); };
    MakeReclassifications(1000);
    const StoreWork small = meter.CountOf(print);
    MakeReclassifications(5000);
    const StoreWork large = meter.CountOf(print);
    // 56 rows a page: 89 full pages and 16 rows.
    EXPECT_EQ(PageCount(Printed("A6.prt")), 90);
    EXPECT_EQ(LinesWith(Printed("A6.prt"), "Entry").size(), 5000U);
    EXPECT_GT(small.Steps, 1000);
    EXPECT_LT(large.Statements, 6 * small.Statements);
    EXPECT_LT(large.Steps, 6 * small.Steps);
}

TEST_F(ReportTest, BillionsKeepTheirCommasAndABlankBetweenThem) {
    for (const char* column : {"Col_1", "Col_2", "Col_3"}) SetCell("A", 12, column, 1234567890);
    SetCell("A", 13, "Col_1", 5);
    SetCell("A", 13, "Col_2", 1234567890);
    Print_A(run);
    const Lines lines = Printed("A.prt");
    EXPECT_EQ(LinesWith(lines, " 1,234,567,890 1,234,567,890 1,234,567,890").size(), 1U);
    EXPECT_EQ(LinesWith(lines, " 5 1,234,567,890").size(), 1U);
}

}  // namespace
}  // namespace zolmara::test
