// Values that may be Null: what they count as, and which is the larger.

#include <fmt/format.h>

#include "core/Clock.h"
#include "core/Globals.h"

namespace zolmara {
namespace {

std::optional<double> NumberOf(const Variant& value) {
    if (value.IsNumber()) return value.Number();
    if (value.IsText()) return ParseNumber(value.AsText());
    return std::nullopt;
}

/// Negative, 0 or positive. Numbers and dates by value, all else by text.
int CompareValues(const Variant& a, const Variant& b) {
    const std::optional<double> left = NumberOf(a);
    const std::optional<double> right = NumberOf(b);
    if (left && right) return *left < *right ? -1 : *left > *right;
    if (a.IsDate() && b.IsDate()) return a.AsDate() < b.AsDate() ? -1 : a.AsDate() > b.AsDate();
    return CompareText(Text(a), Text(b));
}

}  // namespace

bool IsNumeric(const Variant& value) { return NumberOf(value).has_value(); }

double NumOr(const Variant& value, double fallback) { return NumberOf(value).value_or(fallback); }

Currency CurOr(const Variant& value, Currency fallback) {
    if (value.IsCurrency()) return value.AsCurrency();
    const std::optional<double> number = NumberOf(value);
    return number && Currency::Holds(*number) ? Currency(*number) : fallback;
}

std::string StrOr(const Variant& value, std::string_view fallback) {
    return value.IsNull() ? std::string(fallback) : Text(value);
}

Variant NullOr(const Variant& value, const Variant& fallback) {
    return value.IsNull() ? fallback : value;
}

Variant MaxOf(const Variant& a, const Variant& b) {
    if (a.IsNull()) return b;
    if (b.IsNull()) return a;
    return CompareValues(a, b) < 0 ? b : a;
}

Variant MinOf(const Variant& a, const Variant& b) {
    if (a.IsNull()) return b;
    if (b.IsNull()) return a;
    return CompareValues(a, b) > 0 ? b : a;
}

std::string Text(const Variant& value) {
    if (value.IsText()) return value.AsText();
    if (value.IsInteger()) return fmt::format_int(value.AsInteger()).str();
    if (value.IsDouble()) return NumberText(value.AsDouble());
    if (value.IsCurrency()) return NumberText(value.AsCurrency());
    if (value.IsDate()) return ShortDateText(value.AsDate());
    return {};
}

bool IsBlankValue(const Variant& value) {
    return value.IsNull() || (value.IsText() && Trim(value.AsText()).empty());
}

std::string FirstLetter(const Variant& value) { return UCase(LeftText(Text(value), 1)); }

std::optional<DateTime> DateOf(const Variant& value) {
    if (value.IsDate()) return value.AsDate();
    if (value.IsText()) return ParseDate(value.AsText());
    return std::nullopt;
}

bool IsValidDate(const Variant& value) {
    static constexpr int kYearsAhead = 2;
    const std::optional<DateTime> date = DateOf(value);
    if (!date) return false;
    const DateTime last = Now().AddYears(kYearsAhead);
    return *date >= DateTime(1966, 1, 1) && date->DayNumber() <= last.DayNumber();
}

}  // namespace zolmara
