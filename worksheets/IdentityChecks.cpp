#include "worksheets/IdentityChecks.h"

#include <fmt/format.h>

#include <algorithm>

#include "core/Characters.h"
#include "core/Dialogs.h"
#include "core/Globals.h"
#include "store/session/Session.h"

namespace zolmara {
namespace {

constexpr std::size_t kProviderDigits = 6;
constexpr std::size_t kMaxNameLength = 36;

void Refuse(std::string_view text, std::string_view title) {
    TheDialogs().MsgBox(std::string(text), kCritical, std::string(title));
}

}  // namespace

void RefuseProvider(std::string_view rule) {
    Refuse(fmt::format("You have entered an invalid Provider Number!\r{}", rule), kProductName);
}

bool HasProviderSigns(std::string_view number) {
    return std::ranges::all_of(number, [](char c) { return c == '-' || IsLetterOrDigit(c); });
}

bool CheckProviderNumber(std::string& number) {
    const std::string digits = Replace(number, "-", "");
    if (digits.size() != kProviderDigits || !HasProviderSigns(digits)) {
        TheDialogs().Beep();
        RefuseProvider("Provider number must be 6 numeric digits.");
        return false;
    }
    number = digits.substr(0, 2) + "-" + digits.substr(2);
    return true;
}

std::optional<DateTime> TakeFiscalDate(std::string& field, std::string_view which) {
    const std::optional<DateTime> date = ParseDate(field);
    if (date) {
        field = FormatDate(*date, "Short Date");
    } else {
        Refuse(
            fmt::format("Fiscal Year {} date is not a valid date.  Please (re-)enter one.", which),
            fmt::format("Error: Invalid Fiscal Year {} Date", which));
    }
    return date;
}

void FillEndDate(const DateTime& start, std::string& end) {
    if (Trim(end).empty()) end = FormatDate(start.AddYears(1).AddDays(-1), "Short Date");
}

void RefuseDates(std::string_view fault) {
    Refuse(fmt::format("Invalid sequence of dates -- {}", fault), kDatesTitle);
}

bool ConfirmLongYear() {
    return TheDialogs().MsgBox(
               "The F/Y Start and F/Y End dates entered span more than one fiscal year.  Click on "
               "the 'Yes' button to verify that this is what you intended.  Or, click on the 'No' "
               "button to return to the form to alter one or both of the dates.",
               kYesNo + kExclamation, "Warning: Dates Span More Than One Fiscal Year") == kYes;
}

bool CheckNameLength(const std::string& name) {
    if (Trim(name).empty()) {
        Refuse("Facility Name must be at least 1 characters.  Please (re-)enter.", kNameTitle);
        return false;
    }
    if (TextLength(name) <= kMaxNameLength) return true;
    Refuse(fmt::format("Facility Name cannot have more than {} characters.  Please (re-)enter.",
                       kMaxNameLength),
           kNameTitle);
    return false;
}

}  // namespace zolmara
