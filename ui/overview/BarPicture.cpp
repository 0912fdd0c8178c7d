#include "ui/overview/BarPicture.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>
#include <QStylePainter>
#include <QToolTip>
#include <algorithm>

#include "ui/main/QtText.h"
#include "worksheets/Explain.h"

namespace zolmara::ui {
namespace {

constexpr int kGap = 8;
constexpr double kMostNamePart = 0.5;

QString FigureText(const Bar& bar) { return Q(Figure(bar.Amount)); }

/// The ends of the common scale; 0 belongs to it.
std::pair<double, double> ScaleOf(const std::vector<Bar>& bars) {
    double low = 0;
    double high = 0;
    for (const Bar& bar : bars) {
        low = std::min({low, bar.From, bar.To});
        high = std::max({high, bar.From, bar.To});
    }
    return {low, high > low ? high : low + 1};
}

Qt::BrushStyle StyleOf(BarFill fill) {
    switch (fill) {
        case BarFill::Striped:
            return Qt::BDiagPattern;
        case BarFill::Dotted:
            return Qt::Dense5Pattern;
        default:
            return Qt::SolidPattern;
    }
}

}  // namespace

BarPicture::BarPicture(const char* name, const QString& title) : title_(title) {
    setObjectName(name);
    setAccessibleName(title);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void BarPicture::Show(std::vector<Bar> bars) {
    bars_ = std::move(bars);
    current_ = std::clamp(current_, 0, std::max(0, static_cast<int>(bars_.size()) - 1));
    Tell();
    updateGeometry();
    update();
}

/// The whole picture in words; the current bar stands first.
void BarPicture::Tell() {
    QStringList words;
    for (const Bar& bar : bars_) words << bar.Name + " " + FigureText(bar);
    setAccessibleDescription(words.join("; "));
    const auto at = static_cast<std::size_t>(current_);
    setAccessibleName(at < bars_.size() ? title_ + ": " + words[current_] : title_);
}

// --- Places --------------------------------------------------------------------------------

int BarPicture::RowHeight() const { return fontMetrics().lineSpacing() * 4 / 3; }

int BarPicture::NameWidth() const {
    int widest = 0;
    for (const Bar& bar : bars_)
        widest = std::max(widest, fontMetrics().horizontalAdvance(bar.Name));
    return std::min(widest, static_cast<int>(width() * kMostNamePart));
}

int BarPicture::FigureWidth() const {
    int widest = 0;
    for (const Bar& bar : bars_)
        widest = std::max(widest, fontMetrics().horizontalAdvance(FigureText(bar)));
    return widest;
}

QSize BarPicture::sizeHint() const {
    const int letter = fontMetrics().averageCharWidth();
    return {letter * 70, std::max(1, static_cast<int>(bars_.size())) * RowHeight()};
}

QSize BarPicture::minimumSizeHint() const {
    return {fontMetrics().averageCharWidth() * 30, sizeHint().height()};
}

QRect BarPicture::RowOf(int bar) const { return {0, bar * RowHeight(), width(), RowHeight()}; }

int BarPicture::BarAt(const QPoint& place) const {
    const int bar = place.y() / std::max(1, RowHeight());
    return rect().contains(place) && bar < static_cast<int>(bars_.size()) ? bar : -1;
}

QRectF BarPicture::BarRect(int bar) const {
    const Bar& told = bars_[static_cast<std::size_t>(bar)];
    const auto [low, high] = ScaleOf(bars_);
    const QRect row = RowOf(bar);
    const double left = NameWidth() + kGap;
    const double room = std::max(1.0, width() - left - FigureWidth() - kGap);
    const auto x = [&, low = low, high = high](double amount) {
        return left + (amount - low) / (high - low) * room;
    };
    const double from = std::min(x(told.From), x(told.To));
    const double to = std::max(x(told.From), x(told.To));
    const double inset = row.height() * 0.2;
    return {from, row.top() + inset, std::max(1.0, to - from), row.height() - 2 * inset};
}

// --- Painting ------------------------------------------------------------------------------

void BarPicture::PaintBar(QPainter& painter, int bar) const {
    const Bar& told = bars_[static_cast<std::size_t>(bar)];
    const QRect row = RowOf(bar);
    const QRectF place = BarRect(bar);
    painter.setPen(palette().color(QPalette::WindowText));
    const QString name = fontMetrics().elidedText(told.Name, Qt::ElideRight, NameWidth());
    painter.drawText(QRect(0, row.top(), NameWidth(), row.height()),
                     Qt::AlignLeft | Qt::AlignVCenter, name);
    painter.drawText(QRect(width() - FigureWidth(), row.top(), FigureWidth(), row.height()),
                     Qt::AlignRight | Qt::AlignVCenter, FigureText(told));
    const QColor colour = palette().color(QPalette::Highlight);
    painter.setPen(colour);
    painter.setBrush(QBrush(colour, StyleOf(told.Fill)));
    painter.drawRect(place);
}

void BarPicture::paintEvent(QPaintEvent* /*event*/) {
    QStylePainter painter(this);
    for (int bar = 0; bar < static_cast<int>(bars_.size()); ++bar) PaintBar(painter, bar);
    if (!hasFocus() || bars_.empty()) return;
    QStyleOptionFocusRect option;
    option.initFrom(this);
    option.rect = RowOf(current_);
    option.backgroundColor = palette().color(QPalette::Window);
    painter.drawPrimitive(QStyle::PE_FrameFocusRect, option);
}

// --- Keys and clicks -----------------------------------------------------------------------

void BarPicture::SetCurrent(int bar) {
    if (bars_.empty()) return;
    current_ = std::clamp(bar, 0, static_cast<int>(bars_.size()) - 1);
    Tell();
    update();
}

void BarPicture::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Up:
            return SetCurrent(current_ - 1);
        case Qt::Key_Down:
            return SetCurrent(current_ + 1);
        case Qt::Key_Home:
            return SetCurrent(0);
        case Qt::Key_End:
            return SetCurrent(static_cast<int>(bars_.size()) - 1);
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (chosen_ && !bars_.empty()) chosen_(current_);
            return;
        default:
            QWidget::keyPressEvent(event);
    }
}

void BarPicture::mousePressEvent(QMouseEvent* event) {
    const int bar = BarAt(event->position().toPoint());
    if (bar >= 0) SetCurrent(bar);
}

void BarPicture::mouseReleaseEvent(QMouseEvent* event) {
    const int bar = BarAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && bar >= 0 && bar == current_ && chosen_) chosen_(bar);
}

void BarPicture::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange) updateGeometry();
    update();
}

bool BarPicture::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QWidget::event(event);
    const auto* const help = static_cast<QHelpEvent*>(event);
    const int bar = BarAt(help->pos());
    if (bar < 0) {
        QToolTip::hideText();
    } else {
        const Bar& told = bars_[static_cast<std::size_t>(bar)];
        QToolTip::showText(help->globalPos(), told.Name + ": " + FigureText(told), this);
    }
    return true;
}

}  // namespace zolmara::ui
