#pragma once

// Worksheet S-1 Part II: the home office's key officers. Keyed only.

#include <span>
#include <string_view>
#include <vector>

#include "worksheets/Worksheet.h"

namespace zolmara {

struct SeedRow;

const std::vector<WorksheetField>& Fields_S1p2(std::string_view item);

void Build_S1p2();

/// The form's lines and the texts that they come with.
std::span<const SeedRow> Seeds_S1p2();

}  // namespace zolmara
