#pragma once

// What the grid asks of its window: the steps that a key or click leads to.

#include <QString>
#include <functional>

class QModelIndex;
class QPoint;

namespace zolmara::ui {

/// Where the current cell goes after an entry: with Tab behind the last one to the buttons, while
/// Enter never leaves the cells.
enum class Step { Stay, Tab, BackTab, Enter, BackEnter, Up, Down };

inline bool IsForward(Step step) { return step == Step::Tab || step == Step::Enter; }

struct CellActs {
    /// A cell is about to be entered; false keeps it as it is.
    std::function<bool(const QModelIndex& cell)> BeforeEdit;
    /// True where nothing is typed: what begins an edit opens the list.
    std::function<bool(const QModelIndex& cell)> OnlyPicked;
    /// Takes an entry. False when it was refused.
    std::function<bool(const QModelIndex& cell, const QString& text)> Key;
    /// Opens the list of a cell at a place of the screen.
    std::function<void(const QModelIndex& cell, const QPoint& place)> OpenList;
    std::function<bool(const QModelIndex& cell)> HasList;
    std::function<void(Step step)> Move;
    /// Escape in the grid, no cell being edited.
    std::function<void()> TakeBack;
    /// Something was typed.
    std::function<void()> Typed;
};

}  // namespace zolmara::ui
