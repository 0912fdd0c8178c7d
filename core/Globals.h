#pragma once

// The value helpers that every part of the system shares. Each takes values that may be Null.

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/Variant.h"

namespace zolmara {

// --- Numbers -------------------------------------------------------------------------------

/// Reads a number in US notation: blanks around it, a sign, one decimal point, thousands
/// commas, an exponent, "$", brackets for a negative. Nothing for any other text, and nothing
/// for a number that a double cannot hold.
std::optional<double> ParseNumber(std::string_view text);

/// True for a number and for a text that reads as one. Null and dates are not numeric.
bool IsNumeric(const Variant& value);

/// The value if it is numeric and not Null, else the fallback.
double NumOr(const Variant& value, double fallback = 0);
/// The value as a fixed-point number, else the fallback.
Currency CurOr(const Variant& value, Currency fallback = {});
/// The text form of the value; the fallback for Null.
std::string StrOr(const Variant& value, std::string_view fallback = "");
/// The value, or the fallback for Null.
Variant NullOr(const Variant& value, const Variant& fallback);

/// The larger and the smaller of two values; a Null loses. Null when both are.
Variant MaxOf(const Variant& a, const Variant& b);
Variant MinOf(const Variant& a, const Variant& b);

/// low <= value <= high.
template <class T>
bool Between(const T& value, const T& low, const T& high) {
    return low <= value && value <= high;
}

/// The system's one rounding. Ties, with a tolerance of one millionth on the scaled value, go
/// away from zero; everything else goes to the nearest. Plain double arithmetic in this order.
double RoundTo(double value, int digits);
/// The same for a cell; Null for what is not numeric.
Variant RoundTo(const Variant& value, int digits);

/// False when rounding to so many decimals moves the value by 0.0001 or more of the last one.
bool IsExactTo(double value, int digits);

/// The number at the start of a text, behind leading blanks: 0 without one, or for one that is too
/// large. It ends at the first character that cannot belong to a number.
double Val(std::string_view text);

/// A number in statements, messages, captions and records: at most 15 significant digits,
/// plain decimal, never an exponent.
std::string NumberText(double value);
std::string NumberText(Currency value);

/// The double that the text form of the value reads back as.
double ThroughText(double value);

// --- Text ----------------------------------------------------------------------------------

/// The text form of any value; empty for Null. Dates are in "Short Date".
std::string Text(const Variant& value);

/// Blanks, and blanks only, off both ends.
std::string_view Trim(std::string_view text);
std::string_view LTrim(std::string_view text);
std::string_view RTrim(std::string_view text);

/// Upper and lower case of UTF-8 text.
std::string UCase(std::string_view text);
std::string LCase(std::string_view text);
/// Less than, equal to or greater than 0, without regard to case.
int CompareText(std::string_view a, std::string_view b);
inline bool SameText(std::string_view a, std::string_view b) { return CompareText(a, b) == 0; }

/// Characters, not bytes, of UTF-8 text.
std::size_t TextLength(std::string_view text);
/// The first so many characters.
std::string_view LeftText(std::string_view text, std::size_t count);
/// So many characters from the (1-based) start; the rest without a count.
std::string_view MidText(std::string_view text, std::size_t start,
                         std::size_t count = std::string_view::npos);

std::string Replace(std::string_view text, std::string_view what, std::string_view with);
bool IsValidUtf8(std::string_view text);
/// Code page 1252 to UTF-8; the five undefined bytes become control characters of that code.
std::string FromCodePage1252(std::string_view bytes);
/// UTF-8 to code page 1252; a character that it lacks becomes "?".
std::string ToCodePage1252(std::string_view text);

/// True if the text of the value, empty when Null, has no characters but blanks.
bool IsBlankValue(const Variant& value);

/// The upper-cased first letter of the text of a value, empty when there is none.
std::string FirstLetter(const Variant& value);

// --- Dates ---------------------------------------------------------------------------------

/// The date that a value holds or that its text reads as.
std::optional<DateTime> DateOf(const Variant& value);
/// A date not before 1/1/1966 and not more than two years after today.
bool IsValidDate(const Variant& value);

// --- Format --------------------------------------------------------------------------------

/// A number by a pattern of "0", "#", ",", ".", literal signs, with a second section behind
/// ";" for negatives: "#,##0;(#,##0)". Null gives an empty text.
std::string FormatNumber(const Variant& value, std::string_view pattern);
/// A date by a pattern of m, mm, mmm, mmmm, d, dd, yy, yyyy, h, hh, n, nn, s, ss, AM/PM, or by
/// the name "Short Date", "Medium Time" or "Long Date".
std::string FormatDate(const DateTime& value, std::string_view pattern);
/// Either, by the type of the value, as the Format function of a statement.
std::string Format(const Variant& value, std::string_view pattern);

// --- Session -------------------------------------------------------------------------------

/// What the open Cost Report File is, beside its database handle.
extern std::string gCRFPath;         ///< full path; empty when none is open
extern std::string gCRFDir;          ///< its folder, without a separator at the end
extern std::string gCRFTitle;        ///< its name without the folder
extern std::string gFormNum;         ///< Master.FormNum
extern Variant gFYStart;             ///< Master.FYStart, a date or Null
extern Variant gFYEnd;               ///< Master.FYEnd, a date or Null
extern std::string gProviderName;    ///< Master.ProviderName
extern std::string gProviderNumber;  ///< Master.ProviderNumber

extern bool gDebug;                 ///< the developer flag of the settings
extern std::string gTitlePrefix;    ///< ahead of the product name in captions and page heads
extern const std::string gVersion;  ///< major, minor and revision, joined by points
/// One upper-case letter while a batch process runs; empty means that messages are boxes.
extern std::string gLogType;

/// State abbreviations and the provider number prefixes of each, in the order of the form.
struct StateCode {
    std::string_view State;
    std::string_view Prefixes;  ///< two digits each, separated by blanks
};
extern const std::array<StateCode, 53> gStateCodes;

}  // namespace zolmara
