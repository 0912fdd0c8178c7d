#include <sys/resource.h>

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QListWidget>
#include <QPrinter>
#include <QPushButton>
#include <QScrollArea>
#include <QSpinBox>
#include <QTimer>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "UiTest.h"
#include "core/Dialogs.h"
#include "core/Globals.h"
#include "print/PrintDriver.h"
#include "ui/dialogs/FileDialogs.h"
#include "ui/printing/PaintJobs.h"
#include "ui/printing/Preview.h"
#include "ui/printing/SavePdf.h"

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
    EXPECT_EQ(static_cast<int>(Jobs[0].Pages.Size()), CountOf(text, "\f"));
    EXPECT_GT(Jobs[0].Pages.Size(), 20U);
    EXPECT_EQ(Jobs[0].FontSize, 7);
    EXPECT_TRUE(Jobs[0].Bold);
    EXPECT_TRUE(Jobs[0].HighQuality);
    int landscape = 0;
    std::size_t lines = 0;
    for (std::size_t number = 0; number < Jobs[0].Pages.Size(); ++number) {
        const PrintedPage page = Jobs[0].Pages.At(number);
        landscape += page.Orientation == 2;
        lines += page.Lines.size();
    }
    EXPECT_GT(landscape, 0);
    EXPECT_LT(landscape, static_cast<int>(Jobs[0].Pages.Size()));
    EXPECT_EQ(static_cast<int>(lines), CountOf(text, "\r\n"));
    EXPECT_FALSE(main->InLongStep());
}

// --- Out of the preview --------------------------------------------------------------------

PrintJob JobOf(std::size_t pages) {
    PrintJob job{"", 7, true, false, {}};
    for (std::size_t page = 1; page <= pages; ++page)
        job.Pages.Add({page % 2 == 0 ? 2 : 1, {"page " + std::to_string(page), "second line"}});
    return job;
}

const PageProgress kGoOn = [](std::size_t, std::size_t) { return true; };

class OnPaper : public Printing {
protected:
    OnPaper() {
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setPageSize(QPageSize(QPageSize::Letter));
        printer.setOutputFileName(Q(path));
    }
    std::string path = folder.File("form.pdf");
    QPrinter printer;
};

TEST_F(OnPaper, PagesHaveTheirOwnOrientation) {
    const Document document({JobOf(3)});
    EXPECT_EQ(PaintJobs(document, {0, 3}, printer, kGoOn), PaintResult::Done);
    const std::string pdf = FileText(path);
    EXPECT_EQ(CountOf(pdf, "/Type /Page\n"), 3);
    EXPECT_EQ(CountOf(pdf, "/MediaBox [0 0 612"), 2);
    EXPECT_EQ(CountOf(pdf, "/MediaBox [0 0 792"), 1);
}

TEST_F(OnPaper, TheRangeOfTheDialogIsPrinted) {
    const Document document({JobOf(4), JobOf(5)});
    ASSERT_EQ(document.Pages(), 9U);
    printer.setPrintRange(QPrinter::PageRange);
    printer.setFromTo(3, 6);
    const PageRange range = RangeOf(printer, document.Pages());
    EXPECT_EQ(range.First, 2U);
    EXPECT_EQ(range.End, 6U);
    EXPECT_EQ(PaintJobs(document, range, printer, kGoOn), PaintResult::Done);
    EXPECT_EQ(CountOf(FileText(path), "/Type /Page\n"), 4);
    printer.setFromTo(8, 40);
    EXPECT_EQ(RangeOf(printer, document.Pages()).End, 9U);
    printer.setPrintRange(QPrinter::AllPages);
    EXPECT_EQ(RangeOf(printer, document.Pages()).End, 9U);
    EXPECT_EQ(RangeOf(printer, document.Pages()).First, 0U);
}

TEST_F(OnPaper, NothingIsPaintedWithoutPages) {
    EXPECT_EQ(PaintJobs(Document({}), {0, 0}, printer, kGoOn), PaintResult::Failed);
}

TEST_F(OnPaper, AFolderThatIsNotThereTakesNoPages) {
    printer.setOutputFileName(Q(folder.File("none/form.pdf")));
    EXPECT_EQ(PaintJobs(Document({JobOf(2)}), {0, 2}, printer, kGoOn), PaintResult::Failed);
}

class InPreview : public OnPaper {
protected:
    InPreview() : preview(Document({JobOf(5)}), printer) {
        preview.resize(800, 600);
        preview.show();
    }
    template <class T>
    T* In(const char* name) {
        return preview.findChild<T*>(name);
    }
    void Press(const char* name) { In<QPushButton>(name)->click(); }
    frmPreview preview;
};

TEST_F(InPreview, PagesAreTurned) {
    EXPECT_EQ(preview.Page(), 0U);
    EXPECT_FALSE(In<QPushButton>("cmdPrevious")->isEnabled());
    Press("cmdNext");
    EXPECT_EQ(preview.Page(), 1U);
    const QSize landscape = In<QWidget>("picPage")->size();
    EXPECT_GT(landscape.width(), landscape.height());
    In<QSpinBox>("txtPage")->setValue(5);
    EXPECT_EQ(preview.Page(), 4U);
    EXPECT_FALSE(In<QPushButton>("cmdNext")->isEnabled());
    EXPECT_EQ(In<QWidget>("picPage")->accessibleName(), "Page 5 of 5");
    EXPECT_EQ(In<QWidget>("picPage")->accessibleDescription(), "page 5\nsecond line");
}

TEST_F(InPreview, APageFitsTheWindowOrHasItsSize) {
    auto* const zoom = In<QComboBox>("cboZoom");
    zoom->setCurrentIndex(zoom->findText("Whole page"));
    EXPECT_LE(In<QWidget>("picPage")->height(), In<QScrollArea>("areaPage")->height());
    zoom->setCurrentIndex(zoom->findText("Page width"));
    const int room = In<QScrollArea>("areaPage")->viewport()->width();
    EXPECT_NEAR(In<QWidget>("picPage")->width(), room, 40);
    zoom->setCurrentIndex(zoom->findText("100 %"));
    EXPECT_EQ(In<QWidget>("picPage")->width(), preview.logicalDpiX() * 17 / 2);
}

TEST_F(InPreview, TheWholeDocumentGoesIntoAPdfFile) {
    Files.emplace_back(path);
    Press("cmdPDF");
    EXPECT_EQ(Dialogs.back().DefaultExt, ".pdf");
    EXPECT_EQ(CountOf(FileText(path), "/Type /Page\n"), 5);
    EXPECT_TRUE(Boxes.empty());
    EXPECT_EQ(Done(), "Saved form.pdf");
}

TEST_F(InPreview, APdfFileThatCannotBeWrittenIsToldByName) {
    const std::string missing = folder.File("none/form.pdf");
    Files.emplace_back(missing);
    Press("cmdPDF");
    ASSERT_EQ(Boxes.size(), 1U);
    EXPECT_EQ(Boxes[0].Title, "Printing Error");
    EXPECT_TRUE(Boxes[0].Text.starts_with(
        "The following error occurred during print of document:\r\n" + missing + "\r\n"))
        << Boxes[0].Text;
}

/// No file of this process grows beyond so many bytes: what a full disk does.
class NoRoom {
public:
    explicit NoRoom(rlim_t bytes) {
        signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &kept_);
        const rlimit small{bytes, kept_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
    }
    ~NoRoom() {
        setrlimit(RLIMIT_FSIZE, &kept_);
        signal(SIGXFSZ, SIG_DFL);
    }
    NoRoom(const NoRoom&) = delete;
    NoRoom& operator=(const NoRoom&) = delete;

private:
    rlimit kept_{};
};

TEST_F(InPreview, AFullDiskIsToldAndLeavesNoFile) {
    Files.emplace_back(path);
    {
        const NoRoom disk(100);
        Press("cmdPDF");
    }
    ASSERT_EQ(Boxes.size(), 1U);
    EXPECT_EQ(Boxes[0].Title, "Printing Error");
    EXPECT_FALSE(QFileInfo::exists(Q(path)));
}

TEST_F(InPreview, AFilePrintedFromTheDialogHasTheRangeAndTheErrorsToo) {
    OnAskToPrint = [](QPrinter& chosen, int pages) {
        EXPECT_EQ(pages, 5);
        chosen.setPrintRange(QPrinter::PageRange);
        chosen.setFromTo(2, 3);
        return true;
    };
    Press("cmdPrint");
    EXPECT_EQ(CountOf(FileText(path), "/Type /Page\n"), 2);
    printer.setOutputFileName(Q(folder.File("none/form.pdf")));
    Press("cmdPrint");
    ASSERT_EQ(Boxes.size(), 1U);
    EXPECT_EQ(Boxes[0].Title, "Printing Error");
}

TEST_F(InPreview, ACancelledDialogPrintsNothing) {
    Press("cmdPrint");
    EXPECT_FALSE(QFileInfo::exists(Q(path)));
    EXPECT_TRUE(Boxes.empty());
}

TEST_F(OnPaper, ACancelLeavesNoFileAndTheOldOne) {
    const std::string old = "%PDF-1.4 (Zolmara 287-22) of yesterday";
    std::ofstream(path) << old;
    std::size_t seen = 0;
    const PaintResult result =
        SavePdf(Document({JobOf(9)}), {0, 9}, path, [&](auto done, auto all) {
            EXPECT_EQ(all, 9U);
            seen = done;
            return done < 4;
        });
    EXPECT_EQ(result, PaintResult::GivenUp);
    EXPECT_EQ(seen, 4U);
    EXPECT_EQ(FileText(path), old);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()),
                            std::filesystem::directory_iterator()),
              1);
}

TEST_F(OnPaper, AnothersFileIsJudgedAheadOfThePages) {
    std::ofstream(path) << "old";
    std::size_t seen = 0;
    const PageProgress count = [&](auto done, auto) {
        seen = done;
        return true;
    };
    EXPECT_THROW(SavePdf(Document({JobOf(9)}), {0, 9}, path, count), FileKept);
    EXPECT_EQ(seen, 0U);
    EXPECT_EQ(FileText(path), "old");
}

TEST_F(OnPaper, APreviewReadsOnlyThePagesThatAreLookedAt) {
    const PrintJob job = JobOf(6000);
    frmPreview preview(Document({job}), printer);
    preview.show();
    preview.grab();
    const std::size_t opened = job.Pages.Reads();
    EXPECT_GE(opened, 1U);
    EXPECT_LE(opened, 3U);
    preview.GoTo(5999);
    preview.grab();
    EXPECT_GT(job.Pages.Reads(), opened);
    EXPECT_LE(job.Pages.Reads(), opened + 3);
}

TEST_F(OnPaper, PagesAreKeptOnTheDisk) {
    PageSpool pages;
    for (int page = 0; page < 100; ++page)
        pages.Add({1 + page % 2, {"first", "", "Grün " + std::to_string(page)}});
    EXPECT_EQ(pages.Size(), 100U);
    EXPECT_EQ(pages.At(57).Lines, (std::vector<std::string>{"first", "", "Grün 57"}));
    EXPECT_EQ(pages.OrientationOf(57), 2);
    EXPECT_EQ(pages.At(0).Lines.at(2), "Grün 0");
    pages.Add({1, {}});
    EXPECT_TRUE(pages.At(100).Lines.empty());
}

/// The folder of temporary files, as the environment tells it.
class TemporaryFolder {
public:
    explicit TemporaryFolder(const std::string& folder) : former_(qgetenv("TMPDIR")) {
        qputenv("TMPDIR", folder.c_str());
    }
    ~TemporaryFolder() { former_.isEmpty() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", former_); }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

private:
    QByteArray former_;
};

TEST_F(OnPaper, AFullDiskForPagesIsToldWithItsFolderAndNothingOfThemStays) {
    const std::string place = folder.File("temporary");
    std::filesystem::create_directory(place);
    const TemporaryFolder temporary(place);
    QtPageDevice device;
    device.Print("kept");
    device.NewPage();
    device.Print(std::string(200, 'x'));
    std::string told;
    try {
        const NoRoom disk(100);
        device.NewPage();
    } catch (const std::exception& error) {
        told = error.what();
    }
    EXPECT_EQ(told, "The printed pages cannot be kept: " + place + ": File too large");
    // The next document has its own pages alone.
    device.Print("other");
    device.EndDoc();
    const std::vector<PrintJob> jobs = device.TakeJobs();
    ASSERT_EQ(jobs.size(), 1U);
    ASSERT_EQ(jobs[0].Pages.Size(), 1U);
    EXPECT_EQ(jobs[0].Pages.At(0).Lines, std::vector<std::string>{"other"});
    EXPECT_TRUE(std::filesystem::is_empty(place));
}

TEST_F(OnPaper, PagesAreKeptWhereTheFolderOfTemporaryFilesIsMissing) {
    const TemporaryFolder temporary(folder.File("missing"));
    PageSpool pages;
    pages.Add({1, {"first"}});
    EXPECT_EQ(pages.At(0).Lines, std::vector<std::string>{"first"});
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
    ASSERT_EQ(jobs[0].Pages.Size(), 2U);
    EXPECT_EQ(jobs[0].Pages.At(1).Lines.size(), 1U);
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
    EXPECT_EQ(jobs[0].Pages.OrientationOf(0), 2);
    EXPECT_EQ(jobs[0].Pages.OrientationOf(1), 1);
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

TEST(FileDialogs, ANameToSaveUnderGetsItsExtension) {
    FileDialog dialog;
    dialog.Save = true;
    dialog.Title = "";
    dialog.DefaultExt = ".CRF";
    EXPECT_EQ(WholeName("/home/me/Two", "", dialog), "/home/me/Two.CRF");
    EXPECT_EQ(WholeName("/home/me.too/Two", "", dialog), "/home/me.too/Two.CRF");
    EXPECT_EQ(WholeName("/home/me/Two.crf", "", dialog), "/home/me/Two.crf");
    dialog.Save = false;
    EXPECT_EQ(WholeName("/home/me/Two", "", dialog), "/home/me/Two");
}

TEST(FileDialogs, ANameToSaveUnderGetsTheExtensionOfTheKindThatWasChosen) {
    FileDialog dialog;
    dialog.Save = true;
    dialog.DefaultExt = ".xlsx";
    dialog.Filter = "Spreadsheets (*.xlsx)|*.xlsx|Comma Separated Values (*.csv)|*.csv|All|*.*";
    const QStringList kinds = NameFilters(dialog);
    EXPECT_EQ(WholeName("/home/me/Two", kinds[0], dialog), "/home/me/Two.xlsx");
    EXPECT_EQ(WholeName("/home/me/Two", kinds[1], dialog), "/home/me/Two.csv");
    EXPECT_EQ(WholeName("/home/me/Two", kinds[2], dialog), "/home/me/Two.xlsx");
    EXPECT_EQ(WholeName("/home/me/Two.txt", kinds[1], dialog), "/home/me/Two.txt");
    EXPECT_EQ(NameOfKind("Two.xlsx", kinds[1], dialog), "Two.csv");
    EXPECT_EQ(NameOfKind("Two.CSV", kinds[0], dialog), "Two.xlsx");
    EXPECT_EQ(NameOfKind("Two.old", kinds[1], dialog), "Two.old");
    EXPECT_EQ(NameOfKind("Two", kinds[1], dialog), "Two");
}

TEST_F(Printing, AFileThatStandsUnderTheWholeNameIsAskedFor) {
    FileDialog dialog;
    dialog.Save = true;
    dialog.Title = "Save";
    dialog.DefaultExt = ".CRF";
    dialog.Flags = 2050;
    const std::string there = folder.File("Two.CRF");
    std::ofstream(there) << "x";
    EXPECT_TRUE(MayBeTaken(folder.File("Three.CRF"), dialog));
    EXPECT_TRUE(Boxes.empty());
    EXPECT_FALSE(MayBeTaken(there, dialog));
    ASSERT_EQ(Boxes.size(), 1U);
    EXPECT_EQ(Boxes[0].Text, there + " already exists.  Do you want to replace it?");
    EXPECT_EQ(Boxes[0].Style, kYesNo + kExclamation + kDefaultButton2);
    Answers = {kYes};
    EXPECT_TRUE(MayBeTaken(there, dialog));
    dialog.Flags = 0;
    EXPECT_TRUE(MayBeTaken(there, dialog));
    EXPECT_EQ(Boxes.size(), 2U);
}

/// Types a name into the dialog that the next call brings up, and accepts it; once it is back, it
/// is cancelled.
void TypeName(const QString& name) {
    QTimer::singleShot(0, [name] {
        auto* const box = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        box->findChild<QLineEdit*>("fileNameEdit")->setText(name);
        QTimer::singleShot(0, [] {
            auto* const again = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            if (again) again->reject();
        });
        static_cast<QDialog*>(box)->accept();
    });
}

TEST_F(Printing, ANameTypedWithoutItsExtensionReplacesNothingUnasked) {
    FileDialog dialog{.Save = true,
                      .Title = "Save Cost Report File As ...",
                      .FileName = folder.File("*.CRF"),
                      .DefaultExt = ".CRF",
                      .Filter = "Cost Report Files (*.CRF)|*.CRF"};
    dialog.Flags = 2050;
    std::ofstream(folder.File("Two.CRF")) << "x";
    TypeName("Two");
    EXPECT_EQ(ChooseFileFor(dialog), std::nullopt);
    ASSERT_EQ(Boxes.size(), 1U);
    EXPECT_EQ(Boxes[0].Text,
              folder.File("Two.CRF") + " already exists.  Do you want to replace it?");
    Answers = {kYes};
    TypeName("Two");
    EXPECT_EQ(ChooseFileFor(dialog), folder.File("Two.CRF"));
}

}  // namespace
}  // namespace zolmara::ui
