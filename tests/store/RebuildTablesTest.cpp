// Tables made anew with other fields, by one thread and by two.

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <stdexcept>

#include "core/Globals.h"
#include "store/Connection.h"
#include "store/DatabaseImpl.h"
#include "store/FilledCrf.h"
#include "store/RebuildTables.h"
#include "store/base/Sqlite.h"
#include "structure/SecondThread.h"
#include "support/TestCrf.h"

namespace zolmara::test {
namespace {

namespace fs = std::filesystem;

std::string Rows(Database& db, const std::string& sql) {
    SqliteStatement select(db.impl().Handle, sql);
    std::string text;
    while (select.Step())
        for (int i = 0; i < sqlite3_column_count(select.get()); ++i)
            text += select.Text(i) + (i + 1 < sqlite3_column_count(select.get()) ? "|" : "\n");
    return text;
}

/// A file with the tables T1 and T2 of three fields and three rows each.
class Rebuilt : public SessionTest {
protected:
    Rebuilt() : db_(DBEngine::CreateDatabase(folder.File("t.CRF"), "")) {
        RunBatch(db_, [&] {
            for (const std::string name : {"T1", "T2"}) {
                db_.AppendTable({name,
                                 {{"LineNum", FieldType::dbCurrency},
                                  {"Description", FieldType::dbText, 40},
                                  {"CC_100", FieldType::dbDouble},
                                  {"CC_101", FieldType::dbDouble}},
                                 {}});
                db_.Execute("INSERT INTO " + name + " VALUES (3,'O''Hara',7,7.25);");
                db_.Execute("INSERT INTO " + name + " VALUES (1.01,'Second',Null,-0.5);");
                db_.Execute("INSERT INTO " + name + " VALUES (2,'',1e300,Null);");
            }
        });
    }

    /// Both tables without CC_100, with CC_101 in its place and a new field.
    std::vector<RebuiltTable> Narrowed() const {
        std::vector<RebuiltTable> tables;
        for (const std::string name : {"T1", "T2"})
            tables.push_back({name,
                              {{"LineNum", "LineNum"},
                               {"", "CC_50"},
                               {"CC_101", "CC_100"},
                               {"Description", "Description"}}});
        return tables;
    }
    std::string Now() {
        return Rows(db_, "SELECT type,name,sql FROM sqlite_schema ORDER BY type DESC,rowid") +
               Rows(db_, "SELECT rowid,* FROM T1") + Rows(db_, "SELECT rowid,* FROM T2");
    }
    std::string Attached() { return Rows(db_, "SELECT name FROM pragma_database_list"); }
    void ExpectRefused(const std::vector<RebuiltTable>& tables, StoreError::Kind kind) {
        const std::string before = Now();
        try {
            RebuildTables(db_, tables, "tblTemp", true);
            FAIL() << "not refused";
        } catch (const StoreError& error) {
            EXPECT_EQ(error.kind(), kind) << error.what();
        }
        EXPECT_EQ(Now(), before);
        EXPECT_EQ(Attached(), "main\n");
    }

    Database db_;
};

constexpr const char* kNarrowedRows =
    "1|3||7.25|O'Hara\n"
    "2|1.01||-0.5|Second\n"
    "3|2|||\n";

TEST_F(Rebuilt, TablesHaveTheFieldsGivenInTheirOrderAndTheRowsAsTheyStood) {
    RebuildTables(db_, Narrowed(), "tblTemp", false);
    EXPECT_EQ(Rows(db_, "SELECT rowid,* FROM T1"), kNarrowedRows);
    EXPECT_EQ(Rows(db_, "SELECT rowid,* FROM T2"), kNarrowedRows);
    const TableDef& table = db_.Table("T2");
    EXPECT_EQ(table.Fields[0].Type, FieldType::dbCurrency);
    EXPECT_EQ(table.Fields[1].Type, FieldType::dbDouble);
    EXPECT_EQ(table.Fields[3].Type, FieldType::dbText);
    EXPECT_EQ(table.Fields[3].Size, 40);
    ASSERT_EQ(table.Indexes.size(), 1u);
    EXPECT_EQ(table.Indexes[0].Name, "ndxT2");
    EXPECT_TRUE(table.Indexes[0].Unique);
    EXPECT_FALSE(db_.HasTable("tblTemp"));
}

TEST_F(Rebuilt, AnUnindexedTableGetsNoIndex) {
    auto tables = Narrowed();
    tables[0].Indexed = false;
    RebuildTables(db_, tables, "tblTemp", false);
    EXPECT_TRUE(db_.Table("T1").Indexes.empty());
    EXPECT_EQ(db_.Table("T2").Indexes.size(), 1u);
}

TEST_F(Rebuilt, TheCopyIsOfTheLastTableAndStandsAheadOfIt) {
    db_.Execute("SELECT LineNum INTO tblTemp FROM T1;");
    RebuildTables(db_, Narrowed(), "tblTemp", true);
    EXPECT_EQ(Rows(db_, "SELECT rowid,* FROM tblTemp"), kNarrowedRows);
    EXPECT_TRUE(db_.Table("tblTemp").Indexes.empty());
    EXPECT_EQ(db_.TableNames(), (std::vector<std::string>{"T1", "tblTemp", "T2"}));
    db_.RefreshTableDefs();
    EXPECT_EQ(db_.TableNames(), (std::vector<std::string>{"T1", "tblTemp", "T2"}));
}

TEST_F(Rebuilt, AFormerCopyGoesWhereNoneIsWanted) {
    db_.Execute("SELECT LineNum INTO tblTemp FROM T1;");
    RebuildTables(db_, Narrowed(), "tblTemp", false);
    EXPECT_EQ(db_.TableNames(), (std::vector<std::string>{"T1", "T2"}));
}

TEST_F(Rebuilt, AFieldThatIsNotThereIsRefusedAndEveryTableStays) {
    auto tables = Narrowed();
    tables[1].Fields.push_back({"CC_999", "CC_999"});
    ExpectRefused(tables, StoreError::Kind::NoSuchItem);
}

TEST_F(Rebuilt, ATableThatIsNotThereIsRefusedAndEveryTableStays) {
    auto tables = Narrowed();
    tables[1].Name = "T3";
    ExpectRefused(tables, StoreError::Kind::NoSuchItem);
}

TEST_F(Rebuilt, TwoFieldsOfOneNameAreRefusedAndEveryTableStays) {
    auto tables = Narrowed();
    tables[1].Fields.push_back({"CC_100", "cc_100"});
    ExpectRefused(tables, StoreError::Kind::Other);
}

TEST_F(Rebuilt, TwoRowsOfOneLineAreRefusedAndEveryTableStays) {
    db_.Execute("UPDATE T2 SET LineNum=3 WHERE LineNum=2;");
    ExpectRefused(Narrowed(), StoreError::Kind::Other);
    const SecondThread second;
    ExpectRefused(Narrowed(), StoreError::Kind::Other);
}

TEST_F(Rebuilt, WhatIsRefusedLeavesTheRestOfTheBatch) {
    db_.Execute("UPDATE T2 SET LineNum=3 WHERE LineNum=2;");
    RunBatch(db_, [&] {
        db_.Execute("DELETE * FROM T1 WHERE LineNum=2;");
        EXPECT_THROW(RebuildTables(db_, Narrowed(), "tblTemp", false), StoreError);
    });
    EXPECT_EQ(Rows(db_, "SELECT LineNum,CC_101 FROM T1"), "3|7.25\n1.01|-0.5\n");
}

TEST_F(Rebuilt, TheSecondThreadMakesTheSameToTheLastBit) {
    std::string made[2];
    const fs::path path = db_.Path();
    const fs::path start = folder.File("start.CRF");
    db_.Execute("INSERT INTO T1 VALUES (9e14,'x',-1e308,1e-320);");
    db_.Execute("INSERT INTO T1 VALUES (4,Null,0,123456789012345678);");
    db_.Close();
    fs::copy_file(path, start);
    for (const bool alone : {false, true}) {
        fs::copy_file(start, path, fs::copy_options::overwrite_existing);
        db_ = DBEngine::OpenDatabase(path.string());
        const SecondThread second(alone ? SecondThread::Makes::All : SecondThread::Makes::None);
        RebuildTables(db_, Narrowed(), "tblTemp", true);
        EXPECT_EQ(second.Starts(), alone ? 1 : 0);
        made[alone] = Now();
        for (const char* field : {"LineNum", "CC_100", "Description"})
            made[alone] +=
                Rows(db_, std::string("SELECT typeof(") + field + "),quote(" + field + ") FROM T1");
        EXPECT_EQ(Rows(db_, "PRAGMA integrity_check"), "ok\n");
        db_.Close();
    }
    EXPECT_EQ(made[0], made[1]);
    EXPECT_NE(made[0].find("O'Hara"), std::string::npos);
}

/// A file from elsewhere may declare what the store does not; its fields count as memo.
TEST_F(Rebuilt, FieldsOfAStrangeTypeBecomeTextInBothThreads) {
    for (const auto makes : {SecondThread::Makes::None, SecondThread::Makes::All}) {
        for (const char* sql : {"DROP TABLE IF EXISTS T3",
                                "CREATE TABLE T3 (LineNum INTEGER PRIMARY KEY, Kept, Gone, Set_1 "
                                "INT DEFAULT 5, Last DOUBLE NOT NULL DEFAULT 1)",
                                "INSERT INTO T3 (LineNum,Kept) VALUES (7,2.5)",
                                "INSERT INTO T3 (LineNum,Set_1,Last) VALUES (2,3,4.0)"})
            SqliteRun(db_.impl().Handle, sql);
        db_.RefreshTableDefs();
        const SecondThread second(makes);
        const std::vector<RebuiltTable> tables = {
            {"T3",
             {{"LineNum", "LineNum"}, {"Kept", "Kept"}, {"Set_1", "Set_1"}, {"Last", "Last"}}}};
        RebuildTables(db_, tables, "tblTemp", false);
        EXPECT_EQ(Rows(db_,
                       "SELECT rowid,quote(LineNum),quote(Kept),quote(Set_1),quote(Last) "
                       "FROM T3"),
                  "1|'2'|NULL|'3'|4.0\n2|'7'|'2.5'|'5'|1.0\n");
        EXPECT_EQ(db_.Table("T3").Fields[1].Type, FieldType::dbMemo);
        EXPECT_FALSE(db_.Table("T3").Fields[3].Required);
    }
}

/// What another program wrote past the checks: every cell keeps its kind and its bits.
TEST_F(Rebuilt, WhatNoFieldShouldHoldStaysAsItIsInBothThreads) {
    SqliteRun(db_.impl().Handle,
              "PRAGMA ignore_check_constraints=ON;"
              "INSERT INTO T1 VALUES ('north',x'00ff',x'3132','12 dollars');"
              "INSERT INTO T1 VALUES (x'37',9223372036854775807,9223372036854775807,-0.0);"
              "INSERT INTO T1 VALUES (9007199254740993,printf('%.9000c','x'),1e999,0.1+0.2);"
              "INSERT INTO T1 (rowid,LineNum,CC_101) VALUES (900,2.5,zeroblob(9000));"
              "DELETE FROM T1 WHERE LineNum=1.01;"
              "PRAGMA ignore_check_constraints=OFF");
    const std::string bits =
        "SELECT quote(LineNum),quote({}),quote(Description),hex({}) FROM T1 ORDER BY rowid";
    const std::string before = Rows(db_, fmt::format(fmt::runtime(bits), "CC_101", "CC_101"));
    const auto tables = Narrowed();
    for (const auto makes : {SecondThread::Makes::All, SecondThread::Makes::None}) {
        const SecondThread second(makes);
        const auto undone = [&] {
            RebuildTables(db_, tables, "tblTemp", true);
            EXPECT_EQ(Rows(db_, fmt::format(fmt::runtime(bits), "CC_100", "CC_100")), before);
            throw std::runtime_error("back");
        };
        EXPECT_THROW(RunBatch(db_, [&] { db_.impl().RunWhole(undone); }), std::runtime_error);
        EXPECT_EQ(Rows(db_, fmt::format(fmt::runtime(bits), "CC_101", "CC_101")), before);
    }
}

TEST_F(Rebuilt, NamesOfFieldsMayHaveQuotesInThem) {
    for (const auto makes : {SecondThread::Makes::None, SecondThread::Makes::All}) {
        for (const char* sql : {"DROP TABLE IF EXISTS \"T'3\"",
                                "CREATE TABLE \"T'3\" (\"Line\"\"Num\" CURRENCY, \"a'b]\" DOUBLE, "
                                "\"select\" LONGTEXT COLLATE NOCASE)",
                                "INSERT INTO \"T'3\" VALUES (3,4,'five')"})
            SqliteRun(db_.impl().Handle, sql);
        db_.RefreshTableDefs();
        const SecondThread second(makes);
        const std::vector<RebuiltTable> tables = {
            {"T'3",
             {{"select", "select"}, {"", "N\"w"}, {"a'b]", "a'b]"}, {"Line\"Num", "Line\"Num"}},
             false}};
        RebuildTables(db_, tables, "tblTemp", false);
        EXPECT_EQ(Rows(db_, "SELECT * FROM \"T'3\""), "five||4.0|3\n");
    }
}

/// Another program may have made the file so.
TEST_F(Rebuilt, AFileOfAnotherEncodingIsMadeAnewByBothThreads) {
    const std::string path = folder.File("wide.CRF");
    for (const auto makes : {SecondThread::Makes::None, SecondThread::Makes::All}) {
        fs::remove(path);
        {
            Connection connection;
            Connect(connection, path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
            SqliteRun(connection.Handle, "PRAGMA encoding='UTF-16le'");
            MarkAsCostReportFile(connection.Handle, path);
            SqliteRun(connection.Handle,
                      "CREATE TABLE T1 (\"LineNum\" CURRENCY, \"Description\" LONGTEXT COLLATE "
                      "NOCASE, \"CC_100\" DOUBLE, \"CC_101\" DOUBLE);"
                      "INSERT INTO T1 VALUES (3,'Größe',1,7.25)");
        }
        Database wide = DBEngine::OpenDatabase(path);
        const SecondThread second(makes);
        RebuildTables(wide, {Narrowed().data(), 1}, "tblTemp", true);
        EXPECT_EQ(second.Starts(), makes == SecondThread::Makes::None ? 0 : 1);
        EXPECT_EQ(Rows(wide, "SELECT * FROM T1"), "3||7.25|Größe\n");
        EXPECT_EQ(Rows(wide, "PRAGMA encoding"), "UTF-16le\n");
        EXPECT_EQ(Rows(wide, "PRAGMA integrity_check"), "ok\n");
    }
}

/// A step that is taken back leaves nothing in memory that the next would meet.
TEST_F(Rebuilt, BehindARefusalTheSameBatchMayRebuild) {
    for (const auto makes : {SecondThread::Makes::None, SecondThread::Makes::All}) {
        const SecondThread second(makes);
        const std::string before = Now();
        auto wrong = Narrowed();
        wrong[1].Fields.push_back({"CC_100", "CC_100"});
        const auto work = [&] {
            EXPECT_THROW(RebuildTables(db_, wrong, "tblTemp", true), StoreError);
            EXPECT_THROW(RebuildTables(db_, wrong, "tblTemp", true), StoreError);
            RebuildTables(db_, Narrowed(), "tblTemp", true);
            EXPECT_EQ(Rows(db_, "SELECT rowid,* FROM T2"), kNarrowedRows);
            throw std::runtime_error("back");
        };
        EXPECT_THROW(RunBatch(db_, [&] { db_.impl().RunWhole(work); }), std::runtime_error);
        EXPECT_EQ(Now(), before);
    }
}

/// The rows that a batch has written before are not in the file yet.
TEST_F(Rebuilt, TheSecondThreadSeesWhatTheBatchWroteBefore) {
    const SecondThread second;
    RunBatch(db_, [&] {
        db_.Execute("UPDATE T2 SET CC_101=44 WHERE LineNum=2;");
        RebuildTables(db_, Narrowed(), "tblTemp", false);
    });
    EXPECT_EQ(Rows(db_, "SELECT CC_100 FROM T2"), "7.25\n-0.5\n44.0\n");
}

TEST_F(Rebuilt, WhereTheSecondThreadFailsNothingOfTheBatchIsKeptAndTheReasonIsTold) {
    const std::string before = Now();
    const std::string bytes = BytesOf(db_.Path());
    {
        const SecondThread second(SecondThread::Makes::All,
                                  [] { throw std::runtime_error("no room in memory"); });
        try {
            RunBatch(db_, [&] {
                db_.Execute("DELETE * FROM T1;");
                RebuildTables(db_, Narrowed(), "tblTemp", true);
            });
            FAIL() << "no error";
        } catch (const StoreError& error) {
            EXPECT_EQ(error.what(), db_.Path() +
                                        ": its tables could not be made anew: no room in memory; " +
                                        "nothing of this operation was kept");
        }
    }
    EXPECT_EQ(Now(), before);
    EXPECT_EQ(BytesOf(db_.Path()), bytes);
    EXPECT_EQ(Attached(), "main\n");
    RebuildTables(db_, Narrowed(), "tblTemp", false);
    EXPECT_EQ(Rows(db_, "SELECT rowid,* FROM T2"), kNarrowedRows);
}

TEST_F(Rebuilt, WhereMemoryGivesOutInTheSecondThreadItIsSaid) {
    const SecondThread second(SecondThread::Makes::All, [] { throw std::bad_alloc(); });
    try {
        RebuildTables(db_, Narrowed(), "tblTemp", true);
        FAIL() << "no error";
    } catch (const StoreError& error) {
        EXPECT_NE(std::string(error.what()).find("made anew: out of memory"), std::string::npos);
    }
}

/// What goes wrong in this thread meanwhile waits for the second one, and is what is told.
TEST_F(Rebuilt, ARefusalHereDoesNotLeaveTheSecondThreadBehind) {
    auto tables = Narrowed();
    tables[1].Fields.push_back({"CC_100", "CC_100"});
    const SecondThread second;
    ExpectRefused(tables, StoreError::Kind::Other);
    EXPECT_EQ(second.Starts(), 1);
}

TEST_F(Rebuilt, OneProcessorHasNoSecondThread) {
    const SecondThread second;
    TheRebuildShares().Processors = 1;
    RebuildTables(db_, Narrowed(), "tblTemp", false);
    EXPECT_EQ(second.Starts(), 0);
    EXPECT_EQ(Rows(db_, "SELECT rowid,* FROM T2"), kNarrowedRows);
}

/// Two tables of three rows by four fields.
TEST_F(Rebuilt, SmallTablesHaveNoSecondThread) {
    {
        const SecondThread second;
        TheRebuildShares().LeastCells = 25;
        RebuildTables(db_, Narrowed(), "tblTemp", false);
        EXPECT_EQ(second.Starts(), 0);
    }
    const SecondThread second;
    TheRebuildShares().LeastCells = 24;
    auto back = Narrowed();
    for (RebuiltTable& table : back)
        table.Fields = {{"LineNum", "LineNum"},
                        {"CC_50", "CC_50"},
                        {"CC_100", "CC_100"},
                        {"Description", "Description"}};
    RebuildTables(db_, back, "tblTemp", false);
    EXPECT_EQ(second.Starts(), 1);
    EXPECT_EQ(Rows(db_, "SELECT rowid,* FROM T2"), kNarrowedRows);
}

TEST_F(Rebuilt, TablesTooLargeForMemoryAreMadeOneAfterTheOther) {
    const SecondThread second(SecondThread::Makes::Some);
    TheRebuildShares().MostCells = 23;
    RebuildTables(db_, Narrowed(), "tblTemp", true);
    EXPECT_EQ(second.Starts(), 0);
    for (const char* table : {"T1", "T2", "tblTemp"})
        EXPECT_EQ(Rows(db_, std::string("SELECT rowid,* FROM ") + table), kNarrowedRows) << table;
    EXPECT_EQ(db_.TableNames(), (std::vector<std::string>{"T1", "tblTemp", "T2"}));
}

/// Each of them takes what the second thread has made beside the file, until the batch ends.
TEST_F(Rebuilt, ABatchMayRebuildManyTimes) {
    const SecondThread second;
    RunBatch(db_, [&] {
        for (int i = 0; i < 12; ++i) {
            std::vector<RebuiltTable> tables;
            for (const std::string name : {"T1", "T2"})
                tables.push_back({name, {{"LineNum", "LineNum"}, {"CC_100", "CC_100"}}});
            RebuildTables(db_, i == 0 ? Narrowed() : tables, "tblTemp", false);
        }
    });
    EXPECT_EQ(second.Starts(), 3);
    EXPECT_EQ(Rows(db_, "SELECT * FROM T2"), "3|7.25\n1.01|-0.5\n2|\n");
    EXPECT_EQ(Attached(), "main\n");
}

TEST_F(Rebuilt, NothingAppearsBesideTheFile) {
    const SecondThread second;
    RunBatch(db_, [&] {
        RebuildTables(db_, Narrowed(), "tblTemp", false);
        EXPECT_EQ(std::distance(fs::directory_iterator(folder.Path()), {}), 1);
    });
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.Path()), {}), 1);
}

/// A statement that still reads when the batch ends holds what is in memory beside the file.
TEST_F(Rebuilt, WhatAReaderHoldsIsLetGoLater) {
    const SecondThread second;
    {
        SqliteStatement reader(db_.impl().Handle,
                               "SELECT count(*) FROM sqlite_schema UNION ALL "
                               "SELECT 1");
        RunBatch(db_, [&] {
            RebuildTables(db_, Narrowed(), "tblTemp", false);
            reader.Step();
        });
        EXPECT_NE(Attached(), "main\n");
        RunBatch(db_, [&] { db_.Execute("UPDATE T1 SET CC_50=5;"); });
        EXPECT_EQ(Rows(db_, "SELECT CC_50 FROM T1"), "5.0\n5.0\n5.0\n");
    }
    RunBatch(db_, [&] {
        std::vector<RebuiltTable> tables = {{"T2", {{"LineNum", "LineNum"}, {"CC_50", "CC_50"}}}};
        RebuildTables(db_, tables, "tblTemp", false);
    });
    EXPECT_EQ(Rows(db_, "SELECT * FROM T2"), "3|\n1.01|\n2|\n");
    EXPECT_EQ(Attached(), "main\n");
}

TEST_F(Rebuilt, AFieldIsAskedForWithoutRegardToCase) {
    EXPECT_TRUE(HasField(db_, "t1", "cc_101"));
    EXPECT_FALSE(HasField(db_, "T1", "CC_102"));
    EXPECT_FALSE(HasField(db_, "T9", "CC_100"));
}

}  // namespace
}  // namespace zolmara::test
