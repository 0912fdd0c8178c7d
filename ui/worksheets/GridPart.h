#pragma once

#include <QTableView>

#include "ui/worksheets/CellActs.h"

namespace zolmara::ui {

class CellDelegate;

/// One of the two views of a grid: cells are entered through the window's steps, and a click on a
/// cell's list button opens the list.
class GridPart : public QTableView {
public:
    explicit GridPart(const CellActs& acts, QWidget* parent = nullptr);

    /// Opens a cell for editing, where it can be.
    bool EditCell(const QModelIndex& index, EditTrigger trigger, QEvent* event);
    /// Opens the list of a cell below it.
    void OpenList(const QModelIndex& cell);
    void SetCurrentLook(const QModelIndex& index);
    /// The editor that is open; none without one.
    QWidget* OpenEditor() const;
    /// Takes what is being typed, as a click elsewhere would.
    void CloseOpenEditor();

protected:
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;
    bool edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    /// What is typed into a cell that takes no entry goes nowhere.
    void keyboardSearch(const QString& /*search*/) override {}

    const CellActs& acts_;

private:
    CellDelegate* look_;
};

}  // namespace zolmara::ui
