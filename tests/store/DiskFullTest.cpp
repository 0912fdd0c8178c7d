// A disk without room: the error names the file, and nothing half-written is taken for whole.

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>

#include <filesystem>
#include <fstream>

#include "calc/Calc_All.h"
#include "import/ImportASCII.h"
#include "store/Files.h"
#include "store/FilledCrf.h"
#include "store/session/Settings.h"
#include "structure/AddDeleteCC.h"
#include "structure/SecondThread.h"
#include "support/TestCrf.h"

namespace zolmara::test {
namespace {

namespace fs = std::filesystem;

/// From here on the process can write no file beyond this size.
void LimitFiles(std::uintmax_t size) {
    signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{size, size};
    setrlimit(RLIMIT_FSIZE, &limit);
}

class DiskFull : public SessionTest {
protected:
    DiskFull() {
        fs::create_directory(work_);
        OpenFilledCopy(base_);
        SetCell("A", 8, "Col_1", 6001);
        gDB.Close();
    }
    void StartAnew() const { fs::copy_file(base_, path_, fs::copy_options::overwrite_existing); }
    void Open() const {
        SetCrfPath(path_);
        gDB = DBEngine::OpenDatabase(path_);
    }
    std::size_t FilesInFolder() const {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(work_), fs::directory_iterator()));
    }
    /// No room at all, for part of the journal, for the journal alone, for all but the growth.
    std::vector<std::uintmax_t> Limits() const {
        const auto size = fs::file_size(base_);
        return {0, 600, 8192, size / 4, size / 2, size - 4096, size};
    }

    /// Either the work was done or the error names the file, which is as it was.
    void ExpectAllOrNothing(const std::function<void()>& work) {
        int failures = 0;
        for (const auto limit : Limits()) {
            SCOPED_TRACE(testing::Message() << "limit " << limit);
            StartAnew();
            const auto end = RunInChild(
                [&] {
                    Open();
                    LimitFiles(limit);
                },
                work);
            Open();
            gDB.Close();
            EXPECT_EQ(FilesInFolder(), 1u);
            EXPECT_FALSE(DBEngine::RepairDatabase(path_).WasDamaged);
            if (end.Status == 0) continue;
            ++failures;
            EXPECT_EQ(end.Status, 3) << end.Message;
            EXPECT_NE(end.Message.find(path_), std::string::npos) << end.Message;
            EXPECT_EQ(BytesOf(path_), BytesOf(base_));
        }
        EXPECT_GE(failures, 3);
    }

    std::string base_ = folder.File("Base.CRF");
    std::string work_ = folder.File("work");
    std::string path_ = work_ + "/Work.CRF";
};

TEST_F(DiskFull, TakesACalculationBack) { ExpectAllOrNothing(Calc_All); }

TEST_F(DiskFull, TakesAnImportBack) {
    const auto text = folder.File("Import.txt");
    std::ofstream(text) << "A6\t1\t1\tEntry\nCostCenter\t29\t0\tImported\nA\t29\t1\t77\n";
    ExpectAllOrNothing([&] { ImportAsciiFile(text); });
}

TEST_F(DiskFull, TakesANewCostCenterBack) {
    ExpectAllOrNothing([] { AddCostCenter(Currency(4.02)); });
}

TEST_F(DiskFull, TakesADeletedCostCenterBackThatTwoThreadsWorkedOn) {
    const SecondThread second;
    ExpectAllOrNothing([] { DeleteCostCenter(Currency(4.01)); });
}

TEST_F(DiskFull, TakesOneSavedRowBack) {
    ExpectAllOrNothing([] { SetCell("A", 9, "Col_1", 1234); });
}

TEST_F(DiskFull, LeavesTheFileWholeAtAClose) {
    const auto size = fs::file_size(base_);
    for (const auto limit : {std::uintmax_t{0}, std::uintmax_t{8192}, size / 2, size - 4096}) {
        SCOPED_TRACE(testing::Message() << "limit " << limit);
        StartAnew();
        Open();
        const auto sheets = ContentOfCrf().substr(0, 2000);
        gDB.Close();
        const auto end = RunInChild(
            [&] {
                Open();
                LimitFiles(limit);
            },
            mnuReportClose);
        EXPECT_EQ(end.Status, 0) << end.Message;
        EXPECT_FALSE(DBEngine::RepairDatabase(path_).WasDamaged);
        Open();
        EXPECT_EQ(ContentOfCrf().substr(0, 2000), sheets);
        gDB.Close();
        EXPECT_EQ(FilesInFolder(), 1u);
    }
}

TEST_F(DiskFull, CompactionNamesTheFileAndLeavesTheTarget) {
    StartAnew();
    const auto target = work_ + "/Target.CRF";
    fs::copy_file(base_, target);
    const auto end =
        RunInChild([] { LimitFiles(8192); }, [&] { DBEngine::CompactDatabase(path_, target); });
    EXPECT_EQ(end.Status, 3) << end.Message;
    EXPECT_NE(end.Message.find(work_), std::string::npos) << end.Message;
    EXPECT_EQ(BytesOf(target), BytesOf(base_));
    EXPECT_EQ(BytesOf(path_), BytesOf(base_));
    EXPECT_EQ(FilesInFolder(), 2u);
}

TEST_F(DiskFull, ACopyThatDoesNotFitIsNotThere) {
    StartAnew();
    const auto copy = work_ + "/Copy.CRF";
    const auto end = RunInChild(
        [&] {
            Open();
            LimitFiles(8192);
        },
        [&] {
            if (SaveCrfAs(copy)) throw std::runtime_error("taken for a whole copy");
        });
    EXPECT_EQ(end.Status, 0) << end.Message;
    EXPECT_FALSE(fs::exists(copy));
    EXPECT_EQ(FilesInFolder(), 1u);
    EXPECT_EQ(BytesOf(path_), BytesOf(base_));
}

TEST_F(DiskFull, ANewFileThatDoesNotFitIsNotThere) {
    for (const auto limit : {0u, 4096u, 65536u}) {
        const auto end = RunInChild([=] { LimitFiles(limit); },
                                    [&] {
                                        if (CreateCrf(path_, SampleFields()))
                                            throw std::runtime_error("taken for a whole file");
                                    });
        EXPECT_TRUE(end.Status == 0 || end.Status == 3) << end.Message;
        EXPECT_EQ(FilesInFolder(), 0u);
    }
}

TEST_F(DiskFull, KeepsTheSettingsAsTheyWere) {
    const Settings settings(work_ + "/settings.ini");
    ASSERT_TRUE(settings.Save("Zolmara 287-22", "Startup", "CRFLoc", "/reports"));
    const auto before = BytesOf(settings.Path());
    const auto end =
        RunInChild([] { LimitFiles(10); },
                   [&] {
                       if (settings.Save("Zolmara 287-22", "Startup", "CRFLoc", "/other/reports"))
                           throw std::runtime_error("taken for saved");
                   });
    EXPECT_EQ(end.Status, 0) << end.Message;
    EXPECT_EQ(BytesOf(settings.Path()), before);
    EXPECT_EQ(FilesInFolder(), 1u);
}

}  // namespace
}  // namespace zolmara::test
