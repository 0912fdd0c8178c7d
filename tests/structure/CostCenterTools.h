#pragma once

// An open CRF whose cost centers are changed.

#include <gtest/gtest.h>

#include <initializer_list>
#include <string_view>

#include "structure/AddDeleteCC.h"
#include "structure/Shape.h"
#include "support/TestCrf.h"

namespace zolmara::test {

class CostCenterTest : public TestCrf {
protected:
    /// Adds cost centers at these lines, in order.
    void AddLines(std::initializer_list<double> lines) {
        for (double line : lines) ASSERT_TRUE(AddCostCenter(Line(line))) << line;
    }
    void NameAll() {
        gDB.Execute("UPDATE CostCenters SET CCName='Line ' & LineNum WHERE CCName Is Null;");
    }
};

inline constexpr std::string_view kFunctional[] = {"Cp1", "Cp2", "Cp3", "C1p1", "C1p2", "C1p3"};
inline constexpr std::string_view kDirect[] = {"Bp1", "Bp2", "Bp3"};
inline constexpr std::string_view kPooled[] = {"E", "E1p1", "E1p2", "E1p3"};
inline constexpr std::string_view kNonCapital[] = {"B1p1", "B1p2", "B1p3", "Dp1", "Dp2",
                                                   "Dp3",  "D1p1", "D1p2", "D1p3"};

inline bool HasColumn(std::string_view table, std::string_view column) {
    return gDB.Table(table).FieldIndex(column) >= 0;
}

}  // namespace zolmara::test
