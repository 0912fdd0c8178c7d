// The list of the findings of the edit checks.

#include "core/Clock.h"
#include "print/PrintSupport.h"
#include "print/Reports.h"

namespace zolmara::test {
namespace {

using Lines = std::vector<std::string>;

class ErrorReportTest : public CoreCrf {
protected:
    ErrorReportTest() {
        Build_Error();
        host.Clock = DateTime(2024, 2, 1, 14, 30, 0);
    }
    Lines Printed() {
        Print_Errors();
        return PrintedLines(folder.File("CalcErrors.prt"));
    }
};

TEST_F(ErrorReportTest, NamesTheHomeOfficeTheDateAndTheTime) {
    AddErrorRow("Potential Error", "2000S", "Something");
    const Lines lines = Printed();
    EXPECT_EQ(lines.at(0), "==== page, portrait");
    EXPECT_EQ(Trim(lines.at(1)), "Error Report For");
    EXPECT_EQ(Trim(lines.at(2)), "Sample Home Office (12-3456)");
    EXPECT_EQ(Trim(lines.at(3)), "February 1, 2024 at 02:30 PM");
    EXPECT_EQ(lines.at(5), "Level             Code    Description");
    EXPECT_EQ(lines.at(6),
              std::string(16, '-') + "  " + std::string(6, '-') + "  " + std::string(110, '-'));
    EXPECT_EQ(lines.at(7), "Potential Error   2000S   Something");
    EXPECT_EQ(lines.size(), 8U);
}

TEST_F(ErrorReportTest, ALongMessageRunsOnUnderItself) {
    AddErrorRow("Non-Fatal Error", "1010S", std::string(110, 'a') + " and the rest");
    const Lines lines = Printed();
    EXPECT_EQ(lines.at(7), "Non-Fatal Error   1010S   " + std::string(110, 'a'));
    EXPECT_EQ(lines.at(8), std::string(26, ' ') + "and the rest");
}

TEST_F(ErrorReportTest, TheLinesOfAMessageStandUnderEachOther) {
    AddErrorRow("Non-Fatal Error", "VLQ", "one\r\ntwo\rthree");
    const Lines lines = Printed();
    EXPECT_EQ(lines.at(7), "Non-Fatal Error   VLQ     one");
    EXPECT_EQ(lines.at(8), std::string(26, ' ') + "two");
    EXPECT_EQ(lines.at(9), std::string(26, ' ') + "three");
}

TEST_F(ErrorReportTest, ACleanReportIsOneLine) {
    AddErrorRow("No errors found", " ", " ");
    const Lines lines = Printed();
    EXPECT_EQ(lines.at(7), "No errors found");
    EXPECT_EQ(lines.size(), 8U);
}

TEST_F(ErrorReportTest, WithoutATableOrARowNothingIsPrinted) {
    EXPECT_TRUE(Printed().empty());
    gDB.DeleteTable("Error");
    EXPECT_TRUE(Printed().empty());
}

TEST_F(ErrorReportTest, ManyFindingsContinueOnFurtherPages) {
    RunBatch(gDB, [] {
        for (int i = 0; i < 100; ++i) AddErrorRow("Potential Error", "2000S", "Something");
    });
    const Lines lines = Printed();
    // 7 lines of head; rows while the counter is at most 92: 86 rows.
    ASSERT_EQ(PageCount(lines), 2);
    EXPECT_EQ(PageOf(lines, 1).size(), 93U);
    EXPECT_EQ(Trim(PageOf(lines, 2).at(1)), "Error Report For, continued");
    EXPECT_EQ(PageOf(lines, 2).size(), 7U + 14);
}

TEST_F(ErrorReportTest, TheTimeOfItsHeadIsTheProgramsClock) {
    AddErrorRow("Potential Error", "2000S", "Something");
    SetClock(DateTime(2024, 2, 1, 9, 15, 0));
    const Lines lines = Printed();
    ResetClock();
    EXPECT_EQ(Trim(PageOf(lines, 1).at(3)), "February 1, 2024 at 09:15 AM");
}

TEST_F(ErrorReportTest, ItIsSentToThePrinter) {
    FakePrinter printer;
    host.PrinterDevice = &printer;
    AddErrorRow("Potential Error", "2000S", "Something");
    Printed();
    EXPECT_EQ(printer.Lines().size(), 8U);
}

}  // namespace
}  // namespace zolmara::test
