#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zolmara {

/// A moment of local time to the second, without a time zone.
class DateTime {
public:
    constexpr DateTime() = default;
    /// Midnight of a day that must exist in the calendar.
    DateTime(int year, unsigned month, unsigned day, int hour = 0, int minute = 0, int second = 0);

    static constexpr DateTime FromSeconds(std::int64_t sinceEpoch) {
        DateTime result;
        result.seconds_ = sinceEpoch;
        return result;
    }

    /// Seconds since 1970-01-01 00:00:00.
    constexpr std::int64_t Seconds() const { return seconds_; }
    /// Whole days since 1970-01-01.
    std::int64_t DayNumber() const;

    int Year() const;
    unsigned Month() const;
    unsigned Day() const;
    int Hour() const;
    int Minute() const;
    int Second() const;
    /// 0 is Sunday.
    unsigned WeekDay() const;

    DateTime AddDays(std::int64_t days) const;
    /// The same day so many years on; 29 February becomes 28 February in a common year.
    DateTime AddYears(int years) const;
    DateTime AtMidnight() const;

    constexpr auto operator<=>(const DateTime&) const = default;

private:
    std::int64_t seconds_ = 0;
};

/// "YYYY-MM-DD HH:MM:SS", the form in which the store keeps a date.
std::string StoreDateText(const DateTime& value);
/// Reads the store's own form; nothing else.
std::optional<DateTime> ParseStoreDate(std::string_view text);

/// Reads what a user may write for a date: M/D/YYYY, M/D/YY (00 to 29 are years of 2000,
/// 30 to 99 of 1900), YYYY-MM-DD, or a month by name ("Oct 1, 2022", "1 October 2022"),
/// each with a time of day behind it or not. Blanks around it are ignored.
std::optional<DateTime> ParseDate(std::string_view text);

/// "Short Date": M/D/YYYY, with the time behind it where it is not midnight.
std::string ShortDateText(const DateTime& value);

/// Days from the first to the second date, by calendar day.
std::int64_t DaysBetween(const DateTime& from, const DateTime& to);

}  // namespace zolmara
