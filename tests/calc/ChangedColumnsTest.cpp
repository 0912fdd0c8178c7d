// After an entry only the columns that it reaches are written; the figures are worked out by hand.

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <map>
#include <string>

#include "calc/Calc_All.h"
#include "store/DatabaseImpl.h"
#include "worksheets/Sheets.h"

namespace zolmara {
namespace {

using namespace test;

/// What a run writes: how often each set of fields of each table, "Dp1 CC_900,Col_99".
using Writes = std::map<std::string, int>;

/// UPDATE "Dp1" SET "CC_900"=?,"Col_99"=? WHERE rowid=?
std::string FieldsWritten(std::string sql) {
    const auto drop = [&](std::string_view what, std::string_view instead) {
        for (std::size_t at = 0; (at = sql.find(what, at)) != std::string::npos;)
            sql.replace(at, what.size(), instead);
    };
    drop("UPDATE ", "");
    drop("SET ", "");
    drop(" WHERE rowid=?", "");
    drop("=?", "");
    drop("\"", "");
    return sql;
}

/// Those of the tables whose names begin so.
Writes OfTables(Writes writes, std::string_view begin) {
    std::erase_if(writes, [&](const auto& write) { return !write.first.starts_with(begin); });
    return writes;
}

class ChangedColumns : public SheetTest {
protected:
    static int OnStatement(unsigned, void* writes, void* statement, void*) {
        const std::string sql = sqlite3_sql(static_cast<sqlite3_stmt*>(statement));
        if (sql.starts_with("UPDATE")) ++(*static_cast<Writes*>(writes))[FieldsWritten(sql)];
        return 0;
    }
    static Writes WritesOfRun() {
        Writes writes;
        sqlite3* const handle = gDB.impl().Handle;
        sqlite3_trace_v2(handle, SQLITE_TRACE_STMT, OnStatement, &writes);
        Calc_Changed();
        sqlite3_trace_v2(handle, 0, nullptr, nullptr);
        return writes;
    }
    /// Figures of one run are inputs of the next, until they are the same.
    static void Settle() {
        for (int run = 0; run < 4; ++run) Calc_Changed();
    }

    /// Statistics 1, 1 and 1 of line 9, and 3 of line 10 on `lineOf10` of the first part.
    void KeyStatistics(double costOf9, double lineOf10) {
        SetComponents(1, {1, 2});
        SetComponents(2, {1});
        for (const double line : {1, 2}) SetCell("D1p1", line, "CC_900", 1);
        SetCell("D1p2", 1, "CC_900", 1);
        SetCell("D1p1", lineOf10, "CC_1000", 3);
        SetCell("D1p3", 53, "CC_900", costOf9);
        SetCell("D1p3", 53, "CC_1000", 30);
    }
};

TEST_F(ChangedColumns, AStatisticIsWrittenInItsColumnAndTheRowsSumsAlone) {
    KeyStatistics(100, 2);
    Settle();
    EXPECT_EQ(Num("D1p3", 54, "CC_900"), 33.333333);
    EXPECT_EQ(Num("Dp1", 1, "CC_900"), 34) << "with the dollar that rounding left";
    EXPECT_EQ(Num("Dp1", 2, "Col_99"), 63);
    SetCell("D1p1", 2, "CC_900", 2);
    EXPECT_EQ(WritesOfRun(), (Writes{{"D1p1 CC_900", 1},
                                     {"D1p3 CC_900", 2},
                                     {"Dp1 CC_900,Col_99", 3},
                                     {"Dp2 CC_900,Col_99", 2},
                                     {"F1p1 Col_2,Col_4,Col_9", 3},
                                     {"F1p2 Col_2,Col_4,Col_9", 2}}));
    EXPECT_EQ(Num("D1p3", 54, "CC_900"), 25);
    EXPECT_EQ(Num("Dp1", 1, "CC_900"), 25);
    EXPECT_EQ(Num("Dp1", 2, "CC_900"), 50);
    EXPECT_EQ(Num("Dp1", 2, "Col_99"), 80);
    EXPECT_EQ(Num("Dp1", 51, "Col_99"), 105);
    EXPECT_EQ(Num("Dp2", 1, "CC_900"), 25);
    EXPECT_EQ(Num("Dp3", 52, "CC_900"), 100);
    EXPECT_EQ(Num("Dp3", 52, "Col_99"), 130);
    EXPECT_EQ(Num("F1p1", 2, "Col_2"), 50);
}

// The sum of a row is made ahead of the residuals in it, and these follow in the order of their
// columns: also of the column that is not worked out again.
TEST_F(ChangedColumns, AResidualStaysOnItsRowWhileAnotherColumnChanges) {
    KeyStatistics(100.4, 1);
    Settle();
    EXPECT_EQ(Num("Dp1", 1, "CC_900"), 34.4);
    EXPECT_EQ(Num("Dp1", 1, "Col_99"), 64.4);
    SetCell("D1p3", 53, "CC_1000", 60.2);
    const Writes writes = WritesOfRun();
    EXPECT_EQ(OfTables(writes, "D"),
              (Writes{{"D1p3 CC_1000", 1}, {"Dp1 CC_1000,Col_99", 2}, {"Dp3 CC_1000,Col_99", 1}}));
    EXPECT_EQ(Num("Dp1", 1, "CC_900"), 34.4);
    EXPECT_EQ(Num("Dp1", 1, "CC_1000"), 60.2);
    EXPECT_EQ(Num("Dp1", 1, "Col_99"), 94.6);
    EXPECT_EQ(Num("Dp1", 51, "Col_99"), 127.6);
    EXPECT_EQ(Num("Dp3", 52, "CC_900"), 100.4);
    EXPECT_EQ(Num("Dp3", 52, "Col_99"), 160.6);
    SetCell("D1p3", 53, "CC_1000", 30);
    Calc_Changed();
    EXPECT_EQ(Num("Dp1", 1, "Col_99"), 64.4);
}

TEST_F(ChangedColumns, ALargerAmountTakesTheResidualFromTheRowThatHadIt) {
    KeyStatistics(100, 1);
    Settle();
    EXPECT_EQ(Num("Dp1", 1, "CC_900"), 34);
    EXPECT_EQ(Num("Dp1", 1, "Col_99"), 64);
    SetCell("D1p2", 1, "CC_900", 4);  // 100 / 6 = 16.666667; 17, 17 and 67 make 101
    Calc_Changed();
    EXPECT_EQ(Num("Dp1", 1, "CC_900"), 17);
    EXPECT_EQ(Num("Dp1", 1, "Col_99"), 47);
    EXPECT_EQ(Num("Dp2", 1, "CC_900"), 66);
    EXPECT_EQ(Num("Dp2", 51, "Col_99"), 66);
    EXPECT_EQ(Num("Dp3", 52, "CC_900"), 100);
}

TEST_F(ChangedColumns, AnExpenseIsWrittenInItsPoolAloneAndThePoolCloses) {
    SetComponents(1, {1, 2, 3});
    for (const double line : {1, 2, 3}) SetCell("E1p1", line, "Col_1", 1);
    SetCell("A", 8, "Col_1", 100);
    SetCell("A", 1, "Col_1", 50);
    Settle();
    EXPECT_EQ(Column("SELECT Col_2 FROM E1p1 ORDER BY LineNum;"),
              (std::vector<double>{0.333334, 0.333333, 0.333333, 1}));
    EXPECT_EQ(Column("SELECT CC_800 FROM E1p1 ORDER BY LineNum;"),
              (std::vector<double>{34, 33, 33, 100}));
    SetCell("A", 8, "Col_1", 200);
    const Writes writes = WritesOfRun();
    EXPECT_EQ(writes.at("E CC_800"), 2);
    EXPECT_EQ(writes.at("E1p1 CC_800"), 4) << "line 51 by E, three lines by E-1";
    EXPECT_EQ(writes.at("E1p3 CC_800"), 1) << "line 52";
    EXPECT_EQ(OfTables(writes, "E").size(), 3U);
    EXPECT_EQ(Column("SELECT CC_800 FROM E1p1 ORDER BY LineNum;"),
              (std::vector<double>{66, 67, 67, 200}));
    EXPECT_EQ(Column("SELECT CC_100 FROM E1p1 ORDER BY LineNum;"),
              (std::vector<double>{16, 17, 17, 50}));
    EXPECT_EQ(Num("E1p3", 52, "CC_800"), 200);
}

TEST_F(ChangedColumns, ADirectAmountIsAddedToItsColumnItsRowAndTheirTotals) {
    SetComponents(1, {1, 2});
    SetComponents(3, {1});
    SetCell("B1p1", 1, "CC_900", 10);
    SetCell("B1p1", 2, "CC_1000", 5);
    SetCell("B1p3", 1, "CC_900", 1);
    Settle();
    SetCell("B1p1", 2, "CC_900", 7.25);
    const Writes writes = WritesOfRun();
    EXPECT_EQ(writes.at("B1p1 CC_900,Col_99"), 2) << "the row's total, and line 51";
    EXPECT_EQ(writes.at("B1p3 CC_900,Col_99"), 1) << "line 52";
    EXPECT_EQ(OfTables(writes, "B").size(), 2U);
    EXPECT_EQ(Num("F1p1", 2, "Col_1"), 7.25);
    EXPECT_EQ(Num("B1p1", 2, "Col_99"), 12.25);
    EXPECT_EQ(Num("B1p1", 51, "CC_900"), 17.25);
    EXPECT_EQ(Num("B1p3", 52, "CC_900"), 18.25);
    EXPECT_EQ(Num("B1p3", 52, "Col_99"), 23.25);
    EXPECT_EQ(Num("A", 9, "Col_6"), 18.25);
}

TEST_F(ChangedColumns, FiguresKeyedOverResultsArePutRight) {
    KeyStatistics(100, 1);
    Settle();
    const auto wanted = Dump();
    for (const auto& [table, line, field] : {std::tuple{"Dp1", 2.0, "CC_900"},
                                             {"Dp1", 2.0, "Col_99"},
                                             {"Dp1", 1.0, "CC_1000"},
                                             {"Dp1", 51.0, "CC_900"},
                                             {"Dp3", 52.0, "Col_99"},
                                             {"D1p3", 54.0, "CC_900"},
                                             {"D1p1", 51.0, "CC_900"},
                                             {"F1p1", 1.0, "Col_2"},
                                             {"F1p1", 1.0, "Col_9"},
                                             {"Fp3", 52.0, "Col_4"},
                                             {"E1p1", 1.0, "Col_2"}}) {
        SetCell(table, line, field, 4711);
        Calc_Changed();
        EXPECT_EQ(Dump(), wanted) << table << " " << line << " " << field;
    }
}

}  // namespace
}  // namespace zolmara
