#pragma once

// Roads to a worksheet beside the menus: from a finding, an explanation, a search, a list.

#include <optional>
#include <string>

#include "core/Currency.h"

namespace zolmara {
struct CellRef;
}

namespace zolmara::ui {

/// Opens a worksheet in the mode "edit" or "view" as its entry of the menus does, with its gates
/// and questions, and goes to a line and a column of it (a field's name or a column number of the
/// form). A window that is open comes to the front. What has no editor is viewed. False, with a
/// message, where a window that stands open bars it.
bool GoToWorksheet(const std::string& mode, const std::string& item,
                   std::optional<Currency> line = std::nullopt, const std::string& column = "");

/// Goes to a cell: a keyed one in its editor, any other where its worksheet stands open, else in
/// the view.
bool GoToCell(const CellRef& cell);

}  // namespace zolmara::ui
