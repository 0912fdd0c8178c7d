#pragma once

namespace zolmara::ui {

/// Shows the settings of the program, to be changed: folders, backups, calculation after each
/// entry, zoom, high quality printing, theme.
void ShowSettings();

}  // namespace zolmara::ui
