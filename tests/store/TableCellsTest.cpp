// The numbers of a table in memory: they show what the store holds, whoever wrote it, and only
// rows that come out otherwise are written.

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <cmath>
#include <random>

#include "core/Globals.h"
#include "store/DatabaseImpl.h"
#include "store/TableCells.h"
#include "support/TestCrf.h"

namespace zolmara::test {
namespace {

constexpr int kValue = 1;

class TableCellsTest : public SessionTest {
protected:
    TableCellsTest() {
        CreateCrf(folder.File("T.CRF"), SampleFields());
        MakeTable();
    }
    static void MakeTable() {
        gDB.AppendTable({"T",
                         {{"LineNum", FieldType::dbCurrency},
                          {"Col_1", FieldType::dbDouble},
                          {"Col_2", FieldType::dbDouble},
                          {"Word", FieldType::dbText, 20}},
                         {}});
        gDB.Execute("CREATE UNIQUE INDEX ndxT ON T (LineNum);");
        for (const double line : {51.0, 52.0, 1.0, 2.0, 1.01})
            gDB.Execute("INSERT INTO T (LineNum,Col_1) VALUES (?,?);", {line, line * 10});
    }

    /// Every cell as the cells in memory have it, by lines; -1 for Null.
    static std::vector<double> InMemory() {
        const TableCells& cells = CellsOf(gDB, "T");
        std::vector<double> all;
        for (const TableCells::Row row : cells.Rows())
            for (int i = 0; i < 3; ++i)
                all.push_back(cells.IsNull(row, i) ? -1 : cells.Amount(row, i));
        return all;
    }
    static std::vector<double> InStore() {
        std::vector<double> all;
        Recordset rows = gDB.OpenRecordset("SELECT * FROM T ORDER BY LineNum;", dbOpenSnapshot);
        for (; !rows.Eof(); rows.MoveNext())
            for (int i = 0; i < 3; ++i) all.push_back(NumOr(rows[i], -1));
        return all;
    }
    static void ExpectSame() { EXPECT_EQ(InMemory(), InStore()); }
    static double On(double line) {
        const TableCells& cells = CellsOf(gDB, "T");
        return cells.Amount(cells.RowOn(Currency(line)).value(), kValue);
    }
    static void Set(double line, double amount) {
        TableCells& cells = CellsOf(gDB, "T");
        RowEdit row(cells, cells.RowOn(Currency(line)).value());
        row.Set(kValue, amount);
        row.Update();
    }
};

TEST_F(TableCellsTest, AreInTheOrderOfTheLines) {
    const TableCells& cells = CellsOf(gDB, "T");
    std::vector<double> lines;
    for (const TableCells::Row row : cells.Rows()) lines.push_back(cells.Line(row).ToDouble());
    EXPECT_EQ(lines, (std::vector<double>{1, 1.01, 2, 51, 52}));
    EXPECT_EQ(cells.RowOn(Currency(3)), std::nullopt);
    EXPECT_TRUE(cells.IsNull(0, 2));
    EXPECT_EQ(cells.SumBelow(kValue, Currency(51)), 10 + 10.1 + 20);
    ExpectSame();
}

TEST_F(TableCellsTest, ATableThatIsNotThereIsNamed) {
    try {
        CellsOf(gDB, "Nowhere");
        ADD_FAILURE();
    } catch (const StoreError& error) {
        EXPECT_EQ(error.kind(), StoreError::Kind::NoSuchItem);
        EXPECT_STREQ(error.what(), "no such table: Nowhere");
    }
}

TEST_F(TableCellsTest, ShowWhatStatementsAndRecordsetsWrite) {
    ExpectSame();
    gDB.Execute("UPDATE T SET Col_1=7 WHERE LineNum=2;");
    EXPECT_EQ(On(2), 7);
    Recordset rows = gDB.OpenRecordset("SELECT * FROM T WHERE LineNum=51;");
    rows.Edit();
    rows.Set("Col_1", nullptr);
    rows.Update();
    ExpectSame();
    gDB.Execute("INSERT INTO T (LineNum,Col_1) VALUES (1.5,3);");
    EXPECT_EQ(On(1.5), 3);
    gDB.Execute("DELETE * FROM T WHERE LineNum=1;");
    ExpectSame();
    gDB.Execute("UPDATE T SET LineNum=9 WHERE LineNum=1.5;");
    EXPECT_EQ(On(9), 3);
    ExpectSame();
}

TEST_F(TableCellsTest, ShowWhatIsTakenBack) {
    EXPECT_EQ(On(1), 10);
    RunBatch(gDB, [&] {
        gDB.Execute("UPDATE T SET Col_1=0;");
        EXPECT_EQ(On(1), 0);
        EXPECT_THROW(gDB.Execute("UPDATE T SET LineNum=5, Col_1=6;"), StoreError);
        EXPECT_EQ(On(1), 0);
        gDB.Execute("UPDATE T SET Col_1=LineNum*10;");
    });
    EXPECT_EQ(On(1), 10);
    ExpectSame();
}

TEST_F(TableCellsTest, ShowWhatAnotherProgramWrites) {
    EXPECT_EQ(On(1), 10);
    {
        Database other = DBEngine::OpenDatabase(gCRFPath);
        other.Execute("UPDATE T SET Col_1=11 WHERE LineNum=1;");
    }
    EXPECT_EQ(On(1), 11);
}

TEST_F(TableCellsTest, FollowAChangeOfShape) {
    EXPECT_EQ(CellsOf(gDB, "T").FieldCount(), 4);
    gDB.AppendField("T", {"Col_9", FieldType::dbDouble});
    gDB.Execute("UPDATE T SET Col_9=LineNum;");
    const TableCells& cells = CellsOf(gDB, "T");
    EXPECT_EQ(cells.Position("col_9"), 4);
    EXPECT_EQ(cells.Amount(cells.RowOn(Currency(51)).value(), 4), 51);
    gDB.DeleteTable("T");
    MakeTable();
    ExpectSame();
}

TEST_F(TableCellsTest, OfAWideTableAreAllThere) {
    constexpr int kFields = 230;
    TableDef wide{"Wide", {{"LineNum", FieldType::dbCurrency}}, {}};
    for (int i = 1; i < kFields; ++i)
        wide.Fields.push_back({"F" + std::to_string(i), FieldType::dbDouble});
    wide.Fields[150] = {"F150", FieldType::dbText, 20};
    gDB.AppendTable(wide);
    gDB.Execute(
        "INSERT INTO Wide (LineNum,F1,F98,F99,F100,F199,F200,F229) VALUES "
        "(4.01,1,98,99,100,199,200,229);");
    gDB.Execute("INSERT INTO Wide (LineNum,F150,F99) VALUES (3,'a word',7);");
    const auto on = [](double line, int position) {
        const TableCells& cells = CellsOf(gDB, "Wide");
        const TableCells::Row row = cells.RowOn(Currency(line)).value();
        return cells.IsNull(row, position) ? -1 : cells.Amount(row, position);
    };
    EXPECT_EQ(CellsOf(gDB, "Wide").Line(CellsOf(gDB, "Wide").Rows()[0]), Currency(3));
    for (const int position : {1, 98, 99, 100, 199, 200, 229})
        EXPECT_EQ(on(4.01, position), position);
    for (const int position : {97, 101, 150, 198, 201}) EXPECT_EQ(on(4.01, position), -1);
    EXPECT_EQ(on(3, 99), 7);
    EXPECT_FALSE(CellsOf(gDB, "Wide").HasLineBreaks());
    // One row is read again.
    gDB.Execute("UPDATE Wide SET F100=8, F229=9, F150='a\nbreak' WHERE LineNum=3;");
    EXPECT_EQ(on(3, 100), 8);
    EXPECT_EQ(on(3, 229), 9);
    EXPECT_EQ(on(4.01, 229), 229);
    EXPECT_TRUE(CellsOf(gDB, "Wide").HasLineBreaks());
}

TEST_F(TableCellsTest, AddUpInTheOrderOfAStatement) {
    gDB.AppendTable(
        {"S", {{"LineNum", FieldType::dbCurrency}, {"Col_1", FieldType::dbDouble}}, {}});
    // Next to the large amount the small one is lost.
    gDB.Execute("INSERT INTO S (LineNum,Col_1) VALUES (2,100000000000000000);");
    gDB.Execute("INSERT INTO S (LineNum,Col_1) VALUES (3,-100000000000000000);");
    gDB.Execute("INSERT INTO S (LineNum,Col_1) VALUES (1,3);");
    const auto statement = [] {
        return NumOr(gDB.Scalar("Select Sum(Col_1) As C1 From S Where LineNum<51;"));
    };
    const auto cells = [] { return CellsOf(gDB, "S").SumBelow(kValue, Currency(51)); };
    EXPECT_EQ(cells(), 3) << "as the rows are stored";
    EXPECT_EQ(statement(), 3);
    gDB.Execute("CREATE UNIQUE INDEX ndxS ON S (LineNum);");
    EXPECT_EQ(cells(), 0) << "by the lines";
    EXPECT_EQ(statement(), 0);
    ASSERT_EQ(gDB.Table("S").Indexes.size(), 1U);
    EXPECT_EQ(gDB.Table("S").Indexes[0].Name, "ndxS");
}

TEST_F(TableCellsTest, ARowWithoutALineIsInNoSum) {
    gDB.Execute("INSERT INTO T (Col_1) VALUES (1000);");
    EXPECT_EQ(CellsOf(gDB, "T").SumBelow(kValue, Currency(51)), 10 + 10.1 + 20);
}

TEST_F(TableCellsTest, KnowOfLineBreaks) {
    EXPECT_FALSE(CellsOf(gDB, "T").HasLineBreaks());
    gDB.Execute("UPDATE T SET Word=? WHERE LineNum=2;", {"a\nb"});
    EXPECT_TRUE(CellsOf(gDB, "T").HasLineBreaks());
}

/// The writes of this connection, as SQLite tells them.
class Writes {
public:
    Writes() { sqlite3_update_hook(gDB.impl().Handle, See, this); }
    ~Writes() { sqlite3_update_hook(gDB.impl().Handle, nullptr, nullptr); }
    int Count = 0;

private:
    static void See(void* self, int, const char*, const char*, sqlite3_int64) {
        ++static_cast<Writes*>(self)->Count;
    }
};

TEST_F(TableCellsTest, ChangedRowsAreWrittenOnceAndNoOthers) {
    const Writes writes;
    ChangeCells(gDB, [&] {
        Set(1, 5);
        Set(2, 6);
        Set(1, 7);
        ChangeCells(gDB, [&] { Set(51, 8); });
        EXPECT_EQ(writes.Count, 0);
        Set(52, 1);
        Set(52, 520);
    });
    EXPECT_EQ(writes.Count, 3);
    EXPECT_EQ(InStore(),
              (std::vector<double>{1, 7, -1, 1.01, 10.1, -1, 2, 6, -1, 51, 8, -1, 52, 520, -1}));
    ExpectSame();
}

TEST_F(TableCellsTest, WhatWasSetAheadOfAFailureIsWritten) {
    EXPECT_THROW(ChangeCells(gDB,
                             [&] {
                                 Set(1, 5);
                                 Set(2, INFINITY);
                             }),
                 StoreError);
    EXPECT_EQ(NumOr(gDB.Scalar("SELECT Col_1 FROM T WHERE LineNum=1;")), 5);
    EXPECT_EQ(NumOr(gDB.Scalar("SELECT Col_1 FROM T WHERE LineNum=2;")), 20);
    ExpectSame();
}

TEST_F(TableCellsTest, RefuseInTheWordsOfARecordset) {
    const auto words = [](const std::function<void()>& work) -> std::string {
        try {
            work();
        } catch (const StoreError& error) {
            return error.what();
        }
        return "";
    };
    const std::string ours = words([] { Set(1.01, INFINITY); });
    EXPECT_EQ(ours, words([] {
                  Recordset rows = gDB.OpenRecordset("SELECT * FROM T WHERE LineNum=1.01;");
                  rows.Edit();
                  rows.Set("Col_1", INFINITY);
              }));
    EXPECT_TRUE(ours.starts_with("T line 1.01 Col_1 takes numbers only")) << ours;
}

TEST_F(TableCellsTest, WhatTheFileRefusesIsNotKept) {
    EXPECT_THROW(ChangeCells(gDB, [&] { Set(1, 1.5e308); }), StoreError);
    EXPECT_EQ(On(1), 10);
    ExpectSame();
}

TEST_F(TableCellsTest, WhatCouldNotBeWrittenIsNotWrittenByTheNextWork) {
    EXPECT_THROW(ChangeCells(gDB,
                             [] {
                                 TableCells& cells = CellsOf(gDB, "T");
                                 RowEdit row(cells, cells.RowOn(Currency(1)).value());
                                 row.Set(kValue, 4711);
                                 row.Set(0, 1e17);  // no line number is that large
                                 row.Update();
                             }),
                 StoreError);
    EXPECT_NO_THROW(ChangeCells(gDB, [] { CellsOf(gDB, "A"); }));
    EXPECT_EQ(NumOr(Cell("T", 1, "Col_1")), 10);
    ExpectSame();
}

TEST_F(TableCellsTest, ShowWhatTheStoreHoldsAfterWhateverHappens) {
    std::mt19937 random(7);
    const auto below = [&](unsigned count) { return static_cast<int>(random() % count); };
    const auto anyLine = [&] { return below(60) + 0.5 * below(2); };
    const auto act = [&] {
        switch (below(8)) {
            case 0:
                gDB.Execute("DELETE * FROM T WHERE LineNum=?;", {anyLine()});
                break;
            case 1:
                for (int i = 0; i < 30; ++i) {
                    const double line = anyLine();
                    gDB.Execute("DELETE * FROM T WHERE LineNum=?;", {line});
                    gDB.Execute("INSERT INTO T (LineNum,Col_2) VALUES (?,?);", {line, below(99)});
                }
                break;
            case 2:
                gDB.Execute("UPDATE T SET Col_2=Col_1;");
                break;
            case 3:
                ChangeCells(gDB, [&] {
                    TableCells& cells = CellsOf(gDB, "T");
                    for (const TableCells::Row row : cells.Rows()) {
                        RowEdit edit(cells, row);
                        below(3) == 0 ? edit.SetNull(kValue) : edit.Set(kValue, below(5));
                        edit.Update();
                    }
                });
                break;
            default:
                gDB.Execute("UPDATE T SET Col_1=? WHERE LineNum>?;", {below(9), anyLine()});
        }
    };
    for (int step = 0; step < 300; ++step) {
        SCOPED_TRACE(step);
        if (below(3) == 0) {
            RunBatch(gDB, [&] {
                act();
                if (below(2) == 0) ExpectSame();
                act();
            });
        } else {
            act();
        }
        if (below(3) != 0) ExpectSame();
        if (HasFailure()) return;
    }
}

}  // namespace
}  // namespace zolmara::test
