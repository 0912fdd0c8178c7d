// The repair of a damaged Cost Report File with each of its calls failing once and with the program
// dying at each of them: the damaged file or the repaired one stands under the name, whole, and
// where anything was lost the damaged one stands beside.

#include <sqlite3.h>
#include <sys/wait.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <thread>

#include "store/Files.h"
#include "store/FilledCrf.h"
#include "store/harness/FaultTries.h"
#include "store/session/CloseCrf.h"
#include "store/session/RepairCrf.h"
#include "support/Paths.h"

namespace zolmara::test {
namespace {

namespace fs = std::filesystem;

class FaultsOfRepair : public FaultTries {
protected:
    FaultsOfRepair() {
        // Without work tables a close writes nothing ahead of the repair.
        Open(base_);
        CloseCrf();
        Force("UPDATE A SET Col_1='12 thousand' WHERE LineNum=9; UPDATE Master SET FormNum=NULL");
        damaged_ = BytesOf(base_);
    }
    ~FaultsOfRepair() override { DropCrf(); }

    /// Changes the file behind the back of its own rules.
    void Force(const std::string& sql) const {
        sqlite3* handle = nullptr;
        ASSERT_EQ(sqlite3_open(base_.c_str(), &handle), SQLITE_OK);
        sqlite3_exec(handle, "PRAGMA ignore_check_constraints=ON", nullptr, nullptr, nullptr);
        EXPECT_EQ(sqlite3_exec(handle, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK);
        sqlite3_close(handle);
    }

    /// The damaged files that stand beside, each as it was.
    int KeptFiles() const {
        int kept = 0;
        for (const auto& name : Names()) {
            // What a killed close leaves goes with the next.
            if (name == "One.CRF" || name.starts_with("VLQTemp.CRF")) continue;
            EXPECT_TRUE(name.starts_with("One.damaged-")) << name;
            EXPECT_TRUE(BytesOf(In(name)) == damaged_) << name;
            ++kept;
        }
        return kept;
    }

    /// The file is the damaged one, which a repair brings back, or the repaired one with the
    /// damaged one beside. One copy of that is enough.
    void ExpectOneOrTheOther() {
        const bool still = BytesOf(In("One.CRF")) == damaged_;
        if (!still) {
            EXPECT_EQ(KeptFiles(), 1);
        }
        Open(In("One.CRF"));
        EXPECT_EQ(CloseCrf(), std::nullopt);
        EXPECT_EQ(KeptFiles(), 1) << (still ? "still damaged" : "repaired");
        ASSERT_TRUE(OpenCrf(In("One.CRF")));
        EXPECT_TRUE(Cell("A", 9, "Col_1").IsNull());
        EXPECT_EQ(NumOr(Cell("A", 8, "Col_1")), 6001);
        EXPECT_EQ(gFormNum, "287");
        const std::string now = ContentOfCrf();
        if (content_.empty()) content_ = now;
        EXPECT_TRUE(now == content_);
        DropCrf();
    }

    std::string damaged_;
    std::string content_;
};

TEST_F(FaultsOfRepair, LeaveTheDamagedFileOrTheRepairedOneAndTheDamagedOneBeside) {
    Try([] {}, [&] { RepairCrf(In("One.CRF")); }, [&] { ExpectOneOrTheOther(); });
}

TEST_F(FaultsOfRepair, DuringAClose) {
    Try([&] { Open(In("One.CRF")); }, [] { CloseCrf(); }, [&] { ExpectOneOrTheOther(); });
}

// Both find the damage; only one may take the file for damaged when it comes to it.
TEST_F(FaultsOfRepair, TwoRepairsAtOnceKeepTheDamagedFileOnce) {
    StartAnew();
    const auto compact = [&](const char* told) {
        const std::string words =
            std::string(kCli) + " --quiet compact " + In("One.CRF") + " 2>" + folder.File(told);
        const int end = std::system(words.c_str());
        return WIFEXITED(end) ? WEXITSTATUS(end) : -1;
    };
    int first = -1;
    std::thread other([&] { first = compact("first"); });
    const int second = compact("second");
    other.join();
    // 0 came when the other was done, 2 repaired it, and 4 met the other at work: before its own
    // repair or behind it, and both where neither let the other begin.
    int repairs = 0;
    for (const char* told : {"first", "second"})
        repairs +=
            BytesOf(folder.File(told)).find("The damaged file is kept as") != std::string::npos;
    for (const int end : {first, second}) {
        EXPECT_TRUE(end == 4 || (repairs == 1 && (end == 0 || end == 2))) << first << second;
    }
    ExpectOneOrTheOther();
}

// A folder that gives no second name, as on a memory stick: the copy is nobody else's to read.
TEST_F(FaultsOfRepair, TheCopyOfAPrivateFileIsPrivate) {
    StartAnew();
    fs::permissions(In("One.CRF"), fs::perms::owner_read | fs::perms::owner_write);
    const auto end = RunInChild([&] { FaultsArm(work_.c_str(), 1, EPERM, "link"); },
                                [&] { RepairCrf(In("One.CRF")); });
    EXPECT_EQ(end.Status, 0) << end.Message;
    EXPECT_EQ(KeptFiles(), 1);
    for (const auto& name : Names())
        EXPECT_EQ(fs::status(In(name)).permissions(),
                  fs::perms::owner_read | fs::perms::owner_write)
            << name;
}

}  // namespace
}  // namespace zolmara::test
