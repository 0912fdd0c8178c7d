#pragma once

// The menu tree of the main window.

#include <string>
#include <string_view>
#include <vector>

namespace zolmara::ui {

enum class MenuKind { Command, Parent, Separator };

/// An entry of the menu bar. A member of an array has its index behind its name: "mnuEditSx(0)".
struct MenuEntry {
    std::string Name;
    std::string Parent;  ///< empty for a menu of the bar
    std::string Caption;
    MenuKind Kind = MenuKind::Command;
    std::string Shortcut;
    std::string Mode;  ///< "edit" or "view" for an entry that opens a worksheet
    std::string Item;  ///< its worksheet
};

/// All entries; a parent stands ahead of its own.
const std::vector<MenuEntry>& MenuTable();

/// The name of a member of an array of entries.
std::string MemberName(std::string_view array, int index);

}  // namespace zolmara::ui
