#pragma once

// A picture of amounts as bars, each with its name and figure in words beside it.

#include <QString>
#include <QWidget>
#include <functional>
#include <vector>

namespace zolmara::ui {

/// How a bar is filled, so that it is told apart without colour.
enum class BarFill { Plain, Striped, Dotted };

struct Bar {
    QString Name;
    double From = 0;  ///< where it begins and ends on the common scale
    double To = 0;
    double Amount = 0;  ///< what is written beside it
    BarFill Fill = BarFill::Plain;
};

/// The bars stand below each other on one scale. Arrows go from bar to bar, Return or a click leads
/// on. A screen reader gets the picture as a text.
class BarPicture : public QWidget {
public:
    BarPicture(const char* name, const QString& title);

    void Show(std::vector<Bar> bars);
    const std::vector<Bar>& Bars() const { return bars_; }
    int Current() const { return current_; }
    /// What a bar leads to.
    void OnChosen(std::function<void(int bar)> chosen) { chosen_ = std::move(chosen); }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool event(QEvent* event) override;

private:
    int RowHeight() const;
    int NameWidth() const;
    int FigureWidth() const;
    QRect RowOf(int bar) const;
    int BarAt(const QPoint& place) const;
    void SetCurrent(int bar);
    void Tell();
    void PaintBar(QPainter& painter, int bar) const;
    QRectF BarRect(int bar) const;

    QString title_;
    std::vector<Bar> bars_;
    int current_ = 0;
    std::function<void(int)> chosen_;
};

}  // namespace zolmara::ui
