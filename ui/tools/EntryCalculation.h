#pragma once

// "Calculate after each entry": each row that is saved brings a calculation of the whole
// statement, as in a spreadsheet. It shows no boxes. On a large statement it waits until the
// keying pauses.

#include <QString>
#include <functional>

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

/// When a run waits, in milliseconds; tests have a pace of their own.
struct Pace {
    std::function<qint64(const std::function<void()>& run)> TimeOf;  ///< runs it
    qint64 Felt = 150;                                               ///< longer runs wait
    int Pause = 1500;                                                ///< of the keying
};
Pace& ThePace();

}  // namespace zolmara::ui::EntryCalculation
