#pragma once

// Puts printed pages on paper.

#include <QSizeF>
#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "ui/printing/QtPageDevice.h"

class QPainter;
class QPrinter;

namespace zolmara::ui {

/// Lines of a letter page in a font of this size.
int PageLines(int orientation, double fontSize);

/// A letter page in points, as it lies.
QSizeF PaperSize(int orientation);

/// The pages of several jobs as one document.
class Document {
public:
    explicit Document(std::vector<PrintJob> jobs);

    std::size_t Pages() const { return pages_; }
    int OrientationOf(std::size_t number) const;
    PrintedPage Page(std::size_t number) const;
    const PrintJob& JobOf(std::size_t number) const;

private:
    /// The job of a page, and the page's number within it.
    std::pair<const PrintJob*, std::size_t> Find(std::size_t number) const;

    std::vector<PrintJob> jobs_;
    std::size_t pages_ = 0;
};

/// Told after each page: how many are done, and of how many. False gives the work up.
using PageProgress = std::function<bool(std::size_t done, std::size_t all)>;

enum class PaintResult { Done, GivenUp, Failed };

/// Paints one page into its paper, in points: in columns of the form's width, so that no line and
/// no page breaks differently from the print file.
void PaintPage(QPainter& painter, const Document& document, std::size_t number);

/// Pages, from 0, up to the one ahead of End.
struct PageRange {
    std::size_t First = 0;
    std::size_t End = 0;
};
/// What the user chose in the printer's dialog.
PageRange RangeOf(const QPrinter& printer, std::size_t pages);

/// Sends pages to the printer, each in its own orientation. Failed when it takes none.
PaintResult PaintJobs(const Document& document, PageRange range, QPrinter& printer,
                      const PageProgress& progress);

}  // namespace zolmara::ui
