#pragma once

// The window that tells where a number comes from, and what depends on it.

#include <QWidget>
#include <optional>
#include <utility>
#include <vector>

#include "ui/tools/ExplainTree.h"

class QLabel;
class QPushButton;
class QRadioButton;
class QTreeView;

namespace zolmara::ui {

class ExplainWindow : public QWidget {
public:
    ExplainWindow();

    /// Tells of a cell; the button "Back" leads to what was told before.
    void Show(const CellRef& cell, Direction direction);
    /// The cell of the row that is current.
    std::optional<CellRef> Current() const;

private:
    QWidget* MakeText();
    void MakeTree();
    QWidget* MakeDirections();
    void MakeMenu();
    void ShowRoot(const CellRef& cell, Direction direction);
    void ShowCurrent();
    void GoBack();
    void GoTo();
    void Refresh();

    ExplainTree model_;
    std::vector<std::pair<CellRef, Direction>> former_;
    QLabel* lblCell_ = nullptr;
    QLabel* lblValue_ = nullptr;
    QLabel* lblRule_ = nullptr;
    QLabel* lblFormula_ = nullptr;
    QRadioButton* optFrom_ = nullptr;
    QRadioButton* optUses_ = nullptr;
    QTreeView* treCells_ = nullptr;
    QPushButton* cmdBack_ = nullptr;
};

/// Shows the window with a cell.
void ShowExplanation(const CellRef& cell, Direction direction);

/// The same with the current cell of the worksheet that was used last; in the window itself, of the
/// tree. Beeps without one.
void ExplainCurrentCell(Direction direction);
/// True where there is such a cell.
bool HasCellToExplain();

}  // namespace zolmara::ui
