#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <set>

#include "store/Files.h"
#include "store/FilledCrf.h"
#include "store/harness/Faults.h"
#include "store/session/Backups.h"
#include "support/TestCrf.h"

namespace zolmara::test {
namespace {

namespace fs = std::filesystem;

constexpr int kKill = -1;

class BackupsTest : public SessionTest {
protected:
    BackupsTest() {
        host.Settings["Zolmara 287-22/Backups/Folder"] = place_;
        OpenFilledCopy(crf_);
        gDB.Close();
    }
    ~BackupsTest() override { BackUpAtOpening(false); }

    static void Key(const std::string& path, double amount) {
        Database file = DBEngine::OpenDatabase(path);
        file.Execute("UPDATE A SET Col_1=? WHERE LineNum=8;", {amount});
    }
    static double Keyed(const std::string& path) {
        Database file = DBEngine::OpenDatabase(path);
        return NumOr(file.Scalar("SELECT Col_1 FROM A WHERE LineNum=8;"));
    }
    static mode_t ModeOf(const std::string& path) {
        struct stat info {};
        EXPECT_EQ(::stat(path.c_str(), &info), 0) << path;
        return info.st_mode & 0777;
    }
    /// Changes the file and backs it up.
    Backup MakeWith(double amount) {
        Key(crf_, amount);
        const auto made = MakeBackup(crf_);
        EXPECT_TRUE(made.has_value());
        return made.value_or(Backup{});
    }
    std::vector<double> AmountsKept() const {
        std::vector<double> amounts;
        for (const Backup& backup : BackupsOf(crf_)) amounts.push_back(Keyed(backup.Path));
        return amounts;
    }

    std::string place_ = folder.File("backups");
    std::string crf_ = folder.File("One.CRF");
};

TEST_F(BackupsTest, ABackupHoldsWhatTheFileHeld) {
    const Backup made = MakeWith(4711);
    EXPECT_EQ(made.Which, 1);
    EXPECT_EQ(made.Time, host.Clock);
    EXPECT_EQ(made.Size, fs::file_size(crf_));
    Key(crf_, 1);
    EXPECT_EQ(Keyed(made.Path), 4711);
    EXPECT_FALSE(DBEngine::RepairDatabase(made.Path).WasDamaged);
}

TEST_F(BackupsTest, AFileThatIsAsItsNewestBackupIsNotCopiedAgain) {
    MakeWith(1);
    EXPECT_FALSE(MakeBackup(crf_).has_value());
    // A commit that changes nothing counts in the file's head alone.
    Database file = DBEngine::OpenDatabase(crf_);
    file.Execute("UPDATE A SET Col_1=2 WHERE LineNum=8;");
    file.Execute("UPDATE A SET Col_1=1 WHERE LineNum=8;");
    file.Close();
    EXPECT_FALSE(MakeBackup(crf_).has_value());
    EXPECT_EQ(MakeWith(2).Which, 2);
    EXPECT_EQ(BackupsOf(crf_).size(), 2u);
}

TEST_F(BackupsTest, TheOpenFileIsBackedUpAsItsLastCommitLeftIt) {
    gDB = DBEngine::OpenDatabase(crf_);
    gDB.Execute("UPDATE A SET Col_1=77 WHERE LineNum=8;");
    RunBatch(gDB, [&] {
        gDB.Execute("UPDATE A SET Col_1=78 WHERE LineNum=8;");
        ASSERT_TRUE(MakeBackup(crf_).has_value());
    });
    EXPECT_EQ(Keyed(BackupsOf(crf_).front().Path), 77);
    EXPECT_EQ(NumOr(gDB.Scalar("SELECT Col_1 FROM A WHERE LineNum=8;")), 78);
}

TEST_F(BackupsTest, TwoOfficesFilesOfOneNameAreTwo) {
    for (const char* office : {"east", "west"}) {
        fs::create_directory(folder.File(office));
        fs::copy_file(crf_, folder.File(std::string(office) + "/One.CRF"));
    }
    const std::string east = folder.File("east/One.CRF");
    const std::string west = folder.File("west/One.CRF");
    MakeBackup(east);
    EXPECT_TRUE(BackupsOf(west).empty());
    EXPECT_NE(BackupFolderOf(east), BackupFolderOf(west));
    EXPECT_EQ(ReadWholeFile(BackupFolderOf(east) + "/path.txt"),
              fs::canonical(east).string() + "\n");
    // Whatever road leads to it, one file is one.
    fs::create_symlink(east, folder.File("link.CRF"));
    EXPECT_EQ(BackupsOf(folder.File("link.CRF")).size(), 1u);
    EXPECT_EQ(BackupsOf(folder.File("west/../east/One.CRF")).size(), 1u);
}

TEST_F(BackupsTest, NobodyElseCanReadABackup) {
    fs::permissions(crf_, fs::perms::all);
    const Backup made = MakeWith(1);
    EXPECT_EQ(ModeOf(made.Path), 0600u);
    EXPECT_EQ(ModeOf(place_), 0700u);
    EXPECT_EQ(ModeOf(BackupFolderOf(crf_)), 0700u);
}

TEST_F(BackupsTest, TheLastTenAndOneADayForThirtyDaysAreKept) {
    const DateTime first(2024, 1, 1, 9);
    for (int day = 0; day < 40; ++day) {
        host.Clock = first.AddDays(day);
        MakeWith(day * 10 + 1);
        MakeWith(day * 10 + 2);
    }
    // The last ten are those of days 35 to 39; ahead of them the second of days 10 to 34.
    std::vector<double> expected;
    for (int day = 39; day >= 35; --day)
        expected.insert(expected.end(), {day * 10 + 2.0, day * 10 + 1.0});
    for (int day = 34; day >= 10; --day) expected.push_back(day * 10 + 2);
    EXPECT_EQ(AmountsKept(), expected);
}

TEST_F(BackupsTest, AClockThatJumpsBackLosesNothing) {
    host.Clock = DateTime(2024, 6, 1, 12);
    MakeWith(1);
    host.Clock = DateTime(1999, 1, 1, 12);
    MakeWith(2);
    EXPECT_FALSE(MakeBackup(crf_).has_value()) << "the newest is the one made last";
    host.Clock = DateTime(2031, 1, 1, 12);
    MakeWith(3);
    host.Clock = DateTime(2024, 6, 1, 12);
    MakeWith(4);
    EXPECT_EQ(AmountsKept(), (std::vector<double>{4, 3, 2, 1}));
    EXPECT_EQ(BackupsOf(crf_).front().Which, 4);
}

TEST_F(BackupsTest, TheNumbersAreSettings) {
    host.Settings["Zolmara 287-22/Backups/Last"] = "2";
    host.Settings["Zolmara 287-22/Backups/Days"] = "1";
    for (int i = 1; i <= 5; ++i) MakeWith(i);
    EXPECT_EQ(AmountsKept(), (std::vector<double>{5, 4}));
    host.Settings["Zolmara 287-22/Backups/Last"] = "none";
    host.Settings["Zolmara 287-22/Backups/Folder"] = "relative";
    EXPECT_EQ(TheBackupRules().Last, 10);
    EXPECT_TRUE(fs::path(TheBackupRules().Folder).is_absolute());
}

TEST_F(BackupsTest, AFileThatIsNoBackupIsNeverTakenForOne) {
    host.Settings["Zolmara 287-22/Backups/Last"] = "1";
    MakeWith(1);
    const std::string mine = BackupFolderOf(crf_) + "/mine.CRF";
    const std::string almost = BackupFolderOf(crf_) + "/000001-20240101-99999.CRF";
    for (const auto& name : {mine, almost}) std::ofstream(name) << "mine";
    MakeWith(2);
    MakeWith(3);
    EXPECT_EQ(BackupsOf(crf_).size(), 1u);
    EXPECT_TRUE(FileExists(mine) && FileExists(almost));
}

// --- At the opening ------------------------------------------------------------------------

TEST_F(BackupsTest, EachOpeningMakesOneWhenSomethingChanged) {
    ASSERT_TRUE(OpenCrf(crf_));
    DropCrf();
    EXPECT_TRUE(BackupsOf(crf_).empty()) << "not asked for";
    BackUpAtOpening(true);
    for (int round = 0; round < 3; ++round) {
        ASSERT_TRUE(OpenCrf(crf_));
        DropCrf();
    }
    EXPECT_EQ(BackupsOf(crf_).size(), 1u);
    Key(crf_, 5);
    ASSERT_TRUE(OpenCrf(crf_));
    EXPECT_EQ(AmountsKept().size(), 2u);
    EXPECT_TRUE(host.Boxes.empty());
}

TEST_F(BackupsTest, AFolderThatTakesNoFileIsToldAndTheFileOpens) {
    WriteWholeFile(place_, "a file where the folder should be");
    BackUpAtOpening(true);
    ASSERT_TRUE(OpenCrf(crf_));
    EXPECT_TRUE(CrfIsOpen());
    ASSERT_EQ(host.Boxes.size(), 1u);
    EXPECT_EQ(host.Boxes[0].Text, crf_ + " was opened, but no backup of it could be made.\r" +
                                      BackupFolderOf(crf_) +
                                      ": Not a directory\rBackups are kept in " + place_ + ".");
    EXPECT_EQ(host.Boxes[0].Style, kExclamation);
    EXPECT_EQ(host.Boxes[0].Title, "Backup");
}

TEST_F(BackupsTest, AFullDiskLeavesTheBackupsAsTheyWere) {
    MakeWith(1);
    Key(crf_, 2);
    FaultsArm(place_.c_str(), 0, ENOSPC, "");
    const auto probe = MakeBackup(crf_);
    const int calls = FaultsDisarm();
    ASSERT_GT(calls, 4);
    ASSERT_TRUE(probe.has_value());
    fs::remove(probe->Path);
    int failed = 0;
    for (int call = 1; call <= calls; ++call) {
        SCOPED_TRACE(call);
        FaultsArm(place_.c_str(), call, ENOSPC, "");
        try {
            MakeBackup(crf_);
        } catch (const StoreError&) {
            ++failed;
        }
        FaultsDisarm();
        const auto kept = AmountsKept();
        EXPECT_TRUE(kept == std::vector<double>{1} || kept == (std::vector<double>{2, 1}));
        for (const Backup& backup : BackupsOf(crf_))
            if (backup.Which > 1) fs::remove(backup.Path);
        EXPECT_EQ(Keyed(crf_), 2);
    }
    EXPECT_GT(failed, 2);
    ASSERT_TRUE(MakeBackup(crf_).has_value());
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(BackupFolderOf(crf_)))
        names.insert(entry.path().extension().string());
    EXPECT_EQ(names, (std::set<std::string>{".CRF", ".txt"})) << "nothing half made stays";
}

// --- Restore -------------------------------------------------------------------------------

TEST_F(BackupsTest, ARestoreBringsItBackAndKeepsWhatStoodThere) {
    MakeWith(1);
    Key(crf_, 2);
    RestoreBackup(crf_, FindBackup(crf_, "1"));
    EXPECT_EQ(Keyed(crf_), 1);
    EXPECT_EQ(AmountsKept(), (std::vector<double>{2, 1}));
    RestoreBackup(crf_, FindBackup(crf_, "2"));
    EXPECT_EQ(Keyed(crf_), 2);
}

TEST_F(BackupsTest, TheOldestOneCanBeRestoredThoughItsPlaceIsTaken) {
    host.Settings["Zolmara 287-22/Backups/Last"] = "1";
    host.Settings["Zolmara 287-22/Backups/Days"] = "1";
    MakeWith(1);
    Key(crf_, 2);
    RestoreBackup(crf_, FindBackup(crf_, ""));
    EXPECT_EQ(Keyed(crf_), 1);
    EXPECT_EQ(AmountsKept(), std::vector<double>{2});
}

TEST_F(BackupsTest, AFileThatIsGoneOrBrokenComesBack) {
    MakeWith(1);
    fs::remove(crf_);
    RestoreBackup(crf_, FindBackup(crf_, ""));
    EXPECT_EQ(Keyed(crf_), 1);
    std::ofstream(crf_) << "no database at all, but perhaps somebody wants to see it";
    const std::string broken = BytesOf(crf_);
    RestoreBackup(crf_, FindBackup(crf_, "1"));
    EXPECT_EQ(Keyed(crf_), 1);
    const Backup kept = BackupsOf(crf_).front();
    EXPECT_EQ(BytesOf(kept.Path), broken);
    EXPECT_EQ(ModeOf(kept.Path), 0600u);
}

TEST_F(BackupsTest, ADamagedBackupIsRefused) {
    const Backup made = MakeWith(1);
    Key(crf_, 2);
    fs::resize_file(made.Path, made.Size / 2);
    EXPECT_THROW(RestoreBackup(crf_, made), StoreError);
    EXPECT_EQ(Keyed(crf_), 2);
    EXPECT_EQ(BackupsOf(crf_).size(), 1u);
}

TEST_F(BackupsTest, AFileThatSomebodyHasOpenIsNotRestored) {
    MakeWith(1);
    Key(crf_, 2);
    const Database other = DBEngine::OpenDatabase(crf_);
    EXPECT_THROW(RestoreBackup(crf_, FindBackup(crf_, "")), StoreError);
    EXPECT_EQ(Keyed(crf_), 2);
}

TEST_F(BackupsTest, ANumberWithoutABackupIsTold) {
    EXPECT_THROW(FindBackup(crf_, ""), StoreError);
    MakeWith(1);
    try {
        FindBackup(crf_, "9");
        FAIL();
    } catch (const StoreError& error) {
        EXPECT_EQ(std::string(error.what()), crf_ + ": there is no backup 9 of this file");
    }
}

TEST_F(BackupsTest, TheOpenFileIsRestoredAndOpenedAgain) {
    BackUpAtOpening(true);
    ASSERT_TRUE(OpenCrf(crf_));
    gDB.Execute("UPDATE Master SET ProviderName='Other';");
    ASSERT_TRUE(RestoreOpenCrf(FindBackup(crf_, "1")));
    EXPECT_TRUE(CrfIsOpen());
    EXPECT_EQ(gProviderName, "Sample Home Office");
    EXPECT_EQ(BackupsOf(crf_).size(), 2u);
    host.CloseResults.push_back(1);
    EXPECT_FALSE(RestoreOpenCrf(FindBackup(crf_, "2"))) << "a window stays";
    EXPECT_EQ(gProviderName, "Sample Home Office");
}

TEST_F(BackupsTest, ARestoreThatFailsLeavesTheFileOpen) {
    BackUpAtOpening(true);
    ASSERT_TRUE(OpenCrf(crf_));
    Backup backup = FindBackup(crf_, "");
    fs::resize_file(backup.Path, 5000);
    EXPECT_THROW(RestoreOpenCrf(backup), StoreError);
    EXPECT_TRUE(CrfIsOpen());
    EXPECT_EQ(gCRFPath, crf_);
}

TEST_F(BackupsTest, ARestoreKilledAtAnyMomentLeavesOneOfBothFilesWhole) {
    const std::string base = folder.File("Base.CRF");
    MakeWith(1);
    Key(crf_, 2);
    fs::copy_file(crf_, base);
    const std::string kept = folder.File("kept");
    fs::copy(place_, kept, fs::copy_options::recursive);
    const std::string root = folder.Path().string();
    const auto startAnew = [&] {
        fs::copy_file(base, crf_, fs::copy_options::overwrite_existing);
        fs::remove(crf_ + "-journal");
        fs::remove_all(place_);
        fs::copy(kept, place_, fs::copy_options::recursive);
    };
    const auto restore = [&] { RestoreBackup(crf_, FindBackup(crf_, "1")); };
    const std::string report = folder.File("calls");
    const auto end = RunInChild([] {},
                                [&] {
                                    FaultsArm(root.c_str(), 0, kKill, "");
                                    restore();
                                    std::ofstream(report) << FaultsDisarm();
                                });
    ASSERT_EQ(end.Status, 0) << end.Message;
    int calls = 0;
    std::ifstream(report) >> calls;
    ASSERT_GT(calls, 10);
    std::set<double> seen;
    for (int call = 1; call <= calls; call += std::max(1, calls / 40)) {
        SCOPED_TRACE(call);
        startAnew();
        EXPECT_TRUE(RunInChild([&] { FaultsArm(root.c_str(), call, kKill, ""); }, restore).Killed);
        const double now = Keyed(crf_);
        seen.insert(now);
        EXPECT_TRUE(now == 1 || now == 2) << now;
        EXPECT_FALSE(DBEngine::RepairDatabase(crf_).WasDamaged);
        // What stood there is to be had in either case.
        const auto amounts = AmountsKept();
        EXPECT_TRUE(now == 2 || std::count(amounts.begin(), amounts.end(), 2.0) == 1);
        restore();
        EXPECT_EQ(Keyed(crf_), 1);
    }
    EXPECT_EQ(seen.count(2), 1u);
}

}  // namespace
}  // namespace zolmara::test
