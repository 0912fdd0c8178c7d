#pragma once

// The program's own clock. It goes with the host's until it is set; the clock of the machine, which
// other programs go by, is never touched.

#include "core/DateTime.h"

namespace zolmara {

/// The present moment by the program's clock, local time. Stamps and page heads show it.
DateTime Now();

/// Sets the clock to the moment nearest to the present that has this time of day. False where the
/// host does not let the clock be set; then it goes on as before.
bool SetClock(const DateTime& timeOfDay);

/// Lets the clock go with the host's again.
void ResetClock();

}  // namespace zolmara
