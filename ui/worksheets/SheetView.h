#pragma once

#include <functional>
#include <vector>

#include "ui/worksheets/GridPart.h"

namespace zolmara::ui {

class SheetModel;

/// The grid of a worksheet: a table whose first columns stay in sight while the others scroll. The
/// columns that stay are a second view on the same model, laid over the first.
class SheetView : public GridPart {
public:
    SheetView(SheetModel& model, const CellActs& acts, QWidget* parent = nullptr);

    /// Puts the columns of the model's form in place: hidden ones, widths, headings, what stays.
    void SetColumns();
    /// Sizes of letters and cells against the plain ones; 1 is plain.
    void SetZoom(double zoom);
    double Zoom() const { return zoom_; }
    /// Folds the headings again, for the line that is current.
    void FoldHeadings();

    /// The width that all shown columns take.
    int ColumnsWidth() const;
    /// Widths in twips, by column; what is not there keeps its own.
    const std::vector<int>& Widths() const { return twips_; }
    void SetWidths(std::vector<int> twips);
    /// True once the user has changed a column's width.
    bool WidthsChanged() const { return widthsChanged_; }

    /// The next or former cell that can be keyed, in reading order; none at the ends.
    QModelIndex OpenCell(const QModelIndex& from, Step step) const;
    void GoTo(const QModelIndex& cell);
    /// The first cell that can be keyed, or the first shown.
    QModelIndex FirstCell() const;
    int FirstShownColumn() const;

    GridPart* Frozen() const { return frozen_; }
    /// Takes what is being typed in either view.
    void CloseEditors();
    QWidget* Editor() const;

    void setModel(QAbstractItemModel* model) override;
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;

protected:
    bool edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool focusNextPrevChild(bool /*next*/) override { return false; }

private:
    void MakeFrozen();
    void PlaceFrozen();
    bool IsFrozen(int column) const { return column < frozenColumns_; }
    int FrozenWidth() const;
    int ColumnsThatStay() const;
    void ColumnResized(int column, int width);
    void SetRowHeight();
    void SetHeadHeight();
    int Pixels(int twips) const;
    QModelIndex Edge(int rowStep, int columnStep) const;
    bool Moves(const QKeyEvent* event);
    void SelectLines();

    SheetModel& model_;
    GridPart* frozen_ = nullptr;
    int frozenColumns_ = 0;
    double zoom_ = 1;
    double plainSize_ = 0;
    std::vector<int> twips_;  ///< widths by column, without the zoom
    bool placing_ = false;
    bool widthsChanged_ = false;
};

}  // namespace zolmara::ui
