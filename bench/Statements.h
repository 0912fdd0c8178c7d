#pragma once

// The statements that are measured beside the sample.

#include <array>
#include <string>

#include "bench/LargeStatement.h"

namespace zolmara::bench {

struct Size {
    const char* Name;
    int Components;
    int CostCenters;
};
/// "huge" is the large statement of the steps that take one alone.
inline constexpr std::array<Size, 3> kSizes = {
    {{"medium", 300, 50}, {"large", 1500, 100}, {"huge", 5000, 200}}};

LargeShape ShapeOf(const Size& size);

/// Makes a new statement without amounts, in place of what stands there, and leaves it open.
void MakeNew(const std::string& path);

/// Takes a text file into the open statement. Raises when there is more to read behind it than
/// that it went well: what was not taken in would not be measured.
void Import(const std::string& text);

/// Makes a statement of a shape and leaves it open, calculated.
void MakeStatement(const std::string& path, const LargeShape& shape);

/// Opens a statement. Raises when it is refused.
void Open(const std::string& path);

}  // namespace zolmara::bench
