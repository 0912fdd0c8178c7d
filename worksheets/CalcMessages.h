#pragma once

#include <cstdint>
#include <string>

namespace zolmara {

/// Tells the person of something that a calculation met, in a box of style 48. The next
/// calculation must tell it again as long as it is so.
void TellInCalculation(const std::string& text);

/// How many of them were told so far.
std::int64_t CalculationMessages();

}  // namespace zolmara
