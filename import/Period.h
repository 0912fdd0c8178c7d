#pragma once

// Fiscal periods that follow one another.

#include <optional>

#include "core/DateTime.h"

namespace zolmara {

struct Period {
    DateTime Start;
    DateTime End;
    friend bool operator==(const Period&, const Period&) = default;
};

/// The period behind another: from the day after its end, or from the day given. It is as long: a
/// whole year after a whole year, as many whole months after whole months. After any other length
/// it is a year.
Period NextPeriod(const Period& last, std::optional<DateTime> start = std::nullopt);

}  // namespace zolmara
