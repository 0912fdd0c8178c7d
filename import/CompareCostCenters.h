#pragma once

// The cost centers of the open CRF beside those of the source. The columns of the schedules come
// from them, so that worksheets can only be taken over where both lists are the same.

#include <string>
#include <string_view>
#include <vector>

namespace zolmara {

/// A line of either list, as it is shown: number and name.
struct CostCenterPair {
    std::string Current;  ///< empty where the open CRF lacks the line
    std::string Import;   ///< empty where the source lacks it
    bool Mismatch() const { return Current != Import; }
};

/// Both lists merged by line. StoreError when the source has none.
std::vector<CostCenterPair> CompareCostCenters();

/// True where every line stands in both lists under the same name.
bool CostCentersMatch(const std::vector<CostCenterPair>& pairs);

/// What lblWarning says.
std::string_view CostCenterWarning(bool match);

}  // namespace zolmara
