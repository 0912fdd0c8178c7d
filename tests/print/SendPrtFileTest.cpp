#include "core/Dialogs.h"
#include "core/Status.h"
#include "print/PrintPage.h"
#include "print/PrintSupport.h"
#include "print/SendPrtFile.h"
#include "store/Files.h"

namespace zolmara::test {
namespace {

using Calls = std::vector<std::string>;

class SendPrtFileTest : public SessionTest {
protected:
    SendPrtFileTest() {
        host.PrinterDevice = &printer;
        host.Settings["Zolmara-10/Printing/PrintQuality"] = "False";
    }

    std::int16_t Send(std::string_view text, std::int16_t orientation = kPortrait,
                      std::string_view name = "a.prt") {
        WriteWholeFile(folder.File(name), std::string(text));
        return SendPrtFile(folder.File(name), orientation, run);
    }

    FakePrinter printer;
    PrintRun run;
};

TEST_F(SendPrtFileTest, SetsUpThePrinterAndPrintsLineByLine) {
    EXPECT_EQ(Send("one\r\n\r\ntwo\r\n"), 0);
    EXPECT_EQ(printer.Calls, (Calls{"Orientation 1", "Size 7", "Bold", "Line one", "Line ",
                                    "Line two", "EndDoc"}));
}

TEST_F(SendPrtFileTest, TheFirstPageDoesNotStartWithABlankSheet) {
    Send("\f\x02\r\none\r\n\f\r\ntwo\r\n");
    EXPECT_EQ(printer.Calls, (Calls{"Orientation 1", "Size 7", "Bold", "Orientation 2", "Line ",
                                    "Line one", "NewPage", "Line ", "Line two", "EndDoc"}));
}

TEST_F(SendPrtFileTest, PortraitAndLandscapeReportsInOneFileEachKeepTheirOrientation) {
    Send("\f\x02\r\nA\r\n\f\x01\r\nG\r\n\f\x02\r\nB\r\n");
    EXPECT_EQ(printer.Calls, (Calls{"Orientation 1", "Size 7", "Bold", "Orientation 2", "Line ",
                                    "Line A", "NewPage", "Orientation 1", "Line ", "Line G",
                                    "NewPage", "Orientation 2", "Line ", "Line B", "EndDoc"}));
}

TEST_F(SendPrtFileTest, EachOfSeveralFormFeedsTakesEffectAndTheRestOfTheLineIsPrinted) {
    Send("one\r\n\f\f\x02\f\x01two\r\n");
    EXPECT_EQ(printer.Calls,
              (Calls{"Orientation 1", "Size 7", "Bold", "Line one", "NewPage", "NewPage",
                     "Orientation 2", "NewPage", "Orientation 1", "Line two", "EndDoc"}));
}

TEST_F(SendPrtFileTest, AFormFeedBeforeAnythingElseIsANewPageAndNothingIsLost) {
    Send("one\r\n\fxyz\r\n");
    EXPECT_EQ(printer.Lines(), (Calls{"one", "xyz"}));
}

TEST_F(SendPrtFileTest, WithoutAPrinterNothingIsPrinted) {
    run.gPageOrientDone = 2;
    printer.OrientationNow = 0;
    EXPECT_EQ(Send("one\r\n"), 1);
    EXPECT_TRUE(printer.Calls.empty());
    host.PrinterDevice = nullptr;
    EXPECT_EQ(Send("one\r\n"), 1);
    EXPECT_EQ(run.gPageOrientDone, 2);
}

TEST_F(SendPrtFileTest, AFileThatCannotBeOpenedIsTwo) {
    EXPECT_EQ(SendPrtFile(folder.File("none.prt"), 1, run), 2);
    EXPECT_TRUE(printer.Calls.empty());
    EXPECT_TRUE(host.Boxes.empty());
}

TEST_F(SendPrtFileTest, WithoutAnOrientationItTakesThatOfTheReport) {
    run.SetPageLandscape();
    Send("one\r\n", 0);
    EXPECT_EQ(printer.Calls.at(0), "Orientation 2");
}

TEST_F(SendPrtFileTest, APrinterWithAnotherFontTakesTheFirstCourierNewOfItsList) {
    printer.FontNow = "Arial";
    printer.Fonts = {"Arial", "Courier", "courier new cyr", "Courier New"};
    Send("one\r\n");
    EXPECT_EQ(printer.Calls.at(0), "Font courier new cyr");
}

TEST_F(SendPrtFileTest, APrinterWithoutCourierNewKeepsItsFontAndPrintsAllTheSame) {
    printer.FontNow = "Arial";
    printer.Fonts = {"Arial"};
    EXPECT_EQ(Send("one\r\n"), 0);
    EXPECT_EQ(printer.FontNow, "Arial");
    EXPECT_EQ(printer.Lines(), Calls{"one"});
}

TEST_F(SendPrtFileTest, HighQualityIsTheDefaultAndSetsThePrinter) {
    host.Settings.clear();
    Send("");
    EXPECT_EQ(printer.Calls, (Calls{"Orientation 1", "Size 7", "Quality -4", "Bold", "EndDoc"}));
}

TEST_F(SendPrtFileTest, TheMenuOfHighQualityTellsWhatAClickDoes) {
    host.Settings.clear();
    EXPECT_EQ(HighQualityCaption(), "Turn High Quality Printing Off");
    host.Settings["Zolmara-10/Printing/PrintQuality"] = "False";
    EXPECT_EQ(HighQualityCaption(), "Turn High Quality Printing On");
    SetHighQualityPrinting(true);
    EXPECT_TRUE(HighQualityPrinting());
    EXPECT_EQ(host.Settings.at("Zolmara-10/Printing/PrintQuality"), "True");
}

TEST_F(SendPrtFileTest, TurningHighQualityOffIsWrittenWhereNothingReadsIt) {
    host.Settings.clear();
    SetHighQualityPrinting(false);
    EXPECT_EQ(host.Settings.at("Zolmara/Printing/PrintQuality"), "False");
    EXPECT_EQ(host.Settings.count("Zolmara-10/Printing/PrintQuality"), 0u);
    EXPECT_TRUE(HighQualityPrinting());
}

TEST_F(SendPrtFileTest, AListingIsPrintedLarger) {
    Send("one\r\n", kPortrait, "a.LST");
    EXPECT_EQ(printer.Calls,
              (Calls{"Orientation 1", "Size 7", "Bold", "Size 9.5", "Line one", "EndDoc"}));
}

TEST_F(SendPrtFileTest, DebugAsksAndTheDefaultIsNo) {
    gDebug = true;
    EXPECT_EQ(Send("one\r\n"), 0);
    EXPECT_TRUE(printer.Calls.empty());
    ASSERT_EQ(host.Boxes.size(), 1U);
    EXPECT_EQ(host.Boxes[0].Text, "Print " + folder.File("a.prt") + "?");
    EXPECT_EQ(host.Boxes[0].Style, kYesNo + kDefaultButton2);
    host.Answers = {kYes};
    EXPECT_EQ(Send("one\r\n"), 0);
    EXPECT_EQ(printer.Lines(), Calls{"one"});
}

TEST_F(SendPrtFileTest, AnErrorOfThePrinterIsShownAndWhatWasPrintedStays) {
    printer.FailAt = "two";
    EXPECT_EQ(Send("one\r\ntwo\r\nthree\r\n"), 0);
    EXPECT_EQ(printer.Lines(), Calls{"one"});
    ASSERT_EQ(host.Boxes.size(), 1U);
    EXPECT_EQ(host.Boxes[0].Title, "Printing Error");
    EXPECT_EQ(host.Boxes[0].Text, "The following error occurred during print of document:\r\n" +
                                      folder.File("a.prt") + "\r\nOut of paper.");
    EXPECT_EQ(host.PointerNow, Pointer::Normal);
}

TEST_F(SendPrtFileTest, TheNextReportSaysItsOrientationAnew) {
    run.gPageOrientDone = 2;
    Send("one\r\n");
    EXPECT_EQ(run.gPageOrientDone, 0);
    EXPECT_EQ(host.Events, (Calls{"SetPointer: Hourglass", "SetPointer: Normal"}));
}

TEST_F(SendPrtFileTest, AnEmptyFileIsAnEmptyDocument) {
    EXPECT_EQ(Send(""), 0);
    EXPECT_EQ(printer.Calls.back(), "EndDoc");
    EXPECT_TRUE(printer.Lines().empty());
}

TEST_F(SendPrtFileTest, TheFilesCodePageIs1252) {
    Send("Gr\xfcn \x80\r\n");
    EXPECT_EQ(printer.Lines(), Calls{"Gr\u00fcn \u20ac"});
}

}  // namespace
}  // namespace zolmara::test
