#pragma once

// What the tests of printing share: a printer that records, print files read back, texts that are
// kept beside the tests, and a small home office with something on every worksheet.

#include <string>
#include <string_view>
#include <vector>

#include "print/PageDevice.h"
#include "print/PrintRun.h"
#include "support/TestCrf.h"

namespace zolmara::test {

/// A printer that records what is asked of it.
class FakePrinter : public PageDevice {
public:
    int OrientationNow = 1;  ///< below 1: no printer
    std::string FontNow = "Courier New";
    std::vector<std::string> Fonts = {"Arial", "Courier New"};
    std::string FailAt;  ///< the line at which it fails
    /// Every call that changes something: "Orientation 2", "Size 7", "Bold", "Quality -4",
    /// "Font Arial", "Line abc", "NewPage", "EndDoc".
    std::vector<std::string> Calls;

    /// Lines printed, without the other calls.
    std::vector<std::string> Lines() const;

    int Orientation() override { return OrientationNow; }
    void SetOrientation(int orientation) override;
    std::string FontName() override { return FontNow; }
    void SetFontName(const std::string& name) override;
    int FontCount() override { return static_cast<int>(Fonts.size()); }
    std::string Font(int index) override { return Fonts.at(static_cast<std::size_t>(index)); }
    void SetFontSize(double points) override;
    void SetBold(bool bold) override;
    void SetPrintQuality(int quality) override;
    void Print(std::string_view line) override;
    void NewPage() override;
    void EndDoc() override;
};

/// The bytes of a file; fails the test where it is not there.
std::string FileBytes(const std::string& path);
/// A print file as UTF-8 lines. A page change is a line "==== page", with the orientation that it
/// sets.
std::vector<std::string> PrintedLines(const std::string& path);
/// The lines that hold a text.
std::vector<std::string> LinesWith(const std::vector<std::string>& lines, std::string_view text);
/// How many lines of a page change there are.
int PageCount(const std::vector<std::string>& lines);
/// The lines between two page changes, from 1; the page change itself is the first.
std::vector<std::string> PageOf(const std::vector<std::string>& lines, int page);

/// Compares lines with a text of tests/print/golden. With ZOLMARA_WRITE_GOLDEN set in the
/// environment the text is written, to be read through before it is kept.
void ExpectGolden(std::string_view name, const std::vector<std::string>& lines);

/// A small home office, calculated: two hospitals, a foundation and a region.
class PrintCrf : public TestCrf {
protected:
    PrintCrf();

    PrintRun run;

    std::string PrintFile(std::string_view name) const { return folder.File(name); }
    std::vector<std::string> Printed(std::string_view name) const {
        return PrintedLines(PrintFile(name));
    }
};

}  // namespace zolmara::test
