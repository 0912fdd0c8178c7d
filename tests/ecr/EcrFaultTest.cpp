// The build of the submission files with each of its calls failing once and with the program
// dying at each of them: both files are the former ones or both are the new ones.

#include <filesystem>

#include "core/Clock.h"
#include "ecr/Build_ECR.h"
#include "ecr/FileNames.h"
#include "store/Files.h"
#include "store/FilledCrf.h"
#include "store/harness/FaultTries.h"

namespace zolmara::test {
namespace {

namespace fs = std::filesystem;

using Pair = std::pair<std::string, std::string>;

class FaultsOfEcr : public FaultTries {
protected:
    FaultsOfEcr() {
        ResetClock();
        StartAnew();
        OpenCrf(In("One.CRF"));
        ecr_ = In(EcrFileName());
        pi_ = PiPath(ecr_);
        former_ = BuiltAt(DateTime(2024, 3, 15, 14, 5, 42));
        fresh_ = BuiltAt(DateTime(2024, 3, 18, 9, 30, 7));
        DropCrf();
    }
    ~FaultsOfEcr() override {
        DropCrf();
        ResetClock();
    }

    void Build() {
        host.Files = {ecr_};
        host.Answers = {kYes};
        Build_ECR();
    }
    Pair BuiltAt(const DateTime& moment) {
        host.Clock = moment;
        Build();
        return Standing();
    }
    Pair Standing() const {
        return {ReadWholeFile(ecr_).value_or("none"), ReadWholeFile(pi_).value_or("none")};
    }
    void ExpectOneOrTheOther(const Pair& former) {
        auto left = Names();
        const Pair now = Standing();
        EXPECT_TRUE(now == former || now == fresh_)
            << (now.first == former.first) << (now.second == former.second)
            << (now.first == fresh_.first) << (now.second == fresh_.second);
        EXPECT_FALSE(DBEngine::RepairDatabase(In("One.CRF")).WasDamaged);
        for (const auto& name : {std::string("One.CRF"), fs::path(ecr_).filename().string(),
                                 fs::path(pi_).filename().string(), std::string("Spx.prt")})
            left.erase(name);
        EXPECT_EQ(left, std::set<std::string>{});
    }

    std::string ecr_;
    std::string pi_;
    Pair former_;
    Pair fresh_;
};

TEST_F(FaultsOfEcr, LeaveBothFormerFilesOrBothNewOnes) {
    ASSERT_NE(former_.first, fresh_.first);
    ASSERT_NE(former_.second, fresh_.second);
    Try(
        [&] {
            WriteWholeFile(ecr_, former_.first);
            WriteWholeFile(pi_, former_.second);
            OpenCrf(In("One.CRF"));
        },
        [&] { Build(); }, [&] { ExpectOneOrTheOther(former_); });
}

TEST_F(FaultsOfEcr, LeaveNoFileOrBoth) {
    Try([&] { OpenCrf(In("One.CRF")); }, [&] { Build(); },
        [&] {
            ExpectOneOrTheOther({"none", "none"});
        });
}

TEST_F(FaultsOfEcr, AnOpeningFinishesWhatAKilledBuildBegan) {
    const auto build = [&](int call) {
        StartAnew();
        return RunInChild(
            [&] {
                WriteWholeFile(ecr_, former_.first);
                WriteWholeFile(pi_, former_.second);
                OpenCrf(In("One.CRF"));
                FaultsArm(work_.c_str(), call, kKill, "rename");
            },
            [&] { Build(); });
    };
    // The names are given by the second and third of the renames; the first is the journal's.
    ASSERT_TRUE(build(3).Killed);
    EXPECT_EQ(Standing(), Pair(fresh_.first, former_.second));
    ASSERT_TRUE(OpenCrf(In("One.CRF")));
    EXPECT_TRUE(Standing() == fresh_);
}

}  // namespace
}  // namespace zolmara::test
