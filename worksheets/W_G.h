#pragma once

// Worksheet G: the home office's balance sheet.

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "worksheets/Worksheet.h"

namespace zolmara {

const std::vector<WorksheetField>& Fields_G(std::string_view item);
inline constexpr std::array<ComputedLine, 8> kComputedLines_G = {
    {{10}, {26}, {31}, {32}, {40}, {45}, {46}, {48}}};

void Build_G();

/// The subtotals, each held and written with four decimals. StoreError where one is too large
/// for that.
void Calc_G();

/// Empty where the line takes input, else the message that refuses it.
std::string ValidateCell_G(Currency lineNum);

}  // namespace zolmara
