// Batches and what they leave on the disk.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "core/Globals.h"
#include "store/Dao.h"
#include "store/FilledCrf.h"
#include "store/harness/Faults.h"

namespace zolmara {
namespace {

namespace fs = std::filesystem;

std::string Bytes(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
}

class Batch : public testing::Test {
protected:
    Batch() : folder_(fs::temp_directory_path() / ("batch" + std::to_string(getpid()))) {
        fs::remove_all(folder_);
        fs::create_directories(folder_);
        path_ = (folder_ / "t.CRF").string();
        db_ = DBEngine::CreateDatabase(path_, "");
        RunBatch(db_, [&] {
            db_.AppendTable(
                {"A", {{"LineNum", FieldType::dbCurrency}, {"Col_1", FieldType::dbDouble}}, {}});
            db_.Execute("CREATE UNIQUE INDEX ndxA ON A (LineNum);");
            for (int line = 1; line <= 50; ++line)
                db_.Execute("INSERT INTO A (LineNum,Col_1) VALUES (?,?);", {line, line});
        });
    }
    ~Batch() override {
        db_.Close();
        fs::remove_all(folder_);
    }
    std::size_t FilesInFolder() const {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(folder_), fs::directory_iterator()));
    }
    double Sum() { return NumOr(db_.Scalar("SELECT Sum(Col_1) FROM A")); }

    fs::path folder_;
    std::string path_;
    Database db_;
};

TEST_F(Batch, IsOneCommit) {
    const auto commits = db_.CommitCount();
    RunBatch(db_, [&] {
        for (int line = 1; line <= 50; ++line)
            db_.Execute("UPDATE A SET Col_1=Col_1+1 WHERE LineNum=?;", {line});
        RunBatch(db_, [&] { db_.Execute("UPDATE A SET Col_1=0 WHERE LineNum=1;"); });
    });
    EXPECT_EQ(db_.CommitCount(), commits + 1);
    EXPECT_FALSE(db_.InBatch());
}

TEST_F(Batch, AFailureCommitsWhatWasDone) {
    EXPECT_THROW(RunBatch(db_,
                          [&] {
                              db_.Execute("UPDATE A SET Col_1=100 WHERE LineNum=1;");
                              db_.Execute("UPDATE Nowhere SET Col_1=1;");
                          }),
                 StoreError);
    db_ = DBEngine::OpenDatabase(path_);
    EXPECT_EQ(NumOr(db_.Scalar("SELECT Col_1 FROM A WHERE LineNum=1")), 100);
}

TEST_F(Batch, AStatementThatFailsMidwayHasNoEffectInsideABatch) {
    RunBatch(db_, [&] {
        EXPECT_THROW(db_.Execute("UPDATE A SET LineNum=7, Col_1=0;"), StoreError);
        db_.Execute("UPDATE A SET Col_1=3 WHERE LineNum=2;");
    });
    EXPECT_EQ(Sum(), 50 * 51 / 2 + 1);
}

TEST_F(Batch, RowsThatEndAsTheyBeganWriteNoPage) {
    const auto before = Bytes(path_);
    const auto commits = db_.CommitCount();
    RunBatch(db_, [&] {
        db_.Execute("UPDATE A SET Col_1=0;");
        for (int line = 1; line <= 50; ++line)
            db_.Execute("UPDATE A SET Col_1=? WHERE LineNum=?;", {line, line});
        db_.Execute("INSERT INTO A (LineNum) VALUES (60);");
        db_.Execute("DELETE * FROM A WHERE LineNum=60;");
    });
    EXPECT_EQ(db_.CommitCount(), commits);
    EXPECT_EQ(Bytes(path_), before);
    EXPECT_EQ(Sum(), 50 * 51 / 2);
}

TEST_F(Batch, RowsThatEndAsTheyBeganMakeNoCallThatWrites) {
    FaultsArm(folder_.c_str(), 0, ENOSPC, "");
    RunBatch(db_, [&] {
        db_.Execute("UPDATE A SET Col_1=0;");
        db_.Execute("UPDATE A SET Col_1=LineNum;");
        EXPECT_EQ(FilesInFolder(), 1u) << "no journal";
    });
    EXPECT_EQ(FaultsDisarm(), 0);
    EXPECT_EQ(Sum(), 50 * 51 / 2);
}

// Journals of many pages, of whatever size: taken back from memory, written, taken back by another
// program when this one dies over the pages.
class BatchOfManyPages : public Batch {
protected:
    static constexpr int kRows = 3000;

    BatchOfManyPages() {
        RunBatch(db_, [&] {
            db_.AppendTable(
                {"T", {{"LineNum", FieldType::dbCurrency}, {"Col_1", FieldType::dbText, 255}}, {}});
            for (int line = 1; line <= kRows; ++line)
                db_.Execute("INSERT INTO T (LineNum,Col_1) VALUES (?,?);",
                            {line, std::string(250, 'a')});
        });
    }
    void Change(int rows) {
        db_.Execute("UPDATE T SET Col_1=? WHERE LineNum<=?;", {std::string(250, 'b'), rows});
    }
    double Changed() { return NumOr(db_.Scalar("SELECT Count(*) FROM T WHERE Col_1>'b'")); }
};

TEST_F(BatchOfManyPages, IsTakenBackFromMemory) {
    const std::string before = Bytes(path_);
    RunBatch(db_, [&] {
        Change(kRows);
        EXPECT_EQ(Changed(), kRows);
        db_.Execute("UPDATE T SET Col_1=?;", {std::string(250, 'a')});
    });
    EXPECT_EQ(Changed(), 0);
    EXPECT_EQ(Bytes(path_), before);
}

TEST_F(BatchOfManyPages, IsWrittenWhateverTheSizeOfItsJournal) {
    int changed = 0;
    for (int rows = 16; rows <= kRows; rows = rows * 5 / 4) {
        RunBatch(db_, [&] { Change(rows); });
        db_ = DBEngine::OpenDatabase(path_);
        ASSERT_EQ(Changed(), rows);
        changed = rows;
        RunBatch(db_, [&] { db_.Execute("UPDATE T SET Col_1=?;", {std::string(250, 'a')}); });
    }
    EXPECT_GT(changed, kRows / 2);
    EXPECT_EQ(FilesInFolder(), 1u);
}

TEST_F(BatchOfManyPages, IsTakenBackByTheNextProgramWhenThisOneDies) {
    db_.Close();
    FaultsArm(folder_.c_str(), 0, ENOSPC, "");
    db_ = DBEngine::OpenDatabase(path_);
    RunBatch(db_, [&] { Change(kRows); });
    const int calls = FaultsDisarm();
    RunBatch(db_, [&] { db_.Execute("UPDATE T SET Col_1=?;", {std::string(250, 'a')}); });
    db_.Close();
    for (int call = 1; call < calls; call += 1 + calls / 20) {
        SCOPED_TRACE(call);
        Database db;
        const auto end = test::RunInChild(
            [&] {
                db = DBEngine::OpenDatabase(path_);
                FaultsArm(folder_.c_str(), call, -1, "");
            },
            [&] {
                RunBatch(db, [&] { db.Execute("UPDATE T SET Col_1=?;", {std::string(250, 'b')}); });
            });
        EXPECT_TRUE(end.Killed);
        db_ = DBEngine::OpenDatabase(path_);
        const double changed = Changed();
        EXPECT_TRUE(changed == 0 || changed == kRows) << changed;
        RunBatch(db_, [&] { db_.Execute("UPDATE T SET Col_1=?;", {std::string(250, 'a')}); });
        db_.Close();
    }
    EXPECT_FALSE(DBEngine::RepairDatabase(path_).WasDamaged);
    db_ = DBEngine::OpenDatabase(path_);
}

TEST_F(Batch, OneChangedRowAmongManyIsWritten) {
    RunBatch(db_, [&] {
        db_.Execute("UPDATE A SET Col_1=0;");
        for (int line = 1; line <= 49; ++line)
            db_.Execute("UPDATE A SET Col_1=? WHERE LineNum=?;", {line, line});
    });
    EXPECT_EQ(NumOr(db_.Scalar("SELECT Col_1 FROM A WHERE LineNum=50")), 0);
}

TEST_F(Batch, AnUpdateThatStoresWhatIsThereCommitsNothing) {
    const auto before = Bytes(path_);
    EXPECT_EQ(db_.Execute("UPDATE A SET Col_1=5 WHERE LineNum=5;"), 0);
    EXPECT_EQ(Bytes(path_), before);
}

TEST_F(Batch, AtRestTheFileStandsAlone) {
    db_.Execute("UPDATE A SET Col_1=9 WHERE LineNum=1;");
    EXPECT_EQ(FilesInFolder(), 1u);
    RunBatch(db_, [&] { db_.Execute("UPDATE A SET Col_1=8 WHERE LineNum=1;"); });
    EXPECT_EQ(FilesInFolder(), 1u);
    db_.Close();
    EXPECT_EQ(FilesInFolder(), 1u);
}

TEST_F(Batch, TheFileItselfRefusesWhatAFieldCannotHold) {
    db_.Close();
    const auto shell = [&](const std::string& sql) {
        return std::system(("sqlite3 " + path_ + " \"" + sql + "\" >/dev/null 2>&1").c_str());
    };
    if (std::system("command -v sqlite3 >/dev/null 2>&1") != 0) {
        db_ = DBEngine::OpenDatabase(path_);
        return;
    }
    EXPECT_EQ(shell("UPDATE A SET Col_1=4 WHERE LineNum=1"), 0);
    EXPECT_NE(shell("UPDATE A SET Col_1='abc' WHERE LineNum=1"), 0);
    EXPECT_NE(shell("UPDATE A SET LineNum='abc' WHERE LineNum=1"), 0);
    EXPECT_NE(shell("UPDATE A SET Col_1=9e999 WHERE LineNum=1"), 0);
    db_ = DBEngine::OpenDatabase(path_);
}

/// Runs work in a child and waits for its end.
int InChild(const std::function<void()>& work) {
    const pid_t child = fork();
    if (child == 0) {
        try {
            work();
            _exit(0);
        } catch (const StoreError& error) {
            _exit(error.kind() == StoreError::Kind::DiskFull ? 3 : 4);
        }
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST_F(Batch, AFullDiskTakesTheWholeBatchBackAndSaysSo) {
    db_.Close();
    const auto before = Bytes(path_);
    const int status = InChild([&] {
        signal(SIGXFSZ, SIG_IGN);
        auto db = DBEngine::OpenDatabase(path_);
        const rlimit limit{fs::file_size(path_) + 4096, fs::file_size(path_) + 4096};
        setrlimit(RLIMIT_FSIZE, &limit);
        RunBatch(db, [&] {
            for (int line = 100; line < 9000; ++line)
                db.Execute("INSERT INTO A (LineNum,Col_1) VALUES (?,1);", {line});
        });
    });
    EXPECT_EQ(status, 3);
    db_ = DBEngine::OpenDatabase(path_);
    EXPECT_EQ(Bytes(path_), before);
    EXPECT_EQ(NumOr(db_.Scalar("SELECT Count(*) FROM A")), 50);
}

// Three commits and more, at each of their calls.
TEST_F(Batch, KilledAtAnyMomentItIsWholeOrNotThere) {
    db_.Close();
    const std::string below = folder_.string();
    for (int call = 1; call <= 40; ++call) {
        SCOPED_TRACE(call);
        Database db;
        const auto end = test::RunInChild(
            [&] {
                db = DBEngine::OpenDatabase(path_);
                FaultsArm(below.c_str(), call, -1, "");
            },
            [&] {
                for (;;) RunBatch(db, [&] { db.Execute("UPDATE A SET Col_1=Col_1+1;"); });
            });
        EXPECT_TRUE(end.Killed);
        db_ = DBEngine::OpenDatabase(path_);
        // Every row has moved by the same number of steps.
        const auto rows = db_.OpenRecordset(
            "SELECT Min(Col_1-LineNum) AS Mn, Max(Col_1-LineNum) AS Mx, Count(*) AS N FROM A");
        EXPECT_EQ(NumOr(rows[0]), NumOr(rows[1]));
        EXPECT_EQ(NumOr(rows[2]), 50);
        db_.Close();
        EXPECT_FALSE(DBEngine::RepairDatabase(path_).WasDamaged);
    }
    EXPECT_EQ(FilesInFolder(), 1u);
    db_ = DBEngine::OpenDatabase(path_);
}

TEST_F(Batch, AReadOnlyFileIsReadAndRefusesWrites) {
    db_.Close();
    chmod(path_.c_str(), 0444);
    db_ = DBEngine::OpenDatabase(path_);
    EXPECT_TRUE(db_.IsReadOnly());
    EXPECT_EQ(Sum(), 50 * 51 / 2);
    const auto kindOf = [&](const std::function<void()>& work) {
        try {
            work();
        } catch (const StoreError& error) {
            return error.kind();
        }
        return StoreError::Kind::Other;
    };
    EXPECT_EQ(kindOf([&] { db_.Execute("UPDATE A SET Col_1=0;"); }), StoreError::Kind::ReadOnly);
    EXPECT_EQ(kindOf([&] { RunBatch(db_, [] {}); }), StoreError::Kind::ReadOnly);
    EXPECT_EQ(kindOf([&] { DBEngine::RepairDatabase(path_); }), StoreError::Kind::ReadOnly);
    EXPECT_EQ(kindOf([&] { DBEngine::CompactDatabase(path_, path_); }), StoreError::Kind::ReadOnly);
}

TEST_F(Batch, FilesThatAreNoCostReportFileAreNamed) {
    const auto check = [&](const std::string& file, StoreError::Kind kind) {
        try {
            DBEngine::OpenDatabase(file);
            ADD_FAILURE() << file;
        } catch (const StoreError& error) {
            EXPECT_EQ(error.kind(), kind) << error.what();
            EXPECT_NE(std::string(error.what()).find(file), std::string::npos) << error.what();
        }
    };
    const auto text = (folder_ / "text.CRF").string();
    std::ofstream(text) << std::string(10000, 'x');
    check(text, StoreError::Kind::NotADatabase);
    const auto empty = (folder_ / "empty.CRF").string();
    std::ofstream(empty).flush();
    check(empty, StoreError::Kind::NotADatabase);
    check(folder_.string(), StoreError::Kind::CannotOpen);
    check((folder_ / "none.CRF").string(), StoreError::Kind::CannotOpen);
}

TEST_F(Batch, CompactGivesBackTheSameRowsInLessRoom) {
    RunBatch(db_, [&] {
        for (int line = 100; line < 5000; ++line)
            db_.Execute("INSERT INTO A (LineNum,Col_1) VALUES (?,1);", {line});
    });
    db_.Execute("DELETE * FROM A WHERE LineNum>=100;");
    db_.Close();
    const auto size = fs::file_size(path_);
    DBEngine::CompactDatabase(path_, path_);
    EXPECT_LT(fs::file_size(path_), size);
    EXPECT_EQ(FilesInFolder(), 1u);
    db_ = DBEngine::OpenDatabase(path_);
    EXPECT_EQ(Sum(), 50 * 51 / 2);
}

}  // namespace
}  // namespace zolmara
