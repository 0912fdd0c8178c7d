#pragma once

// The open CRF's state and figures at the right of the main window.

#include <QScrollArea>
#include <vector>

#include "ui/overview/NextSteps.h"
#include "worksheets/Summary.h"

class QFormLayout;
class QGridLayout;
class QLabel;
class QListWidget;
class QTableWidget;

namespace zolmara::ui {

class BarPicture;

class SummaryPanel : public QScrollArea {
public:
    SummaryPanel();

    /// Reads the open CRF afresh.
    void Refresh();
    void Clear();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QWidget* MakeState();
    QWidget* MakeNext();
    QWidget* MakeFigures();
    void ShowState();
    void ShowNext();
    void ShowFigures();
    void ShowMoney();
    void ShowComponents();
    void GoTo(const CellRef& cell);
    void Arrange(bool wide);

    QGridLayout* grid_ = nullptr;
    std::vector<QWidget*> groups_;  ///< in the order of reading
    bool wide_ = false;             ///< they stand in two columns
    QLabel* lblWho_ = nullptr;
    std::vector<QLabel*> states_;
    QListWidget* lstNext_ = nullptr;
    QTableWidget* grdFigures_ = nullptr;
    BarPicture* picMoney_ = nullptr;
    BarPicture* picComponents_ = nullptr;
    std::vector<NextStep> steps_;
    std::vector<SummaryFigure> figures_;
    std::vector<ComponentCost> components_;
    std::vector<CellRef> money_;  ///< what the bars of the picture lead to
};

}  // namespace zolmara::ui
