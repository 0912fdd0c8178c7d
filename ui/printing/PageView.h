#pragma once

#include <QWidget>

#include "ui/printing/PaintJobs.h"

namespace zolmara::ui {

/// A page on the screen.
class PageView : public QWidget {
public:
    explicit PageView(const Document& document) : document_(document) {}

    std::size_t Page() const { return page_; }
    /// Shows a page, from 0, at so many pixels a point.
    void Show(std::size_t page, double pixelsAPoint);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const Document& document_;
    std::size_t page_ = 0;
    double scale_ = 1;
};

}  // namespace zolmara::ui
