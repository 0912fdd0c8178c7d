#pragma once

// The checks on whose statement it is, which a new file and a changed one share. Each shows what
// is wrong and puts a right entry into the form in which it is shown.

#include <optional>
#include <string>
#include <string_view>

#include "core/DateTime.h"

namespace zolmara {

inline constexpr std::string_view kDatesTitle = "Error: Invalid Dates";

/// "12-3456" of "123456" or "12-3456"; False where six letters or digits do not stand.
bool CheckProviderNumber(std::string& number);
/// The box about a provider number, with the rule that it breaks.
void RefuseProvider(std::string_view rule);
/// True where the number has letters, digits and "-" alone.
bool HasProviderSigns(std::string_view number);

/// Puts a field into the short form of its date; `which` is "Start" or "End".
std::optional<DateTime> TakeFiscalDate(std::string& field, std::string_view which);
/// An empty end becomes a year from the start less a day.
void FillEndDate(const DateTime& start, std::string& end);
/// "Invalid sequence of dates -- " and the fault.
void RefuseDates(std::string_view fault);
/// Asks whether a year of more than 365 days is meant.
bool ConfirmLongYear();

/// One character at least, and no more than the identity holds.
bool CheckNameLength(const std::string& name);
inline constexpr std::string_view kNameTitle = "Error: Invalid Facility Name";

}  // namespace zolmara
