#pragma once

// The single way to show a worksheet.

#include <functional>
#include <optional>
#include <string>

#include "core/Currency.h"

namespace zolmara::ui {

/// Shows a worksheet in the mode "edit" or "view"; with a line, that line stands current.
void OpenWorksheet(const std::string& mode, const std::string& item,
                   std::optional<Currency> line = std::nullopt);

/// What OpenWorksheet calls. As long as nothing is put in place, a box says that the worksheet
/// has no window.
extern std::function<void(const std::string& mode, const std::string& item,
                          std::optional<Currency> line)>
    gShowWorksheet;

}  // namespace zolmara::ui
