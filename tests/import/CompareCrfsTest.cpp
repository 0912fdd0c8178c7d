// Two files side by side.

#include <fmt/format.h>

#include "calc/Calc_All.h"
#include "import/CompareCrfs.h"
#include "store/CopyRows.h"
#include "store/FilledCrf.h"
#include "structure/AddDeleteCC.h"
#include "structure/modAddS2.h"
#include "support/StatementMeter.h"
#include "support/TestCrf.h"

namespace zolmara::test {
namespace {

class CompareCrfsTest : public SessionTest {
protected:
    CompareCrfsTest() {
        OpenFilledCopy(other_);
        gDB.Close();
        OpenFilledCopy(folder.File("Here.CRF"));
    }
    /// "item line column name here there difference percent" of every difference.
    std::vector<std::string> Diff(const ComparisonWish& wish = {}) {
        Database there = OpenReadOnly(other_);
        std::vector<std::string> lines;
        for (const auto& cell : CompareCrfs(gDB, there, wish))
            lines.push_back(fmt::format("{} {} {} [{}] {} | {} | {} | {}", cell.Item,
                                        Text(cell.Line), cell.Column, cell.Name, Text(cell.Here),
                                        Text(cell.There), Text(cell.Difference),
                                        Text(cell.Percent)));
        return lines;
    }
    void InOther(const std::function<void()>& change) {
        const std::string path = gCRFPath;
        gDB.Close();
        gDB = DBEngine::OpenDatabase(other_);
        change();
        gDB.Close();
        gDB = DBEngine::OpenDatabase(path);
    }
    using Found = std::vector<std::string>;

    std::string other_ = folder.File("Other.CRF");
};

TEST_F(CompareCrfsTest, AFileIsTheSameAsItself) {
    EXPECT_EQ(Diff(), Found{});
    other_ = gCRFPath;
    EXPECT_EQ(Diff(), Found{});
    // The comparison leaves the open file as it is, and usable.
    EXPECT_EQ(gDB.Execute("UPDATE A SET Col_1=1 WHERE LineNum=9;"), 1);
}

TEST_F(CompareCrfsTest, AnAmountIsToldWithDifferenceAndPerCent) {
    SetCell("A", 8, "Col_1", 5500);
    SetCell("A", 10, "Col_1", Variant());
    SetCell("A", 11, "Col_1", 30);
    EXPECT_EQ(Diff({.Items = {"A"}, .Keyed = true, .Over = {}, .OverPercent = {}}),
              (Found{"A 8 Col_1 [Salaries of Officers] 5500 | 5000 | 500 | 10",
                     "A 10 Col_1 [Payroll Taxes]  | 100 | -100 | -100",
                     "A 11 Col_1 [Employee Benefits-Payroll Related] 30 |  | 30 | "}));
}

TEST_F(CompareCrfsTest, NullCountsAsZeroAndBinaryNoiseAsNothing) {
    SetCell("G", 2, "Col_1", 0);
    SetCell("G", 1, "Col_1", 100.00000001);
    SetCell("S1p2", 2, "Col_2", "");
    EXPECT_EQ(Diff(), Found{});
}

TEST_F(CompareCrfsTest, TextsAreToldWithoutADifference) {
    SetCell("S1p2", 1, "Col_2", "Ann");
    EXPECT_EQ(Diff(), Found{"S1p2 1 Col_2 [] Ann |  |  | "});
}

TEST_F(CompareCrfsTest, LimitsLeaveOutWhatIsNotOverThemAndTexts) {
    SetCell("G", 1, "Col_1", 110);   // 100: 10, 10 %
    SetCell("G", 11, "Col_1", 505);  // 500: 5, 1 %
    SetCell("G", 2, "Col_1", 3);     // none: 3
    SetCell("S1p2", 1, "Col_2", "Ann");
    const auto over = [&](std::optional<double> amount, std::optional<double> percent) {
        return Diff({.Items = {"G", "S1p2"}, .Keyed = true, .Over = amount, .OverPercent = percent})
            .size();
    };
    EXPECT_EQ(over({}, {}), 4u);
    EXPECT_EQ(over(0, {}), 3u);
    EXPECT_EQ(over(5, {}), 1u);
    EXPECT_EQ(over({}, 1), 2u);
    EXPECT_EQ(over({}, 10), 1u);
    EXPECT_EQ(over(4, 1), 1u);
}

TEST_F(CompareCrfsTest, KeyedLeavesOutWhatTheCalculationWrites) {
    SetCell("A", 8, "Col_1", 5500);
    Calc_All();
    EXPECT_EQ(Diff({.Items = {}, .Keyed = true, .Over = {}, .OverPercent = {}}),
              Found{"A 8 Col_1 [Salaries of Officers] 5500 | 5000 | 500 | 10"});
    EXPECT_GT(Diff().size(), 5u);
}

TEST_F(CompareCrfsTest, AReorderedTwinHasNoDifference) {
    // General Hospital moves from line 1 to 3, the split of insurance from 4.01 to 4.02.
    InOther([] {
        AddS2Line(Currency(3), 1);
        RunBatch(gDB, [] {
            for (const auto& table : ComponentTables(1)) {
                gDB.Execute("DELETE FROM " + table + " WHERE LineNum=3;");
                gDB.Execute("UPDATE " + table + " SET LineNum=3 WHERE LineNum=1;");
            }
        });
        AddCostCenter(Currency(4.01));
        gDB.Execute("UPDATE CostCenters SET CCName='First' WHERE LineNum=4.01;");
        RenameCostCenter(Currency(4.01), "First");
    });
    const auto found = Diff();
    // What only the other file has is the new cost center: its row and its columns.
    for (const auto& line : found) EXPECT_NE(line.find("[First]"), std::string::npos) << line;
    EXPECT_EQ(found.front(), "CostCenters 4.01  [First]  | First |  | ");
    EXPECT_EQ(found.size(), 5u);
}

TEST_F(CompareCrfsTest, ARenamedTwinDiffersByItsNamesAlone) {
    InOther([] {
        RenameS2Line(Currency(1), 1, "General Medical Center", "14-0001");
        gDB.Execute("UPDATE CostCenters SET CCName='Split Premiums' WHERE LineNum=4.01;");
        RenameCostCenter(Currency(4.01), "Split Premiums");
        // A-6 had no name on this line.
        gDB.Execute("UPDATE A6 SET Col_3=Null WHERE Col_4=4.01;");
    });
    EXPECT_EQ(Diff(), (Found{"CostCenters 4.01 CCName [Split Insurance] Split Insurance | Split "
                             "Premiums |  | ",
                             "S2p1 1 Col_1 [General Hospital] General Hospital | General Medical "
                             "Center |  | "}));
}

TEST_F(CompareCrfsTest, AnotherNumberOnTheSameLineIsAnotherComponent) {
    InOther([] { RenameS2Line(Currency(2), 1, "Hospice", "14-0099"); });
    const auto found = Diff({.Items = {"S2p1"}, .Keyed = false, .Over = {}, .OverPercent = {}});
    EXPECT_EQ(found,
              (Found{"S2p1 2  [Clinic] Clinic |  |  | ", "S2p1 2  [Hospice]  | Hospice |  | "}));
}

TEST_F(CompareCrfsTest, LinesAndTablesOfOneSideAreTold) {
    InOther([] {
        gDB.Execute("DELETE FROM A6 WHERE LineNum=2;");
        gDB.DeleteTable("HeaderLines");
    });
    const auto found = Diff({.Items = {}, .Keyed = true, .Over = {}, .OverPercent = {}});
    EXPECT_EQ(found, (Found{"HeaderLines   [] HeaderLines |  |  | ", "A6 2  [] 2 |  |  | "}));
}

TEST_F(CompareCrfsTest, TheNumberOfStatementsDoesNotGrowWithTheRows) {
    const auto statements = [&] {
        const StatementMeter meter;
        const std::string path = gCRFPath;
        gDB.Close();
        gDB = DBEngine::OpenDatabase(path);
        return meter.CountOf([&] { Diff(); }).Statements;
    };
    const auto few = statements();
    RunBatch(gDB, [] {
        for (int line = 3; line <= 40; ++line) AddS2Line(Currency::FromWhole(line), 1);
    });
    EXPECT_EQ(statements(), few);
}

TEST_F(CompareCrfsTest, AnItemThatIsNoTableIsRefusedByName) {
    EXPECT_THROW(Diff({.Items = {"Z9"}, .Keyed = false, .Over = {}, .OverPercent = {}}),
                 StoreError);
    EXPECT_THROW(Diff({.Items = {"Master"}, .Keyed = false, .Over = {}, .OverPercent = {}}),
                 StoreError);
}

}  // namespace
}  // namespace zolmara::test
