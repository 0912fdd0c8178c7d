#include <gtest/gtest.h>

#include "store/session/CoreTables.h"
#include "support/TestCrf.h"

namespace zolmara {
namespace {

using test::Cell;
using test::CoreCrf;
using test::Rows;

class CoreTables : public CoreCrf {
protected:
    std::string Fields(std::string_view table) {
        static const char* const kTypes[] = {"I", "C", "D", "T", "M", "d"};
        std::string text;
        for (const FieldDef& field : gDB.Table(table).Fields) {
            text += field.Name + ":" + kTypes[static_cast<int>(field.Type)];
            if (field.Type == FieldType::dbText) text += std::to_string(field.Size);
            text += " ";
        }
        return text;
    }
    Variant Registered(const std::string& item, const std::string& field) {
        return gDB.Scalar("SELECT " + field + " FROM Worksheets WHERE Item = ?", {item});
    }
};

TEST_F(CoreTables, MasterHasItsFieldsInOrder) {
    EXPECT_EQ(Fields("Master"),
              "BuildDate:d FormNum:T8 ProviderNumber:T8 FYStart:d FYEnd:d ProviderName:T36 "
              "AllCCs:I GenSvcCCs:I CapitalCCs:I EmpBenCCs:I Bp1SubTot1:M Bp1SubTot2:M "
              "Bp2SubTot1:M Bp2SubTot2:M ESFirstName:T255 ESLastName:T255 ESTitle:T255 ESDate:d ");
}

TEST_F(CoreTables, MasterHoldsTheIdentityInOneRow) {
    ASSERT_EQ(Rows("Master"), 1);
    const Recordset master = gDB.OpenRecordset("Master", dbOpenTable);
    EXPECT_EQ(master["BuildDate"], Variant(host.Clock));
    EXPECT_EQ(master["FormNum"], Variant("287"));
    EXPECT_EQ(master["ProviderNumber"], Variant("12-3456"));
    EXPECT_EQ(master["FYStart"], Variant(DateTime(2022, 10, 1)));
    EXPECT_EQ(master["FYEnd"], Variant(DateTime(2023, 9, 30)));
    EXPECT_EQ(master["ProviderName"], Variant("Sample Home Office"));
    for (const char* field :
         {"AllCCs", "GenSvcCCs", "CapitalCCs", "EmpBenCCs", "Bp1SubTot1", "Bp1SubTot2",
          "Bp2SubTot1", "Bp2SubTot2", "ESFirstName", "ESLastName", "ESTitle", "ESDate"})
        EXPECT_TRUE(master[field].IsNull()) << field;
}

TEST_F(CoreTables, TheOtherTablesHaveTheirShape) {
    EXPECT_EQ(Fields("Worksheets"), "Item:T16 Calc_Lvl:I ItemName:T100 ");
    EXPECT_EQ(Fields("Log"),
              "LogType:T1 DateTime:d Severity:T7 Module:T32 Procedure:T32 Worksheet:T16 "
              "Message:M ");
    EXPECT_EQ(Fields("HeaderLines"), "LineNum:I LineText:T140 ");
    EXPECT_EQ(Fields("CostCenters"),
              "LineNum:C CCName:T40 ColLabel1:T36 ColLabel2:T36 ColLabel3:T36 StatLabel1:T16 "
              "StatLabel2:T16 StatCode:I ");
    EXPECT_EQ(Fields("ES"), "LineNum:C CCName:T40 StatLabel1:T16 StatLabel2:T16 StatCode:I ");
    Build_Error();
    EXPECT_EQ(Fields("Error"), "Level:T16 Code:T5 Message:M ");
}

TEST_F(CoreTables, TheLogBeginsWithItsOwnRow) {
    ASSERT_EQ(Rows("Log"), 1);
    const Recordset log = gDB.OpenRecordset("SELECT * FROM Log");
    EXPECT_EQ(log["LogType"], Variant("*"));
    EXPECT_EQ(log["DateTime"], Variant(host.Clock));
    EXPECT_EQ(log["Severity"], Variant("F.Y.I."));
    EXPECT_EQ(log["Module"], Variant("Build_Log"));
    EXPECT_EQ(log["Procedure"], Variant("Build_Log"));
    EXPECT_EQ(log["Worksheet"], Variant("Log"));
    EXPECT_EQ(log["Message"], Variant("Log table built/initialized."));
}

TEST_F(CoreTables, HeaderLinesAreThreeWithoutText) {
    ASSERT_EQ(Rows("HeaderLines"), 3);
    for (int line = 1; line <= 3; ++line)
        EXPECT_TRUE(Cell("HeaderLines", line, "LineText").IsNull());
}

// --- The registry --------------------------------------------------------------------------

TEST_F(CoreTables, TheRegistryKnowsTheCoreTablesWithoutAName) {
    for (const char* item : {"Worksheets", "CostCenters", "ES", "HeaderLines", "Log"}) {
        EXPECT_EQ(Registered(item, "Calc_Lvl"), Variant(999)) << item;
        EXPECT_TRUE(Registered(item, "ItemName").IsNull()) << item;
    }
    EXPECT_EQ(Rows("Worksheets"), 5);
}

TEST_F(CoreTables, TheRegistryTakesEachItemOnce) {
    EXPECT_THROW(gDB.Execute("INSERT INTO Worksheets (Item, Calc_Lvl) VALUES (?,?);", {"LOG", 0}),
                 StoreError);
    EXPECT_THROW(gDB.Execute("INSERT INTO Worksheets (Calc_Lvl) VALUES (?);", {0}), StoreError);
    EXPECT_EQ(Rows("Worksheets"), 5);
}

TEST_F(CoreTables, RegisteringTwiceLeavesOneRowWithTheLastLevel) {
    RegisterWorksheet("A6", "Make", 0);
    RegisterWorksheet("A6", "Make", 7);
    EXPECT_EQ(Rows("Worksheets"), 6);
    EXPECT_EQ(Registered("A6", "Calc_Lvl"), Variant(7));
    EXPECT_EQ(Registered("A6", "ItemName"), Variant("A-6"));
}

TEST_F(CoreTables, RegisteringFindsARowInAnyCase) {
    RegisterWorksheet("a6", "Make", 0);
    RegisterWorksheet("A6", "Make", 0);
    EXPECT_EQ(Rows("Worksheets"), 6);
    EXPECT_EQ(gDB.Scalar("SELECT Item FROM Worksheets WHERE Item = 'A6'"), Variant("A6"));
}

TEST_F(CoreTables, ALevelOf999TakesTheNameAway) {
    RegisterWorksheet("A6", "Make", 0);
    RegisterWorksheet("A6", "Make", 999);
    EXPECT_TRUE(Registered("A6", "ItemName").IsNull());
    RegisterWorksheet("A6", "Make", 998);
    EXPECT_EQ(Registered("A6", "ItemName"), Variant("A-6"));
}

TEST_F(CoreTables, AnotherActionWritesNothing) {
    RegisterWorksheet("A6", "Drop", 0);
    EXPECT_EQ(Rows("Worksheets"), 5);
    RegisterWorksheet("Log", "Drop", 3);
    EXPECT_EQ(Registered("Log", "Calc_Lvl"), Variant(999));
}

TEST(ItemDisplayName, IsTheNameOfTheForm) {
    const std::pair<const char*, const char*> names[] = {{"A", "A"},
                                                         {"A6", "A-6"},
                                                         {"A7p1", "A-7  Part-1"},
                                                         {"A81p2", "A-81  Part-2"},
                                                         {"E", "E"},
                                                         {"G1", "G-1"},
                                                         {"Sp1", "S  Part-1"},
                                                         {"S1p1", "S-1  Part-1"},
                                                         {"Bp3", "B  Part-3"},
                                                         {"B1p3", "B-1  Part-3"},
                                                         {"F2p1", "F-2  Part-1"}};
    for (const auto& [item, name] : names) EXPECT_EQ(ItemDisplayName(item), name);
    EXPECT_EQ(ItemDisplayName(""), "");
    EXPECT_EQ(ItemDisplayName("Ap"), "A  Part-");
}

// --- Cost centers --------------------------------------------------------------------------

TEST_F(CoreTables, AFreshCrfHas26CostCentersAnd4Bases) {
    EXPECT_EQ(Rows("CostCenters"), 26);
    EXPECT_EQ(Rows("ES"), 4);
    EXPECT_EQ(NumOr(gDB.Scalar("SELECT Count(*) FROM CostCenters WHERE LineNum In(3,7,99,100)")),
              0);
}

TEST_F(CoreTables, TheCapitalCentersHaveABasis) {
    EXPECT_EQ(Cell("CostCenters", 1, "CCName"), Variant("CRC-B&F"));
    EXPECT_EQ(Cell("CostCenters", 1, "StatLabel1"), Variant("Square"));
    EXPECT_EQ(Cell("CostCenters", 1, "StatLabel2"), Variant("Feet"));
    EXPECT_EQ(Cell("CostCenters", 1, "StatCode"), Variant(1));
    EXPECT_EQ(Cell("CostCenters", 2, "CCName"), Variant("CRC-ME"));
    EXPECT_EQ(Cell("CostCenters", 2, "StatLabel1"), Variant("Dollar"));
    EXPECT_EQ(Cell("CostCenters", 2, "StatLabel2"), Variant("Value"));
    EXPECT_EQ(Cell("CostCenters", 2, "StatCode"), Variant(2));
}

TEST_F(CoreTables, TheOtherCentersHaveNone) {
    EXPECT_EQ(Cell("CostCenters", 4, "CCName"), Variant("Insurance Premiums-Other CRC"));
    EXPECT_EQ(Cell("CostCenters", 12, "CCName"), Variant("Employee Benefits-Non-Payroll Rel"));
    EXPECT_EQ(Cell("CostCenters", 20, "CCName"), Variant("Cleaning, Office & Admin Supplies"));
    EXPECT_EQ(Cell("CostCenters", 28, "CCName"), Variant("Interest Income"));
    for (const char* field :
         {"ColLabel1", "ColLabel2", "ColLabel3", "StatLabel1", "StatLabel2", "StatCode"})
        EXPECT_TRUE(Cell("CostCenters", 4, field).IsNull()) << field;
}

TEST_F(CoreTables, ThePooledBasesAreTotalCosts) {
    const char* const names[] = {"E", "E-1 Part I", "E-1 Part II", "E-1 Part III"};
    for (int line = 1; line <= 4; ++line) {
        EXPECT_EQ(Cell("ES", line, "CCName"), Variant(names[line - 1]));
        EXPECT_EQ(Cell("ES", line, "StatLabel1"), Variant("Total"));
        EXPECT_EQ(Cell("ES", line, "StatLabel2"), Variant("Costs"));
        EXPECT_EQ(Cell("ES", line, "StatCode"), Variant(1));
    }
}

class LineFour : public CoreTables {
protected:
    void Lines(std::initializer_list<double> lines) {
        gDB.Execute("DELETE * FROM CostCenters WHERE LineNum>=4 And LineNum<5;");
        for (const double line : lines)
            gDB.Execute("INSERT INTO CostCenters (LineNum) VALUES (?);", {Variant(Currency(line))});
    }
    std::string message = "untouched";
};

TEST_F(LineFour, PassesOnItsOwn) {
    EXPECT_EQ(CheckCC4xx(message), 0);
    EXPECT_EQ(message, "untouched");
}

TEST_F(LineFour, PassesWithASubscript) {
    Lines({4, 4.01});
    EXPECT_EQ(CheckCC4xx(message), 0);
    Lines({4.01, 4.02});
    EXPECT_EQ(CheckCC4xx(message), 0);
}

TEST_F(LineFour, FailsWhenItIsMissing) {
    Lines({});
    EXPECT_EQ(CheckCC4xx(message), 1);
    EXPECT_EQ(message, "There must be at least one Administrative And General cost center (4.xx).");
}

TEST_F(LineFour, FailsAsALoneSubscript) {
    Lines({4.01});
    EXPECT_EQ(CheckCC4xx(message), 2);
    EXPECT_EQ(message,
              "There is only one Administrative And General cost center and it must be numbered "
              "4.00");
}

TEST(CostCenterColumn, IsTheLineTimesAHundred) {
    EXPECT_EQ(CostCenterColumn(Currency(1)), "CC_100");
    EXPECT_EQ(CostCenterColumn(Currency(4.01)), "CC_401");
    EXPECT_EQ(CostCenterColumn(Currency(28.99)), "CC_2899");
    EXPECT_EQ(LineOfColumn("CC_401"), Currency(4.01));
    EXPECT_EQ(LineOfColumn("cc_2800"), Currency(28));
}

TEST(CostCenterColumn, IsTold) {
    EXPECT_TRUE(IsCostCenterColumn("CC_100"));
    EXPECT_TRUE(IsCostCenterColumn("cc_2800"));
    EXPECT_FALSE(IsCostCenterColumn("CC_"));
    EXPECT_FALSE(IsCostCenterColumn("CCName"));
    EXPECT_FALSE(IsCostCenterColumn("CC_1x"));
    EXPECT_FALSE(IsCostCenterColumn("Tot"));
}

// --- Findings ------------------------------------------------------------------------------

TEST_F(CoreTables, AFindingKeepsItsQuotes) {
    Build_Error();
    EXPECT_EQ(Registered("Error", "Calc_Lvl"), Variant(999));
    AddErrorRow("Non-Fatal Error", "1060S", "must be \"Y\" or 'N'");
    AddErrorRow("No errors found", " ", " ");
    const Recordset row = gDB.OpenRecordset("SELECT * FROM Error");
    EXPECT_EQ(row.RecordCount(), 2u);
    EXPECT_EQ(row["Level"], Variant("Non-Fatal Error"));
    EXPECT_EQ(row["Code"], Variant("1060S"));
    EXPECT_EQ(row["Message"], Variant("must be \"Y\" or 'N'"));
    ClearErrors();
    EXPECT_EQ(Rows("Error"), 0);
}

}  // namespace
}  // namespace zolmara
