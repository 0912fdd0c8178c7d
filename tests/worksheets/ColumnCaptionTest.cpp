#include <gtest/gtest.h>

#include "worksheets/ColumnCaption.h"
#include "worksheets/Sheets.h"

namespace zolmara {
namespace {

using namespace test;
using Lines = std::vector<std::string>;

TEST(CutTitleTest, ATitleOf12CharactersIsOneLine) {
    EXPECT_EQ(CutTitle("Profit Share"), (Lines{"Profit Share"}));
    EXPECT_EQ(CutTitle(""), (Lines{""}));
}

TEST(CutTitleTest, LinesEndAtBlanksHyphensAmpersandsAndSlashes) {
    EXPECT_EQ(CutTitle("Employee Benefits-Non-Payroll Rel"),
              (Lines{"Employee", "Benefits-", "Non-Payroll", "Rel"}));
    EXPECT_EQ(CutTitle("Taxes & Licenses-Other CRC"), (Lines{"Taxes &", "Licenses-", "Other CRC"}));
    EXPECT_EQ(CutTitle("Profit Sharing/Pension Plans"),
              (Lines{"Profit", "Sharing/", "Pension", "Plans"}));
    EXPECT_EQ(CutTitle("Cleaning, Office & Admin Supplies"),
              (Lines{"Cleaning,", "Office &", "Admin", "Supplies"}));
}

TEST(CutTitleTest, AWordsEndingMayMoveToTheNextLine) {
    EXPECT_EQ(CutTitle("Amortization Expenses"), (Lines{"Amortiza-", "tion", "Expenses"}));
    EXPECT_EQ(CutTitle("Advertiseing Cost"), (Lines{"Advertise-", "ing Cost"}));
    EXPECT_EQ(CutTitle("My Adornment Gifts"), (Lines{"My Adorn-", "ment Gifts"}));
}

TEST(CutTitleTest, ABreakBelow4IsReplacedBy12) {
    EXPECT_EQ(CutTitle("Transportation"), (Lines{"Transportati", "on"}));
    EXPECT_EQ(CutTitle("AB CDEFGHIJKLMNO"), (Lines{"AB CDEFGHIJK", "LMNO"}));
    EXPECT_EQ(CutTitle("ABC DEFGHIJKLMNO"), (Lines{"ABC", "DEFGHIJKLMNO"}));
}

TEST(CutTitleTest, PastFourLinesTheEarlierOnesAreDropped) {
    std::string title;
    for (char letter = 'a'; letter <= 'g'; ++letter) title += std::string(12, letter);
    EXPECT_EQ(CutTitle(title + "h"), (Lines{std::string(12, 'd'), std::string(12, 'e'),
                                            std::string(12, 'f'), std::string(12, 'g'), "h"}));
}

TEST(CostCenterTitleTest, TheBasisStandsInBracketsAheadOfTheName) {
    EXPECT_EQ(CostCenterTitle("Legal", " Hours ", "Worked", true), "(Hours Worked) Legal");
    EXPECT_EQ(CostCenterTitle("Legal", "(Hours)", nullptr, true), "(Hours) Legal");
    EXPECT_EQ(CostCenterTitle("Legal", nullptr, "Worked", true), "(Worked) Legal");
    EXPECT_EQ(CostCenterTitle("Legal", nullptr, "", true), "Legal");
    EXPECT_EQ(CostCenterTitle("Legal", "Hours", "Worked", false), "Legal");
    EXPECT_EQ(CostCenterTitle(nullptr, "Hours", nullptr, true), "(Hours) Not Named");
}

class ColumnCaptionTest : public SheetTest {
protected:
    std::array<std::string, 5> Captions(std::string_view field, std::string_view item) {
        Recordset centers = gDB.OpenRecordset("Select * From CostCenters Order by LineNum;");
        return ColumnCaptions(centers, field, item);
    }
};

using Five = std::array<std::string, 5>;

TEST_F(ColumnCaptionTest, LinesFillFromTheBottomAndAreCentred) {
    EXPECT_EQ(Captions("CC_1200", "B1p1"),
              (Five{"", "  Employee", "  Benefits-", " Non-Payroll", "     Rel"}));
    EXPECT_EQ(Captions("CC_100", "Bp1"), (Five{"", "", "", "", "   CRC-B&F"}));
    EXPECT_EQ(Captions("CC_100", "C1p1"), (Five{"", "", "   (Square", "Feet) CRC-B&", "      F"}));
}

TEST_F(ColumnCaptionTest, FixedColumns) {
    EXPECT_EQ(Captions("LineNum", "Bp1"), (Five{"", "", "", " Line", "   #"}));
    EXPECT_EQ(Captions("Col_0", "Dp1"), (Five{"", "", "", "", "  CCN"}));
    EXPECT_EQ(Captions("Col_0", "Dp2"), Five{});
    EXPECT_EQ(Captions("Col_0", "Dp3"), (Five{"", "", "Region-", " al HO", "   #"}));
    EXPECT_EQ(Captions("Description", "E1p1")[4], std::string(11, ' ') + "Component Name");
    EXPECT_EQ(Captions("Col_99", "Dp1")[4], "    Total");
    EXPECT_EQ(Captions("Col_7", "Bp1")[4], "    Total");
}

TEST_F(ColumnCaptionTest, ColumnsOfEAndF) {
    EXPECT_EQ(Captions("Col_1", "E1p1"), (Five{"", "", "", " Allocation", " Statistics"}));
    EXPECT_EQ(Captions("Col_2", "E"), (Five{"", "", "", " Allocation", "    Ratio"}));
    EXPECT_EQ(Captions("Col_7", "E1p3"), (Five{"", "", "", "  All Other", "   Non-CRC"}));
    EXPECT_EQ(Captions("Col_8", "F1p2"),
              (Five{"", "", "Subtotal All", "    Other", " Non-Capital"}));
    EXPECT_EQ(Captions("Col_4", "F2p1"), (Five{"", "", "    Total", "  Interest", "   Income"}));
    EXPECT_EQ(Captions("Col_4", "Fp1")[4], "Capital Cost");
}

TEST_F(ColumnCaptionTest, OddCostCenters) {
    EXPECT_EQ(Captions("CC_7700", "B1p1")[4], "<Bad CC Num>");
    SetCell("CostCenters", 8, "CCName", nullptr);
    EXPECT_EQ(Captions("CC_800", "B1p1")[4], "  Not Named");
    gDB.Execute("DELETE FROM CostCenters;");
    EXPECT_EQ(Captions("CC_900", "B1p1")[4], "<Bad CC Num>");
}

TEST_F(ColumnCaptionTest, ColumnsAreFoundInWhateverOrderTheyAreAskedFor) {
    Recordset centers = gDB.OpenRecordset("Select * From CostCenters Order by LineNum;");
    for (const std::string field : {"CC_100", "CC_200", "CC_100", "CC_100", "CC_7700", "CC_800",
                                    "CC_900", "CC_2700", "CC_2800", "CC_200", "CC_800"})
        EXPECT_EQ(ColumnCaptions(centers, field, "B1p1"), Captions(field, "B1p1")) << field;
}

TEST_F(ColumnCaptionTest, OneLineAtATimeCountsFromTheTop) {
    Recordset centers = gDB.OpenRecordset("Select * From CostCenters Order by LineNum;");
    EXPECT_EQ(ColumnCaption(centers, "CC_1200", 2, "B1p1"), "  Employee");
    EXPECT_EQ(ColumnCaption(centers, "CC_1200", 5, "B1p1"), "     Rel");
    EXPECT_EQ(ColumnCaption(centers, "CC_1200", 0, "B1p1"), "");
    EXPECT_EQ(ColumnCaption(centers, "CC_1200", 6, "B1p1"), "");
    EXPECT_EQ(ColumnCaption(centers, "CC_401", 5, "Bp1"), "<Bad CC Num>");
}

}  // namespace
}  // namespace zolmara
