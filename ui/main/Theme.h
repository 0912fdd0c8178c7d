#pragma once

// The colours of the program: the desktop's, or light or dark ones of its own.

#include <string>

namespace zolmara::ui {

/// "desktop", "light" or "dark", as the user has chosen; "desktop" at first.
std::string SavedTheme();

/// Shows all windows in the colours of the theme, and remembers it.
void SetTheme(const std::string& theme);

/// The theme that was remembered, at the start of the program.
void ApplySavedTheme();

}  // namespace zolmara::ui
