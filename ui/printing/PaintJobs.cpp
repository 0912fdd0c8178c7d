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
constexpr double kVerticalMargins = 30;
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
    double Top = 0;
    double LineHeight = 0;
};

TextArea Measure(const PrintJob& job, const PrintedPage& page, const QRectF& paper,
                 double advance) {
    const double columns = ColumnsOf(page.Orientation);
    const double width = std::min(job.FontSize * kUnits * kColumnWidth, paper.width() / columns);
    const auto lines = static_cast<double>(PageLines(page.Orientation, job.FontSize));
    TextArea area;
    area.ScaleX = width / advance;
    area.LineHeight = std::min(job.FontSize * kUnits * kLineHeight, paper.height() / lines);
    area.Left = (paper.width() - width * columns) / 2;
    return area;
}

void PaintPage(QPainter& painter, const PrintJob& job, const PrintedPage& page,
               const QPrinter& printer) {
    painter.save();
    const double scale = printer.resolution() / (72.0 * kUnits);
    painter.scale(scale, scale);
    const QRectF device = printer.pageLayout().paintRectPixels(printer.resolution());
    const QRectF paper(0, 0, device.width() / scale, device.height() / scale);
    const QFont font = FontOf(job);
    const QFontMetricsF metrics(font);
    const TextArea area = Measure(job, page, paper, metrics.horizontalAdvance('M'));
    painter.setFont(font);
    painter.setPen(Qt::black);
    painter.translate(area.Left, area.Top);
    painter.scale(area.ScaleX, 1);
    double baseline = metrics.ascent();
    for (const std::string& line : page.Lines) {
        painter.drawText(QPointF(0, baseline), Q(line));
        baseline += area.LineHeight;
    }
    painter.restore();
}

void SetPage(QPrinter& printer, const PrintedPage& page) {
    printer.setPageOrientation(page.Orientation == kLandscape ? QPageLayout::Landscape
                                                              : QPageLayout::Portrait);
}

const PrintedPage* FirstPage(const std::vector<PrintJob>& jobs) {
    for (const PrintJob& job : jobs)
        if (!job.Pages.empty()) return &job.Pages.front();
    return nullptr;
}

}  // namespace

int PageLines(int orientation, double fontSize) {
    const double height = orientation == kLandscape ? kShortSide : kLongSide;
    return static_cast<int>((height - kVerticalMargins) / (fontSize * kLineHeight));
}

bool PaintJobs(const std::vector<PrintJob>& jobs, QPrinter& printer) {
    const PrintedPage* const first = FirstPage(jobs);
    if (!first) return false;
    SetPage(printer, *first);
    QPainter painter;
    if (!painter.begin(&printer)) return false;
    for (const PrintJob& job : jobs) {
        for (const PrintedPage& page : job.Pages) {
            if (&page != first) {
                SetPage(printer, page);
                printer.newPage();
            }
            PaintPage(painter, job, page, printer);
        }
    }
    return painter.end();
}

}  // namespace zolmara::ui
