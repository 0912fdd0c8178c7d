#pragma once

#include <QWidget>

class QListWidget;

namespace zolmara::ui {

/// The worksheets to be printed, in the order of printing.
class frmSelectivePrints : public QWidget {
public:
    frmSelectivePrints();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void MakeList();
    void CheckAll(bool checked);
    void Print();

    QListWidget* lstWorksheets_ = nullptr;
    bool printing_ = false;
};

}  // namespace zolmara::ui
