#pragma once

// The commands of the menu "Tools": what goes beyond the form's own commands.

#include <functional>
#include <string>
#include <vector>

namespace zolmara::ui {

/// An entry of a tool that is a list.
struct ToolChoice {
    std::string Caption;
    std::function<void()> Run;
};

struct Tool {
    std::string Name;  ///< of the control; never begins with "mnu"
    std::string Caption;
    std::string Shortcut = "";  ///< works in every window that no dialog bars
    bool LineAhead = false;     ///< a separator stands ahead of it
    std::function<bool()> IsOn = [] { return true; };  ///< where the command makes sense
    std::function<void()> Run = {};
    std::function<std::string()> CaptionNow = {};  ///< for a caption that tells what it would do
    std::function<bool()> IsChecked = {};          ///< for one that is a switch
    bool MainOnly = false;                         ///< its shortcut works in the main window alone
    /// For one that is a list: what stands in it when it is opened.
    std::function<std::vector<ToolChoice>()> Choices = {};
};

/// All commands in their order. The menu does not show while there are none.
std::vector<Tool>& Tools();

/// Sets every command of the menu by its own rule. It runs by itself after each command of the
/// main window, and whenever a window comes, goes or is activated; a window that changes what a
/// rule looks at calls it.
void RefreshTools();

}  // namespace zolmara::ui
