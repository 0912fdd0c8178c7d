// The rows of a table whose numbers are in memory, walked with their texts.

#include <gtest/gtest.h>

#include <array>

#include "core/Globals.h"
#include "store/CellWalk.h"
#include "support/TestCrf.h"

namespace zolmara::test {
namespace {

constexpr int kValue = 1;
constexpr std::array kWord = {2};

class CellWalkTest : public SessionTest {
protected:
    CellWalkTest() {
        CreateCrf(folder.File("T.CRF"), SampleFields());
        gDB.AppendTable({"T",
                         {{"LineNum", FieldType::dbCurrency},
                          {"Col_1", FieldType::dbDouble},
                          {"Word", FieldType::dbText, 20}},
                         {}});
    }
    static void Add(double line, double value, const Variant& word) {
        gDB.Execute("INSERT INTO T (LineNum,Col_1,Word) VALUES (?,?,?);", {line, value, word});
    }
    /// "line value word" of each row.
    static std::vector<std::string> Walked() {
        std::vector<std::string> rows;
        const TableCells& cells = CellsOf(gDB, "T");
        WalkLines(gDB, cells, kWord, [&](TableCells::Row row, RowTexts texts) {
            rows.push_back(Text(cells.Line(row)) + " " + Text(cells.Amount(row, kValue)) + " " +
                           std::string(texts[0]));
        });
        return rows;
    }
};

TEST_F(CellWalkTest, RowsComeInTheOrderOfTheirLinesWithTheirOwnTexts) {
    Add(51, 1, "Total");
    Add(1, 2, "Clinic");
    Add(1.01, 3, Variant());
    EXPECT_EQ(Walked(), (std::vector<std::string>{"1 2 Clinic", "1.01 3 ", "51 1 Total"}));
}

TEST_F(CellWalkTest, RowsOnOneLineKeepWhatIsTheirs) {
    Add(2, 10, "b");
    Add(1, 20, "a");
    Add(2, 30, "c");
    EXPECT_EQ(Walked(), (std::vector<std::string>{"1 20 a", "2 10 b", "2 30 c"}));
}

TEST_F(CellWalkTest, ATableWithoutRowsGivesNone) {
    EXPECT_EQ(Walked(), std::vector<std::string>{});
}

TEST_F(CellWalkTest, ATableThatIsWrittenToMeanwhileStopsTheWalk) {
    for (const double line : {1.0, 2.0, 3.0}) Add(line, line, "x");
    const TableCells& cells = CellsOf(gDB, "T");
    int rows = 0;
    const auto walk = [&](const std::string& change) {
        rows = 0;
        WalkLines(gDB, CellsOf(gDB, "T"), kWord, [&](TableCells::Row, RowTexts) {
            if (++rows == 2) gDB.Execute(change);
        });
    };
    for (const std::string change :
         {"UPDATE T SET Col_1=9 WHERE LineNum=3;", "INSERT INTO T (LineNum) VALUES (4);"}) {
        try {
            walk(change);
            ADD_FAILURE() << change;
        } catch (const StoreError& error) {
            EXPECT_EQ(std::string(error.what()),
                      "table T was changed while it was read; do it again");
        }
        EXPECT_EQ(rows, 2) << change;
        EXPECT_FALSE(cells.AreCurrent());
    }
    EXPECT_EQ(Walked().size(), 4U);
}

}  // namespace
}  // namespace zolmara::test
