// The descriptions of the computed cells are a second engine: each must come to what the
// calculation stored, and no calculation may write a cell that has none.

#include <fmt/format.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <chrono>
#include <cstdlib>

#include "calc/Calc_All.h"
#include "store/DatabaseImpl.h"
#include "worksheets/CellNames.h"
#include "worksheets/Descriptions.h"
#include "worksheets/Explain.h"
#include "worksheets/ExplainedStatements.h"
#include "worksheets/Worksheet.h"

namespace zolmara {
namespace {

using Faults = std::vector<std::string>;

class Descriptions : public test::SessionTest {
protected:
    void Prove(std::size_t atLeast) {
        Faults faults;
        EXPECT_GE(test::ProveDescriptions(faults), atLeast);
        EXPECT_EQ(faults, Faults{});
    }
};

TEST_F(Descriptions, ComeToTheStoredCellsOfTheSample) {
    test::MakeNorthfield(folder);
    Prove(1000);
}

TEST_F(Descriptions, ComeToTheStoredCellsOfThePlantedMistakes) {
    test::MakeNorthfieldWithMistakes(folder);
    Prove(1000);
}

TEST_F(Descriptions, ComeToTheStoredCellsOfANewFile) {
    CreateCrf(folder.File("New.CRF"), test::SampleFields());
    Calc_All();
    Prove(500);
}

/// The largest statement has 5,000 components over 200 cost centers, more than a million cells. It
/// is proved whole with ZOLMARA_LARGEST=1 in the environment, in less than a minute. Every run
/// proves the same shape at a smaller size, with subscripts in all three parts and on the lines of
/// cost centers. How long explanations take is printed on the way.
TEST_F(Descriptions, ComeToTheStoredCellsOfTheLargestStatement) {
    const bool whole = std::getenv("ZOLMARA_LARGEST") != nullptr;
    test::MakeLarge(folder, whole ? bench::LargeShape{}
                                  : bench::LargeShape{.Components = 600, .CostCenters = 100});
    for (const char* part : {"S2p1", "S2p2", "S2p3", "CostCenters"}) {
        EXPECT_GT(NumOr(gDB.Scalar(
                      fmt::format("SELECT Count(*) FROM {} WHERE LineNum<>Int(LineNum);", part))),
                  0)
            << part;
    }
    using Clock = std::chrono::steady_clock;
    const auto milliseconds = [](Clock::time_point from) {
        return std::chrono::duration<double, std::milli>(Clock::now() - from).count();
    };
    const CellRef cells[] = {
        {"Dp1", Currency::FromWhole(1), "CC_800"},  {"D1p3", kUnitCostMultiplier, "CC_800"},
        {"D1p1", Currency::FromWhole(1), "CC_800"}, {"E1p1", Currency::FromWhole(1), "CC_800"},
        {"F1p1", Currency::FromWhole(1), "Col_9"},  {"A", kTotalOfA, "Col_8"}};
    for (const CellRef& cell : cells) {
        const auto explained = Clock::now();
        Explainer().Explain(cell);
        const double forward = milliseconds(explained);
        const auto asked = Clock::now();
        Explainer().Uses(cell);
        fmt::print("{}: explained in {:.1f} ms, uses in {:.1f} ms\n", CellName(cell), forward,
                   milliseconds(asked));
    }
    const auto begin = Clock::now();
    Prove(whole ? 1000000 : 60000);
    fmt::print("proved in {:.0f} ms\n", milliseconds(begin));
}

TEST_F(Descriptions, HoldWhenCentsAndNegativeAmountsMustClose) {
    test::MakeNorthfield(folder);
    gDB.Execute("UPDATE C1p3 SET CC_100=CC_100+.37, CC_200=-1234.56 WHERE LineNum=53;");
    gDB.Execute("UPDATE D1p3 SET CC_800=CC_800-.01, CC_2800=-777.77 WHERE LineNum=53;");
    gDB.Execute("UPDATE A SET Col_1=Col_1*1.0137 WHERE LineNum In(1,2,4,5,8,12);");
    gDB.Execute("UPDATE A7p2 SET Col_1=Col_1*1.37;");
    Calc_All();
    Prove(1000);
}

TEST_F(Descriptions, HoldWhenTheStatisticsOfThePoolsAddUpToNothing) {
    test::MakeNorthfield(folder);
    for (const char* item : {"E1p1", "E1p2", "E1p3"}) {
        gDB.Execute(fmt::format("UPDATE {} SET Col_1=Null WHERE LineNum<51;", item));
    }
    Calc_All();
    Prove(1000);
}

// --- What a calculation writes ---------------------------------------------------------------

/// The rows that a run writes, as the store's change hook sees them.
class WrittenRows {
public:
    WrittenRows() { sqlite3_update_hook(gDB.impl().Handle, See, this); }
    ~WrittenRows() { sqlite3_update_hook(gDB.impl().Handle, nullptr, nullptr); }
    std::set<std::string> Tables;
    std::size_t Count = 0;

private:
    static void See(void* self, int, const char*, const char* table, sqlite3_int64) {
        auto* rows = static_cast<WrittenRows*>(self);
        rows->Tables.insert(table);
        ++rows->Count;
    }
};

/// "A|8|Col_2" as a cell.
CellRef CellNamed(const std::string& name) {
    const std::size_t first = name.find('|');
    const std::size_t second = name.find('|', first + 1);
    return {name.substr(0, first), Currency(Val(name.substr(first + 1, second - first - 1))),
            name.substr(second + 1)};
}

/// Where the form has nothing, a calculation has nothing to write.
bool IsWritten(const CellRef& cell) {
    const CellDescription* description = FindDescription(cell);
    return description != nullptr && description->Formula.Kind != NodeKind::Nothing;
}

/// Puts a figure of no meaning into every cell that a description speaks of.
void Spoil() {
    RunBatch(gDB, [] {
        for (const Worksheet& sheet : AllWorksheets()) {
            Recordset rows = gDB.OpenRecordset(fmt::format("SELECT * FROM {};", sheet.Item));
            for (; !rows.Eof(); rows.MoveNext()) {
                rows.Edit();
                for (int i = 1; i < rows.FieldCount(); ++i) {
                    const CellRef cell{std::string(sheet.Item), CurOr(rows[0]), rows.FieldName(i)};
                    if (IsWritten(cell) && rows.TypeOf(i) == FieldType::dbDouble)
                        rows.Set(i, 98765.4321);
                }
                rows.Update();
            }
        }
    });
}

TEST_F(Descriptions, SpeakOfEveryCellThatACalculationWrites) {
    test::MakeNorthfieldWithMistakes(folder);
    const auto calculated = test::AllCells();
    Spoil();
    const auto spoilt = test::AllCells();
    ASSERT_NE(spoilt, calculated);
    WrittenRows written;
    Calc_All();
    const auto after = test::AllCells();
    EXPECT_EQ(after, calculated) << "a cell with a description was not calculated";
    for (const auto& [name, value] : after) {
        const CellRef cell = CellNamed(name);
        if (value == spoilt.at(name)) continue;
        EXPECT_TRUE(written.Tables.contains(cell.Item)) << name;
        EXPECT_TRUE(FindDescription(cell) != nullptr || FindOverwriting(cell) != nullptr) << name;
    }
    EXPECT_GT(written.Count, 300u) << "each row is written once";
}

TEST_F(Descriptions, NameTheKeyedCellsThatACalculationWrites) {
    test::MakeNorthfield(folder);
    gDB.Execute(
        "INSERT INTO A6 (LineNum,Col_2,Col_3,Col_4,Col_5,Col_6,Col_7,Col_8) VALUES "
        "(98,'Z','Up',0,100,'Down',-1,200);");
    gDB.Execute("UPDATE A8 SET Col_3=0,Col_5=0 WHERE LineNum=3;");
    gDB.Execute("UPDATE A8 SET Col_3=4711 WHERE LineNum=12;");
    gDB.Execute("UPDATE Sp1 SET Col_1=9 WHERE LineNum=2;");
    gDB.Execute("UPDATE S1p1 SET Col_3='Yes',Col_4='1/1/2024' WHERE LineNum=4;");
    const auto before = test::AllCells();
    Calc_All();
    std::set<std::string> overwritten;
    for (const auto& [name, value] : test::AllCells()) {
        if (value == before.at(name)) continue;
        const CellRef cell = CellNamed(name);
        if (FindOverwriting(cell) != nullptr) overwritten.insert(name);
        EXPECT_TRUE(FindDescription(cell) != nullptr || FindOverwriting(cell) != nullptr) << name;
    }
    EXPECT_EQ(overwritten,
              (std::set<std::string>{"A6|98|Col_3", "A6|98|Col_5", "A6|98|Col_6", "A6|98|Col_8",
                                     "A8|3|Col_5", "S1p1|4|Col_4", "Sp1|1|Col_1"}));
    Prove(1000);
}

}  // namespace
}  // namespace zolmara
