// A disk that fails once in the middle of a long operation: the operation is done or it is not.

#include <fstream>

#include "calc/Calc_All.h"
#include "import/ImportASCII.h"
#include "store/FilledCrf.h"
#include "structure/AddDeleteCC.h"
#include "structure/SecondThread.h"
#include "support/FailingDisk.h"
#include "support/TestCrf.h"

namespace zolmara::test {
namespace {

namespace fs = std::filesystem;

class DiskThatFailsOnce : public SessionTest {
protected:
    DiskThatFailsOnce() {
        OpenFilledCopy(base_);
        SetCell("A", 8, "Col_1", 6001);
        DropCrf();
    }
    ~DiskThatFailsOnce() override { DropCrf(); }

    void StartAnew() {
        DropCrf();
        fs::copy_file(base_, path_, fs::copy_options::overwrite_existing);
        SetCrfPath(path_);
        gDB = DBEngine::OpenDatabase(path_);
    }
    /// The content on the disk, as whoever opens the file next sees it.
    std::string ContentOnDisk() {
        DropCrf();
        EXPECT_FALSE(fs::exists(path_ + "-journal"));
        gDB = DBEngine::OpenDatabase(path_);
        return WithoutTimes(ContentOfCrf());
    }
    /// The log's stamps are those of the run.
    static std::string WithoutTimes(std::string content) {
        const auto log = content.find("\n== Log\n");
        if (log == std::string::npos) return content;
        const auto next = content.find("\n== ", log + 1);
        return content.erase(log, next == std::string::npos ? next : next - log);
    }
    int CallsOf(const std::function<void()>& work, FailingDisk::Calls which) {
        StartAnew();
        disk_.FailAt(0, SQLITE_OK, which);
        work();
        const int count = disk_.Count();
        disk_.Work();
        return count;
    }

    /// Fails the operation at many of its calls. What is then in the file is what was there
    /// before, and the failure was told; or it is all done.
    void ExpectAllOrNothing(const std::function<void()>& work, int code, FailingDisk::Calls which) {
        constexpr int kTries = 12;
        const int calls = CallsOf(work, which);
        const std::string done = ContentOnDisk();
        StartAnew();
        const std::string before = ContentOnDisk();
        ASSERT_NE(before, done);
        int told = 0;
        for (int i = 0; i < kTries && calls > 0; ++i) {
            const int call = 1 + i * std::max(calls / kTries, 1);
            if (call > calls) break;
            SCOPED_TRACE(testing::Message() << "call " << call << " of " << calls);
            StartAnew();
            disk_.FailAt(call, code, which);
            bool refused = false;
            try {
                work();
            } catch (const StoreError& error) {
                refused = true;
                EXPECT_TRUE(error.IsFileError()) << error.what();
            }
            disk_.Work();
            told += refused;
            EXPECT_EQ(ContentOnDisk(), refused ? before : done);
        }
        EXPECT_GT(told, which == FailingDisk::Calls::Writes ? 3 : 0);
    }

    FailingDisk disk_;
    std::string base_ = folder.File("Base.CRF");
    std::string path_ = folder.File("Work.CRF");
};

void AddOne() { AddCostCenter(Currency(4.02)); }
void DeleteOne() { DeleteCostCenter(Currency(4.01)); }

TEST_F(DiskThatFailsOnce, ACostCenterIsAddedWholeOrNotAtAll) {
    ExpectAllOrNothing(AddOne, SQLITE_FULL, FailingDisk::Calls::Writes);
    ExpectAllOrNothing(AddOne, SQLITE_IOERR_WRITE, FailingDisk::Calls::Writes);
}

TEST_F(DiskThatFailsOnce, ACostCenterIsDeletedWholeOrNotAtAll) {
    ExpectAllOrNothing(DeleteOne, SQLITE_FULL, FailingDisk::Calls::Writes);
    ExpectAllOrNothing(DeleteOne, SQLITE_IOERR_WRITE, FailingDisk::Calls::Writes);
}

TEST_F(DiskThatFailsOnce, ACostCenterThatTwoThreadsDeleteIsDeletedWholeOrNotAtAll) {
    const SecondThread second;
    ExpectAllOrNothing(DeleteOne, SQLITE_IOERR_WRITE, FailingDisk::Calls::Writes);
    ExpectAllOrNothing(DeleteOne, SQLITE_IOERR_READ, FailingDisk::Calls::Reads);
}

TEST_F(DiskThatFailsOnce, AnImportIsTakenWholeOrNotAtAll) {
    const auto text = folder.File("Import.txt");
    std::ofstream(text) << "A6\t1\t1\tEntry\nCostCenter\t29\t0\tImported\nA\t29\t1\t77\n";
    const auto import = [&] { ImportAsciiFile(text); };
    ExpectAllOrNothing(import, SQLITE_FULL, FailingDisk::Calls::Writes);
    ExpectAllOrNothing(import, SQLITE_IOERR_WRITE, FailingDisk::Calls::Writes);
    ExpectAllOrNothing(import, SQLITE_IOERR_READ, FailingDisk::Calls::Reads);
}

TEST_F(DiskThatFailsOnce, ACalculationIsKeptWholeOrNotAtAll) {
    ExpectAllOrNothing(Calc_All, SQLITE_IOERR_WRITE, FailingDisk::Calls::Writes);
    ExpectAllOrNothing(Calc_All, SQLITE_IOERR_READ, FailingDisk::Calls::Reads);
}

/// What a step passes over is no reason to keep what stands before it.
TEST_F(DiskThatFailsOnce, AnErrorThatIsPassedOverTakesTheBatchBackAllTheSame) {
    StartAnew();
    const std::string before = ContentOnDisk();
    const auto work = [&](int failAt) {
        SetCell("A", 9, "Col_1", 1);
        disk_.FailAt(failAt, SQLITE_IOERR_READ, FailingDisk::Calls::Reads);
        try {
            ContentOfCrf();
        } catch (const StoreError&) {
        }
        disk_.Work();
        try {
            SetCell("A", 10, "Col_1", 2);
        } catch (const StoreError&) {
        }
    };
    StartAnew();
    try {
        RunBatch(gDB, [&] { work(1); });
        ADD_FAILURE() << "the half of it was committed";
    } catch (const StoreError& error) {
        EXPECT_NE(std::string(error.what()).find("nothing of this operation was kept"),
                  std::string::npos)
            << error.what();
    }
    EXPECT_EQ(ContentOnDisk(), before);
}

TEST_F(DiskThatFailsOnce, TheErrorKeepsItsOwnWordsAndKind) {
    StartAnew();
    disk_.FailAt(1, SQLITE_FULL);
    try {
        RunBatch(gDB, [] { SetCell("A", 9, "Col_1", 1); });
        ADD_FAILURE();
    } catch (const StoreError& error) {
        EXPECT_EQ(error.kind(), StoreError::Kind::DiskFull);
        EXPECT_EQ(std::string(error.what()),
                  path_ + ": database or disk is full; nothing of this operation was kept");
    }
}

}  // namespace
}  // namespace zolmara::test
