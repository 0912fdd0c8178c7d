#include "import/Period.h"

#include <algorithm>
#include <array>

namespace zolmara {
namespace {

constexpr int kMonthsOfYear = 12;
/// No statement is for longer.
constexpr int kMostMonths = 15;

bool IsLeapYear(int year) { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }

unsigned DaysOfMonth(int year, unsigned month) {
    constexpr std::array<unsigned, 12> kDays = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && IsLeapYear(year) ? 29 : kDays.at(month - 1);
}

/// The same day so many months on, or the last one of a month that is too short for it.
DateTime AddMonths(const DateTime& day, int months) {
    const int count = day.Year() * kMonthsOfYear + static_cast<int>(day.Month()) - 1 + months;
    const int year = count / kMonthsOfYear;
    const auto month = static_cast<unsigned>(count % kMonthsOfYear) + 1;
    return DateTime(year, month, std::min(day.Day(), DaysOfMonth(year, month)));
}

DateTime EndAfter(const DateTime& start, int months) {
    return AddMonths(start, months).AddDays(-1);
}

/// How many whole months a period has; a year when it has none.
int MonthsOf(const Period& period) {
    const DateTime end = period.End.AtMidnight();
    for (int months = 1; months <= kMostMonths; ++months)
        if (EndAfter(period.Start, months) == end) return months;
    return kMonthsOfYear;
}

}  // namespace

Period NextPeriod(const Period& last, std::optional<DateTime> start) {
    const DateTime first = start.value_or(last.End.AddDays(1)).AtMidnight();
    return {first, EndAfter(first, MonthsOf(last))};
}

}  // namespace zolmara
