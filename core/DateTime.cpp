#include "core/DateTime.h"

#include <date/date.h>
#include <fmt/format.h>

#include <algorithm>

namespace zolmara {
namespace {

constexpr std::int64_t kSecondsPerDay = 86400;

std::int64_t FloorDiv(std::int64_t value, std::int64_t by) {
    const std::int64_t quotient = value / by;
    return value % by < 0 ? quotient - 1 : quotient;
}

date::sys_days DayOf(const DateTime& value) {
    return date::sys_days{date::days{static_cast<int>(value.DayNumber())}};
}

date::year_month_day CalendarOf(const DateTime& value) {
    return date::year_month_day{DayOf(value)};
}

int SecondOfDay(const DateTime& value) {
    return static_cast<int>(value.Seconds() - value.DayNumber() * kSecondsPerDay);
}

}  // namespace

DateTime::DateTime(int year, unsigned month, unsigned day, int hour, int minute, int second) {
    const date::sys_days at = date::year{year} / date::month{month} / date::day{day};
    seconds_ = std::int64_t{at.time_since_epoch().count()} * kSecondsPerDay + hour * 3600 +
               minute * 60 + second;
}

std::int64_t DateTime::DayNumber() const { return FloorDiv(seconds_, kSecondsPerDay); }

int DateTime::Year() const { return static_cast<int>(CalendarOf(*this).year()); }
unsigned DateTime::Month() const { return static_cast<unsigned>(CalendarOf(*this).month()); }
unsigned DateTime::Day() const { return static_cast<unsigned>(CalendarOf(*this).day()); }
int DateTime::Hour() const { return SecondOfDay(*this) / 3600; }
int DateTime::Minute() const { return SecondOfDay(*this) / 60 % 60; }
int DateTime::Second() const { return SecondOfDay(*this) % 60; }
unsigned DateTime::WeekDay() const { return date::weekday{DayOf(*this)}.c_encoding(); }

DateTime DateTime::AddDays(std::int64_t days) const {
    return FromSeconds(seconds_ + days * kSecondsPerDay);
}

DateTime DateTime::AddYears(int years) const {
    const date::year_month_day from = CalendarOf(*this);
    date::year_month_day to = from + date::years{years};
    if (!to.ok()) to = to.year() / to.month() / date::last;
    return DateTime(static_cast<int>(to.year()), static_cast<unsigned>(to.month()),
                    static_cast<unsigned>(to.day()), 0, 0, SecondOfDay(*this));
}

DateTime DateTime::AtMidnight() const { return FromSeconds(DayNumber() * kSecondsPerDay); }

std::string StoreDateText(const DateTime& value) {
    const date::year_month_day day = CalendarOf(value);
    return fmt::format("{:04}-{:02}-{:02} {:02}:{:02}:{:02}", static_cast<int>(day.year()),
                       static_cast<unsigned>(day.month()), static_cast<unsigned>(day.day()),
                       value.Hour(), value.Minute(), value.Second());
}

std::string ShortDateText(const DateTime& value) {
    const date::year_month_day day = CalendarOf(value);
    const std::string text =
        fmt::format("{}/{}/{:04}", static_cast<unsigned>(day.month()),
                    static_cast<unsigned>(day.day()), static_cast<int>(day.year()));
    if (SecondOfDay(value) == 0) return text;
    const int hour = value.Hour() % 12 == 0 ? 12 : value.Hour() % 12;
    return fmt::format("{} {}:{:02}:{:02} {}", text, hour, value.Minute(), value.Second(),
                       value.Hour() < 12 ? "AM" : "PM");
}

std::int64_t DaysBetween(const DateTime& from, const DateTime& to) {
    return to.DayNumber() - from.DayNumber();
}

}  // namespace zolmara
