#include <gtest/gtest.h>

#include "worksheets/SheetNames.h"

namespace zolmara {
namespace {

TEST(PrintedName, IsTheFormsNameOfAPart) {
    EXPECT_EQ(PrintedName("C1p2"), "C-1 Part II");
    EXPECT_EQ(PrintedName("Bp1"), "B Part I");
    EXPECT_EQ(PrintedName("D1p3"), "D-1 Part III");
    EXPECT_EQ(PrintedName("A81p1"), "A-8-1 Part I");
    EXPECT_EQ(PrintedName("A6"), "A-6");
    EXPECT_EQ(PrintedName("A"), "A");
    EXPECT_EQ(PrintedName("E1p1"), "E-1 Part I");
    EXPECT_EQ(PrintedName("E"), "E");
}

}  // namespace
}  // namespace zolmara
