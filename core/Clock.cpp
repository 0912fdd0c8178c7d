#include "core/Clock.h"

#include "core/Machine.h"

namespace zolmara {
namespace {

constexpr std::int64_t kSecondsADay = 86400;

std::int64_t clockOffset = 0;  ///< seconds ahead of the host's

/// Seconds to the nearest moment with another moment's time of day, so that midnight in between
/// does not cost a day.
std::int64_t SecondsToTimeOfDay(const DateTime& from, const DateTime& timeOfDay) {
    const std::int64_t ahead =
        ((timeOfDay.Seconds() - from.Seconds()) % kSecondsADay + kSecondsADay) % kSecondsADay;
    return ahead > kSecondsADay / 2 ? ahead - kSecondsADay : ahead;
}

}  // namespace

DateTime Now() { return DateTime::FromSeconds(TheMachine().Now().Seconds() + clockOffset); }

bool SetClock(const DateTime& timeOfDay) {
    if (!TheMachine().MaySetClock()) return false;
    clockOffset += SecondsToTimeOfDay(Now(), timeOfDay);
    return true;
}

void ResetClock() { clockOffset = 0; }

}  // namespace zolmara
