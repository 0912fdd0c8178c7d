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
    EXPECT_EQ(PrintedName("F2p3"), "F-2 Part III");
    EXPECT_EQ(PrintedName("G1"), "G-1");
    EXPECT_EQ(PrintedName("Sp1"), "S Part I");
}

TEST(PrintedName, OfWhatIsNoWorksheetOfThisFormIsNoTrouble) {
    EXPECT_EQ(PrintedName("S3p4"), "S-3 Part IV");
    EXPECT_EQ(PrintedName("S3p/"), "S3p/");
    EXPECT_EQ(PrintedName("Bp~"), "Bp~");
    EXPECT_EQ(PrintedName("Bp0"), "Bp0");
    EXPECT_EQ(PrintedName("p"), "p");
    EXPECT_EQ(PrintedName(""), "");
}

TEST(PrintedName, IsTheNameItselfOfATableThatIsNoWorksheet) {
    EXPECT_EQ(PrintedName("CostCenters"), "CostCenters");
    EXPECT_EQ(PrintedName("ES"), "ES");
    EXPECT_EQ(PrintedName("Master"), "Master");
    EXPECT_EQ(PrintedName(""), "");
}

}  // namespace
}  // namespace zolmara
