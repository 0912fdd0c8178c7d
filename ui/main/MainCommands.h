#pragma once

// What the entries of the main window's menus do.

#include <optional>
#include <string>

#include "core/Currency.h"

namespace zolmara::ui {

class frmMain;

/// Runs the command of an entry by its name. Nothing for a name without one.
void RunCommand(frmMain& main, const std::string& name);

/// Opens the worksheet of an entry of the Edit or View list, at a line and column where one is
/// wanted.
void RunWorksheetEntry(const std::string& mode, const std::string& item,
                       std::optional<Currency> line = std::nullopt, const std::string& column = "");

/// The Item at the end of a caption "S-1  Part-1 (S1p1)".
std::string ItemOfCaption(const std::string& caption);

}  // namespace zolmara::ui
