// The power goes at any moment: what was told as saved is there, and a batch is there whole or not
// at all, whatever the disk had come to beyond what it was told to keep.

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <functional>
#include <set>

#include "store/Files.h"
#include "store/FilledCrf.h"
#include "store/files/FileDoor.h"
#include "store/harness/FaultTries.h"
#include "store/harness/Power.h"
#include "structure/AddDeleteCC.h"
#include "structure/SecondThread.h"

namespace zolmara::test {
namespace {

namespace fs = std::filesystem;

constexpr std::array kBeyonds{Beyond::Nothing, Beyond::Statements, Beyond::Names,
                              Beyond::Some,    Beyond::Some,       Beyond::Some};

class PowerLoss : public FaultTries {
protected:
    /// The calls that the act changes files with; at the end its result is on the disk.
    int Undisturbed(const std::function<void()>& prepare, const std::function<void()>& act) {
        Start();
        const auto end = RunInChild(prepare, [&] {
            Watch(0);
            act();
            std::ofstream(folder.File("calls")) << FaultsDisarm();
        });
        EXPECT_EQ(end.Status, 0) << end.Message;
        int calls = 0;
        std::ifstream(folder.File("calls")) >> calls;
        return calls;
    }
    void CutAt(int call, const std::function<void()>& prepare, const std::function<void()>& act) {
        Start();
        EXPECT_TRUE(RunInChild([&] { prepare(), Watch(call); }, act).Killed);
    }
    /// The folder as a machine finds it that comes back. False where it was found so before: from
    /// one call to the next little changes on the disk.
    bool ComeBack(Beyond beyond, unsigned seed) {
        const auto files = AfterPowerLoss(work_, beside_, beyond, seed);
        std::string all;
        for (const auto& [name, content] : files) all += name + '\0' + content + '\0';
        if (!seen_.insert(std::hash<std::string>()(all)).second) return false;
        fs::remove_all(after_);
        fs::create_directory(after_);
        for (const auto& [name, content] : files)
            std::ofstream(after_ + "/" + name, std::ios::binary) << content;
        return true;
    }

    /// What a Cost Report File holds behind each loss is what it held before or is to hold, and
    /// behind the act what it is to hold.
    void TryStatement(const std::function<void()>& act, int most) {
        const auto prepare = [&] { Open(In("One.CRF")); };
        const int calls = Undisturbed(prepare, act);
        ComeBack(Beyond::Nothing, 0);
        doneBytes_ = BytesOf(After("One.CRF"));
        done_ = ContentOfFile(After("One.CRF"));
        former_ = ContentOfFile(base_);
        ASSERT_NE(former_, done_);
        const int step = std::max(1, calls / most);
        for (int call = 1; call <= calls && !HasFailure(); call += call > calls - 8 ? 1 : step) {
            CutAt(call, prepare, act);
            for (unsigned i = 0; i < kBeyonds.size(); ++i) {
                SCOPED_TRACE(testing::Message() << "call " << call << " of " << calls << ", " << i);
                if (ComeBack(kBeyonds.at(i), static_cast<unsigned>(call) * 7 + i))
                    ExpectFormerOrDone();
            }
        }
    }

    std::string After(std::string_view name) const { return after_ + "/" + std::string(name); }

private:
    void Start() const {
        StartAnew();
        fs::remove_all(beside_);
        fs::create_directory(beside_);
    }
    void Watch(int call) const {
        PowerWatch(work_.c_str(), beside_.c_str());
        FaultsArm(work_.c_str(), call, kKill, "");
    }
    /// An opening that plays a journal back leaves the very bytes that were there.
    void ExpectFormerOrDone() const {
        const std::string path = After("One.CRF");
        ASSERT_TRUE(fs::exists(path));
        DBEngine::OpenDatabase(path);
        const std::string bytes = BytesOf(path);
        if (bytes == BytesOf(base_) || bytes == doneBytes_) return;
        const std::string now = ContentOfFile(path);
        EXPECT_TRUE(now == former_ || now == done_);
    }

    std::string beside_ = folder.File("beside");
    std::string after_ = folder.File("after");
    std::string former_;
    std::string done_;
    std::string doneBytes_;
    std::set<std::size_t> seen_;
};

TEST_F(PowerLoss, AtACellThatIsSaved) {
    TryStatement([] { SetCell("A", 8, "Col_1", 4711); }, 100);
}

TEST_F(PowerLoss, WhileACostCenterIsAdded) {
    TryStatement([] { AddCostCenter(Currency(4.02)); }, 3);
}

TEST_F(PowerLoss, WhileTwoThreadsWorkOnADeletedCostCenter) {
    const SecondThread second;
    TryStatement([] { DeleteCostCenter(Currency(4.01)); }, 2);
}

TEST_F(PowerLoss, DuringTheClose) { TryStatement(mnuReportClose, 3); }

TEST_F(PowerLoss, AFileThatIsReplacedIsTheFormerOneOrTheNewOne) {
    const auto prepare = [&] { WriteWholeFile(In("A.txt"), "former"); };
    const auto act = [&] { WriteWholeFile(In("A.txt"), std::string(10000, 'n')); };
    const int calls = Undisturbed(prepare, act);
    ComeBack(Beyond::Nothing, 0);
    EXPECT_EQ(BytesOf(After("A.txt")), std::string(10000, 'n'));
    for (int call = 1; call <= calls; ++call) {
        CutAt(call, prepare, act);
        for (unsigned i = 0; i < kBeyonds.size(); ++i) {
            if (!ComeBack(kBeyonds.at(i), static_cast<unsigned>(call) * 7 + i)) continue;
            const std::string now = BytesOf(After("A.txt"));
            EXPECT_TRUE(now == "former" || now == std::string(10000, 'n')) << call << " " << i;
        }
    }
}

}  // namespace
}  // namespace zolmara::test
