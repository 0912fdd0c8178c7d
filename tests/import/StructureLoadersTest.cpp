// The loaders that bring the structure: cost centers, the S worksheets.

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <functional>

#include "import/ImportTools.h"
#include "store/session/CloseCrf.h"
#include "structure/AddDeleteCC.h"
#include "structure/modAddS2.h"
#include "support/StatementMeter.h"

namespace zolmara::test {
namespace {

using MessageList = std::vector<Message>;

class StructureLoadersTest : public ImportTest {};

constexpr auto kRowRule = "CostCenter only allows rows 1, 2, 4, 6, 8-98 and their subscripts: ";
constexpr auto kLabelRule = "CostCenter only allows column 4 and 5 on rows 1-2.99 and 8-98.99: ";

TEST_F(StructureLoadersTest, ANewCostCenterIsCreatedLabelledAndNamedEverywhere) {
    EXPECT_TRUE(Import({"CostCenter|9.01|1|Night", "CostCenter|9.01|0|Night Staff",
                        "CostCenter|9.01|3|Third", "CostCenter|9.01|4|Hours"}));
    EXPECT_EQ(StrOr(Cell("CostCenters", 9.01, "CCName")), "Night Staff");
    EXPECT_EQ(StrOr(Cell("CostCenters", 9.01, "ColLabel1")), "Night");
    EXPECT_EQ(StrOr(Cell("CostCenters", 9.01, "ColLabel3")), "Third");
    EXPECT_EQ(StrOr(Cell("CostCenters", 9.01, "StatLabel1")), "Hours");
    EXPECT_EQ(StrOr(Cell("A", 9.01, "CCName")), "Night Staff");
    for (auto table : {"B1p1", "Dp2", "D1p3", "E", "E1p3"})
        EXPECT_GE(gDB.Table(table).FieldIndex("CC_901"), 0) << table;
}

TEST_F(StructureLoadersTest, AnImportedNameIsCarriedToAA6AndA7p2ButNotToA8) {
    gDB.Execute("INSERT INTO A6 (LineNum,Col_4,Col_7) VALUES (1,2,2);");
    Import({"CostCenter|2|0|\"Movable \""});
    EXPECT_EQ(StrOr(Cell("CostCenters", 2, "CCName")), "Movable ");
    EXPECT_EQ(StrOr(Cell("A", 2, "CCName")), "Movable ");
    EXPECT_EQ(StrOr(Cell("A6", 1, "Col_3")), "Movable ");
    EXPECT_EQ(StrOr(Cell("A6", 1, "Col_6")), "Movable ");
    EXPECT_EQ(StrOr(Cell("A7p2", 2, "Description")), "Movable ");
    EXPECT_TRUE(Cell("A8", 2, "Col_4").IsNull());
}

TEST_F(StructureLoadersTest, ACostCenterIsCreatedByColumn0Alone) {
    EXPECT_EQ(RuleOf("CostCenter|9.01|1|Night"),
              "CostCenter must create new cost centers with column 0: ");
    EXPECT_EQ(Lines("CostCenters", 9, 10), "9 10");
    EXPECT_EQ(Messages(), MessageList{Refused("CostCenter",
                                              "CostCenter must create new cost centers with column "
                                              "0: ",
                                              "9.01, 1, \"Night\"")});
}

TEST_F(StructureLoadersTest, RowsOfCostCenters) {
    EXPECT_EQ(RuleOf("CostCenter|5|0|Five"), "");
    for (auto row : {"3", "7", "99", "0", "-4", "3.5", "99.01", "100"})
        EXPECT_EQ(RuleOf(fmt::format("CostCenter|{}|0|x", row)), kRowRule) << row;
    EXPECT_EQ(RuleOf("CostCenter|29|0|x"), "");
    EXPECT_EQ(RuleOf("CostCenter|29.01|0|x"), "");
}

TEST_F(StructureLoadersTest, ColumnsOfCostCenters) {
    for (auto row : {"4", "5", "6"}) {
        EXPECT_EQ(RuleOf(fmt::format("CostCenter|{}|4|x", row)), kLabelRule);
        EXPECT_EQ(RuleOf(fmt::format("CostCenter|{}|5|x", row)), kLabelRule);
        EXPECT_EQ(RuleOf(fmt::format("CostCenter|{}|3|x", row)), "");
    }
    EXPECT_EQ(RuleOf("CostCenter|8|5|x"), "");
    EXPECT_EQ(RuleOf("CostCenter|2|6|3"), "");
    EXPECT_EQ(NumOr(Cell("CostCenters", 2, "StatCode")), 3);
    EXPECT_EQ(RuleOf("CostCenter|8|6|3"), "CostCenter only allows column 6 on rows 1-2.99: ");
    EXPECT_EQ(RuleOf("CostCenter|4|6|3"), "CostCenter only allows column 6 on rows 1-2.99: ");
}

TEST_F(StructureLoadersTest, WhatTheTableCannotHoldIsAConversionError) {
    EXPECT_EQ(RuleOf("CostCenter|8|7|x"), "Conversion error: ");
    EXPECT_EQ(RuleOf("CostCenter|8|1.5|x"), "Conversion error: ");
    EXPECT_EQ(RuleOf("CostCenter|2|6|abc"), "Conversion error: ");
    EXPECT_EQ(RuleOf("CostCenter|8|0|" + std::string(41, 'x')), "Conversion error: ");
    EXPECT_EQ(StrOr(Cell("A", 8, "CCName")), "Salaries of Officers");
}

TEST_F(StructureLoadersTest, ACostCenterFarBehindTheLastCannotBeCreated) {
    const std::string unable = "CostCenter was unable to create cost center : ";
    EXPECT_EQ(RuleOf("CostCenter|30|0|x"), unable);
    EXPECT_EQ(RuleOf("CostCenter|29.01|0|x"), unable);
    EXPECT_EQ(Lines("CostCenters", 28, 99), "28");
    Import({"CostCenter|29|0|x", "CostCenter|30|0|y", "CostCenter|31|0|z"});
    EXPECT_TRUE(gDB.Table("B1p1").Fields.back().Name == "Col_99");
    EXPECT_EQ(Lines("CostCenters", 28, 99), "28 29 30 31");
}

TEST_F(StructureLoadersTest, CostCentersAloneDoNotRefreshTheForms) {
    Import({"CostCenter|8|1|x"});
    int refreshes = 0;
    for (const auto& event : host.Events) refreshes += event.starts_with("RefreshOpenForms");
    EXPECT_EQ(refreshes, 1);
}

// --- S-1 -----------------------------------------------------------------------------------

TEST_F(StructureLoadersTest, S1p1TakesItsColumnsByRow) {
    EXPECT_EQ(RuleOf("S1p1|1|0|x"), "Table S1p1 only allows for row 1 columns 1-6: ");
    EXPECT_EQ(RuleOf("S1p1|1|7|x"), "Table S1p1 only allows for row 1 columns 1-6: ");
    EXPECT_EQ(RuleOf("S1p1|2|1|x"), "Table S1p1 only allows for row 2 column 2-3: ");
    EXPECT_EQ(RuleOf("S1p1|2|4|x"), "Table S1p1 only allows for row 2 column 2-3: ");
    EXPECT_EQ(RuleOf("S1p1|3|3|x"), "Table S1p1 only allows for row 3 column 1-2: ");
    EXPECT_EQ(RuleOf("S1p1|4|6|x"), "Table S1p1 only allows for row 4 columns 1-5: ");
    EXPECT_EQ(RuleOf("S1p1|5|7|x"), "Table S1p1 only allows for row 5 columns 1-6: ");
    EXPECT_EQ(RuleOf("S1p1|6|1|x"), "Table S1p1 does not have row 6: ");
    EXPECT_EQ(RuleOf("S1p1|5.01|1|x"), "Table S1p1 does not have row 5.01: ");
    EXPECT_EQ(RuleOf("S1p1|1|1|x"), "");
    EXPECT_EQ(RuleOf("S1p1|1|6|y"), "");
    EXPECT_EQ(StrOr(Cell("S1p1", 1, "Col_1")), "x");
    EXPECT_EQ(StrOr(Cell("S1p1", 1, "Col_6")), "y");
    EXPECT_EQ(StrOr(Cell("S1p1", 2, "Col_1")), "Sample Home Office");
}

TEST_F(StructureLoadersTest, S1p1ReportsAColumnThatItLacksAndALongText) {
    gDB.Execute("INSERT INTO S1p1 (LineNum,Description) VALUES (5.01,'more email address');");
    EXPECT_EQ(RuleOf("S1p1|5.01|9|x"), "Conversion error: ");
    EXPECT_EQ(RuleOf("S1p1|1|2|" + std::string(41, 'x')), "Conversion error: ");
    EXPECT_EQ(RuleOf("S1p1|5.01|6|a@b"), "");
    EXPECT_EQ(StrOr(Cell("S1p1", 5.01, "Col_6")), "a@b");
}

TEST_F(StructureLoadersTest, ACostCentersRowGivesEveryMessage) {
    EXPECT_EQ(RulesOf("CostCenter|3|4|x"), (std::vector<std::string>{kRowRule, kLabelRule}));
    EXPECT_EQ(
        RulesOf("CostCenter|7|6|x"),
        (std::vector<std::string>{kRowRule, "CostCenter only allows column 6 on rows 1-2.99: "}));
}

// Placed one by one, each column would cost a copy of the tables that grow with it.
TEST_F(StructureLoadersTest, ManyNewCostCentersOfOneImportStandWhereSingleOnesDo) {
    std::string text;
    for (const char* line : {"4.02", "9.01", "4.01", "29", "1.01", "30", "9.03", "29.01"})
        text += std::string("CostCenter\t") + line + "\t0\tNumber " + line + "\n";
    EXPECT_TRUE(ImportBytes(text));
    EXPECT_EQ(Lines("CostCenters", 4, 4.99), "4 4.01 4.02");
    EXPECT_EQ(CostCenterColumns("Bp1"), "CC_100 CC_101 CC_200 CC_400 CC_401 CC_402 CC_500 CC_600");
    EXPECT_EQ(CostCenterColumns("Cp3"), "CC_100 CC_101 CC_200");
    const std::string direct = CostCenterColumns("D1p2");
    EXPECT_NE(direct.find("CC_900 CC_901 CC_903 CC_1000"), std::string::npos) << direct;
    EXPECT_TRUE(direct.ends_with("CC_2800 CC_2900 CC_2901 CC_3000")) << direct;
    for (auto table : {"Bp2", "B1p1", "Dp3", "E"})
        EXPECT_EQ(gDB.Table(table).Indexes.size(), 1u) << table;
}

std::string ManyCostCenters(int groups) {
    std::string text;
    for (int whole = 10; whole < 10 + groups; ++whole)
        for (int part = 1; part < 100; ++part)
            text +=
                fmt::format("CostCenter\t{}.{:02}\t0\tNumber {}.{:02}\n", whole, part, whole, part);
    return text;
}

/// What new cost centers of one import ask of the store, and the deletion of one of them then.
struct StructureWork {
    StoreWork Import;
    StoreWork Delete;
};

StructureWork WorkOf(const std::string& path, int groups,
                     const std::function<void(const std::string&)>& import) {
    CloseCrf();
    CreateCrf(path, SampleFields());
    DropCrf();
    const StatementMeter meter;
    OpenCrf(path);
    StructureWork work;
    work.Import = meter.CountOf([&] { import(ManyCostCenters(groups)); });
    work.Delete =
        meter.CountOf([&] { EXPECT_EQ(DeleteCostCenter(Line(10.01)), LineResult::Done); });
    EXPECT_EQ(gDB.Table("Dp1").FieldIndex("CC_1099"), -1);
    return work;
}

TEST_F(StructureLoadersTest, NewCostCentersOfOneImportCostByTheirNumber) {
    const auto import = [&](const std::string& text) { EXPECT_TRUE(ImportBytes(text)); };
    const auto some = WorkOf(folder.File("Some.CRF"), 2, import);
    const auto many = WorkOf(folder.File("Many.CRF"), 8, import);
    // Four times as many: four times the statements. Were each table rebuilt for each of them, a
    // cost center would cost some 200,000 steps.
    EXPECT_LT(many.Import.Statements, 4 * some.Import.Statements);
    EXPECT_LT(many.Import.Steps, 8 * 99 * 15000);
    // A deletion moves the lines of one group and rebuilds each table once.
    EXPECT_LT(many.Delete.Statements, some.Delete.Statements + 50);
    EXPECT_LT(many.Delete.Steps, 5 * some.Delete.Steps);
}

TEST_F(StructureLoadersTest, ALineHasTwoDecimals) {
    EXPECT_EQ(RuleOf("CostCenter|9.015|0|x"), "CostCenter was unable to create cost center : ");
    EXPECT_EQ(Rows("CostCenters"), 26);
    EXPECT_EQ(RuleOf("S2p1|1.005|1|x"), "Conversion error: ");
    EXPECT_EQ(Rows("S2p1"), 0);
    EXPECT_EQ(Lines("Bp1", 0, 50.99), "");
}

TEST_F(StructureLoadersTest, AColumnBetweenTwoMakesNoLine) {
    EXPECT_EQ(RuleOf("S1p2|6|1.5|x"), "Conversion error: ");
    EXPECT_EQ(Rows("S1p2"), 5);
    EXPECT_EQ(RuleOf("S2p1|1|1.5|x"), "Conversion error: ");
    EXPECT_EQ(Rows("S2p1"), 0);
    EXPECT_EQ(RuleOf("A81p2|1|3.5|x"), "Conversion error: ");
    EXPECT_EQ(Rows("A81p2"), 0);
}

TEST_F(StructureLoadersTest, AFileWithoutItsLogIsImportedInto) {
    gDB.DeleteTable("Log");
    EXPECT_TRUE(Import({"A|5|1|7"}));
    EXPECT_EQ(NumOr(Cell("A", 5, "Col_1")), 7);
}

TEST_F(StructureLoadersTest, S1p2GrowsByItself) {
    for (auto row : {"1", "5"})
        EXPECT_EQ(RuleOf(fmt::format("S1p2|{}|1|x", row)),
                  "Table S1p2 only allows for rows 1-5 column 2: ");
    EXPECT_EQ(RuleOf("S1p2|5.5|2|x"), "Table S1p2 only allows rows 1-20.99: ");
    EXPECT_EQ(RuleOf("S1p2|21|2|x"), "Table S1p2 only allows rows 1-20.99: ");
    EXPECT_EQ(RuleOf("S1p2|0|2|x"), "Table S1p2 only allows rows 1-20.99: ");
    EXPECT_EQ(RuleOf("S1p2|6|3|x"), "Table S1p2 only allows for row 6-20.99 column 1-2: ");
    EXPECT_EQ(Rows("S1p2"), 5);
    Import({"S1p2|20.99|1|Last", "S1p2|6|2|Ann", "S1p2|6|1|Counsel", "S1p2|1|2|Bob"});
    EXPECT_EQ(Lines("S1p2"), "1 2 3 4 5 6 20.99");
    EXPECT_EQ(StrOr(Cell("S1p2", 6, "Col_1")), "Counsel");
    EXPECT_EQ(StrOr(Cell("S1p2", 6, "Col_2")), "Ann");
    EXPECT_EQ(StrOr(Cell("S1p2", 1, "Col_1")), "President");
    EXPECT_EQ(StrOr(Cell("S1p2", 1, "Col_2")), "Bob");
}

// --- S-2 -----------------------------------------------------------------------------------

TEST_F(StructureLoadersTest, AComponentIsCreatedInAllTheMirroredTables) {
    EXPECT_TRUE(Import({"S2p1|12.01|2|14-0001", "S2p1|12.01|1|Clinic", "S2p1|12.01|11|Medicaid",
                        "Bp1|12.01|6|5"}));
    for (const auto& table : ComponentTables(1)) {
        const bool form = table == "S2p1";
        EXPECT_EQ(StrOr(Cell(table, 12.01, form ? "Col_1" : "Description")), "Clinic") << table;
        EXPECT_EQ(StrOr(Cell(table, 12.01, form ? "Col_2" : "Col_0")), "14-0001") << table;
    }
    EXPECT_EQ(StrOr(Cell("S2p1", 12.01, "Col_11")), "Medicaid");
    EXPECT_EQ(NumOr(Cell("Bp1", 12.01, "CC_600")), 5);
}

TEST_F(StructureLoadersTest, AComponentWithoutRoomIsRefusedAndStrandsNoOther) {
    EXPECT_TRUE(Import({"S2p1|1|1|One", "S2p1|49|1|Forty-nine", "S2p1|50|1|Fifty"}));
    EXPECT_EQ(RuleOf("S2p1|10|1|Ten"), "Conversion error: ");
    for (const auto& table : ComponentTables(1)) EXPECT_EQ(Lines(table, 0, 50.99), "1 49 50");
    ImportErrorFlag = false;
    EXPECT_TRUE(Import({"S2p1|1.01|1|Annex"}));
    for (const auto& table : ComponentTables(1)) EXPECT_EQ(Lines(table, 0, 50.99), "1 1.01 49 50");
}

TEST_F(StructureLoadersTest, WhereTheLineWasMadeItsNameAndNumberStillGoIn) {
    gDB.Execute("INSERT INTO Cp1 (LineNum) VALUES (7);");
    EXPECT_TRUE(Import({"S2p1|7|1|Clinic", "S2p1|7|2|14-0001"}));
    EXPECT_EQ(StrOr(Cell("S2p1", 7, "Col_1")), "Clinic");
    EXPECT_EQ(StrOr(Cell("S2p1", 7, "Col_2")), "14-0001");
    EXPECT_EQ(StrOr(Cell("Bp1", 7, "Description")), "Clinic");
    EXPECT_EQ(StrOr(Cell("Cp1", 7, "Col_0")), "14-0001");
}

TEST_F(StructureLoadersTest, ANameAloneKeepsTheNumberAndTheOtherWayRound) {
    Import({"S2p3|1|1|North", "S2p3|1|2|33-1"});
    Import({"S2p3|1|1|South"});
    EXPECT_EQ(StrOr(Cell("S2p3", 1, "Col_2")), "33-1");
    Import({"S2p3|1|2|44-1"});
    EXPECT_EQ(StrOr(Cell("Dp3", 1, "Description")), "South");
    EXPECT_EQ(StrOr(Cell("Dp3", 1, "Col_0")), "44-1");
}

TEST_F(StructureLoadersTest, QuotesInAComponentsNameAreLetters) {
    Import({"S2p1|1|1|O'Neil \"West\""});
    EXPECT_EQ(StrOr(Cell("S2p1", 1, "Col_1")), "O'Neil \"West\"");
    EXPECT_EQ(StrOr(Cell("F1p1", 1, "Description")), "O'Neil \"West\"");
}

TEST_F(StructureLoadersTest, ColumnsAndRowsOfTheParts) {
    const std::string columns1 = "Table S2p1 only allows columns 1-11: ";
    const std::string columns2 = "Table S2p2 only allows columns 1, 4-7: ";
    const std::string columns3 = "Table S2p3 only allows columns 1, 2, 4-8: ";
    for (auto col : {"0", "12"})
        EXPECT_EQ(RuleOf(fmt::format("S2p1|1|{}|x", col)), columns1) << col;
    for (auto col : {"0", "2", "3", "8"})
        EXPECT_EQ(RuleOf(fmt::format("S2p2|1|{}|x", col)), columns2) << col;
    for (auto col : {"0", "3", "9"})
        EXPECT_EQ(RuleOf(fmt::format("S2p3|1|{}|x", col)), columns3) << col;
    EXPECT_EQ(RuleOf("S2p1|51|1|x"), "Table S2p1 only allows rows 1-50.99: ");
    EXPECT_EQ(RuleOf("S2p2|0.99|1|x"), "Table S2p2 only allows rows 1-50.99: ");
    for (auto item : {"S2p1", "S2p2", "S2p3"}) EXPECT_EQ(Rows(item), 0);
    EXPECT_EQ(RuleOf("S2p3|50.99|8|x"), "");
    EXPECT_EQ(StrOr(Cell("S2p3", 50.99, "Col_8")), "x");
}

TEST_F(StructureLoadersTest, ARowThatFailsBothTestsGivesBothMessages) {
    EXPECT_EQ(RulesOf("S2p1|51|12|x"),
              (std::vector<std::string>{"Table S2p1 only allows columns 1-11: ",
                                        "Table S2p1 only allows rows 1-50.99: "}));
}

TEST_F(StructureLoadersTest, AnAmountOfARegionMustBeANumber) {
    EXPECT_EQ(RuleOf("S2p3|1|6|abc"), "Conversion error: ");
    EXPECT_EQ(RuleOf("S2p3|1|6|12.5"), "");
    EXPECT_EQ(NumOr(Cell("S2p3", 1, "Col_6")), 12.5);
}

}  // namespace
}  // namespace zolmara::test
