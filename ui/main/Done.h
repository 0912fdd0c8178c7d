#pragma once

// The line at the bottom of the main window that says that a step ended well.

#include <string>

namespace zolmara::ui {

/// Says it, in place of a box that must be clicked away. The line stays until the next command of
/// the main window. Nothing without a main window.
void TellDone(const std::string& text);

/// The name of a file without its folder, for such a line.
std::string FileName(const std::string& path);

}  // namespace zolmara::ui
