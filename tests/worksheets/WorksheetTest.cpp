#include <gtest/gtest.h>

#include "worksheets/Sheets.h"
#include "worksheets/Worksheet.h"

namespace zolmara {
namespace {

using namespace test;

class WorksheetTest : public SheetTest {};

Currency Line(double line) { return Currency(line); }

TEST_F(WorksheetTest, TheFormHas46WorksheetsAtTheirLevels) {
    ASSERT_EQ(AllWorksheets().size(), 46u);
    const std::vector<std::pair<std::string, int>> levels = {
        {"Sp1", 0},   {"S1p1", 0},  {"S1p2", 0},  {"S2p1", 0},  {"S2p2", 0},  {"S2p3", 0},
        {"A6", 0},    {"A7p1", 0},  {"A81p1", 0}, {"A81p2", 0}, {"A8", 5},    {"B1p1", 7},
        {"B1p2", 7},  {"B1p3", 7},  {"Bp1", 8},   {"Bp2", 8},   {"Bp3", 8},   {"A7p2", 9},
        {"C1p1", 9},  {"C1p2", 9},  {"C1p3", 9},  {"Cp1", 10},  {"Cp2", 10},  {"Cp3", 10},
        {"D1p1", 11}, {"D1p2", 11}, {"D1p3", 11}, {"Dp1", 12},  {"Dp2", 12},  {"Dp3", 12},
        {"A", 13},    {"E", 14},    {"E1p1", 15}, {"E1p2", 15}, {"E1p3", 15}, {"Fp1", 19},
        {"Fp2", 19},  {"Fp3", 19},  {"F1p1", 20}, {"F1p2", 20}, {"F1p3", 20}, {"F2p1", 21},
        {"F2p2", 21}, {"F2p3", 21}, {"G", 22},    {"G1", 23}};
    for (std::size_t i = 0; i < levels.size(); ++i) {
        EXPECT_EQ(AllWorksheets()[i].Item, levels[i].first);
        EXPECT_EQ(AllWorksheets()[i].Calc_Lvl, levels[i].second) << levels[i].first;
        EXPECT_EQ(gDB.Scalar("SELECT Calc_Lvl FROM Worksheets WHERE Item = ?;", {levels[i].first}),
                  Variant(levels[i].second))
            << levels[i].first;
    }
}

TEST_F(WorksheetTest, EveryTableHasTheDescribedFieldsAndAUniqueIndexOnItsKey) {
    for (const Worksheet& sheet : AllWorksheets()) {
        const TableDef& table = gDB.Table(sheet.Item);
        const std::vector<WorksheetField> fields = sheet.Fields(sheet.Item);
        ASSERT_EQ(table.Fields.size(), fields.size()) << sheet.Item;
        for (std::size_t i = 0; i < fields.size(); ++i) {
            EXPECT_EQ(table.Fields[i].Name, fields[i].Name) << sheet.Item;
            EXPECT_EQ(table.Fields[i].Type, fields[i].Type) << sheet.Item << fields[i].Name;
            EXPECT_EQ(table.Fields[i].Size, fields[i].Size) << sheet.Item << fields[i].Name;
        }
        ASSERT_EQ(table.Indexes.size(), 1u) << sheet.Item;
        EXPECT_EQ(table.Indexes[0].Name, "ndx" + std::string(sheet.Item));
        EXPECT_TRUE(table.Indexes[0].Unique);
        EXPECT_EQ(table.Indexes[0].Fields, std::vector<std::string>{std::string(sheet.Key)});
    }
}

TEST_F(WorksheetTest, FindWorksheetIgnoresCase) {
    ASSERT_NE(FindWorksheet("b1P3"), nullptr);
    EXPECT_EQ(FindWorksheet("b1P3")->Item, "B1p3");
    EXPECT_EQ(FindWorksheet("A82"), nullptr);
    EXPECT_EQ(FindWorksheet(""), nullptr);
}

TEST_F(WorksheetTest, BuildWorksheetOfNoWorksheetOfThisFormReturnsFalseAndLeavesNoTable) {
    for (const char* item : {"A82", "S3p1", "S3p2", "S3p3", "S3p4"}) {
        EXPECT_FALSE(BuildWorksheet(item)) << item;
        EXPECT_FALSE(gDB.HasTable(item)) << item;
    }
}

TEST_F(WorksheetTest, BuildWorksheetDropsATableThatIsNoWorksheet) {
    gDB.AppendTable({.Name = "A82", .Fields = {{.Name = "LineNum"}}, .Indexes = {}});
    EXPECT_FALSE(BuildWorksheet("A82"));
    EXPECT_FALSE(gDB.HasTable("A82"));
}

TEST_F(WorksheetTest, BuildWorksheetKeepsTheCoreTables) {
    for (const char* table : {"Master", "CostCenters", "Worksheets", "ES", "Log"}) {
        EXPECT_FALSE(BuildWorksheet(table));
        EXPECT_TRUE(gDB.HasTable(table)) << table;
    }
}

TEST_F(WorksheetTest, BuildWorksheetLosesTheKeyedDataAndKeepsOneRegistryRow) {
    SetCell("G", 1, "Col_1", 500);
    EXPECT_TRUE(BuildWorksheet("g"));
    EXPECT_EQ(Num("G", 1, "Col_1"), 0);
    EXPECT_EQ(gDB.Scalar("SELECT Count(*) FROM Worksheets WHERE Item = 'G';"), Variant(1));
}

TEST_F(WorksheetTest, BuildWorksheetLetsEventsRun) {
    const int before = host.DoEventsCount;
    BuildWorksheet("S1p2");
    EXPECT_GT(host.DoEventsCount, before);
}

TEST_F(WorksheetTest, EveryWorksheetCanBeBuiltAgain) {
    for (const Worksheet& sheet : AllWorksheets()) EXPECT_TRUE(BuildWorksheet(sheet.Item));
    EXPECT_TRUE(host.Boxes.empty());
}

TEST_F(WorksheetTest, FindFieldKnowsFixedFieldsAndCostCenters) {
    EXPECT_EQ(FindField("A", "col_1")->Title, "Expenses per Home Office Books");
    EXPECT_EQ(FindField("B1p1", "CC_1200")->Title, "Employee Benefits-Non-Payroll Rel");
    EXPECT_EQ(FindField("C1p1", "CC_100")->Title, "(Square Feet) CRC-B&F");
    EXPECT_FALSE(FindField("B1p1", "CC_100"));
    EXPECT_FALSE(FindField("A", "Col_9"));
    EXPECT_FALSE(FindField("A82", "Col_1"));
}

struct CellCase {
    std::string_view Item;
    double Line;
    std::string_view Field;
    bool Computed;
};

TEST_F(WorksheetTest, ComputedCells) {
    const std::vector<CellCase> cases = {
        {"A", 8, "Col_1", false},      {"A", 8, "Col_2", true},
        {"A", 3, "Col_1", true},       {"A", 100, "Col_1", true},
        {"A", 8, "CCName", false},     {"A", 3, "CCName", false},
        {"A", 8, "LineNum", false},    {"A6", 1, "Col_5", false},
        {"A6", 1, "Col_3", true},      {"A6", 100, "Col_5", true},
        {"A7p1", 1, "Col_4", true},    {"A7p1", 7, "Col_1", true},
        {"A7p1", 8, "Col_1", false},   {"A7p2", 3, "Col_9", true},
        {"A7p2", 2, "Col_9", false},   {"A7p2", 1, "Col_5", true},
        {"A8", 12, "Col_3", true},     {"A8", 12, "Col_5", false},
        {"A8", 13, "Col_3", false},    {"A8", 1, "Col_4", true},
        {"A81p1", 1, "Col_7", true},   {"A81p1", 1, "Col_6", false},
        {"A81p1", 100, "Col_5", true}, {"Bp1", 1, "CC_100", false},
        {"Bp1", 51, "CC_100", true},   {"Bp1", 1, "Col_7", true},
        {"C1p3", 53, "CC_100", false}, {"C1p3", 54, "CC_100", true},
        {"Cp1", 1, "CC_100", true},    {"Cp1", 1, "Description", false},
        {"E", 1, "Col_1", true},       {"E1p1", 1, "Col_1", false},
        {"E1p1", 51, "Col_1", true},   {"E1p1", 1, "CC_100", true},
        {"Fp1", 1, "Col_1", true},     {"G", 10, "Col_1", true},
        {"G", 26.5, "Col_1", true},    {"G", 9, "Col_1", false},
        {"G1", 2, "Col_2", true},      {"G1", 16, "Col_2", false},
        {"G1", 22, "Col_1", false},    {"Sp1", 1, "Col_1", false},
        {"S2p1", 1, "Col_2", false},   {"A", 8, "CC_100", false},
        {"A82", 1, "Col_1", false},    {"A", 8, "Nothing", false},
    };
    for (const CellCase& cell : cases) {
        EXPECT_EQ(IsComputedCell(cell.Item, Line(cell.Line), cell.Field), cell.Computed)
            << cell.Item << " " << cell.Line << " " << cell.Field;
    }
}

}  // namespace
}  // namespace zolmara
