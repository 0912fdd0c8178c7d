// Worksheet S: the status, the certification, the signature and the seals.

#include <algorithm>

#include "print/PrintSupport.h"
#include "print/Reports.h"
#include "store/Files.h"

namespace zolmara::test {
namespace {

using Lines = std::vector<std::string>;

class Sp1ReportTest : public TestCrf {
protected:
    ~Sp1ReportTest() override { ECRStamp.clear(); }

    PrintRun run;

    Lines Page() const { return PrintedLines(folder.File("SS.prt")); }

    static void Sign() {
        gDB.Execute("Update Master Set ESFirstName=?,ESLastName=?,ESTitle=?,ESDate=?;",
                    {"Ana", "Moreno", "Controller", DateTime(2024, 2, 5, 14, 0, 0)});
    }
};

/// The lines from the one that begins with a text on.
Lines From(const Lines& lines, std::string_view start, std::size_t count) {
    const auto found = std::ranges::find_if(
        lines, [&](const std::string& line) { return line.starts_with(start); });
    if (found == lines.end()) return {};
    return {found, found + static_cast<std::ptrdiff_t>(count)};
}

TEST_F(Sp1ReportTest, ItIsPortraitWithTheFormsApproval) {
    Print_Sp1(run);
    const Lines lines = Page();
    EXPECT_EQ(lines.at(0), "==== page, portrait");
    EXPECT_EQ(LinesWith(lines, "OMB No. 0938-0202").size(), 1U);
    EXPECT_EQ(PageCount(lines), 1);
}

TEST_F(Sp1ReportTest, TheStatusShowsEachLine) {
    gDB.Execute("UPDATE Sp1 SET Col_1='06101' WHERE LineNum=9;");
    Print_Sp1(run);
    const Lines lines = Page();
    EXPECT_EQ(LinesWith(lines, "PART I - COST STATEMENT STATUS").size(), 1U);
    EXPECT_EQ(LinesWith(lines, "Contractor number").at(0),
              "  9    Contractor number" + std::string(55, ' ') + "06101");
    EXPECT_TRUE(LinesWith(lines, "Date and time of ECR file creation").empty());
}

TEST_F(Sp1ReportTest, TheStatementNamesTheHomeOfficeAndThePeriod) {
    Print_Sp1(run);
    std::string text;
    for (const std::string& line : Page()) text += line + " ";
    EXPECT_NE(
        text.find("prepared by Sample Home Office (12-3456) {home office name and number} for "
                  "the cost report period beginning October 1, 2022 and ending September 30, "
                  "2023 and that"),
        std::string::npos)
        << text;
    EXPECT_NE(text.find("MISREPRESENTATION OR FALSIFICATION"), std::string::npos);
    EXPECT_NE(text.find("According to the Paperwork reduction Act of 1995"), std::string::npos);
}

TEST_F(Sp1ReportTest, AnUnsignedBoxIsEmptyAndItsEntriesAreUnderlined) {
    Print_Sp1(run);
    const std::string rest(55, ' ');
    const std::string underline = "   " + std::string(38, '_');
    EXPECT_EQ(
        From(Page(), "  | SIGNATURE", 9),
        (Lines{
            "  | SIGNATURE OF CHIEF FINANCIAL OFFICER OR ADMINISTRATOR |  CHECKBOX |",
            "  |                           1                           |     2     |",
            "1 |" + rest +
                "|           |  I have read and agree with the above certification statement.",
            "  |" + rest + "|           |  I certify that I intend my electronic signature on this",
            "  |" + rest +
                "|           |  certification statement to be the legally binding equivalent",
            "  |" + rest + "|           |  of my original signature.",
            "2 |Printed name" + underline + "  |",
            "3 |Title       " + underline + "  |",
            "4 |Signature date " + std::string(38, '_') + "  |",
        }));
}

TEST_F(Sp1ReportTest, ASignedBoxHasTheNameTheMarkTheTitleAndTheDate) {
    Sign();
    Print_Sp1(run);
    const Lines lines = Page();
    EXPECT_EQ(LinesWith(lines, "I have read and agree").at(0).substr(0, 71),
              "1 | Ana Moreno" + std::string(44, ' ') + "|     Y     |");
    EXPECT_EQ(Trim(LinesWith(lines, "2 |Printed name").at(0).substr(18, 20)), "Ana Moreno");
    EXPECT_EQ(Trim(LinesWith(lines, "3 |Title").at(0).substr(18, 20)), "Controller");
    EXPECT_EQ(Trim(LinesWith(lines, "4 |Signature date").at(0).substr(18, 20)), "02/05/2024");
    EXPECT_TRUE(LinesWith(lines, "____").empty());
}

TEST_F(Sp1ReportTest, ANameOfFullLengthStaysInItsBox) {
    gDB.Execute("Update Master Set ESFirstName=?,ESLastName='B',ESTitle=?,ESDate=?;",
                {std::string(200, 'x'), std::string(255, 't'), DateTime(2024, 2, 5)});
    Print_Sp1(run);
    for (const std::string& line : From(Page(), "1 |", 10)) {
        EXPECT_EQ(line.substr(2, 1), "|") << line;
        EXPECT_EQ(line.substr(58, 1), "|") << line;
    }
}

TEST_F(Sp1ReportTest, WithoutAStampTheSealBoxIsEmpty) {
    Print_Sp1(run);
    const std::string dashes =
        std::string(19, ' ') + std::string(30, '-') + "     " + std::string(30, '-');
    EXPECT_EQ(From(Page(), dashes, 3),
              (Lines{dashes,
                     std::string(19, ' ') + "ECR Encryption Information:        PI Encryption "
                                            "Information:",
                     dashes}));
}

TEST_F(Sp1ReportTest, WithAStampItShowsBothSealsInThreeLinesEach) {
    ECRStamp = "02/05/2024 14:30";
    const std::string ecr = std::string(30, 'a') + std::string(30, 'b') + std::string(16, 'c');
    const std::string pi = std::string(30, 'd') + std::string(30, 'e') + std::string(16, 'f');
    Print_Sp1(run, true, ecr, "02/05/2024 14:31", pi);
    EXPECT_FALSE(FileExists(folder.File("SS.prt")));
    const Lines lines = PrintedLines(folder.File("Spx.prt"));
    EXPECT_EQ(LinesWith(lines, "Date and time of ECR file creation: 02/05/2024 14:30").size(), 1U);
    const std::string margin(19, ' ');
    const std::string gap(5, ' ');
    EXPECT_EQ(From(lines, margin + "02/05/2024 14:30", 5),
              (Lines{margin + "02/05/2024 14:30" + std::string(19, ' ') + "02/05/2024 14:31",
                     margin + std::string(30, 'a') + gap + std::string(30, 'd'),
                     margin + std::string(30, 'b') + gap + std::string(30, 'e'),
                     margin + std::string(16, 'c') + std::string(19, ' ') + std::string(16, 'f'),
                     margin + std::string(30, '-') + gap + std::string(30, '-')}));
}

TEST_F(Sp1ReportTest, MoreThanAPageContinues) {
    RunBatch(gDB, [] {
        for (int i = 0; i < 60; ++i)
            gDB.Execute("INSERT INTO Sp1 (LineNum,Description) VALUES (?,'Further');", {20 + i});
    });
    Print_Sp1(run);
    EXPECT_EQ(PageCount(Page()), 2);
    EXPECT_EQ(LinesWith(Page(), "OMB No. 0938-0202").size(), 2U);
}

}  // namespace
}  // namespace zolmara::test
