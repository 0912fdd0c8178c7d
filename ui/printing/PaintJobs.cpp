#include "ui/printing/PaintJobs.h"

#include <QFont>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QPainter>
#include <QPrinter>
#include <algorithm>

#include "print/PrintPage.h"
#include "ui/main/QtText.h"

namespace zolmara::ui {
namespace {

constexpr double kLongSide = 792;  ///< letter size, in points
constexpr double kShortSide = 612;
constexpr double kMargin = 15;
constexpr double kPointsPerInch = 72;
constexpr double kLineHeight = 1.1328;  ///< in parts of the font size
constexpr double kColumnWidth = 0.6;
constexpr int kPortraitColumns = 137;
constexpr int kLandscapeColumns = 176;
/// Fonts are set in tenths of a point, so that their sizes are whole numbers.
constexpr double kUnits = 10;

int ColumnsOf(int orientation) {
    return orientation == kLandscape ? kLandscapeColumns : kPortraitColumns;
}

QFont FontOf(const PrintJob& job) {
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    if (!job.FontName.empty()) font.setFamily(Q(job.FontName));
    font.setStyleHint(QFont::TypeWriter);
    font.setFixedPitch(true);
    font.setBold(job.Bold);
    font.setPixelSize(static_cast<int>(job.FontSize * kUnits));
    return font;
}

/// The measures of a page's text, in tenths of a point.
struct TextArea {
    double ScaleX = 1;
    double Left = 0;
    double LineHeight = 0;
};

TextArea Measure(const PrintJob& job, int orientation, double advance) {
    const QSizeF paper = PaperSize(orientation) * kUnits;
    const double columns = ColumnsOf(orientation);
    const double room = paper.width() - 2 * kMargin * kUnits;
    const double width = std::min(job.FontSize * kUnits * kColumnWidth, room / columns);
    TextArea area;
    area.ScaleX = width / advance;
    area.LineHeight = job.FontSize * kUnits * kLineHeight;
    area.Left = (paper.width() - width * columns) / 2;
    return area;
}

void SetPage(QPrinter& printer, int orientation) {
    printer.setPageOrientation(orientation == kLandscape ? QPageLayout::Landscape
                                                         : QPageLayout::Portrait);
}

/// Paints in points from the paper's corner, whatever the printer's own margins are.
void PaintOnPaper(QPainter& painter, const Document& document, std::size_t number,
                  const QPrinter& printer) {
    painter.save();
    const double scale = printer.resolution() / kPointsPerInch;
    const QRectF paintable = printer.pageLayout().paintRectPixels(printer.resolution());
    if (!printer.fullPage()) painter.translate(-paintable.topLeft());
    painter.scale(scale, scale);
    PaintPage(painter, document, number);
    painter.restore();
}

PaintResult PaintRange(QPainter& painter, const Document& document, PageRange range,
                       QPrinter& printer, const PageProgress& progress) {
    for (std::size_t number = range.First; number < range.End; ++number) {
        if (number > range.First) {
            SetPage(printer, document.OrientationOf(number));
            if (!printer.newPage()) return PaintResult::Failed;
        }
        PaintOnPaper(painter, document, number, printer);
        if (!progress(number - range.First + 1, range.End - range.First))
            return PaintResult::GivenUp;
    }
    return PaintResult::Done;
}

}  // namespace

int PageLines(int orientation, double fontSize) {
    const double height = orientation == kLandscape ? kShortSide : kLongSide;
    return static_cast<int>((height - 2 * kMargin) / (fontSize * kLineHeight));
}

QSizeF PaperSize(int orientation) {
    return orientation == kLandscape ? QSizeF(kLongSide, kShortSide)
                                     : QSizeF(kShortSide, kLongSide);
}

// --- Document ------------------------------------------------------------------------------

Document::Document(std::vector<PrintJob> jobs) : jobs_(std::move(jobs)) {
    for (const PrintJob& job : jobs_) pages_ += job.Pages.Size();
}

std::pair<const PrintJob*, std::size_t> Document::Find(std::size_t number) const {
    const PrintJob* job = jobs_.data();
    for (; number >= job->Pages.Size(); ++job) number -= job->Pages.Size();
    return {job, number};
}

int Document::OrientationOf(std::size_t number) const {
    const auto [job, page] = Find(number);
    return job->Pages.OrientationOf(page);
}

PrintedPage Document::Page(std::size_t number) const {
    const auto [job, page] = Find(number);
    return job->Pages.At(page);
}

const PrintJob& Document::JobOf(std::size_t number) const { return *Find(number).first; }

// --- Painting ------------------------------------------------------------------------------

void PaintPage(QPainter& painter, const Document& document, std::size_t number) {
    const PrintJob& job = document.JobOf(number);
    const PrintedPage page = document.Page(number);
    painter.save();
    painter.scale(1 / kUnits, 1 / kUnits);
    const QFont font = FontOf(job);
    const QFontMetricsF metrics(font);
    const TextArea area = Measure(job, page.Orientation, metrics.horizontalAdvance('M'));
    painter.setFont(font);
    painter.setPen(Qt::black);
    painter.translate(area.Left, kMargin * kUnits);
    painter.scale(area.ScaleX, 1);
    double baseline = metrics.ascent();
    for (const std::string& line : page.Lines) {
        painter.drawText(QPointF(0, baseline), Q(line));
        baseline += area.LineHeight;
    }
    painter.restore();
}

PageRange RangeOf(const QPrinter& printer, std::size_t pages) {
    if (printer.printRange() != QPrinter::PageRange || printer.fromPage() < 1) return {0, pages};
    const auto first = static_cast<std::size_t>(printer.fromPage()) - 1;
    const auto end = static_cast<std::size_t>(std::max(printer.toPage(), printer.fromPage()));
    return {std::min(first, pages), std::min(end, pages)};
}

PaintResult PaintJobs(const Document& document, PageRange range, QPrinter& printer,
                      const PageProgress& progress) {
    if (range.First >= range.End) return PaintResult::Failed;
    SetPage(printer, document.OrientationOf(range.First));
    QPainter painter;
    if (!painter.begin(&printer)) return PaintResult::Failed;
    const PaintResult result = PaintRange(painter, document, range, printer, progress);
    if (result != PaintResult::Done) printer.abort();
    const bool ended = painter.end() && printer.printerState() != QPrinter::Error;
    return ended || result != PaintResult::Done ? result : PaintResult::Failed;
}

}  // namespace zolmara::ui
