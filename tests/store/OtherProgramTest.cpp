// Another program writes to the file while it is open here.

#include <sqlite3.h>

#include <filesystem>

#include "store/FilledCrf.h"
#include "support/TestCrf.h"

namespace zolmara::test {
namespace {

class OtherProgram : public SessionTest {
protected:
    OtherProgram() { OpenFilledCopy(path_); }
    ~OtherProgram() override {
        sqlite3_close(other_);
        DropCrf();
    }
    void Other(const std::string& sql) {
        if (!other_) {
            ASSERT_EQ(sqlite3_open(path_.c_str(), &other_), SQLITE_OK);
        }
        EXPECT_EQ(sqlite3_exec(other_, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
            << sqlite3_errmsg(other_);
    }
    static Recordset Line9() { return gDB.OpenRecordset("SELECT * FROM A WHERE LineNum=9"); }

    std::string path_ = folder.File("Shared.CRF");
    sqlite3* other_ = nullptr;
};

TEST_F(OtherProgram, ItsChangeIsShownWithoutAMove) {
    SetCell("A", 9, "Col_1", 7845112);
    const auto row = Line9();
    ASSERT_EQ(NumOr(row["Col_1"]), 7845112);
    Other("UPDATE A SET Col_1=200 WHERE LineNum=9");
    EXPECT_EQ(NumOr(row["Col_1"]), 200);
}

TEST_F(OtherProgram, AFileThatItDeletedIsSavedUnderAnotherName) {
    SetCell("A", 9, "Col_1", 4711);
    const std::string content = ContentOfCrf();
    std::filesystem::remove(path_);
    EXPECT_THROW(SetCell("A", 9, "Col_1", 1), StoreError);
    EXPECT_FALSE(SaveCrfAs(folder.File("none/Two.CRF"))) << "there is no such folder";
    EXPECT_EQ(ContentOfCrf(), content) << "it is open still";
    ASSERT_TRUE(SaveCrfAs(folder.File("Two.CRF")));
    EXPECT_EQ(ContentOfCrf(), content);
    SetCell("A", 9, "Col_1", 1);
    DropCrf();
    EXPECT_FALSE(DBEngine::RepairDatabase(folder.File("Two.CRF")).WasDamaged);
}

TEST_F(OtherProgram, KeyingTheOldValueBackIsWritten) {
    SetCell("A", 9, "Col_1", 7845112);
    auto row = Line9();
    ASSERT_EQ(NumOr(row["Col_1"]), 7845112);
    row.Edit();
    row.Set("Col_1", 7845112);
    Other("UPDATE A SET Col_1=200 WHERE LineNum=9");
    row.Update();
    EXPECT_EQ(NumOr(Line9()["Col_1"]), 7845112);
    EXPECT_EQ(NumOr(row["Col_1"]), 7845112);
}

TEST_F(OtherProgram, EditBeginsWithWhatTheFileHolds) {
    auto row = Line9();
    row.Value("Col_1");
    Other("UPDATE A SET Col_1=31 WHERE LineNum=9");
    row.Edit();
    EXPECT_EQ(NumOr(row["Col_1"]), 31);
}

TEST_F(OtherProgram, ARowThatItDeletedIsToldAsDeleted) {
    auto row = Line9();
    row.Value("Col_1");
    Other("DELETE FROM A WHERE LineNum=9");
    EXPECT_THROW(row.Value("Col_1"), StoreError);
    EXPECT_THROW(row.Edit(), StoreError);
}

TEST_F(OtherProgram, ATableThatItMadeOrDroppedIsKnown) {
    EXPECT_FALSE(gDB.HasTable("tblNew"));
    Other("CREATE TABLE tblNew (a DOUBLE)");
    EXPECT_TRUE(gDB.HasTable("tblNew"));
    EXPECT_EQ(gDB.Execute("INSERT INTO tblNew (a) VALUES (1);"), 1);
    Other("DROP TABLE tblNew");
    EXPECT_FALSE(gDB.HasTable("tblNew"));
    EXPECT_THROW(gDB.Execute("INSERT INTO tblNew (a) VALUES (1);"), StoreError);
}

TEST_F(OtherProgram, AFieldThatItAddedIsThere) {
    EXPECT_EQ(gDB.Table("G").FieldIndex("Col_9"), -1);
    Other("ALTER TABLE G ADD COLUMN Col_9 DOUBLE; UPDATE G SET Col_9=5 WHERE LineNum=1");
    EXPECT_EQ(NumOr(gDB.Scalar("SELECT Col_9 FROM G WHERE LineNum=1")), 5);
    EXPECT_GE(gDB.Table("G").FieldIndex("Col_9"), 0);
}

TEST_F(OtherProgram, ItsChangeAheadOfABatchIsSeenInIt) {
    auto row = Line9();
    row.Value("Col_1");
    Other("UPDATE A SET Col_1=77 WHERE LineNum=9");
    RunBatch(gDB, [&] {
        EXPECT_EQ(NumOr(row["Col_1"]), 77);
        SetCell("A", 10, "Col_1", 78);
    });
    Other("UPDATE A SET Col_1=79 WHERE LineNum=9");
    EXPECT_EQ(NumOr(row["Col_1"]), 79);
}

TEST_F(OtherProgram, AStatementThatMeetsNothingDoesNotHideItsChange) {
    auto row = Line9();
    row.Value("Col_1");
    Other("UPDATE A SET Col_1=5 WHERE LineNum=9");
    gDB.Execute("UPDATE A SET Col_1=6 WHERE LineNum=999;");
    EXPECT_EQ(NumOr(row["Col_1"]), 5);
    Other("UPDATE A SET Col_1=8 WHERE LineNum=9");
    gDB.Execute("UPDATE A SET Col_1=6 WHERE LineNum=10;");
    EXPECT_EQ(NumOr(row["Col_1"]), 8);
}

}  // namespace
}  // namespace zolmara::test
