// Rows carried from one file to another, files that are only read, steps that fail as a whole.

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "store/CopyRows.h"
#include "store/FilledCrf.h"
#include "store/ReadSnapshot.h"
#include "store/WholeStep.h"
#include "support/TestCrf.h"

namespace zolmara::test {
namespace {

namespace fs = std::filesystem;

class CopyRowsTest : public SessionTest {
protected:
    CopyRowsTest() {
        fs::create_directory(work_);
        CreateCrf(target_, SampleFields());
        gDB.Close();
        OpenFilledCopy(source_);
    }
    /// The source as prepared so far, closed and opened for reading; the target is the open CRF.
    void Turn() {
        gDB.Close();
        bytes_ = BytesOf(source_);
        gImportDB = OpenReadOnly(source_);
        SetCrfPath(target_);
        gDB = DBEngine::OpenDatabase(target_);
    }
    std::vector<std::string> FieldsOf(std::string_view table) {
        std::vector<std::string> names;
        for (const auto& field : gDB.Table(table).Fields) names.push_back(field.Name);
        return names;
    }
    std::size_t Copy(std::string_view table, const CopyWatch& watch = {}) {
        gDB.Execute("DELETE FROM " + std::string(table) + ";");
        return CopyRows(gImportDB, gDB, table, FieldsOf(table), watch);
    }
    static void Raw(const std::string& path, const std::string& sql) {
        sqlite3* handle = nullptr;
        ASSERT_EQ(sqlite3_open(path.c_str(), &handle), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(handle, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
            << sqlite3_errmsg(handle);
        sqlite3_close(handle);
    }

    std::string work_ = folder.File("source");
    std::string source_ = work_ + "/Source.CRF";
    std::string target_ = folder.File("Target.CRF");
    std::string bytes_;
};

TEST_F(CopyRowsTest, ANumberKeepsItsLastBit) {
    Recordset row = gDB.OpenRecordset("SELECT * FROM A WHERE LineNum=8;");
    row.Edit();
    row.Set("Col_1", 0.1 + 0.2);
    row.Update();
    row.Close();
    Turn();
    EXPECT_GT(Copy("A"), 20u);
    EXPECT_EQ(Cell("A", 8, "Col_1").Number(), 0.1 + 0.2);
    EXPECT_NE(Cell("A", 8, "Col_1").Number(), 0.3);
}

TEST_F(CopyRowsTest, QuotesLongTextDatesAndNullsComeOver) {
    const std::string longText(255, 'x');
    SetCell("S1p2", 1, "Col_2", "Bill \"Bo\" O'Neil #1 [x]");
    gDB.Execute("UPDATE Sp1 SET Description=? WHERE LineNum=3;", {longText});
    gDB.Execute("UPDATE Master SET ESDate=?;", {DateTime(2023, 5, 31, 23, 59, 58)});
    Turn();
    Copy("S1p2");
    Copy("Sp1");
    Copy("Master");
    EXPECT_EQ(Cell("S1p2", 1, "Col_2"), Variant("Bill \"Bo\" O'Neil #1 [x]"));
    EXPECT_EQ(Cell("S1p2", 2, "Col_2"), Variant());
    EXPECT_EQ(Cell("Sp1", 3, "Description"), Variant(longText));
    EXPECT_EQ(gDB.Scalar("SELECT ESDate FROM Master;"), Variant(DateTime(2023, 5, 31, 23, 59, 58)));
}

TEST_F(CopyRowsTest, AnOpenRecordsetSeesTheNewRows) {
    Turn();
    Recordset before = gDB.OpenRecordset("SELECT * FROM A6 WHERE LineNum=1;");
    EXPECT_TRUE(before.Empty());
    EXPECT_EQ(Copy("A6"), 3u);
    before.Requery();
    EXPECT_EQ(before["Col_1"], Variant("Officers"));
}

TEST_F(CopyRowsTest, ARowThatIsRefusedIsNamedAndTheOthersFollow) {
    gDB.Close();
    Raw(source_,
        "PRAGMA ignore_check_constraints=ON; UPDATE A SET Col_1='much' WHERE LineNum=9;"
        "UPDATE A SET CCName=printf('%.50c','y') WHERE "
        "LineNum=10;");
    gDB = DBEngine::OpenDatabase(source_);
    Turn();
    std::vector<Variant> refused;
    const auto all = NumOr(gImportDB.Scalar("SELECT Count(*) AS Cnt FROM A;"));
    const auto refuse = [&](const Variant& key, const StoreError&) { refused.push_back(key); };
    EXPECT_EQ(Copy("A", {.Refused = refuse, .Progress = {}}), static_cast<std::size_t>(all) - 2);
    EXPECT_EQ(refused, (std::vector<Variant>{9.0, 10.0}));
    EXPECT_EQ(gDB.Scalar("SELECT Count(*) AS Cnt FROM A WHERE LineNum IN (9,10);"), Variant(0));
}

TEST_F(CopyRowsTest, AFieldThatEitherSideLacksIsAnError) {
    gDB.AppendField("G", {.Name = "Col_Extra", .Type = FieldType::dbDouble});
    Turn();
    const std::vector<std::string> fields = {"LineNum", "Col_Extra"};
    EXPECT_THROW(CopyRows(gImportDB, gDB, "G", fields, {}), StoreError);
    gDB.AppendField("G1", {.Name = "Col_Extra", .Type = FieldType::dbDouble});
    EXPECT_THROW(CopyRows(gImportDB, gDB, "G1", fields, {}), StoreError);
    EXPECT_THROW(CopyRows(gImportDB, gDB, "G9", fields, {}), StoreError);
}

// --- A file that is only read ------------------------------------------------------------------

TEST_F(CopyRowsTest, TheSourceStaysAsItIsAndNothingLiesBesideIt) {
    const auto time = fs::last_write_time(source_);
    Turn();
    for (const char* table : {"A", "Bp1", "S2p1"}) Copy(table);
    EXPECT_TRUE(gImportDB.IsReadOnly());
    EXPECT_THROW(gImportDB.Execute("DELETE FROM A;"), StoreError);
    gImportDB.Close();
    EXPECT_EQ(BytesOf(source_), bytes_);
    EXPECT_EQ(fs::last_write_time(source_), time);
    EXPECT_EQ(std::distance(fs::directory_iterator(work_), fs::directory_iterator()), 1);
}

TEST_F(CopyRowsTest, ASnapshotIsReadAsItBegan) {
    Turn();
    {
        const ReadSnapshot snapshot(gImportDB);
        Database other = DBEngine::OpenDatabase(source_);
        EXPECT_THROW(other.Execute("DELETE FROM A;"), StoreError);
        EXPECT_GT(Copy("A"), 20u);
    }
    Database other = DBEngine::OpenDatabase(source_);
    EXPECT_GT(other.Execute("DELETE FROM A;"), 20);
}

TEST_F(CopyRowsTest, ASnapshotWithinAnotherEndsWithThatOne) {
    Turn();
    Database other = DBEngine::OpenDatabase(source_);
    {
        const ReadSnapshot outer(gImportDB);
        { const ReadSnapshot inner(gImportDB); }
        EXPECT_THROW(other.Execute("DELETE FROM A;"), StoreError);
    }
    EXPECT_GT(other.Execute("DELETE FROM A;"), 20);
}

TEST_F(CopyRowsTest, ASnapshotInABatchLeavesItAlone) {
    Turn();
    RunBatch(gDB, [] {
        const ReadSnapshot snapshot(gDB);
        gDB.Execute("UPDATE Master SET ProviderName='In the batch';");
    });
    gDB.Close();
    gDB = DBEngine::OpenDatabase(target_);
    EXPECT_EQ(Text(gDB.Scalar("SELECT ProviderName FROM Master;")), "In the batch");
}

TEST_F(CopyRowsTest, AFileThatADyingProgramLeftUnfinishedIsNotTouched) {
    gDB.Close();
    const auto end = RunInChild([] {},
                                [&] {
                                    sqlite3* handle = nullptr;
                                    sqlite3_open(source_.c_str(), &handle);
                                    sqlite3_exec(handle,
                                                 "PRAGMA cache_size=1; PRAGMA cache_spill=1; "
                                                 "BEGIN; UPDATE A SET CCName='x'; UPDATE G SET "
                                                 "Col_1=1; UPDATE Dp1 SET CC_800=1; UPDATE G1 SET "
                                                 "Col_2=2;",
                                                 nullptr, nullptr, nullptr);
                                    _exit(0);
                                });
    EXPECT_EQ(end.Status, 0);
    ASSERT_TRUE(fs::exists(source_ + "-journal"));
    const auto journal = BytesOf(source_ + "-journal");
    const auto bytes = BytesOf(source_);
    try {
        OpenReadOnly(source_);
        FAIL() << "opened";
    } catch (const StoreError& error) {
        EXPECT_EQ(error.kind(), StoreError::Kind::ReadOnly);
        EXPECT_NE(std::string(error.what()).find("left the file unfinished"), std::string::npos)
            << error.what();
    }
    EXPECT_EQ(BytesOf(source_), bytes);
    EXPECT_EQ(BytesOf(source_ + "-journal"), journal);
}

TEST_F(CopyRowsTest, NeedWholeFindsABrokenPage) {
    gDB.Close();
    {
        std::fstream file(source_, std::ios::in | std::ios::out | std::ios::binary);
        file.seekp(4096 * 20);
        file << std::string(4096, '\x7f');
    }
    gImportDB = OpenReadOnly(source_);
    try {
        NeedWhole(gImportDB);
        FAIL() << "taken for whole";
    } catch (const StoreError& error) {
        EXPECT_EQ(error.kind(), StoreError::Kind::Damaged);
    }
}

// --- Steps -------------------------------------------------------------------------------------

TEST_F(CopyRowsTest, AFailedStepLeavesWhatStoodBeforeIt) {
    Turn();
    RunBatch(gDB, [] {
        SetCell("A", 8, "Col_1", 5);
        EXPECT_THROW(RunWholeStep(gDB,
                                  [] {
                                      SetCell("A", 8, "Col_1", 6);
                                      gDB.DeleteTable("G");
                                      throw std::runtime_error("no");
                                  }),
                     std::runtime_error);
        EXPECT_TRUE(gDB.HasTable("G"));
    });
    EXPECT_EQ(Cell("A", 8, "Col_1"), Variant(5.0));
    RunWholeStep(gDB, [] { SetCell("A", 8, "Col_1", 7); });
    EXPECT_EQ(Cell("A", 8, "Col_1"), Variant(7.0));
}

}  // namespace
}  // namespace zolmara::test
