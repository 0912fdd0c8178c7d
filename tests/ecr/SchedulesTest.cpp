#include <fmt/format.h>

#include "ecr/EcrSupport.h"
#include "ecr/Emitters.h"
#include "ecr/Schedules.h"
#include "worksheets/Worksheet.h"

namespace zolmara::test {
namespace {

class ScheduleRecords : public EcrCrf {
protected:
    /// Adds a numeric column to a schedule.
    void AddColumn(std::string_view table, std::string_view field) {
        gDB.AppendField(table, {std::string(field), FieldType::dbDouble});
    }
    /// Empties every amount of a schedule, so that a test sees its own cells alone.
    void Clear(std::string_view table) {
        const TableDef def = gDB.Table(table);
        for (const FieldDef& field : def.Fields)
            if (field.Type == FieldType::dbDouble)
                gDB.Execute(fmt::format("UPDATE {} SET {}=Null;", table, field.Name));
    }
};

TEST_F(ScheduleRecords, TheWorkedExample) {
    Clear("Bp2");
    AddColumn("Bp2", "CC_501");
    AddRow("Bp2", 4.01, {{"Description", "Foundation"}, {"CC_501", 100}});
    EXPECT_EQ(RecordsOf("Bp2"), Lines{"3B000002    4 1  5 1             100"});
}

TEST_F(ScheduleRecords, EveryScheduleHasItsCode) {
    for (const std::string item :
         {"Bp1", "B1p2", "Cp3", "C1p1", "Dp2", "D1p3", "E1p2", "Fp1", "F1p2", "F2p3"}) {
        Clear(item);
        AddColumn(item, "Col_33");
        AddRow(item, 7.5, {{"Col_33", 1}});
        const bool digit = item.size() == 4;
        const std::string code =
            fmt::format("{}{}0000{}", item[0], digit ? item[1] : '0', item.back());
        EXPECT_EQ(RecordsOf(item), Lines{"3" + code + "    750 33  " + Amount("1")}) << item;
    }
    Clear("E");
    SetCell("E", 1, "CC_100", 5);
    EXPECT_EQ(RecordsOf("E"), Lines{"3E000000    1    3  " + Amount("5")});
}

TEST_F(ScheduleRecords, AColumnIsItsCostCenter) {
    EXPECT_EQ(ScheduleColumn("CC_100", false), Currency(1));
    EXPECT_EQ(ScheduleColumn("CC_2800", false), Currency(28));
    EXPECT_EQ(ScheduleColumn("CC_401", false), Currency(4.01));
    EXPECT_EQ(ScheduleColumn("cc_9999", false), Currency(99.99));
    EXPECT_EQ(ScheduleColumn("Col_7", false), Currency(7));
    EXPECT_EQ(ScheduleColumn("Col_99", false), Currency(99));
}

TEST_F(ScheduleRecords, APoolIsNumberedAsWorksheetEDoes) {
    EXPECT_EQ(ScheduleColumn("CC_100", true), Currency(3));
    EXPECT_EQ(ScheduleColumn("CC_200", true), Currency(4));
    EXPECT_EQ(ScheduleColumn("CC_299", true), Currency(4.99));
    EXPECT_EQ(ScheduleColumn("CC_800", true), Currency(5));
    EXPECT_EQ(ScheduleColumn("CC_900", true), Currency(6));
    EXPECT_EQ(ScheduleColumn("CC_901", true), Currency(6.01));
    EXPECT_EQ(ScheduleColumn("CC_1000", true), Currency(7));
    EXPECT_EQ(ScheduleColumn("CC_2700", true), Currency(24));
    EXPECT_EQ(ScheduleColumn("CC_2800", true), Currency(8));
    EXPECT_EQ(ScheduleColumn("CC_2801", true), Currency(8.01));
    EXPECT_EQ(ScheduleColumn("Col_7", true), Currency(7));
    EXPECT_EQ(ScheduleColumn("Col_1", true), Currency(1));
}

TEST_F(ScheduleRecords, LinesAndColumnsWithSubscripts) {
    Clear("D1p1");
    AddColumn("D1p1", "CC_901");
    AddColumn("D1p1", "CC_999");
    AddRow("D1p1", 1, {{"CC_901", 10}});
    AddRow("D1p1", 1.01, {{"CC_901", 11}, {"CC_999", 12}});
    EXPECT_EQ(RecordsOf("D1p1"),
              (Lines{"3D100001    1    9 1" + Amount("10"), "3D100001    1 1  9 1" + Amount("11"),
                     "3D100001    1 1  999" + Amount("12")}));
}

/// Columns of E-1 are counted from behind the component's name, so that its number is among them.
TEST_F(ScheduleRecords, AComponentNumberThatReadsAsANumberIsAColumnOfE1) {
    Clear("E1p1");
    AddRow("E1p1", 1.5, {{"Col_0", "140001"}, {"Col_1", 7}});
    AddRow("E1p1", 1.6, {{"Col_0", "14-0001"}, {"Col_1", 8}});
    EXPECT_EQ(RecordsOf("E1p1"),
              (Lines{"3E100001    150  0  " + Amount("140001"),
                     "3E100001    150  1  " + Amount("7"), "3E100001    160  1  " + Amount("8")}));
}

TEST_F(ScheduleRecords, LinesInTheirOrder) {
    Clear("Fp1");
    AddRow("Fp1", 2, {{"Col_1", 2}});
    AddRow("Fp1", 1, {{"Col_1", 1}});
    const Lines lines = RecordsOf("Fp1");
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines.at(0).substr(10, 3), "  1");
    EXPECT_EQ(lines.at(1).substr(10, 3), "  2");
}

TEST_F(ScheduleRecords, ZeroAndNullGiveNothingAndAnythingElseARecord) {
    Clear("Bp1");
    AddRow("Bp1", 1, {{"CC_100", 0}, {"CC_200", 0.0005}});
    AddRow("Bp1", 2, {{"CC_100", -0.4}, {"CC_200", Variant()}});
    EXPECT_EQ(RecordsOf("Bp1"),
              (Lines{"3B000001    1    2  " + Amount("0"), "3B000001    2    1  " + Amount("0")}));
}

TEST_F(ScheduleRecords, AmountsAreCutAndKeepTheirSign) {
    Clear("B1p1");
    AddRow("B1p1", 1, {{"CC_800", -1234.99}, {"CC_900", 12345678901234567.0}});
    const Lines lines = RecordsOf("B1p1");
    EXPECT_EQ(lines.at(0), "3B100001    1    8  " + Amount("-1234"));
    EXPECT_EQ(lines.at(1).size(), 36u);
}

TEST_F(ScheduleRecords, TheUnitCostMultiplierHasSixDecimals) {
    Clear("C1p3");
    SetCell("C1p3", 53, "CC_100", 1000);
    SetCell("C1p3", 54, "CC_100", 0.1234565);
    SetCell("C1p3", 54, "CC_200", -2);
    EXPECT_EQ(RecordsOf("C1p3"), (Lines{"3C100003   53    1  " + Amount("1000"),
                                        "3C100003   54    1  " + Amount("0.123457"),
                                        "3C100003   54    2  " + Amount("-2.000000")}));
}

TEST_F(ScheduleRecords, Line54OfTheOtherSchedulesIsAnAmount) {
    Clear("Bp3");
    AddRow("Bp3", 54, {{"CC_100", 2.9}});
    EXPECT_EQ(RecordsOf("Bp3"), Lines{"3B000003   54    1  " + Amount("2")});
}

TEST_F(ScheduleRecords, Line54IsAloneAndNotItsSubscripts) {
    Clear("D1p3");
    AddRow("D1p3", 54.01, {{"CC_800", 2.9}});
    EXPECT_EQ(RecordsOf("D1p3"), Lines{"3D100003   54 1  8  " + Amount("2")});
}

TEST_F(ScheduleRecords, TheRatioOfAPoolHasSixDecimals) {
    Clear("E");
    SetCell("E", 2, "Col_1", 400);
    SetCell("E", 2, "Col_2", 0.25);
    SetCell("E", 2, "CC_2800", 7);
    SetCell("E", 2, "Col_7", 6);
    EXPECT_EQ(
        RecordsOf("E"),
        (Lines{"3E000000    2    1  " + Amount("400"), "3E000000    2    2  " + Amount("0.250000"),
               "3E000000    2    7  " + Amount("6"), "3E000000    2    8  " + Amount("7")}));
}

TEST_F(ScheduleRecords, APoolWhoseNumberBecomesTwoIsARatioToo) {
    Clear("E");
    AddColumn("E", "CC_500");
    SetCell("E", 1, "CC_500", 1.5);
    EXPECT_EQ(RecordsOf("E"), Lines{"3E000000    1    2  " + Amount("1.500000")});
}

TEST_F(ScheduleRecords, NamesAndNumbersOfComponentsAreNoCells) {
    Clear("Bp1");
    Clear("E1p1");
    AddRow("Bp1", 1, {{"Description", "123"}, {"Col_0", "140001"}});
    AddRow("E1p1", 1, {{"Description", "123"}, {"Col_0", "14-0001"}});
    EXPECT_EQ(RecordsOf("Bp1"), Lines{});
    EXPECT_EQ(RecordsOf("E1p1"), Lines{});
}

// The columns of E-1 are written from the component's number on.
TEST_F(ScheduleRecords, AComponentNumberWithoutDashIsColumnZeroOfE1) {
    Clear("E1p1");
    AddRow("E1p1", 1, {{"Col_0", "140001"}});
    EXPECT_EQ(RecordsOf("E1p1"), Lines{"3E100001    1    0  " + Amount("140001")});
}

TEST_F(ScheduleRecords, AnItemOutsideTheFormGivesNothing) {
    for (const char* item : {"", "B", "Bp", "Bp4", "Bp0", "B2p1", "E2p1", "F3p1", "H", "Master"})
        EXPECT_EQ(RecordsOf(item), Lines{}) << item;
}

TEST_F(ScheduleRecords, AnItemIsKnownInEitherCase) {
    Clear("Bp1");
    AddRow("Bp1", 1, {{"CC_100", 5}});
    EXPECT_EQ(RecordsOf("bP1"), Lines{"3B000001    1    1  " + Amount("5")});
}

TEST_F(ScheduleRecords, AMissingTableIsToldByName) {
    gDB.DeleteTable("Dp2");
    try {
        RecordsOf("Dp2");
        FAIL() << "no error";
    } catch (const StoreError& error) {
        EXPECT_NE(std::string(error.what()).find("Dp2"), std::string::npos) << error.what();
    }
}

TEST_F(ScheduleRecords, OneRecordForEachCellOfAWideSchedule) {
    Clear("C1p1");
    for (int i = 1; i <= 99; ++i) AddColumn("C1p1", fmt::format("CC_{}", 100 + i));
    for (int line = 1; line <= 20; ++line)
        AddRow("C1p1", line, {{"CC_101", line}, {"CC_199", -line}});
    const Lines lines = RecordsOf("C1p1");
    ASSERT_EQ(lines.size(), 40u);
    EXPECT_EQ(lines.at(38), "3C100001   20    1 1" + Amount("20"));
    EXPECT_EQ(lines.at(39), "3C100001   20    199" + Amount("-20"));
}

}  // namespace
}  // namespace zolmara::test
