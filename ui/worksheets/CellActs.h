#pragma once

// What the grid asks of its window: the steps that a key or click leads to.

#include <QString>
#include <functional>

class QModelIndex;
class QPoint;

namespace zolmara::ui {

/// Where the current cell goes after an entry.
enum class Step { Stay, Next, Previous, Up, Down };

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
