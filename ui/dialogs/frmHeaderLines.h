#pragma once

#include <QWidget>

class QTableWidget;

namespace zolmara::ui {

/// The editor of the custom lines at the head of every printed page.
class frmHeaderLines : public QWidget {
public:
    frmHeaderLines();

private:
    void MakeGrid();
    void ReadLines();
    void Update();

    QTableWidget* grdHeaderLines_ = nullptr;
};

}  // namespace zolmara::ui
