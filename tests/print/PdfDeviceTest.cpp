#include <fmt/format.h>

#include <cerrno>
#include <filesystem>

#include "print/PdfDevice.h"
#include "print/PrintPage.h"
#include "print/PrintSupport.h"
#include "print/SendPrtFile.h"
#include "store/Files.h"
#include "store/harness/Faults.h"

namespace zolmara::test {
namespace {

class PdfDeviceTest : public SessionTest {
protected:
    std::string Saved(PdfDevice& pdf) {
        pdf.Save();
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

void PassPages(PdfDevice& pdf, int pages) {
    for (int i = 0; i < pages; ++i) pdf.NewPage();
}

TEST_F(PdfDeviceTest, IsAPrinterThatIsAlwaysThere) {
    PdfDevice pdf(path);
    EXPECT_EQ(pdf.Orientation(), kPortrait);
    EXPECT_EQ(pdf.FontName(), "Courier");
    EXPECT_EQ(pdf.FontCount(), 1);
}

TEST_F(PdfDeviceTest, PagesHaveTheirOwnOrientation) {
    PdfDevice pdf(path);
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
    // The last row of a report begins at line 71 landscape and 93 portrait; a total has one rule
    // ahead of it and one under it.
    for (const auto& [orientation, lines] : {std::pair{kLandscape, 73}, std::pair{kPortrait, 95}}) {
        PdfDevice pdf(path);
        pdf.SetFontSize(7);
        pdf.SetOrientation(orientation);
        for (int i = 0; i < lines; ++i) pdf.Print("x");
        EXPECT_EQ(pdf.PageCount(), 1) << orientation;
        for (int i = 0; i < 4; ++i) pdf.Print("x");
        EXPECT_EQ(pdf.PageCount(), 2) << orientation;
    }
}

TEST_F(PdfDeviceTest, APagePassedOverIsABlankPage) {
    PdfDevice pdf(path);
    pdf.Print("one");
    pdf.NewPage();
    pdf.NewPage();
    pdf.Print("three");
    EXPECT_EQ(pdf.PageCount(), 3);
}

TEST_F(PdfDeviceTest, JobsFollowEachOtherOnPagesOfTheirOwn) {
    PdfDevice pdf(path);
    host.PrinterDevice = &pdf;
    WriteWholeFile(folder.File("a.prt"), "\f\x02\r\none\r\n");
    PrintRun run;
    EXPECT_EQ(SendPrtFile(folder.File("a.prt"), kLandscape, run), 0);
    EXPECT_EQ(SendPrtFile(folder.File("a.prt"), kLandscape, run), 0);
    EXPECT_EQ(pdf.PageCount(), 2);
}

TEST_F(PdfDeviceTest, ManyPagesMakeOneFile) {
    PdfDevice pdf(path);
    for (int i = 0; i < 9000; ++i) {
        pdf.Print("x");
        pdf.NewPage();
    }
    EXPECT_EQ(Count(Saved(pdf), "/Type /Page\n"), 9000U);
}

TEST_F(PdfDeviceTest, WithoutPagesThereIsNoFile) {
    {
        PdfDevice pdf(path);
        EXPECT_THROW(pdf.Save(), std::runtime_error);
    }
    EXPECT_FALSE(FileExists(path));
}

TEST_F(PdfDeviceTest, AFileThatCannotBeWrittenIsAnErrorThatNamesIt) {
    const std::string missing = folder.File("none") + "/out.pdf";
    try {
        PdfDevice pdf(missing);
        FAIL() << "begun";
    } catch (const StoreError& error) {
        EXPECT_TRUE(std::string(error.what()).starts_with(missing)) << error.what();
        EXPECT_TRUE(error.IsFileError());
    }
}

TEST_F(PdfDeviceTest, APageThatFindsNoRoomOnTheDiskMakesNoFile) {
    WriteWholeFile(path, std::string("%PDF-1.4 (Zolmara 287-22) of yesterday"));
    const std::string before = FileBytes(path);
    {
        PdfDevice pdf(path);
        pdf.Print("on the disk");
        pdf.NewPage();
        FaultsArm(folder.Path().c_str(), 1, ENOSPC, "write");
        EXPECT_THROW(PassPages(pdf, 1000), StoreError);
        FaultsDisarm();
        EXPECT_THROW(pdf.Save(), StoreError) << "a page is missing";
    }
    EXPECT_EQ(FileBytes(path), before);
}

TEST_F(PdfDeviceTest, PagesAreOnTheDiskWhileOthersArePrinted) {
    PdfDevice pdf(path);
    PassPages(pdf, 1000);
    std::uintmax_t aside = 0;
    for (const auto& file : std::filesystem::directory_iterator(folder.Path()))
        aside += file.file_size();
    EXPECT_GT(aside, 100000U);
    EXPECT_FALSE(FileExists(path));
    EXPECT_EQ(Count(Saved(pdf), "/Type /Page\n"), 1000U);
}

/// The number at the head of what stands behind a word.
std::size_t NumberBehind(const std::string& bytes, std::string_view word, std::size_t from = 0) {
    return std::stoul(bytes.substr(bytes.find(word, from) + word.size(), 20));
}

TEST_F(PdfDeviceTest, EveryObjectStandsWhereTheTableSays) {
    PdfDevice pdf(path);
    PassPages(pdf, 200);
    const std::string bytes = Saved(pdf);
    const std::size_t table = NumberBehind(bytes, "startxref\n");
    ASSERT_EQ(bytes.substr(table, 7), "xref\n0 ");
    const std::size_t entries = NumberBehind(bytes, "xref\n0 ", table);
    const std::size_t first = bytes.find('\n', table + 5) + 1;
    for (std::size_t number = 1; number < entries; ++number) {
        const std::size_t place = std::stoul(bytes.substr(first + number * 20, 10));
        const std::string head = fmt::format("{} 0 obj\n", number);
        EXPECT_EQ(bytes.substr(place, head.size()), head);
    }
    EXPECT_EQ(bytes.substr(first + entries * 20, 7), "trailer");
    EXPECT_EQ(NumberBehind(bytes, "/Size ", table), entries);
    EXPECT_EQ(Count(bytes, "/Count 200 "), 1U) << "the root counts all pages";
}

TEST_F(PdfDeviceTest, WhatIsNotSavedLeavesNothing) {
    {
        PdfDevice pdf(path);
        for (int i = 0; i < 100; ++i) pdf.NewPage();
    }
    EXPECT_FALSE(FileExists(path));
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

TEST_F(PdfDeviceTest, CharactersOutsideTheCodePageDoNotStopIt) {
    PdfDevice pdf(path);
    pdf.Print("Gr\u00fcn \u20ac (a\\b) \u4e2d");
    EXPECT_GT(Saved(pdf).size(), 0U);
}

}  // namespace
}  // namespace zolmara::test
