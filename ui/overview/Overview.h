#pragma once

// What fills the main window while a CRF is open: the list of worksheets, and the statement's state
// and figures.

#include <QSplitter>

namespace zolmara::ui {

class Navigator;
class SummaryPanel;

class Overview : public QSplitter {
public:
    Overview();

protected:
    void showEvent(QShowEvent* event) override;

private:
    void Follow();

    Navigator* navigator_ = nullptr;
    SummaryPanel* summary_ = nullptr;
    bool stale_ = true;
};

}  // namespace zolmara::ui
