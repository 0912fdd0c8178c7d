// The schedules: their pages across and down.

#include <fmt/format.h>

#include <algorithm>

#include "print/PrintSupport.h"
#include "print/Reports.h"
#include "support/StatementMeter.h"
#include "worksheets/Worksheet.h"

namespace zolmara::test {
namespace {

using Lines = std::vector<std::string>;

std::string Columns(const std::string& line, std::size_t from, std::size_t to) {
    return std::string(MidText(line, from, to - from + 1));
}

class SchedulesTest : public PrintCrf {};

TEST_F(SchedulesTest, HeadingsStandInFiveLinesOverTheirColumns) {
    gDB.Execute("UPDATE CostCenters SET CCName='CRC-Buildings & Fixtures' WHERE LineNum=1;");
    Print_Bx("Bp1", run);
    const Lines lines = Printed("Bp1.prt");
    EXPECT_EQ(Trim(lines.at(8)).substr(0, 18), "Worksheet B Part I");
    EXPECT_EQ(Trim(lines.at(10)), "HEALTHCARE PROVIDER COMPONENTS");
    EXPECT_EQ(lines.at(11), "");
    // Lines 12 to 16 are the heading. "CRC-Buildings & Fixtures" breaks behind the "-" (position
    // 4, below 4 is not): "CRC-", "Buildings &", "Fixtures", centred in 13.
    EXPECT_EQ(Columns(lines.at(14), 52, 64), "    CRC-     ");
    EXPECT_EQ(Columns(lines.at(16), 44, 47), "  CC");
    EXPECT_EQ(Columns(lines.at(15), 1, 6), " Line ");
    EXPECT_EQ(Columns(lines.at(16), 1, 4), "   #");
    EXPECT_NE(lines.at(16).find("Component Name"), std::string::npos);
}

TEST_F(SchedulesTest, TheColumnsOfAPageStandThirteenApart) {
    gDB.Execute("UPDATE Bp1 SET CC_100=-5000,CC_200=123456789012,Col_7=7 WHERE LineNum=1;");
    Print_Bx("Bp1", run);
    const std::string row = LinesWith(Printed("Bp1.prt"), "Lakeside").at(0);
    EXPECT_EQ(Columns(row, 1, 23), " 1    Lakeside Hospital");
    EXPECT_EQ(Columns(row, 44, 50), "14-0001");
    EXPECT_EQ(Columns(row, 52, 63), "      -5,000");
    EXPECT_EQ(Columns(row, 65, 76), "123456789012");
}

TEST_F(SchedulesTest, ALongNameTakesASecondLine) {
    Print_Bx("Bp1", run);
    const Lines lines = Printed("Bp1.prt");
    const auto first = std::ranges::find_if(
        lines, [](const std::string& line) { return line.find("Riverside") != std::string::npos; });
    ASSERT_NE(first, lines.end());
    EXPECT_EQ(Columns(*first, 7, 42), "Riverside Hospital and              ");
    EXPECT_EQ(Trim(*(first + 1)).substr(0, 14), "Rehabilitation");
}

TEST_F(SchedulesTest, ColumnsThatDoNotFitStandOnFurtherPagesWithLinesAndNamesRepeated) {
    Print_Bx("B1p1", run);
    const Lines lines = Printed("B1p1.prt");
    const std::size_t columns = gDB.Table("B1p1").Fields.size() - 3;
    // (176 - 52 + 1) / 13 is 9.
    ASSERT_EQ(PageCount(lines), static_cast<int>((columns + 8) / 9));
    EXPECT_EQ(LinesWith(lines, "Lakeside Hospital").size(), (columns + 8) / 9);
    EXPECT_EQ(LinesWith(lines, "Component Name").size(), (columns + 8) / 9);
    EXPECT_EQ(LinesWith(lines, ", continued").size(), (columns + 8) / 9 - 1);
    for (const std::string& line : lines) EXPECT_LE(TextLength(line), 176U) << line;
    // The first page ends with a column at 52 + 13 * 8.
    EXPECT_EQ(LinesWith(PageOf(lines, 1), "------------").at(0).size(), 52U + 13 * 8 + 12 - 1);
}

TEST_F(SchedulesTest, TotalsHaveRulesAndTheThirdPartAGrandTotal) {
    Print_Bx("Bp1", run);
    EXPECT_EQ(LinesWith(Printed("Bp1.prt"), "====").size(), 2U);  // the page, and line 51
    Print_Bx("Bp3", run);
    const Lines lines = Printed("Bp3.prt");
    EXPECT_EQ(LinesWith(lines, "Grand Total").size(), 1U);
    EXPECT_EQ(Columns(lines.back(), 52, 63), "============");
    EXPECT_EQ(Columns(*(lines.end() - 2), 1, 17), "52    Grand Total");
}

TEST_F(SchedulesTest, UnitCostMultipliersAndRatiosHaveSixDecimals) {
    Print_Bx("C1p3", run);
    // 22,900 over 8,240 + 10,560.
    EXPECT_EQ(Columns(LinesWith(Printed("C1p3.prt"), "1.218085").at(0), 1, 6), "54    ");
    Print_Ex("E1p1", run);
    // 600 of 600 + 300 in this part.
    const std::string row = LinesWith(Printed("E1p1.prt"), "Lakeside").at(0);
    EXPECT_EQ(Columns(row, 52, 63), "         600");
    EXPECT_EQ(Columns(row, 65, 76), "    0.666667");
}

TEST_F(SchedulesTest, StatisticsSchedulesShowTheirBasisInTheHeading) {
    gDB.Execute("UPDATE CostCenters SET StatLabel1='Square',StatLabel2='Feet' WHERE LineNum=1;");
    Print_Bx("C1p1", run);
    EXPECT_EQ(LinesWith(Printed("C1p1.prt"), "(Square").size(), 1U);
    Print_Bx("Cp1", run);
    EXPECT_TRUE(LinesWith(Printed("Cp1.prt"), "(Square").empty());
}

TEST_F(SchedulesTest, LabelsNameTheWorksheetAndThePart) {
    const std::pair<std::string, std::string> labels[] = {{"Bp2", "B Part II"},
                                                          {"B1p3", "B-1 Part III"},
                                                          {"Cp1", "C Part I"},
                                                          {"D1p2", "D-1 Part II"},
                                                          {"E", "E"},
                                                          {"E1p1", "E-1 Part I"},
                                                          {"Fp3", "F Part III"},
                                                          {"F2p1", "F-2 Part I"}};
    for (const auto& [item, label] : labels) {
        Print_Bx(item, run);
        EXPECT_NE(Printed(item + ".prt").at(8).find("Worksheet " + label + "        "),
                  std::string::npos)
            << item;
    }
}

TEST_F(SchedulesTest, TitlesNameTheComponents) {
    const std::pair<std::string, std::string> titles[] = {
        {"Bp1", "HEALTHCARE PROVIDER COMPONENTS"},
        {"E1p2", "NON-HEALTHCARE PROVIDER COMPONENTS"},
        {"F1p3", "REGION / DIVISION COMPONENTS"}};
    for (const auto& [item, title] : titles) {
        Print_Bx(item, run);
        EXPECT_EQ(Trim(Printed(item + ".prt").at(10)), title);
    }
}

TEST_F(SchedulesTest, EHasNoComponentNumbersAndTotalsItsParts) {
    Print_Ex("E", run);
    const Lines lines = Printed("E.prt");
    const std::string total = LinesWith(lines, "Total").at(0);
    EXPECT_EQ(Columns(total, 1, 11), " 4    Total");
    // 600 + 300, 50 and 50.
    EXPECT_EQ(Columns(total, 52, 63), "       1,000");
}

TEST_F(SchedulesTest, ManyRowsContinueWithTheirHeadings) {
    RunBatch(gDB, [] {
        for (int i = 0; i < 100; ++i) {
            gDB.Execute("INSERT INTO Bp1 (LineNum,Description,CC_100) VALUES (?,'Clinic',1);",
                        {Currency::FromUnits(30000 + i * 100)});
        }
    });
    Print_Bx("Bp1", run);
    const Lines lines = Printed("Bp1.prt");
    // Head 10, title 1, blank 1, headings 5: rows from 17 to 70, 54 lines a page; 3 lines of
    // names, 100 clinics, rule and total.
    EXPECT_EQ(PageCount(lines), 2);
    EXPECT_EQ(LinesWith(PageOf(lines, 1), "Clinic").size(), 51U);
    EXPECT_EQ(LinesWith(lines, "Component Name").size(), 2U);
}

TEST_F(SchedulesTest, ATotalBeginsWhileTheCounterIsAtTheLimit) {
    // 17 lines of head, 53 rows: the counter is 70.
    gDB.Execute("DELETE * FROM Bp1 WHERE LineNum<51;");
    RunBatch(gDB, [] {
        for (int i = 0; i < 53; ++i)
            gDB.Execute("INSERT INTO Bp1 (LineNum,Description,CC_100) VALUES (?,'Clinic',1);",
                        {Currency::FromUnits(300000 + i * 100)});
    });
    Print_Bx("Bp1", run);
    EXPECT_EQ(PageCount(Printed("Bp1.prt")), 1);
    EXPECT_EQ(Printed("Bp1.prt").size(), 73U);
}

/// A schedule with so many cost centers and components in place of Bp1.
void MakeSchedule(int columns, int rows) {
    gDB.DeleteTable("Bp1");
    TableDef table{"Bp1", {}, {}};
    table.Fields = {{"LineNum", FieldType::dbCurrency, 0, true, false},
                    {"Description", FieldType::dbText, 40, true, false},
                    {"Col_0", FieldType::dbText, 40, true, false}};
    for (int i = 0; i < columns; ++i)
        table.Fields.push_back(
            {fmt::format("CC_{}", 100 + i), FieldType::dbDouble, 0, true, false});
    gDB.AppendTable(table);
    std::string sql = "INSERT INTO Bp1 VALUES (?,'Clinic','14-0001'";
    for (int i = 0; i < columns; ++i) sql += fmt::format(",{}", i);
    sql += ");";
    RunBatch(gDB, [&] {
        for (int i = 0; i < rows; ++i) gDB.Execute(sql, {Currency::FromUnits(10000 + i * 100)});
    });
}

TEST_F(SchedulesTest, TwoHundredCostCentersStandOnTwentyThreePages) {
    MakeSchedule(200, 3);
    Print_Bx("Bp1", run);
    const Lines lines = Printed("Bp1.prt");
    EXPECT_EQ(PageCount(lines), 23);
    // Each of the 200 columns once on a row: 0 to 199.
    const Lines last = PageOf(lines, 23);
    EXPECT_EQ(Columns(last.at(17), 52, 76), "         198          199");
}

/// A file that somebody else made may lack the columns that name a row.
TEST_F(SchedulesTest, AScheduleWithoutNamesIsPrintedWithItsLinesAndAmounts) {
    gDB.DeleteTable("Bp1");
    gDB.AppendTable({"Bp1",
                     {{"LineNum", FieldType::dbCurrency, 0, true, false},
                      {"CC_100", FieldType::dbDouble, 0, true, false}},
                     {}});
    gDB.Execute("INSERT INTO Bp1 VALUES (4.01,1234);");
    Print_Bx("Bp1", run);
    EXPECT_EQ(Printed("Bp1.prt").back(), " 4.01" + std::string(46 + 7, ' ') + "1,234");
}

TEST_F(SchedulesTest, TheCostGrowsWithTheCells) {
    const StatementMeter meter;
    gDB = DBEngine::OpenDatabase(gCRFPath);
    const auto print = [&] { Print_Bx("Bp1", run); };
    MakeSchedule(50, 100);
    const StoreWork small = meter.CountOf(print);
    MakeSchedule(200, 400);
    const StoreWork large = meter.CountOf(print);
    // 16 times the cells: four times the rows, on four times the pages.
    EXPECT_GT(small.Statements, 0);
    EXPECT_LT(large.Statements, 20 * small.Statements);
    EXPECT_LT(large.Steps, 20 * small.Steps);
}

TEST_F(SchedulesTest, ABillionLeavesABlankBehindTheAmountBeforeIt) {
    SetCell("Bp1", 1, "CC_100", 5);
    SetCell("Bp1", 1, "CC_200", 1234567890);
    Print_Bx("Bp1", run);
    EXPECT_EQ(LinesWith(Printed("Bp1.prt"), " 5 1,234,567,890 ").size(), 1U);
}

}  // namespace
}  // namespace zolmara::test
