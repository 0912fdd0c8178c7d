#pragma once

// What is on and off in the menus of the main window: a function of the session's state alone.

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace zolmara::ui {

/// Everything that the state of the menus hangs on.
struct MenuInputs {
    bool CrfOpen = false;
    bool Debug = false;
    bool MaySubmit = false;                   ///< the last calculation's checks allow the build
    bool Barred = false;                      ///< a step holds the main window as a whole
    bool SWorksheets = false;                 ///< the CRF lists worksheets of the S family
    std::set<std::string, std::less<>> Held;  ///< entries that a step at work has turned off
    std::vector<std::string> Forms;           ///< open windows by name, in order of opening
};

/// True when the entry, and every menu that it stands in, is on. A member of an array goes by its
/// array.
bool MenuIsOn(std::string_view name, const MenuInputs& inputs);

/// True while a helper window, one that is neither the main one nor a worksheet's, is open.
bool HelperIsOpen(const MenuInputs& inputs);

}  // namespace zolmara::ui
