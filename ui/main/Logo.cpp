#include "ui/main/Logo.h"

#include <QPainter>
#include <QPainterPath>

namespace zolmara::ui {

QPixmap LogoPixmap(int size, double scale) {
    QPixmap pixmap(QSize(size, size) * scale);
    pixmap.setDevicePixelRatio(scale);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size / 100.0, size / 100.0);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0x1f, 0x5a, 0x8c));
    painter.drawRoundedRect(QRectF(2, 2, 96, 96), 20, 20);
    // A "V" of two columns of a statement.
    QPen pen(Qt::white, 12, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    QPainterPath letter(QPointF(26, 30));
    letter.lineTo(50, 74);
    letter.lineTo(74, 30);
    painter.drawPath(letter);
    return pixmap;
}

}  // namespace zolmara::ui
