#include <fmt/format.h>

#include <algorithm>
#include <filesystem>

#include "core/Status.h"
#include "print/PrintDriver.h"
#include "print/PrintPage.h"
#include "print/PrintSupport.h"
#include "store/Files.h"
#include "store/RunStopped.h"
#include "structure/modAddS2.h"

namespace zolmara::test {
namespace {

using Lines = std::vector<std::string>;

class PrintDriverTest : public TestCrf {
protected:
    PrintDriverTest() { host.PrinterDevice = &printer; }

    /// The worksheets of a print file in their order, each once where it follows itself.
    static Lines Labels(const Lines& lines) {
        Lines labels;
        for (const std::string& line : LinesWith(lines, "Worksheet ")) {
            const std::string_view text = Trim(line);
            const std::string label(text.substr(10, text.find("   ") - 10));
            if (labels.empty() || labels.back() != label) labels.push_back(label);
        }
        return labels;
    }
    int Jobs() const { return static_cast<int>(std::ranges::count(printer.Calls, "EndDoc")); }
    Lines PrintFiles() const {
        Lines names;
        for (const auto& entry : std::filesystem::directory_iterator(folder.Path()))
            if (entry.path().extension() != ".CRF") names.push_back(entry.path().filename());
        std::ranges::sort(names);
        return names;
    }

    FakePrinter printer;
    PrintRun run;
};

// --- Print_Worksheet -----------------------------------------------------------------------

TEST_F(PrintDriverTest, AskingWhetherThereIsAReportPrintsNothing) {
    EXPECT_TRUE(Print_Worksheet("Bp2", run, false));
    EXPECT_TRUE(PrintFiles().empty());
    EXPECT_TRUE(printer.Calls.empty());
}

TEST_F(PrintDriverTest, OtherNamesHaveNoReport) {
    for (const std::string_view item : {"A81p2", "A82", "Bp4", "H", "S3p1", "Worksheets", "", "B"})
        EXPECT_FALSE(Print_Worksheet(item, run, false)) << item;
}

TEST_F(PrintDriverTest, EveryWorksheetOfTheFormHasAReportButTheSecondPartOfA81) {
    for (const char* item : {"A",    "A6",   "A7p1", "A7p2", "A8",   "A81p1", "Bp1",  "B1p3",
                             "Cp2",  "C1p1", "Dp3",  "D1p2", "E",    "E1p1",  "Fp1",  "F1p2",
                             "F2p3", "G",    "G1",   "Sp1",  "S1p1", "S1p2",  "S2p1", "S2p3"})
        EXPECT_TRUE(Print_Worksheet(item, run, false)) << item;
}

TEST_F(PrintDriverTest, APartPrintsTheWholeReportIntoItsFile) {
    EXPECT_TRUE(Print_Worksheet("A7p2", run, true));
    EXPECT_EQ(PrintFiles(), Lines{"A7.prt"});
    EXPECT_EQ(PageCount(PrintedLines(folder.File("A7.prt"))), 2);
    EXPECT_EQ(PrintFileOf("A7p2"), folder.File("A7.prt"));
    EXPECT_EQ(PrintFileOf("B1p2"), folder.File("B1p2.prt"));
    EXPECT_EQ(PrintFileOf("A82"), "");
    EXPECT_GT(host.DoEventsCount, 0);
}

// --- Print_All -----------------------------------------------------------------------------

// A page in between, another program saves a change.
TEST_F(PrintDriverTest, APrintOfTwoStatesIsNotPutInPlace) {
    Database other = DBEngine::OpenDatabase(gCRFPath);
    bool done = false;
    host.OnDoEvents = [&] {
        if (!std::exchange(done, true)) other.Execute("UPDATE A SET Col_1=12 WHERE LineNum=9;");
    };
    EXPECT_THROW(Print_All(0), StoreError);
    EXPECT_TRUE(done);
    EXPECT_EQ(PrintFiles(), Lines{});
    EXPECT_EQ(Jobs(), 0);
    Print_All(0);
    EXPECT_EQ(PrintFiles().size(), 1u);
}

TEST_F(PrintDriverTest, TheWholeFormIsOneFileAndOneJobWithSFirst) {
    Print_All(0);
    EXPECT_EQ(PrintFiles(), Lines{"12-3456.PRT"});
    EXPECT_EQ(Jobs(), 1);
    // S-2 and the third parts of a new CRF have no rows to print but their totals.
    const Lines labels = Labels(PrintedLines(WholePrintFile()));
    const Lines expected = {"S",           "S-1 Part I",   "S-1 Part II",
                            "A",           "A-6",          "A-7",
                            "A-8",         "A-8-1",        "B Part I",
                            "B Part II",   "B Part III",   "B-1 Part I",
                            "B-1 Part II", "B-1 Part III", "C Part I",
                            "C Part II",   "C Part III",   "C-1 Part I",
                            "C-1 Part II", "C-1 Part III", "D Part I",
                            "D Part II",   "D Part III",   "D-1 Part I",
                            "D-1 Part II", "D-1 Part III", "E",
                            "E-1 Part I",  "E-1 Part II",  "E-1 Part III",
                            "F Part I",    "F Part II",    "F Part III",
                            "F-1 Part I",  "F-1 Part II",  "F-1 Part III",
                            "F-2 Part I",  "F-2 Part II",  "F-2 Part III",
                            "G",           "G-1"};
    EXPECT_EQ(labels, expected);
}

TEST_F(PrintDriverTest, S2FollowsS1AndA7StandsOnce) {
    AddS2Line(Currency::FromWhole(1), 2);
    RenameS2Line(Currency::FromWhole(1), 2, "Foundation", "");
    Print_All(0);
    const Lines lines = PrintedLines(WholePrintFile());
    const Lines labels = Labels(lines);
    EXPECT_EQ(labels.at(3), "S-2 Part II");
    EXPECT_EQ(LinesWith(lines, "Part I Analysis of changes").size(), 1U);
    EXPECT_EQ(LinesWith(lines, "LISTING OF COMPONENTS").size(), 1U);
    EXPECT_EQ(LinesWith(lines, "KEY OFFICER DATA").size(), 1U);
}

TEST_F(PrintDriverTest, BothOrientationsStandInOneFile) {
    Print_All(0);
    const Lines lines = PrintedLines(WholePrintFile());
    EXPECT_EQ(lines.at(0), "==== page, portrait");
    // S; S-1; A, A-6 stay landscape; A-8-1 to F-2; G, G-1.
    EXPECT_EQ(LinesWith(lines, "==== page, landscape").size(), 2U);
    EXPECT_EQ(LinesWith(lines, "==== page, portrait").size(), 3U);
}

TEST_F(PrintDriverTest, TheStatusNamesEachWorksheetAndTheEnd) {
    Print_All(0);
    const Lines& events = host.Events;
    const int first = host.IndexOf("ShowCalcMsg:  Printing Worksheet: S  Part-1");
    EXPECT_EQ(events.at(0), "SetPointer: Hourglass");
    ASSERT_GE(first, 0);
    EXPECT_LT(first, host.IndexOf("ShowCalcMsg:  Printing Worksheet: A"));
    EXPECT_GE(host.IndexOf("ShowCalcMsg:  Print Entire CRF completed."), 0);
    EXPECT_EQ(events.back(), "HideCalcMsg");
    EXPECT_EQ(host.PointerNow, Pointer::Normal);
    EXPECT_EQ(gLogType, "");
}

TEST_F(PrintDriverTest, TheLogOfTheFormerPrintingGoesAndOthersStay) {
    gDB.Execute("INSERT INTO Log (LogType,Message) VALUES ('P','old');");
    gDB.Execute("INSERT INTO Log (LogType,Message) VALUES ('C','calc');");
    Print_All(0);
    EXPECT_EQ(gDB.Scalar("SELECT Count(*) FROM Log WHERE LogType='P';"), Variant(0));
    EXPECT_EQ(gDB.Scalar("SELECT Count(*) FROM Log WHERE LogType='C';"), Variant(1));
}

TEST_F(PrintDriverTest, AnOpenFileIsWrittenAndNotClosedAndNotSent) {
    const FileNumber file = OpenPrintFile(folder.File("PI.txt"));
    Print_All(file);
    EXPECT_GE(host.IndexOf("ShowCalcMsg:  Printing completed."), 0);
    PrintLine(file, "behind it");
    ClosePrintFile(file);
    EXPECT_TRUE(printer.Calls.empty());
    EXPECT_EQ(PrintFiles(), Lines{"PI.txt"});
    EXPECT_EQ(PrintedLines(folder.File("PI.txt")).back(), "behind it");
    EXPECT_EQ(PrintedLines(folder.File("PI.txt")).at(0), "==== page, portrait");
}

TEST_F(PrintDriverTest, AWorksheetThatIsMissingStopsTheRunByNameAndLeavesNoFile) {
    gDB.DeleteTable("G");
    try {
        Print_All(0);
        FAIL() << "printed";
    } catch (const StoreError& error) {
        EXPECT_TRUE(std::string(error.what()).starts_with("G: ")) << error.what();
    }
    EXPECT_TRUE(PrintFiles().empty());
    EXPECT_EQ(host.PointerNow, Pointer::Normal);
    EXPECT_EQ(gLogType, "");
    Print_Worksheet("A6", run, true);
    EXPECT_EQ(PrintFiles(), Lines{"A6.prt"});
}

TEST_F(PrintDriverTest, AnEmptyTableWritesNoHeadAndNoRowsAndTheRunGoesOn) {
    for (const char* item : {"Sp1", "S1p2", "A6", "A7p1", "Cp2", "E", "G1"})
        gDB.Execute(fmt::format("DELETE * FROM {};", item));
    Print_All(0);
    const Lines lines = PrintedLines(WholePrintFile());
    const Lines labels = Labels(lines);
    for (const char* gone : {"S", "S-1 Part II", "A-6", "C Part II", "E", "G-1"})
        EXPECT_EQ(std::ranges::count(labels, gone), 0) << gone;
    EXPECT_EQ(labels.front(), "S-1 Part I");
    EXPECT_EQ(labels.back(), "G");
    EXPECT_EQ(LinesWith(lines, "Part I Analysis of changes").size(), 0U);
    EXPECT_EQ(LinesWith(lines, "Part II - Reconciliation").size(), 1U);
}

TEST_F(PrintDriverTest, AnEmptyTableOnItsOwnIsAnEmptyFile) {
    gDB.Execute("DELETE * FROM G1;");
    PrintSelected(std::vector<std::string>{"G-1 (G1)"});
    EXPECT_EQ(PrintFiles(), Lines{"G1.prt"});
    EXPECT_EQ(FileBytes(folder.File("G1.prt")), "");
}

TEST_F(PrintDriverTest, ATableThatHasLostSomeOfItsLinesStopsTheRunByName) {
    gDB.Execute("DELETE * FROM G1 WHERE LineNum>1;");
    try {
        PrintSelected(std::vector<std::string>{"G-1 (G1)"});
        FAIL() << "G-1 without its lines must not be printed";
    } catch (const RunStopped& stopped) {
        EXPECT_NE(std::string(stopped.what()).find("Worksheet G1 has no line 2"), std::string::npos)
            << stopped.what();
    }
}

TEST_F(PrintDriverTest, WithoutAPrinterTheRunGoesOnWithoutAMessage) {
    printer.OrientationNow = 0;
    Print_All(0);
    EXPECT_TRUE(host.Boxes.empty());
    EXPECT_EQ(PrintFiles(), Lines{"12-3456.PRT"});
}

TEST_F(PrintDriverTest, WithoutWorksheetsOfTheSFamilyEachOtherIsPrintedOnce) {
    gDB.Execute("DELETE * FROM Worksheets WHERE Left(Item,1)='S';");
    Print_All(0);
    const Lines labels = Labels(PrintedLines(WholePrintFile()));
    EXPECT_EQ(labels.front(), "A");
    EXPECT_EQ(std::ranges::count(labels, "G"), 1);
}

// --- The selective form --------------------------------------------------------------------

TEST_F(PrintDriverTest, TheListStandsInTheOrderOfPrintAll) {
    const Lines list = SelectivePrintList();
    ASSERT_EQ(list.size(), 45U);
    EXPECT_EQ(list.at(0), "S  Part-1 (Sp1)");
    EXPECT_EQ(list.at(1), "S-1  Part-1 (S1p1)");
    EXPECT_EQ(list.at(2), "S-1  Part-2 (S1p2)");
    EXPECT_EQ(list.at(5), "S-2  Part-3 (S2p3)");
    EXPECT_EQ(list.at(6), "A (A)");
    EXPECT_EQ(list.at(11), "A-81  Part-1 (A81p1)");
    EXPECT_EQ(list.at(12), "B  Part-1 (Bp1)");
    EXPECT_EQ(list.back(), "G-1 (G1)");
}

TEST_F(PrintDriverTest, TheItemOfAnEntryStandsInItsLastBrackets) {
    EXPECT_EQ(ItemOfEntry("B  Part-1 (Bp1)"), "Bp1");
    EXPECT_EQ(ItemOfEntry("A (old) (A)"), "A");
    EXPECT_EQ(ItemOfEntry("A"), "");
    EXPECT_EQ(ItemOfEntry("("), "");
}

TEST_F(PrintDriverTest, TwoPartsOfS2PrintItOnce) {
    gDB.Execute("INSERT INTO S2p1 (LineNum,Col_1) VALUES (1,'Hospital');");
    PrintSelected(Lines{"S-2  Part-1 (S2p1)", "S-2  Part-3 (S2p3)"});
    EXPECT_EQ(Jobs(), 1);
    EXPECT_EQ(PrintFiles(), Lines{"S2.prt"});
}

TEST_F(PrintDriverTest, TheSecondPartOfA7AlonePrintsBoth) {
    PrintSelected(Lines{"A-7  Part-2 (A7p2)"});
    EXPECT_EQ(PageCount(PrintedLines(folder.File("A7.prt"))), 2);
}

TEST_F(PrintDriverTest, EachEntryIsAJobOfItsOwn) {
    PrintSelected(Lines{"S-1  Part-1 (S1p1)", "S-1  Part-2 (S1p2)", "A (A)", "B  Part-2 (Bp2)"});
    EXPECT_EQ(Jobs(), 3);
    EXPECT_EQ(PrintFiles(), (Lines{"A.prt", "Bp2.prt", "S1.prt"}));
    EXPECT_EQ(gLogType, "");
    EXPECT_EQ(host.PointerNow, Pointer::Normal);
}

TEST_F(PrintDriverTest, EachFileSaysItsOrientationAlsoWithoutAPrinter) {
    host.PrinterDevice = nullptr;
    PrintSelected(Lines{"A (A)", "A-6 (A6)"});
    EXPECT_EQ(PrintedLines(folder.File("A.prt")).at(0), "==== page, landscape");
    EXPECT_EQ(PrintedLines(folder.File("A6.prt")).at(0), "==== page, landscape");
}

TEST_F(PrintDriverTest, NothingCheckedPrintsNothing) {
    PrintSelected(Lines{});
    EXPECT_TRUE(PrintFiles().empty());
    EXPECT_TRUE(printer.Calls.empty());
}

TEST_F(PrintDriverTest, TheFormsProgressGoesToItsEnd) {
    Print_All(0);
    EXPECT_EQ(host.Progress, 1);
}

/// At the first of its pauses or at the last.
TEST_F(PrintDriverTest, AFileThatIsClosedMeanwhileLeavesTheFormerPrint) {
    const std::string path = gCRFPath;
    const std::string print = WholePrintFile();
    int pauses = 0;
    host.OnDoEvents = [&] { ++pauses; };
    Print_All(0);
    const std::string former = FileBytes(print);
    for (const int last : {1, pauses}) {
        int pause = 0;
        host.OnDoEvents = [&] {
            if (++pause == last) gDB.Close();
        };
        try {
            Print_All(0);
            ADD_FAILURE() << last;
        } catch (const StoreError& error) {
            EXPECT_NE(std::string(error.what()).find("has been closed"), std::string::npos)
                << error.what();
        }
        EXPECT_EQ(pause, last);
        EXPECT_EQ(FileBytes(print), former);
        gDB = DBEngine::OpenDatabase(path);
    }
}

TEST_F(PrintDriverTest, AChangeOfAnotherProgramMeanwhileLeavesTheFormerPrint) {
    Print_All(0);
    const std::string former = FileBytes(WholePrintFile());
    bool changed = false;
    host.OnDoEvents = [&] {
        if (std::exchange(changed, true)) return;
        DBEngine::OpenDatabase(gCRFPath).Execute("UPDATE A SET Col_1=7 WHERE LineNum=8;");
    };
    try {
        Print_All(0);
        ADD_FAILURE();
    } catch (const StoreError& error) {
        EXPECT_EQ(std::string(error.what()),
                  "Another program changed the Cost Report File while it was printed. "
                  "Print it again.");
    }
    EXPECT_TRUE(FileBytes(WholePrintFile()) == former);
    EXPECT_EQ(PrintFiles(), Lines{"12-3456.PRT"});
    host.OnDoEvents = {};
    Print_All(0);
    EXPECT_FALSE(FileBytes(WholePrintFile()) == former);
}

}  // namespace
}  // namespace zolmara::test
