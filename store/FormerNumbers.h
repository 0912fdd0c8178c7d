#pragma once

#include <vector>

namespace zolmara {

/// A number that a field of the type dbDouble held; no number for Null.
struct FormerNumber {
    int Field;  ///< its position in the table
    double Value;
};
/// Those of a row, by rising position.
using FormerNumbers = std::vector<FormerNumber>;

/// Adds numbers that a row had, in the order in which they were replaced. What is known of an
/// earlier replacement stays.
void AddFormer(FormerNumbers& known, const FormerNumbers& more);

}  // namespace zolmara
