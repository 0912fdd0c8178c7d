#include <gtest/gtest.h>

#include "editchecks/Catalogue.h"
#include "editchecks/CheckedCrf.h"

namespace zolmara {
namespace {

using test::CheckedCrf;
using test::Findings;
using test::SetCell;

class References : public CheckedCrf {
protected:
    static std::string Undefined(const std::string& where) {
        return "NF | 1065 | Worksheet " + where + " is not defined in the Cost Centers Worksheet";
    }
};

TEST_F(References, ANewFileNamesNoUndefinedCostCenter) {
    EXPECT_EQ(Found(CheckCostCenterRefs), Findings{});
}

TEST_F(References, EveryUndefinedCostCenterIsToldInTheOrderOfTheTables) {
    AddRow("A", 30);
    AddRow("A", 4.01);
    AddRow("A6", 1, {{"Col_4", 31}, {"Col_7", 32.5}});
    AddRow("A6", 2, {{"Col_4", 8}, {"Col_7", 4.01}});
    SetCell("A8", 1, "Col_5", 33);
    AddRow("A81p1", 1, {{"Col_1", 34}});
    EXPECT_EQ(Found(CheckCostCenterRefs),
              (Findings{Undefined("A: LineNum (4.01) cost center (4.01)"),
                        Undefined("A: LineNum (30) cost center (30)"),
                        Undefined("A6: LineNum (1) cost center (31)"),
                        Undefined("A6: LineNum (2) cost center (4.01)"),
                        Undefined("A6: LineNum (1) cost center (32.5)"),
                        Undefined("A8: LineNum (1) cost center (33)"),
                        Undefined("A81p1: SeqNum (1) cost center (34)")}));
    for (double line : {30.0, 4.01, 31.0, 32.5, 33.0, 34.0}) AddRow("CostCenters", line);
    EXPECT_EQ(Found(CheckCostCenterRefs), Findings{});
}

TEST_F(References, SubtotalsAndTotalsAreNoCostCenters) {
    AddRow("A6", 1, {{"Col_4", 3}, {"Col_7", 7}});
    AddRow("A6", 2, {{"Col_4", 0}, {"Col_7", 99}});
    AddRow("A6", 3, {{"Col_4", 3.5}, {"Col_7", 0.5}});  // by their whole part
    EXPECT_EQ(Found(CheckCostCenterRefs), Findings{});
}

TEST_F(References, LinesOutsideZeroTo99AndNullsAreNotLookedUp) {
    AddRow("A6", 1, {{"Col_4", -1}, {"Col_7", 99.01}});
    AddRow("A6", 2);
    EXPECT_EQ(Found(CheckCostCenterRefs), Findings{});
}

TEST_F(References, AShiftedLineIsToldAsWhatItStandsFor) {
    AddRow("A6", 1, {{"Col_4", 130}});
    AddRow("A6", 2, {{"Col_4", 108}});
    AddRow("A6", 3, {{"Col_4", 30}});
    const auto shifted = [] {
        CheckCCRefs("A6", "Col_4", Currency::FromWhole(0), Currency::FromWhole(99),
                    Currency::FromWhole(-100));
    };
    EXPECT_EQ(FoundBy(shifted),
              Findings{Undefined("A6: LineNum (1) cost center (130)") + " as (30)"});
}

}  // namespace
}  // namespace zolmara
