#pragma once

// Undo and redo in the menu "Tools". While a cell is open, its own Ctrl+Z and Ctrl+Y are the
// cell's.

#include <string>

namespace zolmara::ui {

/// From here on steps are kept, the menu follows them, and the user is told when the list had to
/// be emptied.
void KeepUndo();
void EndUndo();

bool CanUndo();
bool CanRedo();
/// A row that is being keyed is stored first, and then is what is taken back.
void Undo();
void Redo();

/// With the name of the act; without one, with the reason why there is none.
std::string UndoCaption();
std::string RedoCaption();

}  // namespace zolmara::ui
