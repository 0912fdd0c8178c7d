// The loaders of the keyed allocation schedules.

#include <fmt/format.h>
#include <gtest/gtest.h>

#include "import/ImportTools.h"
#include "structure/modAddS2.h"

namespace zolmara::test {
namespace {

class ScheduleLoadersTest : public ImportTest {
protected:
    ScheduleLoadersTest() {
        for (int part : {1, 2, 3})
            for (double line : {1.0, 12.01, 50.99}) AddS2Line(Line(line), part);
    }
};

TEST_F(ScheduleLoadersTest, CellsGoToTheCostCentersColumn) {
    EXPECT_TRUE(Import({"Bp1|1|1|10", "Bp1|1|6|60", "Bp2|12.01|4|44", "B1p3|50.99|8|8",
                        "C1p1|1|2|22", "D1p2|1|28|28", "E1p3|12.01|1|99"}));
    EXPECT_EQ(NumOr(Cell("Bp1", 1, "CC_100")), 10);
    EXPECT_EQ(NumOr(Cell("Bp1", 1, "CC_600")), 60);
    EXPECT_EQ(NumOr(Cell("Bp2", 12.01, "CC_400")), 44);
    EXPECT_EQ(NumOr(Cell("B1p3", 50.99, "CC_800")), 8);
    EXPECT_EQ(NumOr(Cell("C1p1", 1, "CC_200")), 22);
    EXPECT_EQ(NumOr(Cell("D1p2", 1, "CC_2800")), 28);
    EXPECT_EQ(NumOr(Cell("E1p3", 12.01, "Col_1")), 99);
}

TEST_F(ScheduleLoadersTest, ColumnsBySchedule) {
    EXPECT_EQ(RuleOf("Bp1|1|7|5"), "Table Bp1 only allows columns 1-6: ");
    EXPECT_EQ(RuleOf("Bp3|1|0|5"), "Table Bp3 only allows columns 1-6: ");
    EXPECT_EQ(RuleOf("Bp1|1|6.01|5"), "Table Bp1 only allows columns 1-6: ");
    EXPECT_EQ(RuleOf("B1p1|1|7|5"), "Table B1p1 only allows columns 8-98.99: ");
    EXPECT_EQ(RuleOf("B1p2|1|99|5"), "Table B1p2 only allows columns 8-98.99: ");
    EXPECT_EQ(RuleOf("C1p1|1|3|5"), "Table C1p1 only allows columns 1-2.99: ");
    EXPECT_EQ(RuleOf("D1p1|1|7.99|5"), "Table D1p1 only allows columns 8-99: ");
    EXPECT_EQ(RuleOf("D1p1|1|99.01|5"), "Table D1p1 only allows columns 8-99: ");
    EXPECT_EQ(RuleOf("E1p2|1|2|5"), "Table E1p2 only allows column 1: ");
}

TEST_F(ScheduleLoadersTest, ASubscriptedColumnIsTakenWhenTheTableHasIt) {
    EXPECT_EQ(RuleOf("B1p1|1|8.01|5"), "Conversion error: ");
    Import({"CostCenter|8.01|0|x", "B1p1|1|8.01|5"});
    EXPECT_TRUE(IsClean() || ImportErrorFlag);
    EXPECT_EQ(NumOr(Cell("B1p1", 1, "CC_801")), 5);
}

TEST_F(ScheduleLoadersTest, AColumnThatTheTableLacksIsAConversionError) {
    for (auto cell : {"Bp1|1|3", "Bp1|1|1.5", "B1p1|1|55", "B1p1|1|8.015", "D1p1|1|99"})
        EXPECT_EQ(RuleOf(fmt::format("{}|5", cell)), "Conversion error: ") << cell;
}

TEST_F(ScheduleLoadersTest, ATextIsAConversionError) {
    SetCell("Bp1", 1, "CC_100", 7);
    EXPECT_EQ(RuleOf("Bp1|1|1|abc"), "Conversion error: ");
    EXPECT_EQ(NumOr(Cell("Bp1", 1, "CC_100")), 7);
    Import({"Bp1|1|1|abc", "Bp1|1|2|5"});
    EXPECT_EQ(NumOr(Cell("Bp1", 1, "CC_100")), 7);
    EXPECT_EQ(NumOr(Cell("Bp1", 1, "CC_200")), 5);
}

TEST_F(ScheduleLoadersTest, RowsBySchedule) {
    for (auto item : {"Bp1", "B1p1", "C1p1", "D1p1", "E1p1"}) {
        const auto col = item[0] == 'D' || std::string(item) == "B1p1" ? 8 : 1;
        for (auto row : {"0.5", "51", "52", "53"})
            EXPECT_EQ(RuleOf(fmt::format("{}|{}|{}|5", item, row, col)),
                      fmt::format("Table {} only allows rows 1-50.99: ", item))
                << row;
        EXPECT_EQ(RuleOf(fmt::format("{}|30|{}|5", item, col)),
                  fmt::format("Table {} line 30 doesn't exist: ", item));
    }
}

TEST_F(ScheduleLoadersTest, TheCostToBeAllocatedIsTakenOnPart3Alone) {
    EXPECT_EQ(RuleOf("C1p3|53|1|500"), "");
    EXPECT_EQ(NumOr(Cell("C1p3", 53, "CC_100")), 500);
    EXPECT_EQ(RuleOf("D1p3|53|8|600"), "");
    EXPECT_EQ(NumOr(Cell("D1p3", 53, "CC_800")), 600);
    EXPECT_EQ(RuleOf("C1p2|53|1|500"), "Table C1p2 only allows rows 1-50.99: ");
    EXPECT_EQ(RuleOf("Bp3|53|1|500"), "Table Bp3 only allows rows 1-50.99: ");
    EXPECT_EQ(RuleOf("E1p3|53|1|500"), "Table E1p3 line 53 doesn't exist: ");
    EXPECT_EQ(RuleOf("C1p3|54|1|500"), "Table C1p3 only allows rows 1-50.99: ");
}

TEST_F(ScheduleLoadersTest, BothTestsAreMade) {
    EXPECT_EQ(RulesOf("Bp2|51|7|5"),
              (std::vector<std::string>{"Table Bp2 only allows columns 1-6: ",
                                        "Table Bp2 only allows rows 1-50.99: "}));
    EXPECT_EQ(Messages().at(0),
              Refused("Bp2", "Table Bp2 only allows columns 1-6: ", "51, 7, \"5\""));
}

std::string CellsOfBp1() {
    std::string text;
    auto rows = gDB.OpenRecordset("SELECT * FROM Bp1;", dbOpenSnapshot);
    for (; !rows.Eof(); rows.MoveNext())
        for (int i = 0; i < rows.FieldCount(); ++i) text += StrOr(rows[i], "Null") + "|";
    return text;
}

/// Many lines of a table are loaded in memory, a few each by itself: nobody may notice.
TEST_F(ScheduleLoadersTest, ACellComesOutTheSameAmongManyAndAlone) {
    for (int group = 2; group <= 30; ++group) AddS2Line(Line(group), 1);
    const std::vector<std::string> cells = {
        "Bp1|2|1|10", "Bp1|2|2|-0",  "Bp1|3|1|abc",       "Bp1|3|2|1.5e308", "Bp1|3|4|1e300",
        "Bp1|5|3|7",  "Bp1|5|4| 8 ", "Bp1|6|1|\"1,234\"", "Bp1|7|1|0",       "Bp1|8|1|\"\"",
        "Bp1|9|7|3",  "Bp1|31|1|9",  "Bp1|50.99|1|3"};
    std::vector<Message> alone;
    for (const auto& cell : cells) {
        Import({cell});
        for (const auto& message : Messages())
            if (message.Text != kClosing) alone.push_back(message);
    }
    const auto rows = CellsOfBp1();
    for (int column : {100, 200, 400, 600})
        gDB.Execute(fmt::format("UPDATE Bp1 SET CC_{}=Null", column));
    EXPECT_NE(CellsOfBp1(), rows);
    std::string together;
    for (const auto& cell : cells) together += Replace(cell, "|", "\t") + "\n";
    ImportBytes(together);
    EXPECT_EQ(CellsOfBp1(), rows);
    EXPECT_EQ(Messages(), alone);
    EXPECT_EQ(NumOr(Cell("Bp1", 2, "CC_100")), 10);
    EXPECT_EQ(NumOr(Cell("Bp1", 6, "CC_100")), 1234);
    EXPECT_EQ(NumOr(Cell("Bp1", 50.99, "CC_100")), 3);
}

}  // namespace
}  // namespace zolmara::test
