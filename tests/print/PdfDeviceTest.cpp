#include <fmt/format.h>

#include <filesystem>

#include "print/PdfDevice.h"
#include "print/PrintPage.h"
#include "print/PrintSupport.h"
#include "print/SendPrtFile.h"
#include "store/Files.h"

namespace zolmara::test {
namespace {

class PdfDeviceTest : public SessionTest {
protected:
    std::string Saved(PdfDevice& pdf) {
        pdf.Save(path);
        return FileBytes(path);
    }
    std::string path = folder.File("out.pdf");
};

std::size_t Count(const std::string& bytes, std::string_view what) {
    std::size_t count = 0;
    for (std::size_t at = bytes.find(what); at != std::string::npos; at = bytes.find(what, at + 1))
        ++count;
    return count;
}

TEST_F(PdfDeviceTest, IsAPrinterThatIsAlwaysThere) {
    PdfDevice pdf;
    EXPECT_EQ(pdf.Orientation(), kPortrait);
    EXPECT_EQ(pdf.FontName(), "Courier");
    EXPECT_EQ(pdf.FontCount(), 1);
}

TEST_F(PdfDeviceTest, PagesHaveTheirOwnOrientation) {
    PdfDevice pdf;
    pdf.SetFontSize(7);
    pdf.SetBold(true);
    pdf.Print("portrait");
    pdf.NewPage();
    pdf.SetOrientation(kLandscape);
    pdf.Print("landscape");
    pdf.EndDoc();
    const std::string bytes = Saved(pdf);
    EXPECT_EQ(pdf.PageCount(), 2);
    EXPECT_TRUE(bytes.starts_with("%PDF-"));
    EXPECT_EQ(Count(bytes, "/MediaBox [ 0 0 612 792 ]"), 1U);
    EXPECT_EQ(Count(bytes, "/MediaBox [ 0 0 792 612 ]"), 1U);
    EXPECT_EQ(Count(bytes, "/BaseFont /Courier-Bold"), 1U);
}

TEST_F(PdfDeviceTest, APageHoldsTheLinesOfAReportAndItsTotal) {
    // The counter of a report ends at 71 landscape and 93 portrait; a rule may stand under that.
    for (const auto& [orientation, lines] : {std::pair{kLandscape, 72}, std::pair{kPortrait, 94}}) {
        PdfDevice pdf;
        pdf.SetFontSize(7);
        pdf.SetOrientation(orientation);
        for (int i = 0; i < lines; ++i) pdf.Print("x");
        EXPECT_EQ(pdf.PageCount(), 1) << orientation;
        for (int i = 0; i < 4; ++i) pdf.Print("x");
        EXPECT_EQ(pdf.PageCount(), 2) << orientation;
    }
}

TEST_F(PdfDeviceTest, APagePassedOverIsABlankPage) {
    PdfDevice pdf;
    pdf.Print("one");
    pdf.NewPage();
    pdf.NewPage();
    pdf.Print("three");
    EXPECT_EQ(pdf.PageCount(), 3);
}

TEST_F(PdfDeviceTest, JobsFollowEachOtherOnPagesOfTheirOwn) {
    PdfDevice pdf;
    host.PrinterDevice = &pdf;
    WriteWholeFile(folder.File("a.prt"), "\f\x02\r\none\r\n");
    EXPECT_EQ(SendPrtFile(folder.File("a.prt"), kLandscape), 0);
    EXPECT_EQ(SendPrtFile(folder.File("a.prt"), kLandscape), 0);
    EXPECT_EQ(pdf.PageCount(), 2);
}

TEST_F(PdfDeviceTest, ManyPagesMakeOneFile) {
    PdfDevice pdf;
    for (int i = 0; i < 9000; ++i) {
        pdf.Print("x");
        pdf.NewPage();
    }
    EXPECT_EQ(Count(Saved(pdf), "/Type /Page\n"), 9000U);
}

TEST_F(PdfDeviceTest, WithoutPagesThereIsNoFile) {
    PdfDevice pdf;
    EXPECT_THROW(pdf.Save(path), std::runtime_error);
    EXPECT_FALSE(FileExists(path));
}

TEST_F(PdfDeviceTest, AFileThatCannotBeWrittenIsAnErrorThatNamesIt) {
    PdfDevice pdf;
    pdf.Print("x");
    const std::string missing = folder.File("none") + "/out.pdf";
    try {
        pdf.Save(missing);
        FAIL() << "saved";
    } catch (const StoreError& error) {
        EXPECT_TRUE(std::string(error.what()).starts_with(missing)) << error.what();
        EXPECT_TRUE(error.IsFileError());
    }
    pdf.Save(path);
    EXPECT_TRUE(FileExists(path));
}

TEST_F(PdfDeviceTest, CharactersOutsideTheCodePageDoNotStopIt) {
    PdfDevice pdf;
    pdf.Print("Gr\u00fcn \u20ac (a\\b) \u4e2d");
    EXPECT_GT(Saved(pdf).size(), 0U);
}

}  // namespace
}  // namespace zolmara::test
