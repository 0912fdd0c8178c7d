#pragma once

#include <string_view>

#include "ecr/EmitterTables.h"

namespace zolmara {

struct EcrRun;

/// Writes the cells of an allocation schedule, walking its columns by their place, since their
/// number follows the cost centers.
void ECR_Schedule(EcrRun& run, const ScheduleEmitter& schedule, std::string_view item);

/// The number under which the form knows a schedule's column: "CC_401" is 4.01, "Col_7" is 7.
/// A pool's column is numbered in the order of worksheet E.
Currency ScheduleColumn(std::string_view field, bool pooled);

}  // namespace zolmara
