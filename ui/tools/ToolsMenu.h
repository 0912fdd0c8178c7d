#pragma once

#include <functional>
#include <vector>

#include "ui/tools/Tools.h"

class QAction;
class QMenu;
class QMenuBar;

namespace zolmara::ui {

/// The menu "Tools" of the main window, made from the table of commands.
class ToolsMenu {
public:
    using Runner = std::function<void(const std::function<void()>&)>;

    /// Stands ahead of another menu of the bar. `run` is how the main window runs a command.
    ToolsMenu(QMenuBar& bar, QAction* ahead, Runner run);

    /// Sets every command; all are off while the program takes none.
    void Refresh(bool takesCommands);

private:
    void Add(QMenu& menu, const Tool& tool);
    QAction* AddList(QMenu& menu, const Tool& tool);

    struct Entry {
        Tool Command;
        QAction* Action;
    };
    std::vector<Entry> entries_;
    Runner run_;
};

}  // namespace zolmara::ui
