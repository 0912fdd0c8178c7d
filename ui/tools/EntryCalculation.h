#pragma once

// "Calculate after each entry": each row that is saved brings a calculation of the whole
// statement, as in a spreadsheet. It shows no boxes. On a large statement it waits until the
// keying pauses.

#include <QString>

namespace zolmara::ui::EntryCalculation {

/// Whether it is on; off at first, and remembered.
bool IsOn();
void Toggle();

/// A row has been saved.
void RowSaved();
/// Something is being typed.
void Typed();

/// What the last run has to say for the status line; empty while it is off.
QString Note();

/// True while a calculation is due.
bool IsDue();

}  // namespace zolmara::ui::EntryCalculation
