#pragma once

// What print files are sent to: a printer, or a PDF file.

#include <string>
#include <string_view>

namespace zolmara {

/// A print target. Text goes on a page line by line, from the top, in the font set last. What it
/// cannot do it reports by an exception with a text for the user.
class PageDevice {
public:
    virtual ~PageDevice() = default;

    /// 1 portrait, 2 landscape; below 1 where there is no printer.
    virtual int Orientation() = 0;
    /// Takes effect with the next page, or with this one while nothing is printed on it.
    virtual void SetOrientation(int orientation) = 0;

    virtual std::string FontName() = 0;
    virtual void SetFontName(const std::string& name) = 0;
    virtual int FontCount() = 0;
    virtual std::string Font(int index) = 0;  ///< from 0
    virtual void SetFontSize(double points) = 0;
    virtual void SetBold(bool bold) = 0;
    /// -4 is high quality.
    virtual void SetPrintQuality(int quality) = 0;

    /// Prints a line of UTF-8 text. A full page is followed by another.
    virtual void Print(std::string_view line) = 0;
    virtual void NewPage() = 0;
    /// The end of a print job.
    virtual void EndDoc() = 0;
};

}  // namespace zolmara
