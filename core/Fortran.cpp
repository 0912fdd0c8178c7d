#include "core/Fortran.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "core/Capitals.h"
#include "core/Globals.h"
#include "core/WholeDigits.h"

namespace zolmara {
namespace {

/// The widest field that a 16 bit width can ask for.
constexpr double kMaxWidth = 32767;

struct Field {
    const Variant& Value;
    std::string_view Format;
    std::string_view Fill;
    bool BlankZero;
    std::size_t Width;
};

std::size_t WidthFrom(double number) {
    return static_cast<std::size_t>(std::clamp(std::trunc(number), 0.0, kMaxWidth));
}

std::string Copies(std::size_t count, std::string_view what) {
    if (what.size() == 1) return std::string(count, what[0]);
    std::string result;
    for (std::size_t i = 0; i < count; ++i) result += what;
    return result;
}

std::string RightMost(const std::string& text, std::size_t width) {
    const std::size_t length = TextLength(text);
    return std::string(length > width ? MidText(text, length - width + 1) : text);
}

/// The number at the head of the value's text, without its decimals. Adding 0 makes a negative
/// zero plain.
double WholeOf(const Variant& value) {
    if (value.IsDouble() && IsWholeNumber(value.AsDouble())) return value.AsDouble() + 0.0;
    return std::trunc(Val(Text(value))) + 0.0;
}

/// Digits at the right of a field.
std::string AtRight(const Field& field, const std::string& digits) {
    if (field.Fill.size() == 1 && digits.size() <= field.Width)
        return std::string(field.Width - digits.size(), field.Fill[0]) + digits;
    return RightMost(Copies(field.Width, field.Fill) + digits, field.Width);
}

std::string KindI(const Field& field) {
    const std::string result = AtRight(field, NumberText(WholeOf(field.Value)));
    const bool blank = field.BlankZero && Val(result) == 0;
    return blank ? Copies(field.Width, field.Fill) : result;
}

std::string KindM(const Field& field) {
    const std::string digits = FormatNumber(WholeOf(field.Value), "0000");
    return RightMost(std::string(field.Width, ' ') + digits, field.Width);
}

std::string BlankIfZero(const Field& field, std::size_t width, const std::string& result) {
    const bool blank = field.BlankZero && field.Fill == " " && Val(result) == 0;
    return blank ? std::string(width, ' ') : result;
}

std::string KindF(const Field& field) {
    const std::size_t point = field.Format.find('.', 1);
    if (point == std::string_view::npos) {
        const std::string mask = Copies(std::max<std::size_t>(field.Width, 1) - 1, field.Fill);
        const std::string shown = FormatNumber(field.Value, mask + "0");
        return BlankIfZero(field, field.Width, RightMost(shown, field.Width));
    }
    const std::size_t width = WidthFrom(RoundTo(Val(field.Format.substr(1, point - 1)), 0));
    const std::size_t decimals = WidthFrom(Val(field.Format.substr(point + 1)));
    const std::string shown = FormatNumber(field.Value, "0." + std::string(decimals, '0'));
    return BlankIfZero(field, width, RightMost(Copies(width, field.Fill) + shown, width));
}

std::string KindC(const Field& field) {
    std::string text = Replace(Text(field.Value), "\r", " ");
    std::erase(text, '\n');
    return std::string(LeftText(UCaseIn1252(text) + Copies(field.Width, field.Fill), field.Width));
}

/// A number stands for the days since the end of 1899, ahead of which it counts back. Years have
/// four digits.
std::optional<DateTime> DateForMask(const Variant& value) {
    static constexpr double kFirstDay = -657434;  // 1/1/100
    static constexpr double kLastDay = 2958465;   // 12/31/9999
    if (!value.IsNumber()) return DateOf(value);
    const double day = std::trunc(value.Number());
    if (!Between(day, kFirstDay, kLastDay)) return std::nullopt;
    return DateTime(1899, 12, 30).AddDays(static_cast<std::int64_t>(day));
}

std::string KindD(const Field& field) {
    const std::optional<DateTime> date = DateForMask(field.Value);
    return date ? FormatDate(*date, "mm/dd/yyyy") : Text(field.Value);
}

std::string KindJ(const Field& field) {
    if (!IsValidDate(field.Value)) return "0000000";
    const DateTime date = *DateOf(field.Value);
    return fmt::format("{:04}{:03}", date.Year(),
                       DaysBetween(DateTime(date.Year(), 1, 1), date) + 1);
}

std::string KindZ(const Field& field) {
    static constexpr std::size_t kShortZip = 5;
    const std::string text = Text(field.Value);
    const std::string plain = Replace(Trim(text), "-", "");
    std::string zip = "00000-0000";
    if (IsNumeric(plain) && (field.Width == kShortZip || field.Width == zip.size())) {
        zip = FormatNumber(LeftText(text, kShortZip), "00000");
        if (plain.size() > kShortZip)
            zip += "-" + std::string(LeftText(plain.substr(kShortZip) + "0000", 4));
    }
    return std::string(LeftText(zip, field.Width));
}

struct Kind {
    char Letter;
    std::string (*Show)(const Field& field);
};
constexpr Kind kKinds[] = {{'I', KindI}, {'M', KindM}, {'F', KindF}, {'C', KindC},
                           {'D', KindD}, {'J', KindJ}, {'Z', KindZ}};

char KindOf(std::string_view format) {
    const std::string letter = UCase(format.substr(0, 1));
    return letter.empty() ? ' ' : letter[0];
}

}  // namespace

std::string Fortran(const Variant& value, std::string_view format, std::string_view fill,
                    bool blankZero) {
    const std::size_t width =
        WidthFrom(Val(format.substr(std::min<std::size_t>(format.size(), 1))));
    if (value.IsNull()) return Copies(width, fill);
    const Field field{value, format, fill, blankZero, width};
    for (const Kind& kind : kKinds) {
        if (kind.Letter == KindOf(format)) return kind.Show(field);
    }
    return {};
}

std::string Fortran(Variant& value, std::string_view format, std::string_view fill,
                    bool blankZero) {
    if (KindOf(format) == 'C' && !value.IsNull()) value = Text(value);
    return Fortran(std::as_const(value), format, fill, blankZero);
}

void AppendWhole(std::string& line, double number, std::size_t width) {
    if (IsWholeNumber(number)) {
        const WholeDigits digits(number, Thousands::Plain);
        if (digits.Size() <= width) {
            line.append(width - digits.Size(), ' ').append(digits.Text());
            return;
        }
    }
    line += Fortran(number, fmt::format("I{}", width), " ", false);
}

}  // namespace zolmara
