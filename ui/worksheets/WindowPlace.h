#pragma once

// Where a worksheet window stands and how large it is, and what is remembered of that.

#include <vector>

class QWidget;

namespace zolmara {
struct WorksheetForm;
}

namespace zolmara::ui {

class frmWorksheet;

/// Places a new window: as it was left, or as wide as its columns want, centred, wholly on the
/// screen.
void PlaceWindow(frmWorksheet& window);
/// Brings a window back that stands beyond an edge of the screen.
void KeepOnScreen(QWidget& window);

/// Saves where a window stands and, where the user has changed them, the widths of its columns.
void RememberWindow(frmWorksheet& window);
/// The widths that were saved, in twips; none for a worksheet whose columns are others since.
std::vector<int> SavedWidths(const WorksheetForm& form);

double SavedZoom();
void SaveZoom(double zoom);

}  // namespace zolmara::ui
