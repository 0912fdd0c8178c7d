#include "ui/printing/PageView.h"

#include <QPainter>

#include "ui/main/QtText.h"

namespace zolmara::ui {

void PageView::Show(std::size_t page, double pixelsAPoint) {
    const bool other = page != page_ || accessibleName().isEmpty();
    page_ = page;
    scale_ = pixelsAPoint;
    setFixedSize(sizeHint());
    update();
    if (!other) return;
    setAccessibleName(QString("Page %1 of %2").arg(page + 1).arg(document_.Pages()));
    QStringList lines;
    for (const std::string& line : document_.Page(page).Lines) lines << Q(line);
    setAccessibleDescription(lines.join('\n'));
}

QSize PageView::sizeHint() const {
    return (PaperSize(document_.OrientationOf(page_)) * scale_).toSize();
}

/// Paper is white on a dark desktop too.
void PageView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.fillRect(rect(), Qt::white);
    painter.setRenderHint(QPainter::TextAntialiasing);
    painter.scale(scale_, scale_);
    PaintPage(painter, document_, page_);
}

}  // namespace zolmara::ui
