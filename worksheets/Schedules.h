#pragma once

// The schedules that carry costs from cost centers to components, as a table: which cost centers
// have a column in which, what its cells hold, where its amounts begin.

#include <span>
#include <string>
#include <string_view>

#include "worksheets/FormLines.h"

namespace zolmara {

enum class ScheduleKind {
    Direct,      ///< B, B-1: keyed amounts
    Statistics,  ///< C-1, D-1: keyed statistics, their cost and their multipliers
    Functional,  ///< C, D: amounts computed from the statistics
    Pooled,      ///< E, E-1: shares of the pools
    Summary,     ///< F, F-1, F-2: what the others gave each component
};

struct Schedule {
    std::string_view Family;  ///< the Item without its part
    ScheduleKind Kind;
    bool HasParts;              ///< E alone has none
    LineSpan CostCenters = {};  ///< those that may have a column, in the order of their lines
    std::string_view TotalField = {};
    std::string_view Statistics = {};  ///< the family that a functional schedule is computed from
    /// Position of the first cost center's field; the fields ahead are the line, its name and
    /// number and, on E and E-1, the statistic and the ratio.
    int FirstColumn = 3;
};

/// All of them, in the order of the form.
std::span<const Schedule> AllSchedules();

/// The schedule of a table or family, whatever its part and case; none for any other name.
const Schedule* FindSchedule(std::string_view item);

/// True where the cost center has a column in the schedule. Pools of their own are the capital
/// lines, salaries and interest; all others are one field, Col_7.
bool TakesColumn(const Schedule& schedule, Currency line);
inline constexpr std::string_view kAllOtherPools = "Col_7";

/// A table of the schedule: "Bp" and 2 give "Bp2". E is the same whatever the part.
std::string TableOf(const Schedule& schedule, int part);
std::string TableOf(std::string_view family, int part);

/// The family of a table: "Bp2" gives "Bp".
std::string_view FamilyOf(std::string_view item);

/// Worksheet E numbers its pools 3 and 4 for the capital lines, 5 and 6 for salaries, 7 for all
/// others, 8 for interest; the subscript goes along.
Currency PoolColumn(Currency line);

}  // namespace zolmara
