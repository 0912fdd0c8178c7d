#include "store/harness/FaultTries.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <iostream>

#include "store/FilledCrf.h"
#include "store/files/Scratch.h"

namespace fs = std::filesystem;

namespace zolmara::test {

FaultTries::FaultTries() {
    OpenFilledCopy(base_);
    SetCell("A", 8, "Col_1", 6001);
    gDB.Execute("SELECT * INTO tblWork FROM A;");
    gDB.Close();
}

void FaultTries::StartAnew() const {
    fs::remove_all(work_);
    fs::create_directory(work_);
    fs::copy_file(base_, In("One.CRF"));
}

void FaultTries::Open(const std::string& path) {
    SetCrfPath(path);
    gDB = DBEngine::OpenDatabase(path);
}

std::string FaultTries::ContentOfFile(const std::string& path) {
    Open(path);
    std::string content = ContentOfCrf();
    DropCrf();
    EXPECT_FALSE(DBEngine::RepairDatabase(path).WasDamaged);
    return content;
}

std::set<std::string> FaultTries::Names() const {
    ClearScratch(work_);
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(work_))
        names.insert(entry.path().filename().string());
    return names;
}

/// How many calls the act makes, undisturbed.
int FaultTries::CountCalls(const std::function<void()>& prepare, const std::function<void()>& act) {
    StartAnew();
    const auto end = RunInChild(prepare, [&] {
        FaultsArm(work_.c_str(), 0, kKill, "");
        act();
        std::ofstream(folder.File("calls")) << FaultsDisarm() << ' ' << FaultsDroppedLocks();
    });
    EXPECT_EQ(end.Status, 0) << end.Message;
    int calls = 0;
    int dropped = -1;
    std::ifstream(folder.File("calls")) >> calls >> dropped;
    EXPECT_EQ(dropped, 0) << "a descriptor was closed under SQLite's locks";
    EXPECT_GT(calls, 2);
    return calls;
}

/// The first calls and the last, where an act is decided, and some between: other ones for each
/// kind of failure.
std::set<int> FaultTries::Moments(int calls, int kind) const {
    static constexpr int kFirst = 2;
    static constexpr int kLast = 8;
    static constexpr int kKinds = 3;
    const char* wanted = std::getenv("ZOLMARA_FAULTS");
    const int between = wanted ? std::atoi(wanted) : mostBetween_;
    std::set<int> moments;
    for (int call = 1; call <= calls; ++call)
        if (call <= kFirst || call > calls - kLast) moments.insert(call);
    const int step = std::max(1, calls / between);
    for (int call = 1 + step * kind / kKinds; call <= calls; call += step) moments.insert(call);
    return moments;
}

void FaultTries::Try(const std::function<void()>& prepare, const std::function<void()>& act,
                     const std::function<void()>& check) {
    const int calls = CountCalls(prepare, act);
    check();
    int tries = 0;
    int kind = 0;
    for (const int error : {kKill, ENOSPC, EIO}) {
        for (const int call : Moments(calls, kind++)) {
            SCOPED_TRACE(testing::Message() << "error " << error << ", call " << call);
            StartAnew();
            const auto end = RunInChild(
                [&] {
                    prepare();
                    FaultsArm(work_.c_str(), call, error, "");
                },
                act);
            EXPECT_EQ(end.Killed, error == kKill);
            check();
            ++tries;
            if (HasFailure()) return;
        }
    }
    if (std::getenv("ZOLMARA_FAULTS"))
        std::cout << tries << " tries at " << calls << " calls, lost: nothing\n";
}

}  // namespace zolmara::test
