// A program that dies at any moment of a long operation leaves the file as it was before the
// operation or as it is after it, and nothing beside it.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>

#include "calc/Calc_All.h"
#include "import/ImportASCII.h"
#include "store/FilledCrf.h"
#include "store/harness/Faults.h"
#include "structure/AddDeleteCC.h"
#include "structure/SecondThread.h"
#include "structure/modAddS2.h"
#include "support/TestCrf.h"

namespace zolmara::test {
namespace {

namespace fs = std::filesystem;

class Kill : public SessionTest {
protected:
    Kill() {
        MakeBase();
        fs::create_directory(work_);
        std::ofstream text(import_);
        for (int line = 1; line <= 60; ++line)
            text << "A6\t" << line << "\t1\tEntry " << line << "\nA6\t" << line << "\t4\t8\nA6\t"
                 << line << "\t5\t" << line * 3 << "\n";
        text << "CostCenter\t29\t0\tImported\nS2p1\t13\t1\tImported\nA\t29\t1\t77\n";
    }

    /// A file of moderate size, calculated, with one keyed cell changed since.
    void MakeBase() {
        OpenFilledCopy(base_);
        RunBatch(gDB, [] {
            for (int line = 3; line <= 12; ++line) {
                AddS2Line(Currency::FromWhole(line), 1);
                SetCell("C1p1", line, "CC_100", line * 7);
                SetCell("E1p1", line, "Col_1", line * 11);
            }
            Calc_All();
            SetCell("A", 8, "Col_1", 6001);
            SetCell("C1p3", 53, "CC_100", 345);
        });
        gDB.Execute("SELECT * INTO tblWork FROM A;");
        gDB.Close();
    }

    void StartAnew() const {
        fs::remove_all(work_);
        fs::create_directory(work_);
        fs::copy_file(base_, path_);
    }
    void Open() const {
        SetCrfPath(path_);
        gDB = DBEngine::OpenDatabase(path_);
    }
    std::set<std::string> Names() const {
        std::set<std::string> names;
        for (const auto& entry : fs::directory_iterator(work_))
            names.insert(entry.path().filename().string());
        return names;
    }
    /// What the file holds, as an opening finds it.
    std::string Content() const {
        Open();
        auto content = ContentOfCrf();
        gDB.Close();
        return content;
    }

    /// The operation undisturbed: how many calls it changes files with, and what it leaves.
    int Undisturbed(const std::function<void()>& work) {
        StartAnew();
        const auto end = RunInChild([&] { Open(); },
                                    [&] {
                                        FaultsArm(work_.c_str(), 0, -1, "");
                                        work();
                                        std::ofstream(folder.File("calls")) << FaultsDisarm();
                                    });
        EXPECT_EQ(end.Status, 0) << end.Message;
        afterBytes_ = BytesOf(path_);
        after_ = Content();
        StartAnew();
        before_ = Content();
        EXPECT_NE(before_, after_);
        int calls = 0;
        std::ifstream(folder.File("calls")) >> calls;
        return calls;
    }

    /// Calls to die at: every one of a short operation; of a long one the first and the last,
    /// where it is decided, and some between.
    static std::set<int> Moments(int calls, int rounds) {
        std::set<int> moments;
        for (int i = 1; i <= rounds / 4; ++i) {
            moments.insert(std::min(i, calls));
            moments.insert(std::max(calls - i + 1, 1));
        }
        for (int i = 1; i <= rounds / 2; ++i) moments.insert(std::max(1, calls * i * 2 / rounds));
        return moments;
    }

    /// Runs the operation and kills it at a call.
    void KillAt(int call, const std::function<void()>& work) {
        StartAnew();
        const auto prepare = [&] {
            Open();
            FaultsArm(work_.c_str(), call, -1, "");
        };
        EXPECT_TRUE(RunInChild(prepare, work).Killed) << "call " << call;
    }

    void ExpectBeforeOrAfter() const {
        EXPECT_FALSE(DBEngine::RepairDatabase(path_).WasDamaged);
        Open();
        gDB.Close();
        const auto bytes = BytesOf(path_);
        if (bytes == afterBytes_ || bytes == BytesOf(base_)) return;
        const auto content = Content();
        EXPECT_TRUE(content == before_ || content == after_);
    }

    void KillManyTimes(int rounds, const std::function<void()>& work) {
        for (const int call : Moments(Undisturbed(work), rounds)) {
            SCOPED_TRACE(testing::Message() << "call " << call);
            KillAt(call, work);
            ExpectBeforeOrAfter();
            EXPECT_EQ(Names(), std::set<std::string>{"Work.CRF"});
            if (HasFailure()) return;
        }
    }

    std::string base_ = folder.File("Base.CRF");
    std::string import_ = folder.File("Import.txt");
    std::string work_ = folder.File("work");
    std::string path_ = work_ + "/Work.CRF";
    std::string before_;
    std::string after_;
    std::string afterBytes_;
};

TEST_F(Kill, DuringTheCalculation) { KillManyTimes(40, Calc_All); }

TEST_F(Kill, DuringTheImport) {
    KillManyTimes(50, [&] { ImportAsciiFile(import_); });
}

TEST_F(Kill, WhileACostCenterIsAdded) {
    KillManyTimes(50, [] { AddCostCenter(Currency(4.02)); });
}

TEST_F(Kill, WhileACostCenterIsDeleted) {
    KillManyTimes(40, [] { DeleteCostCenter(Currency(4.01)); });
}

TEST_F(Kill, WhileTwoThreadsWorkOnADeletedCostCenter) {
    const SecondThread second;
    KillManyTimes(10, [] { DeleteCostCenter(Currency(4.01)); });
}

TEST_F(Kill, WhileAComponentIsAdded) {
    KillManyTimes(40, [] { AddS2Line(Currency(2), 1); });
}

// The temporary tables go first, then the file is compacted: the CRF is under its own name at
// every moment, and what a killed close leaves beside it goes with the next.
TEST_F(Kill, DuringTheClose) {
    for (const int call : Moments(Undisturbed(mnuReportClose), 28)) {
        SCOPED_TRACE(testing::Message() << "call " << call);
        KillAt(call, mnuReportClose);
        ASSERT_TRUE(fs::exists(path_));
        ExpectBeforeOrAfter();
        auto names = Names();
        for (const char* journal : {"", "-journal"})
            names.erase(std::string(kCompactionFile) + journal);
        EXPECT_EQ(names, std::set<std::string>{"Work.CRF"});
        Open();
        mnuReportClose();
        EXPECT_EQ(Names(), std::set<std::string>{"Work.CRF"});
        EXPECT_EQ(Content(), after_);
        if (HasFailure()) return;
    }
}

}  // namespace
}  // namespace zolmara::test
