// Numbers: reading them from text, their text form, and the system's rounding.

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>

#include "core/Characters.h"
#include "core/Globals.h"
#include "core/LeadingNumber.h"

namespace zolmara {
namespace {

std::optional<double> FromPlain(std::string_view digits) {
    double value = 0;
    const char* end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, value);
    if (error != std::errc() || stop != end) return std::nullopt;
    return value;
}

/// True for digits and one point alone, which is what nearly every number is.
bool IsPlain(std::string_view text) {
    bool point = false;
    bool digit = false;
    for (const char c : text) {
        if (IsDigit(c)) {
            digit = true;
        } else if (c == '.' && !point) {
            point = true;
        } else {
            return false;
        }
    }
    return digit;
}

/// What stands ahead of a number: a sign, "$" or an opening bracket, each once.
struct Prefix {
    bool Sign = false;
    bool Minus = false;
    bool Dollar = false;
    bool Bracket = false;
};

/// Takes one sign of the prefix; false where the number itself begins.
bool TakePrefixSign(char c, Prefix& prefix) {
    bool* seen = nullptr;
    if (c == '+' || c == '-') seen = &prefix.Sign;
    if (c == '$') seen = &prefix.Dollar;
    if (c == '(') seen = &prefix.Bracket;
    if (!seen || *seen) return false;
    *seen = true;
    if (c == '-') prefix.Minus = true;
    return true;
}

std::string_view TakePrefix(std::string_view text, Prefix& prefix) {
    while (!text.empty() && (text[0] == ' ' || TakePrefixSign(text[0], prefix)))
        text.remove_prefix(1);
    return text;
}

/// The digits ahead of the point without their commas, which must part them by threes; nothing
/// for commas that stand elsewhere.
std::optional<std::string> WithoutCommas(std::string_view whole) {
    if (whole.find(',') == std::string_view::npos) return std::string(whole);
    std::string digits;
    std::size_t group = 0;
    bool first = true;
    for (const char c : whole) {
        if (c != ',') {
            digits += c;
            ++group;
            continue;
        }
        if (first ? group < 1 || group > 3 : group != 3) return std::nullopt;
        first = false;
        group = 0;
    }
    if (group != 3) return std::nullopt;
    return digits;
}

/// True for the exponent of a number: "e", a sign or none, digits.
bool IsExponent(std::string_view text) {
    if (text.empty()) return true;
    text.remove_prefix(1);
    if (!text.empty() && (text[0] == '+' || text[0] == '-')) text.remove_prefix(1);
    return !text.empty() && std::all_of(text.begin(), text.end(), IsDigit);
}

/// A number without its prefix: digits with commas, a point, an exponent.
std::optional<double> ParseBody(std::string_view text) {
    const std::size_t wholeEnd = std::min(text.find_first_not_of("0123456789,"), text.size());
    const std::size_t fractionEnd = std::min(text.find_first_of("eE", wholeEnd), text.size());
    const std::optional<std::string> whole = WithoutCommas(text.substr(0, wholeEnd));
    if (!whole) return std::nullopt;
    const std::string mantissa =
        *whole + std::string(text.substr(wholeEnd, fractionEnd - wholeEnd));
    std::string exponent(text.substr(fractionEnd));
    if (!IsPlain(mantissa) || !IsExponent(exponent)) return std::nullopt;
    std::erase(exponent, '+');
    return FromPlain(mantissa + exponent);
}

/// A number as people write it, with its signs around it.
std::optional<double> ParseWritten(std::string_view text) {
    Prefix prefix;
    text = TakePrefix(text, prefix);
    if (prefix.Bracket) {
        if (prefix.Sign || !text.ends_with(')')) return std::nullopt;
        text = RTrim(text.substr(0, text.size() - 1));
    }
    const std::optional<double> value = ParseBody(text);
    if (!value) return std::nullopt;
    return prefix.Bracket || prefix.Minus ? -*value : *value;
}

}  // namespace

std::optional<double> ParseNumber(std::string_view text) {
    text = Trim(text);
    if (IsPlain(text)) return FromPlain(text);
    return ParseWritten(text);
}

std::optional<double> LeadingNumber(std::string_view text) {
    std::string_view rest = LTrim(text);
    const bool signedUp = rest.starts_with('+');
    if (signedUp) rest.remove_prefix(1);
    const std::size_t first = !signedUp && rest.starts_with('-') ? 1 : 0;
    if (first >= rest.size() || !(IsDigit(rest[first]) || rest[first] == '.')) return 0;
    double value = 0;
    const auto result = std::from_chars(rest.data(), rest.data() + rest.size(), value);
    if (result.ec == std::errc::result_out_of_range) return std::nullopt;
    return result.ec == std::errc() ? value : 0;
}

double Val(std::string_view text) { return LeadingNumber(text).value_or(0); }

// --- Text form -----------------------------------------------------------------------------

namespace {

constexpr double kMaxFifteenDigits = 1e15;

/// A value that is a whole number of the given parts of one, of at most 15 digits: its text form
/// is that decimal number, and reads back as the same double, since both divisions are rounded
/// from the same quotient. Nothing where the value is no such number.
std::optional<std::int64_t> AsParts(double value, double partsOfOne) {
    const double scaled = value * partsOfOne;
    if (!(std::abs(scaled) < kMaxFifteenDigits)) return std::nullopt;
    const double whole = std::nearbyint(scaled);
    if (whole / partsOfOne != value) return std::nullopt;
    return static_cast<std::int64_t>(whole);
}

std::string PartsText(std::int64_t parts, int decimals) {
    const auto places = static_cast<std::size_t>(decimals);
    std::string text = fmt::format_int(std::abs(parts)).str();
    if (text.size() <= places) text.insert(0, places + 1 - text.size(), '0');
    text.insert(text.size() - places, 1, '.');
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.pop_back();
    return parts < 0 ? "-" + text : text;
}

/// Digits and a power of ten as plain decimals: ("123", 1) is "12.3".
std::string PlaceDigits(std::string digits, int pointAt) {
    digits.erase(digits.find_last_not_of('0') + 1);
    if (pointAt <= 0) return "0." + std::string(static_cast<std::size_t>(-pointAt), '0') + digits;
    const auto at = static_cast<std::size_t>(pointAt);
    if (digits.size() <= at) return digits + std::string(at - digits.size(), '0');
    return digits.insert(at, 1, '.');
}

std::string AnyNumberText(double value) {
    if (!std::isfinite(value)) return fmt::format("{}", value);
    const std::string form = fmt::format("{:.14e}", std::abs(value));
    const std::size_t e = form.find('e');
    int exponent = 0;
    std::from_chars(form.data() + e + (form[e + 1] == '+' ? 2 : 1), form.data() + form.size(),
                    exponent);
    const std::string digits = form.substr(0, 1) + form.substr(2, e - 2);
    return (value < 0 ? "-" : "") + PlaceDigits(digits, exponent + 1);
}

}  // namespace

std::string NumberText(double value) {
    if (const auto whole = AsParts(value, 1)) return fmt::format_int(*whole).str();
    if (const auto cents = AsParts(value, 100)) return PartsText(*cents, 2);
    if (const auto millionths = AsParts(value, 1e6)) return PartsText(*millionths, 6);
    return AnyNumberText(value);
}

std::string NumberText(Currency value) {
    if (value.IsWhole()) return fmt::format_int(value.Whole()).str();
    return PartsText(value.Units(), 4);
}

double ThroughText(double value) {
    if (AsParts(value, 1)) return value == 0 ? 0 : value;
    if (AsParts(value, 100) || AsParts(value, 1e6) || !std::isfinite(value)) return value;
    std::array<char, 32> form{};
    const auto end = fmt::format_to_n(form.data(), form.size(), "{:.14e}", value).out;
    double back = value;
    std::from_chars(form.data(), end, back);
    return back;
}

// --- Rounding ------------------------------------------------------------------------------

namespace {

constexpr double kTieTolerance = 0.000001;
constexpr double kExactTolerance = 0.0001;
constexpr int kMaxPower = 18;

/// Powers of ten as the library's pow gives them, without its cost.
double PowerOfTen(int exponent) {
    static const auto powers = [] {
        std::array<double, 2 * kMaxPower + 1> table{};
        int power = -kMaxPower;
        for (double& entry : table) entry = std::pow(10.0, power++);
        return table;
    }();
    if (exponent < -kMaxPower || exponent > kMaxPower) return std::pow(10.0, exponent);
    const int place = exponent + kMaxPower;
    return powers[static_cast<std::size_t>(place)];
}

}  // namespace

double RoundTo(double value, int digits) {
    const double scaled = value * PowerOfTen(digits);
    if (!std::isfinite(scaled)) return value;
    const double cut = std::trunc(scaled);
    if (std::abs(std::abs(scaled - cut) - 0.5) < kTieTolerance) {
        const double away = scaled < 0 ? cut - 1 : cut + 1;
        return away * PowerOfTen(-digits);
    }
    return std::floor(scaled + 0.5) / PowerOfTen(digits);
}

Variant RoundTo(const Variant& value, int digits) {
    if (!IsNumeric(value)) return {};
    return RoundTo(NumOr(value), digits);
}

bool IsExactTo(double value, int digits) {
    const double moved = std::abs(value - RoundTo(value, digits));
    return !(moved * PowerOfTen(digits) >= kExactTolerance);
}

}  // namespace zolmara
