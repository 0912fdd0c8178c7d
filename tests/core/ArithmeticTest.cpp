// Amounts are computed in plain double, one operation at a time: the edge of a rounding hangs on
// it. A fused or extended multiplication would carry digits that the product does not have.

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>

namespace zolmara {
namespace {

double SumOfProduct(double a, double b, double c) { return a * b + c; }

TEST(Arithmetic, RoundsEveryOperationByItself) {
    static_assert(FLT_EVAL_METHOD == 0);
    // The product is 1 + 2^-29 + 2^-60, whose last part a double does not hold.
    volatile const double factor = 1 + std::ldexp(1, -30);
    volatile const double minuend = -(1 + std::ldexp(1, -29));
    EXPECT_EQ(SumOfProduct(factor, factor, minuend), 0);
    EXPECT_NE(std::fma(factor, factor, minuend), 0) << "fused, the last part stays";
}

}  // namespace
}  // namespace zolmara
