#include <gtest/gtest.h>

#include <algorithm>

#include "support/TestCrf.h"
#include "worksheets/SheetStates.h"
#include "worksheets/SheetTitles.h"
#include "worksheets/Worksheet.h"

namespace zolmara {
namespace {

TEST(SheetTitles, ListEveryWorksheetOnce) {
    std::vector<std::string> listed = SheetsByLetter();
    EXPECT_EQ(listed.front(), "Sp1");
    EXPECT_EQ(listed.back(), "G1");
    std::vector<std::string> all;
    for (const Worksheet& sheet : AllWorksheets()) all.emplace_back(sheet.Item);
    std::ranges::sort(listed);
    std::ranges::sort(all);
    EXPECT_EQ(listed, all);
}

TEST(SheetTitles, AreTheFormsWithTheComponentsOfAPart) {
    EXPECT_EQ(SheetTitle("G1"), "Statement of revenue and expenses");
    EXPECT_EQ(SheetTitle("E1p2"), "Pooled allocation, non-healthcare components");
    EXPECT_EQ(SheetTitle("Master"), "");
    for (const std::string& item : SheetsByLetter()) EXPECT_NE(SheetTitle(item), "") << item;
}

class SheetStates : public test::TestCrf {};

TEST_F(SheetStates, AWorksheetIsEmptyThenKeyedThenCalculated) {
    EXPECT_EQ(StateOfSheet("A8"), SheetState::Empty);
    test::SetCell("A8", 1, "Col_3", -10);
    EXPECT_EQ(StateOfSheet("A8"), SheetState::Keyed);
    test::SetCell("A8", 100, "Col_3", -10);
    EXPECT_EQ(StateOfSheet("A8"), SheetState::Calculated);
}

TEST_F(SheetStates, ACalculatedScheduleIsEmptyUntilItIsCalculated) {
    EXPECT_EQ(StateOfSheet("Fp1"), SheetState::Empty);
    test::SetCell("Fp1", 51, "Col_4", 7);
    EXPECT_EQ(StateOfSheet("Fp1"), SheetState::Calculated);
    EXPECT_EQ(StateOfSheet("Nothing"), SheetState::Empty);
}

TEST_F(SheetStates, AmountsOfNothingAreNothing) {
    test::SetCell("A8", 1, "Col_3", 0);
    EXPECT_EQ(StateOfSheet("A8"), SheetState::Empty);
}

}  // namespace
}  // namespace zolmara
