// Numbers and dates by a pattern.

#include <fmt/format.h>

#include <array>
#include <cmath>
#include <vector>

#include "core/Globals.h"

namespace zolmara {
namespace {

// --- Numbers -------------------------------------------------------------------------------

/// A section of a pattern, taken apart.
struct NumberPattern {
    std::string Prefix;
    std::string Suffix;
    std::size_t WholeDigits = 0;     ///< "0" ahead of the point: shown also when there is none
    std::size_t FractionDigits = 0;  ///< "0" behind the point: shown also at the end
    std::size_t MaxFraction = 0;     ///< all signs behind the point
    bool Point = false;
    bool Commas = false;
    bool Percent = false;
    bool HasDigits = false;
};

void TakeDigitSign(NumberPattern& pattern, char c) {
    pattern.HasDigits = true;
    if (!pattern.Point) {
        if (c == '0' || pattern.WholeDigits > 0) ++pattern.WholeDigits;
        return;
    }
    ++pattern.MaxFraction;
    if (c == '0') pattern.FractionDigits = pattern.MaxFraction;
}

void TakeLiteral(NumberPattern& pattern, char c) {
    if (c == '%') pattern.Percent = true;
    (pattern.HasDigits ? pattern.Suffix : pattern.Prefix) += c;
}

NumberPattern TakeApart(std::string_view section) {
    NumberPattern pattern;
    for (std::size_t i = 0; i < section.size(); ++i) {
        const char c = section[i];
        if (c == '0' || c == '#') {
            TakeDigitSign(pattern, c);
        } else if (c == '.' && !pattern.Point) {
            pattern.Point = true;
        } else if (c == ',' && pattern.HasDigits) {
            pattern.Commas = true;
        } else if (c == '\\' && i + 1 < section.size()) {
            TakeLiteral(pattern, section[++i]);
        } else if (c != '"') {
            TakeLiteral(pattern, c);
        }
    }
    return pattern;
}

/// Adds one to the last digit of a decimal text without sign or point.
std::string Incremented(std::string digits) {
    for (std::size_t i = digits.size(); i-- > 0;) {
        if (digits[i] != '9') {
            ++digits[i];
            return digits;
        }
        digits[i] = '0';
    }
    return "1" + digits;
}

struct Decimal {
    std::string Whole;     ///< without leading zeros; empty below one
    std::string Fraction;  ///< of exactly the digits asked for
    bool IsZero() const {
        return Whole.empty() && Fraction.find_first_not_of('0') == std::string::npos;
    }
};

/// The number cut to so many decimals, a half away from zero. It is cut in its text form: what
/// the user sees as 1.005 is 1.01 with two decimals.
Decimal Cut(double value, std::size_t decimals) {
    const std::string text = NumberText(std::abs(value));
    const std::size_t point = std::min(text.find('.'), text.size());
    std::string digits = text.substr(0, point);
    std::string fraction = point < text.size() ? text.substr(point + 1) : "";
    const bool up = fraction.size() > decimals && fraction[decimals] >= '5';
    fraction.resize(decimals, '0');
    digits += fraction;
    if (up) digits = Incremented(digits);
    const std::size_t whole = digits.size() - decimals;
    Decimal result{digits.substr(0, whole), digits.substr(whole)};
    result.Whole.erase(0, result.Whole.find_first_not_of('0'));
    return result;
}

std::string WithCommas(const std::string& digits) {
    std::string result;
    for (std::size_t i = 0; i < digits.size(); ++i) {
        if (i > 0 && (digits.size() - i) % 3 == 0) result += ',';
        result += digits[i];
    }
    return result;
}

std::string ShowDecimal(Decimal number, const NumberPattern& pattern) {
    if (number.Whole.size() < pattern.WholeDigits)
        number.Whole.insert(0, pattern.WholeDigits - number.Whole.size(), '0');
    while (number.Fraction.size() > pattern.FractionDigits && number.Fraction.back() == '0')
        number.Fraction.pop_back();
    const std::string whole = pattern.Commas ? WithCommas(number.Whole) : number.Whole;
    return pattern.Prefix + whole + (pattern.Point ? "." : "") + number.Fraction + pattern.Suffix;
}

std::vector<std::string_view> Sections(std::string_view pattern) {
    std::vector<std::string_view> sections;
    for (;;) {
        const std::size_t end = pattern.find(';');
        sections.push_back(pattern.substr(0, end));
        if (end == std::string_view::npos) return sections;
        pattern.remove_prefix(end + 1);
    }
}

std::string ShowNumber(double value, std::string_view patternText) {
    const std::vector<std::string_view> sections = Sections(patternText);
    const bool ownSection = value < 0 && sections.size() > 1 && !sections[1].empty();
    const NumberPattern pattern = TakeApart(sections[ownSection ? 1 : 0]);
    const Decimal number = Cut(pattern.Percent ? value * 100 : value, pattern.MaxFraction);
    // What is cut to zero has no sign any more.
    if (number.IsZero()) {
        const std::size_t zero = sections.size() > 2 && !sections[2].empty() ? 2 : 0;
        return ShowDecimal({"", std::string(number.Fraction)}, TakeApart(sections[zero]));
    }
    return (value < 0 && !ownSection ? "-" : "") + ShowDecimal(number, pattern);
}

// --- Dates ---------------------------------------------------------------------------------

constexpr std::array<std::string_view, 12> kMonthNames{
    "January", "February", "March",     "April",   "May",      "June",
    "July",    "August",   "September", "October", "November", "December"};
constexpr std::array<std::string_view, 7> kDayNames{"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                    "Thursday", "Friday", "Saturday"};

struct NamedPattern {
    std::string_view Name;
    std::string_view Pattern;
};
constexpr std::array<NamedPattern, 5> kNamedPatterns{{
    {"Short Date", "m/d/yyyy"},
    {"Long Date", "dddd, mmmm d, yyyy"},
    {"Short Time", "hh:nn"},
    {"Medium Time", "hh:nn AM/PM"},
    {"Long Time", "h:nn:ss AM/PM"},
}};

std::string_view DatePatternOf(std::string_view pattern) {
    for (const NamedPattern& named : kNamedPatterns) {
        if (SameText(named.Name, pattern)) return named.Pattern;
    }
    return pattern;
}

std::string PlainOrPadded(int value, std::size_t length) {
    return length > 1 ? fmt::format("{:02}", value) : fmt::format("{}", value);
}

std::string MonthPiece(const DateTime& value, std::size_t length) {
    const std::string_view name = kMonthNames[value.Month() - 1];
    if (length > 3) return std::string(name);
    if (length == 3) return std::string(name.substr(0, 3));
    return PlainOrPadded(static_cast<int>(value.Month()), length);
}

std::string DayPiece(const DateTime& value, std::size_t length) {
    const std::string_view name = kDayNames[value.WeekDay()];
    if (length > 3) return std::string(name);
    if (length == 3) return std::string(name.substr(0, 3));
    return PlainOrPadded(static_cast<int>(value.Day()), length);
}

/// One run of a letter of a date's pattern.
std::string DatePiece(const DateTime& value, char letter, std::size_t length, bool halfDays) {
    const int hour = halfDays ? (value.Hour() + 11) % 12 + 1 : value.Hour();
    switch (letter) {
        case 'm':
            return MonthPiece(value, length);
        case 'd':
            return DayPiece(value, length);
        case 'y':
            return length > 2 ? fmt::format("{:04}", value.Year())
                              : fmt::format("{:02}", value.Year() % 100);
        case 'h':
            return PlainOrPadded(hour, length);
        case 'n':
            return PlainOrPadded(value.Minute(), length);
        case 's':
            return PlainOrPadded(value.Second(), length);
        default:
            return std::string(length, letter);
    }
}

constexpr std::string_view kHalfDay = "AM/PM";
constexpr std::string_view kDateLetters = "mdyhns";

bool IsDateLetter(char c) { return kDateLetters.find(c) != std::string_view::npos; }

/// True for a pattern that says what to show of a date.
bool IsDatePattern(std::string_view pattern) {
    const std::string lower = LCase(DatePatternOf(pattern));
    return lower.find_first_of(kDateLetters) != std::string::npos;
}

}  // namespace

std::string FormatNumber(const Variant& value, std::string_view pattern) {
    if (!IsNumeric(value)) return Text(value);
    return ShowNumber(NumOr(value), pattern);
}

std::string FormatDate(const DateTime& value, std::string_view pattern) {
    const std::string shape(DatePatternOf(pattern));
    const std::string lower = LCase(shape);
    const bool halfDays = lower.find("am/pm") != std::string::npos;
    std::string result;
    char former = ' ';
    for (std::size_t at = 0; at < shape.size();) {
        if (lower.compare(at, kHalfDay.size(), "am/pm") == 0) {
            result += value.Hour() < 12 ? "AM" : "PM";
            at += kHalfDay.size();
            continue;
        }
        if (!IsDateLetter(lower[at])) {
            result += shape[at++];
            continue;
        }
        const std::size_t end = std::min(lower.find_first_not_of(lower[at], at), lower.size());
        // Behind the hour "m" are its minutes.
        const char letter = lower[at] == 'm' && former == 'h' ? 'n' : lower[at];
        result += DatePiece(value, letter, end - at, halfDays);
        former = letter;
        at = end;
    }
    return result;
}

std::string Format(const Variant& value, std::string_view pattern) {
    if (value.IsNull() || pattern.empty()) return Text(value);
    if (!IsDatePattern(pattern)) return value.IsDate() ? Text(value) : FormatNumber(value, pattern);
    const std::optional<DateTime> date = DateOf(value);
    return date ? FormatDate(*date, pattern) : Text(value);
}

}  // namespace zolmara
