#include <gtest/gtest.h>

#include "worksheets/Sheets.h"
#include "worksheets/W_S1p1.h"
#include "worksheets/W_S2.h"
#include "worksheets/W_Sp1.h"

namespace zolmara {
namespace {

using namespace test;

class W_SxTest : public SheetTest {};

TEST_F(W_SxTest, Sp1Seeds) {
    EXPECT_EQ(Rows("Sp1"), 10);
    EXPECT_EQ(TextCell("Sp1", 1, "Col_1"), "N");
    EXPECT_EQ(TextCell("Sp1", 2, "Col_1"), "0");
    EXPECT_TRUE(IsNullCell("Sp1", 3, "Col_1"));
    EXPECT_EQ(TextCell("Sp1", 8, "Description"),
              "Date of Finalization of Home Office Cost Structure");
}

TEST_F(W_SxTest, TheAmendmentNumberDrivesLine1) {
    const std::vector<std::pair<Variant, std::string>> cases = {
        {"0", "No"},      {"1", "Yes"},  {"9", "Yes"},    {"10", "Error"},    {"-1", "Error"},
        {"2.5", "Error"}, {"abc", "No"}, {nullptr, "No"}, {"99999", "Error"}, {"", "No"}};
    for (const auto& [number, answer] : cases) {
        SetCell("Sp1", 2, "Col_1", number);
        Calc_Sp1();
        EXPECT_EQ(TextCell("Sp1", 1, "Col_1"), answer) << Text(number);
        EXPECT_EQ(Cell("Sp1", 2, "Col_1"), number);
    }
}

TEST_F(W_SxTest, S1p1TakesTheIdentityOfTheCrf) {
    EXPECT_EQ(Rows("S1p1"), 5);
    EXPECT_EQ(TextCell("S1p1", 1, "Description"), "Home Office Location");
    EXPECT_EQ(TextCell("S1p1", 2, "Col_1"), "Sample Home Office");
    EXPECT_EQ(TextCell("S1p1", 2, "Col_2"), "12-3456");
    EXPECT_TRUE(IsNullCell("S1p1", 2, "Col_3"));
    EXPECT_EQ(TextCell("S1p1", 2, "Col_4"), "10/01/2022");
    EXPECT_EQ(TextCell("S1p1", 2, "Col_5"), "09/30/2023");
}

TEST_F(W_SxTest, AnApostropheInTheNameIsALetter) {
    gProviderName = "O'Neil \"West\" Homes";
    BuildWorksheet("S1p1");
    EXPECT_EQ(TextCell("S1p1", 2, "Col_1"), "O'Neil \"West\" Homes");
}

TEST_F(W_SxTest, TheDateAvailableStaysOnlyWhereNothingWasSubmitted) {
    const std::vector<std::pair<Variant, bool>> cases = {
        {"No", true}, {"no", true},     {"N", true},   {"Yes", false},
        {"", false},  {nullptr, false}, {" no", false}};
    for (const auto& [submitted, kept] : cases) {
        SetCell("S1p1", 4, "Col_3", submitted);
        SetCell("S1p1", 4, "Col_4", "01/02/2024");
        Calc_S1p1();
        EXPECT_EQ(!IsNullCell("S1p1", 4, "Col_4"), kept) << Text(submitted);
    }
}

using Cells = std::array<Variant, 6>;

TEST(CaptionS1p1Test, EachLineNamesItsColumns) {
    const auto location = CaptionS1p1(Currency(1), Cells{});
    EXPECT_EQ(location[2].Text, "P.O. Box");
    EXPECT_EQ(location[5].Text, "Zip");
    EXPECT_FALSE(location[5].Locked);
    const auto information = CaptionS1p1(Currency(2), Cells{});
    EXPECT_EQ(information[4].Text, "Report End");
    EXPECT_EQ(information[5].Text, "N/A");
    EXPECT_TRUE(information[5].Locked);
    EXPECT_EQ(CaptionS1p1(Currency(4), Cells{})[4].Text, "Reconsile to Cost Statement");
    EXPECT_EQ(CaptionS1p1(Currency(5), Cells{})[4].Text, "Email Address");
    EXPECT_EQ(CaptionS1p1(Currency(5), Cells{})[5].Text, "Employer");
}

TEST(CaptionS1p1Test, AFurtherEmailLineHasTheAddressInItsSixthColumn) {
    const auto email = CaptionS1p1(Currency(5.01), Cells{});
    EXPECT_EQ(email[5].Text, "Email Address");
    EXPECT_FALSE(email[5].Locked);
    EXPECT_EQ(email[0].Text, "N/A");
    EXPECT_TRUE(email[0].Locked);
}

TEST(CaptionS1p1Test, ALineThatTheFormLacksIsClosed) {
    for (const S1p1Caption& caption : CaptionS1p1(Currency(6), Cells{})) {
        EXPECT_EQ(caption.Text, "N/A");
        EXPECT_TRUE(caption.Locked);
    }
}

TEST(CaptionS1p1Test, TheDescriptionOfTheControlIsOpenForOtherControls) {
    for (const char* control : {"5", "9", "14"}) {
        EXPECT_FALSE(CaptionS1p1(Currency(3), Cells{control})[1].Locked) << control;
    }
    for (const Variant& control :
         {Variant("1"), Variant("4"), Variant("15"), Variant(), Variant("x")}) {
        EXPECT_TRUE(CaptionS1p1(Currency(3), Cells{control})[1].Locked) << Text(control);
    }
}

TEST(CaptionS1p1Test, TheDateAvailableIsOpenWhereNothingWasSubmitted) {
    EXPECT_FALSE(CaptionS1p1(Currency(4), Cells{"", "", "no"})[3].Locked);
    EXPECT_TRUE(CaptionS1p1(Currency(4), Cells{"", "", "Yes"})[3].Locked);
    EXPECT_TRUE(CaptionS1p1(Currency(4), Cells{})[3].Locked);
}

TEST_F(W_SxTest, S1p2Seeds) {
    EXPECT_EQ(Rows("S1p2"), 5);
    EXPECT_EQ(TextCell("S1p2", 1, "Col_1"), "President");
    EXPECT_EQ(TextCell("S1p2", 5, "Col_1"), "Controller");
    EXPECT_TRUE(IsNullCell("S1p2", 5, "Col_2"));
}

TEST_F(W_SxTest, ANewCrfHasNoComponentsAndItsSchedulesOnlyTheirTotalRows) {
    for (const int part : {1, 2, 3}) {
        const std::string suffix = std::to_string(part);
        EXPECT_EQ(Rows("S2p" + suffix), 0);
        for (const std::string& family : MirrorFamilies()) {
            const bool statistics = family == "C1p" || family == "D1p";
            const int totals = part < 3 ? 1 : statistics ? 4 : 2;
            EXPECT_EQ(Rows(family + suffix), totals) << family << part;
        }
    }
}

TEST_F(W_SxTest, FieldsOfTheThreePartsOfS2) {
    EXPECT_EQ(gDB.Table("S2p1").Fields.size(), 12u);
    EXPECT_EQ(gDB.Table("S2p2").Fields.size(), 8u);
    EXPECT_EQ(gDB.Table("S2p3").Fields.size(), 9u);
    const TableDef& regions = gDB.Table("S2p3");
    EXPECT_EQ(regions.Fields[6].Name, "Col_6");
    EXPECT_EQ(regions.Fields[6].Type, FieldType::dbCurrency);
    EXPECT_EQ(regions.Fields[5].Size, 255);
    EXPECT_EQ(FindField("S2p3", "Col_4")->Title, "City");
    EXPECT_EQ(FindField("S2p1", "Col_10")->Title, "Medicare Contractor Number");
}

}  // namespace
}  // namespace zolmara
