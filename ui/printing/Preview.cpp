#include "ui/printing/Preview.h"

#include <QApplication>
#include <QGuiApplication>
#include <QPageLayout>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QScreen>

#include "ui/printing/PaintJobs.h"

namespace zolmara::ui {
namespace {

constexpr double kMargin = 15;  ///< points

void SetUpPaper(QPrinter& printer) {
    QPageLayout layout = printer.pageLayout();
    layout.setPageSize(QPageSize(QPageSize::Letter));
    layout.setUnits(QPageLayout::Point);
    layout.setMargins(QMarginsF(kMargin, kMargin, kMargin, kMargin));
    printer.setPageLayout(layout);
}

}  // namespace

void ShowPreview(const std::vector<PrintJob>& jobs, QPrinter& printer) {
    SetUpPaper(printer);
    QPrintPreviewDialog preview(&printer, QApplication::activeWindow());
    preview.setObjectName("frmPreview");
    preview.setWindowTitle("Print Preview");
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    preview.resize(std::min(1000, screen.width()), std::min(760, screen.height()));
    QObject::connect(&preview, &QPrintPreviewDialog::paintRequested, &preview,
                     [&jobs](QPrinter* target) { PaintJobs(jobs, *target); });
    preview.exec();
}

}  // namespace zolmara::ui
