#pragma once

// The edit checks: the rules by which the contractor would refuse or question the statement. They
// judge the stored values and write their findings to table Error.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zolmara {

inline constexpr std::int16_t kNoErrorsLevel = 0;
inline constexpr std::int16_t kPotentialLevel = 2;  ///< should be looked at
inline constexpr std::int16_t kNonFatalLevel = 3;   ///< blocks the electronic report

inline constexpr std::string_view kNoErrorsFound = "No errors found";
inline constexpr std::string_view kPotentialError = "Potential Error";
inline constexpr std::string_view kNonFatalError = "Non-Fatal Error";

/// The highest level that the last run has met. Within a run it only rises.
extern std::int16_t gEditLevel;

/// Runs every check on the open CRF and shows the findings. Gives gEditLevel. Changes table Error,
/// and adds an index to a worksheet that has none on its key; nothing else. StoreError when a
/// table is not there; the findings up to then are kept.
std::int16_t Run_EditChecks();

/// A finding that blocks the electronic report, and one that does not.
void AddNonFatal(std::string_view code, std::string_view message);
void AddPotential(std::string_view code, std::string_view message);

/// Every code that a run can give, each once, in the order of the run.
std::vector<std::string> EditCheckCodes();

/// The Calculate command: the given calculation of the whole CRF, then the edit checks. Turns the
/// commands that build the electronic report on unless a finding blocks it. Gives gEditLevel. When
/// the calculation or a check fails, they are off and the failure goes on to the caller.
std::int16_t mnuReportCalculate(void (*calcAll)());

/// The edit checks alone; the commands that build the electronic report stay as they are.
std::int16_t mnuReportEditCheck();

}  // namespace zolmara
