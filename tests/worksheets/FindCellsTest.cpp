#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "calc/Calc_All.h"
#include "worksheets/FindCells.h"
#include "worksheets/Sheets.h"

namespace zolmara {
namespace {

using namespace test;
using Found = std::vector<std::string>;

class FindCellsTest : public TestCrf {
protected:
    static Found For(std::string_view text) {
        Found found;
        for (const FoundCell& cell : FindCells(text)) {
            found.push_back(fmt::format("{} {} {}: {}", cell.Cell.Item, NumberText(cell.Cell.Line),
                                        cell.Cell.Field, Text(cell.Value)));
        }
        return found;
    }
};

TEST_F(FindCellsTest, AComponentIsFoundOnS2Alone) {
    SetComponents(1, {1, 2});
    SetCell("S2p1", 2, "Col_1", "Lakeside Clinic");
    for (const char* item : {"Bp1", "E1p1", "F1p1"}) {
        SetCell(item, 2, "Description", "Lakeside Clinic");
    }
    EXPECT_EQ(For("LAKESIDE"), Found{"S2p1 2 Col_1: Lakeside Clinic"});
    EXPECT_EQ(For("14-2"), Found{"S2p1 2 Col_2: 14-2"});
}

TEST_F(FindCellsTest, AComponentsNumberIsFoundWithoutItsHyphen) {
    // As its cell takes it: with the hyphen or without.
    SetComponents(1, {1, 2});
    SetCell("S2p1", 1, "Col_2", "14-0231");
    SetCell("S2p1", 2, "Col_2", "AB-1234");
    const Found first{"S2p1 1 Col_2: 14-0231"};
    EXPECT_EQ(For("140231"), first);
    EXPECT_EQ(For("14-0231"), first);
    EXPECT_EQ(For(" ab1234 "), Found{"S2p1 2 Col_2: AB-1234"});
    EXPECT_EQ(For("14023"), Found{});
    EXPECT_EQ(For("abcdef"), Found{});
}

TEST_F(FindCellsTest, ACostCenterIsFoundAmongTheCostCenters) {
    EXPECT_EQ(For("salaries of off"), Found{"CostCenters 8 CCName: Salaries of Officers"});
}

TEST_F(FindCellsTest, AnAmountIsFoundOnEveryWorksheetInTheirOrder) {
    SetComponents(1, {1});
    SetCell("B1p1", 1, "CC_800", 1234.5);
    SetCell("G", 3, "Col_1", 1234.5);
    Calc_All();
    const Found found = For("1,234.50");
    ASSERT_GE(found.size(), 5u);
    EXPECT_EQ(found.front(), "B1p1 1 CC_800: 1234.5");
    EXPECT_EQ(found[1], "B1p1 1 Col_99: 1234.5");
    EXPECT_NE(std::find(found.begin(), found.end(), "G 3 Col_1: 1234.5"), found.end());
    EXPECT_NE(std::find(found.begin(), found.end(), "A 8 Col_6: 1234.5"), found.end());
}

TEST_F(FindCellsTest, AmountsAreComparedToTheTenThousandth) {
    SetCell("G", 3, "Col_1", 0.1 + 0.2);
    SetCell("G", 4, "Col_1", 0.3002);
    EXPECT_EQ(For(".3"), Found{"G 3 Col_1: 0.3"});
}

TEST_F(FindCellsTest, ANegativeInBracketsIsAnAmount) {
    SetCell("G", 3, "Col_1", -77);
    EXPECT_EQ(For("(77)"), Found{"G 3 Col_1: -77"});
}

// Who looks for the figure of a page keys its digits.
TEST_F(FindCellsTest, DigitsAloneAreFoundUnderEitherSign) {
    SetCell("G", 3, "Col_1", -481251);
    SetCell("G", 4, "Col_1", 481251);
    const Found both{"G 3 Col_1: -481251", "G 4 Col_1: 481251"};
    for (const char* digits : {"481,251", "481251", " 481,251.00 ", "$481,251", "4.81251e+5"})
        EXPECT_EQ(For(digits), both) << digits;
}

TEST_F(FindCellsTest, ASignOrBracketsFindThatSignAlone) {
    SetCell("G", 3, "Col_1", -481251);
    SetCell("G", 4, "Col_1", 481251);
    for (const char* negative : {"-481,251", "(481,251)", "($481,251)"})
        EXPECT_EQ(For(negative), Found{"G 3 Col_1: -481251"}) << negative;
    EXPECT_EQ(For("+481,251"), Found{"G 4 Col_1: 481251"});
}

TEST_F(FindCellsTest, NothingIsFoundOnceForEachSign) {
    SetCell("G", 3, "Col_1", 0);
    const Found found = For("0.00");
    EXPECT_EQ(std::ranges::count(found, "G 3 Col_1: 0"), 1);
}

TEST_F(FindCellsTest, QuotesAndWildcardsAreLettersOfTheText) {
    SetCell("A8", 1, "Col_1", "O'Hara 100% \"net\" *");
    const Found found = {"A8 1 Col_1: O'Hara 100% \"net\" *"};
    for (const char* text : {"o'hara", "100%", "\"NET\"", "*"}) EXPECT_EQ(For(text), found) << text;
    EXPECT_EQ(For("%'; DROP TABLE A8;"), Found{});
}

TEST_F(FindCellsTest, LineNumbersAreNoAmounts) {
    SetCell("G", 3, "Col_1", 48);
    EXPECT_EQ(For("48"), Found{"G 3 Col_1: 48"});
}

TEST_F(FindCellsTest, ABlankFindsNothing) {
    EXPECT_EQ(For(""), Found{});
    EXPECT_EQ(For("   "), Found{});
}

}  // namespace
}  // namespace zolmara
