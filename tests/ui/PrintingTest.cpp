#include <QAction>
#include <QFile>
#include <QListWidget>
#include <QPrinter>
#include <fstream>
#include <iterator>

#include "UiTest.h"
#include "core/Dialogs.h"
#include "core/Globals.h"
#include "print/PrintDriver.h"
#include "ui/dialogs/FileDialogs.h"
#include "ui/printing/PaintJobs.h"

namespace zolmara::ui {
namespace {

class Printing : public UiTest {
protected:
    Printing() { Start(); }
    void OpenNew() {
        Open(MakeCrf("One.CRF"));
        Boxes.clear();
    }
    void Check(const std::string& item) {
        auto* const list = Control<QListWidget>("frmSelectivePrints", "lstWorksheets");
        for (int row = 0; row < list->count(); ++row)
            if (ItemOfEntry(S(list->item(row)->text())) == item)
                return list->item(row)->setCheckState(Qt::Checked);
        ADD_FAILURE() << item << " is not in the list";
    }
};

std::string FileText(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

int CountOf(const std::string& text, const std::string& what) {
    int count = 0;
    for (auto at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) ++count;
    return count;
}

TEST_F(Printing, TheWholeFormIsOneJobWithThePagesOfThePrintFile) {
    OpenNew();
    Trigger("mnuReportPrint");
    ASSERT_EQ(Jobs.size(), 1U);
    const std::string text = FileText(WholePrintFile());
    EXPECT_EQ(static_cast<int>(Jobs[0].Pages.size()), CountOf(text, "\f"));
    EXPECT_GT(Jobs[0].Pages.size(), 20U);
    EXPECT_EQ(Jobs[0].FontSize, 7);
    EXPECT_TRUE(Jobs[0].Bold);
    EXPECT_TRUE(Jobs[0].HighQuality);
    int landscape = 0;
    std::size_t lines = 0;
    for (const PrintedPage& page : Jobs[0].Pages) {
        landscape += page.Orientation == 2;
        lines += page.Lines.size();
    }
    EXPECT_GT(landscape, 0);
    EXPECT_LT(landscape, static_cast<int>(Jobs[0].Pages.size()));
    EXPECT_EQ(static_cast<int>(lines), CountOf(text, "\r\n"));
    EXPECT_FALSE(main->InLongStep());
}

TEST_F(Printing, PagesGoOnPaperInTheirOwnOrientation) {
    const std::vector<PrintJob> jobs = {
        {"", 7, true, false, {{1, {"portrait"}}, {2, {"landscape", "x"}}, {2, {"landscape"}}}}};
    QPrinter printer;
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setPageSize(QPageSize(QPageSize::Letter));
    printer.setOutputFileName(Q(folder.File("form.pdf")));
    EXPECT_TRUE(PaintJobs(jobs, printer));
    const std::string pdf = FileText(folder.File("form.pdf"));
    EXPECT_EQ(CountOf(pdf, "/Type /Page\n"), 3);
    EXPECT_EQ(CountOf(pdf, "/MediaBox [0 0 612"), 1);
    EXPECT_EQ(CountOf(pdf, "/MediaBox [0 0 792"), 2);
}

TEST_F(Printing, NothingIsPaintedWithoutPages) {
    QPrinter printer;
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(Q(folder.File("form.pdf")));
    EXPECT_FALSE(PaintJobs({}, printer));
}

TEST_F(Printing, APageTakesWhatAReportPutsOnIt) {
    EXPECT_GE(PageLines(1, 7), 92);
    EXPECT_GE(PageLines(2, 7), 70);
    EXPECT_LT(PageLines(2, 9.5), 70);
}

TEST_F(Printing, AFullPageIsFollowedByAnother) {
    QtPageDevice device;
    device.SetFontSize(7);
    for (int line = 0; line <= PageLines(1, 7); ++line) device.Print("line");
    device.EndDoc();
    const auto jobs = device.TakeJobs();
    ASSERT_EQ(jobs.size(), 1U);
    ASSERT_EQ(jobs[0].Pages.size(), 2U);
    EXPECT_EQ(jobs[0].Pages[1].Lines.size(), 1U);
    EXPECT_TRUE(device.TakeJobs().empty());
}

TEST_F(Printing, AnOrientationTakesEffectWithTheNextPage) {
    QtPageDevice device;
    device.SetOrientation(2);
    device.Print("one");
    device.SetOrientation(1);
    device.NewPage();
    device.Print("two");
    device.EndDoc();
    const auto jobs = device.TakeJobs();
    EXPECT_EQ(jobs[0].Pages[0].Orientation, 2);
    EXPECT_EQ(jobs[0].Pages[1].Orientation, 1);
}

// --- frmSelectivePrints --------------------------------------------------------------------

TEST_F(Printing, TheListStandsInThePrintingOrder) {
    OpenNew();
    Trigger("mnuReportPrintSelect");
    auto* const list = Control<QListWidget>("frmSelectivePrints", "lstWorksheets");
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(Form("frmSelectivePrints")->windowTitle(), "Print Worksheets");
    std::vector<std::string> entries;
    for (int row = 0; row < list->count(); ++row) entries.push_back(S(list->item(row)->text()));
    EXPECT_EQ(entries, SelectivePrintList());
    EXPECT_EQ(entries.front(), "S  Part-1 (Sp1)");
    Click("frmSelectivePrints", "cmdSelectAll");
    for (int row = 0; row < list->count(); ++row)
        EXPECT_EQ(list->item(row)->checkState(), Qt::Checked);
    Click("frmSelectivePrints", "cmdClearAll");
    for (int row = 0; row < list->count(); ++row)
        EXPECT_EQ(list->item(row)->checkState(), Qt::Unchecked);
    Click("frmSelectivePrints", "cmdPrint");
    EXPECT_TRUE(Jobs.empty());
    Click("frmSelectivePrints", "cmdClose");
    EXPECT_EQ(FindForm("frmSelectivePrints"), nullptr);
}

TEST_F(Printing, PartsOfOneReportArePrintedOnce) {
    OpenNew();
    Trigger("mnuReportPrintSelect");
    Check("S1p1");
    Check("S1p2");
    Check("A");
    Click("frmSelectivePrints", "cmdPrint");
    EXPECT_EQ(Jobs.size(), 2U);
    EXPECT_TRUE(Form("frmSelectivePrints")->isEnabled());
}

TEST_F(Printing, AFailedReportIsToldAndTheWindowComesBack) {
    OpenNew();
    Trigger("mnuReportPrintSelect");
    Check("G");
    gDB.DeleteTable("G");
    Click("frmSelectivePrints", "cmdPrint");
    ASSERT_EQ(Boxes.size(), 1U);
    EXPECT_EQ(Boxes[0].Style, kCritical);
    EXPECT_TRUE(Form("frmSelectivePrints")->isEnabled());
}

// --- The printer ---------------------------------------------------------------------------

TEST_F(Printing, PrinterSetupStandsWithoutTheWelcomeFrame) {
    Trigger("mnuReportPrinterSetup");
    EXPECT_EQ(PrinterDialogs, std::vector<std::string>{"Printer Setup"});
    EXPECT_TRUE(Visible("fraWelcome"));
}

TEST_F(Printing, HighQualityIsTurnedOffForTheSession) {
    OpenNew();
    Trigger("mnuReportUtilitiesHQ");
    EXPECT_EQ(main->Menu("mnuReportUtilitiesHQ")->text(), "Turn High Quality Printing On");
    EXPECT_EQ(host->GetSetting("Zolmara", "Printing", "PrintQuality", ""), "False");
    EXPECT_EQ(host->GetSetting("Zolmara-10", "Printing", "PrintQuality", "True"), "True");
    Trigger("mnuReportUtilitiesHQ");
    EXPECT_EQ(main->Menu("mnuReportUtilitiesHQ")->text(), "Turn High Quality Printing Off");
}

// --- File dialogs --------------------------------------------------------------------------

TEST(FileDialogs, ThePatternOfTheNameIsWhatTheDialogBeginsWith) {
    FileDialog dialog;
    dialog.FileName = "/home/me/*.CRF";
    dialog.Filter = "All Files (*.*)|*.*|Text Files (*.txt)|*.txt|EQ Logs (eq*.txt)|eq*.bat";
    dialog.FilterIndex = 2;
    EXPECT_EQ(NameFilters(dialog),
              (QStringList{"*.CRF (*.CRF *.crf)", "All Files (*)", "Text Files (*.txt *.TXT)",
                           "EQ Logs (eq*.txt) (eq*.bat EQ*.BAT)"}));
    EXPECT_EQ(FirstFilter(dialog), "*.CRF (*.CRF *.crf)");
}

TEST(FileDialogs, AFilterThatHasThePatternIsEnough) {
    FileDialog dialog;
    dialog.FileName = "/home/me/*.CRF";
    dialog.Filter = "Cost Report Files (*.CRF)|*.CRF";
    EXPECT_EQ(NameFilters(dialog), QStringList{"Cost Report Files (*.CRF *.crf)"});
    EXPECT_EQ(FirstFilter(dialog), "Cost Report Files (*.CRF *.crf)");
}

}  // namespace
}  // namespace zolmara::ui
