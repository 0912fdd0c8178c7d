#include "print/PrintPage.h"
#include "print/PrintSupport.h"

namespace zolmara::test {
namespace {

class PrintPageTest : public CoreCrf {
protected:
    PrintPageTest() {
        gTitlePrefix = "Velquist - ";
        host.Clock = DateTime(2024, 2, 1, 10, 30, 5);
    }

    /// What a step writes into a file of its own.
    template <class Step>
    std::vector<std::string> Written(const Step& step) {
        const std::string path = folder.File("page.prt");
        const FileNumber file = OpenPrintFile(path);
        run.File = file;
        run.gPageOrientDone = 0;
        step(run);
        ClosePrintFile(file);
        return PrintedLines(path);
    }

    std::vector<std::string> Head(std::string_view label) {
        return Written([&](PrintRun& open) { PrintPageHeader(open, label, page, used); });
    }

    PrintRun run;
    std::int16_t page = 0;
    std::int16_t used = 0;
};

std::string At(int column, std::string_view text) {
    return std::string(static_cast<std::size_t>(column - 1), ' ').append(text);
}

TEST_F(PrintPageTest, LandscapeGeometry) {
    run.SetPageLandscape();
    EXPECT_EQ(run.gPageOrient, 2);
    EXPECT_EQ(run.gPageWidth, 176);
    EXPECT_EQ(run.gPageCenter, 88);
    EXPECT_EQ(run.gPageLines, 70);
}

TEST_F(PrintPageTest, PortraitGeometry) {
    run.SetPagePortrait();
    EXPECT_EQ(run.gPageOrient, 1);
    EXPECT_EQ(run.gPageWidth, 137);
    EXPECT_EQ(run.gPageCenter, 69);
    EXPECT_EQ(run.gPageLines, 92);
}

TEST_F(PrintPageTest, HeadLineByLine) {
    run.SetPageLandscape();
    const std::vector<std::string> head = Head("S-1 Part I");
    const std::string title = "Velquist -  Zolmara 287 System [Version: " + gVersion + "]";
    ASSERT_EQ(head.size(), 10U);
    EXPECT_EQ(head[0], "==== page, landscape");
    EXPECT_EQ(Trim(head[1]), title);
    EXPECT_EQ(head[2], At(88 - 13, "In lieu of Form CMS-287-22"));
    EXPECT_EQ(head[3], "");
    EXPECT_EQ(head[4], At(88 - 9, "SAMPLE HOME OFFICE"));
    EXPECT_EQ(head[5], At(88 - 10, "Provider CCN: 12-3456"));
    EXPECT_EQ(head[6], At(88 - 18, "Period from  10/1/2022  to  9/30/2023"));
    EXPECT_EQ(head[7], "");
    EXPECT_EQ(Trim(head[8]),
              "Worksheet S-1 Part I        Thursday, February 1, 2024 at 10:30:05 AM");
    EXPECT_EQ(head[9], "");
    EXPECT_EQ(used, 10);
    EXPECT_EQ(page, 1);
}

TEST_F(PrintPageTest, TheLabelSAloneBringsTheFormsApproval) {
    run.SetPagePortrait();
    const std::vector<std::string> head = Head("S");
    ASSERT_EQ(head.size(), 10U);
    EXPECT_EQ(head[4].substr(109), "Form Approved");
    EXPECT_EQ(head[5].substr(109), "OMB No. 0938-0202");
    EXPECT_EQ(head[6].substr(109), "Approval Expires 11-30-2024");
    for (const std::string_view label : {"S-1 Part I", "s", "S-2", ""}) {
        EXPECT_TRUE(LinesWith(Head(label), "Form Approved").empty()) << label;
    }
}

TEST_F(PrintPageTest, HeaderLinesStandInTheHeadAndBlankOnesTakeNoPlace) {
    run.SetPageLandscape();
    gDB.Execute("UPDATE HeaderLines SET LineText='Draft for review' WHERE LineNum=1;");
    gDB.Execute("UPDATE HeaderLines SET LineText='' WHERE LineNum=2;");
    gDB.Execute("UPDATE HeaderLines SET LineText='Page foot' WHERE LineNum=3;");
    const std::vector<std::string> head = Head("A");
    ASSERT_EQ(head.size(), 12U);
    EXPECT_EQ(head[7], At(88 - 8, "Draft for review"));
    EXPECT_EQ(Trim(head[8]), "Page foot");
    EXPECT_EQ(head[9], "");
    EXPECT_EQ(used, 12);
}

TEST_F(PrintPageTest, HeaderLinesOfAReportAreThoseOfItsFirstPageAndTheNextReportReadsThem) {
    run.SetPageLandscape();
    const auto first = "UPDATE HeaderLines SET LineText='First' WHERE LineNum=1;";
    const auto second = "UPDATE HeaderLines SET LineText='Second' WHERE LineNum=1;";
    gDB.Execute(first);
    EXPECT_EQ(Trim(Head("A").at(7)), "First");
    gDB.Execute(second);
    EXPECT_EQ(Trim(Head("A").at(7)), "First");
    page = 0;
    EXPECT_EQ(Trim(Head("A").at(7)), "Second");
}

TEST_F(PrintPageTest, AnEmptyHeaderLinesTableLeavesTheHeadWithTenLines) {
    gDB.Execute("DELETE * FROM HeaderLines;");
    run.SetPageLandscape();
    EXPECT_EQ(Head("A").size(), 10U);
    EXPECT_EQ(used, 10);
}

TEST_F(PrintPageTest, AHeaderLineThatIsWiderThanThePageBeginsAtTheMargin) {
    run.SetPagePortrait();
    const std::string wide(140, 'x');
    gDB.Execute("UPDATE HeaderLines SET LineText=? WHERE LineNum=1;", {wide});
    EXPECT_EQ(Head("A-7").at(7), wide);
}

TEST_F(PrintPageTest, AMissingHeaderLinesTableIsMade) {
    gDB.DeleteTable("HeaderLines");
    run.SetPageLandscape();
    EXPECT_EQ(Head("A").size(), 10U);
    EXPECT_EQ(Rows("HeaderLines"), 3);
}

TEST_F(PrintPageTest, TheSecondPageIsContinuedAndSaysNoOrientation) {
    run.SetPageLandscape();
    const std::vector<std::string> heads = Written([&](PrintRun& open) {
        PrintPageHeader(open, "A", page, used);
        PrintPageHeader(open, "A", page, used);
    });
    EXPECT_EQ(page, 2);
    EXPECT_EQ(used, 10);
    EXPECT_EQ(heads.at(10), "==== page");
    EXPECT_EQ(Trim(heads.at(12)), "In lieu of Form CMS-287-22, continued");
}

TEST_F(PrintPageTest, AChangeOfOrientationShowsOnlyWhereItDiffersFromTheLastOne) {
    const std::vector<std::string> pages = Written([&](PrintRun& open) {
        open.SetPagePortrait();
        StartPage(open);
        StartPage(open);
        open.SetPageLandscape();
        StartPage(open);
        open.SetPagePortrait();
        open.SetPageLandscape();
        StartPage(open);
        open.SetPagePortrait();
        StartPage(open);
    });
    EXPECT_EQ(pages,
              (std::vector<std::string>{"==== page, portrait", "==== page", "==== page, landscape",
                                        "==== page", "==== page, portrait"}));
}

TEST_F(PrintPageTest, ANullPeriodIsEmpty) {
    run.SetPageLandscape();
    gFYStart = Variant();
    gFYEnd = Variant();
    EXPECT_EQ(Trim(Head("A").at(6)), "Period from    to");
}

TEST_F(PrintPageTest, CenteredRoundsTheHalfOfTheLengthToTheNearest) {
    run.SetPageLandscape();
    // (4 - 0.5) / 2 is 1.75 and (5 - 0.5) / 2 is 2.25: both are 2.
    EXPECT_EQ(CenteredColumn("abcd", run), 86);
    EXPECT_EQ(CenteredColumn("abcde", run), 86);
    EXPECT_EQ(CenteredColumn("abcdef", run, 50), 47);
    EXPECT_EQ(CenteredColumn("a", run, -1), 88);
}

TEST_F(PrintPageTest, CenteredWritesALineOfItsOwn) {
    run.SetPageLandscape();
    EXPECT_EQ(Written([](const PrintRun& open) { PrintCentered("abcd", open, 10); }),
              (std::vector<std::string>{At(8, "abcd")}));
}

TEST_F(PrintPageTest, WrappedWritesEachPieceAtItsColumn) {
    std::int16_t lines = 0;
    const auto written = Written(
        [&](const PrintRun& open) { lines = PrintWrapped(open.File, 3, 7, "one two three"); });
    EXPECT_EQ(lines, 2);
    EXPECT_EQ(written, (std::vector<std::string>{"  one two", "  three"}));
}

TEST_F(PrintPageTest, WrappedWithFileZeroCountsAndWritesNothing) {
    EXPECT_EQ(PrintWrapped(0, 1, 7, "one two three"), 2);
    EXPECT_EQ(PrintWrapped(-1, 1, 7, ""), 0);
}

TEST_F(PrintPageTest, RunOnCutsAtTheLastBlankAndGivesWhatIsLeft) {
    std::string rest;
    used = 5;
    const auto written = Written([&](const PrintRun& open) {
        rest = PrintRunOn(open.File, 2, "one two three four", 9, used);
    });
    EXPECT_EQ(written, (std::vector<std::string>{" one two", " three"}));
    EXPECT_EQ(rest, "four");
    EXPECT_EQ(used, 7);
}

TEST_F(PrintPageTest, RunOnWithoutBlanksCutsAtAPointThenABracketThenAtTheWidth) {
    std::string rest;
    const auto written = Written([&](const PrintRun& open) {
        rest = PrintRunOn(open.File, 1, "ab.c)d.efghij", 6, used);
        rest = PrintRunOn(open.File, 1, "ab)cd)efghij", 7, used);
        rest = PrintRunOn(open.File, 1, "abcdefghij", 4, used);
    });
    EXPECT_EQ(written, (std::vector<std::string>{"ab.", "c)d.", "ab)cd)", "abcd", "efgh"}));
    EXPECT_EQ(rest, "ij");
}

TEST_F(PrintPageTest, RunOnGivesAShortTextBackAndWritesNothing) {
    std::string rest;
    const auto written =
        Written([&](const PrintRun& open) { rest = PrintRunOn(open.File, 1, "short", 9, used); });
    EXPECT_TRUE(written.empty());
    EXPECT_EQ(rest, "short");
    EXPECT_EQ(used, 0);
}

}  // namespace
}  // namespace zolmara::test
