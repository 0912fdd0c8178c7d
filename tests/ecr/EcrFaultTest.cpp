// The build of the submission files with each of its calls failing once and with the program
// dying at each of them: both files are the former ones or both are the new ones.

#include <cerrno>
#include <filesystem>

#include "core/Clock.h"
#include "ecr/Build_ECR.h"
#include "ecr/FileNames.h"
#include "store/Files.h"
#include "store/FilledCrf.h"
#include "store/harness/FaultTries.h"
#include "store/session/Acts.h"

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

// --- The files and the statement that they are made from -------------------------------------

/// Signing and building are one act, as the command has it.
class FaultsOfSignedEcr : public FaultsOfEcr {
protected:
    void Prepare() {
        WriteWholeFile(ecr_, former_.first);
        WriteWholeFile(pi_, former_.second);
        OpenCrf(In("One.CRF"));
    }
    void SignAndBuild() {
        RunAct("Build the ECR", [&] {
            gDB.Execute(
                "Update Master Set ESFirstName='Ingrid', ESLastName='Vasquez', ESTitle='CFO', "
                "ESDate=#1/15/2024#;");
            Build();
        });
    }
    ChildEnd SignAndBuildWith(int call, int error, const char* only) {
        StartAnew();
        return RunInChild(
            [&] {
                Prepare();
                FaultsArm(work_.c_str(), call, error, only);
            },
            [&] { SignAndBuild(); });
    }
    /// How many there are of such calls.
    int CallsOf(const char* only) {
        StartAnew();
        Prepare();
        FaultsArm(work_.c_str(), 0, EIO, only);
        SignAndBuild();
        const int calls = FaultsDisarm();
        DropCrf();
        return calls;
    }
    /// As the next opening finds it.
    bool StatementIsSigned() {
        OpenCrf(In("One.CRF"));
        const bool isSigned = !gDB.Scalar("Select ESLastName From Master;").IsNull();
        DropCrf();
        return isSigned;
    }
    void ExpectNoFileThatTellsMore() {
        const bool statement = StatementIsSigned();
        const Pair now = Standing();
        const bool files = now.first.find("3S000002") != std::string::npos;
        EXPECT_TRUE(statement || !files) << "the files are signed, and the statement is not";
        if (!files) {
            EXPECT_TRUE(now == former_);
        } else {
            EXPECT_TRUE(now.second != former_.second);
        }
        for (const std::string& name : Names())
            EXPECT_FALSE(name.ends_with(".put") || name.ends_with(".tmp")) << name;
    }
};

TEST_F(FaultsOfSignedEcr, TellNothingThatTheStatementLost) {
    for (const char* only : {"fsync", "rename", "unlink"}) {
        for (int call = CallsOf(only); call > 0 && !HasFailure(); --call) {
            SCOPED_TRACE(testing::Message() << only << " " << call);
            SignAndBuildWith(call, EIO, only);
            ExpectNoFileThatTellsMore();
        }
    }
}

TEST_F(FaultsOfSignedEcr, TellNothingThatTheStatementLostWhereTheProgramDies) {
    for (const char* only : {"rename", "unlink"}) {
        for (int call = CallsOf(only); call > 0 && !HasFailure(); --call) {
            SCOPED_TRACE(testing::Message() << only << " " << call);
            EXPECT_TRUE(SignAndBuildWith(call, kKill, only).Killed);
            ExpectNoFileThatTellsMore();
        }
    }
}

// The first rename announces the names, three give them.
TEST_F(FaultsOfSignedEcr, AFileThatGetsNoNameIsToldWithWhatIsSaved) {
    for (int call = 1; call <= 4; ++call) {
        const ChildEnd end = SignAndBuildWith(call, EIO, "rename");
        EXPECT_NE(end.Message.find("none of the files was put in place, while the statement that "
                                   "they were made from is saved"),
                  std::string::npos)
            << call << ": " << end.Message;
        EXPECT_TRUE(Standing() == former_) << call;
        EXPECT_FALSE(FileExists(In("Spx.prt"))) << call;
        EXPECT_TRUE(StatementIsSigned()) << call;
    }
}

TEST_F(FaultsOfSignedEcr, FilesThatStandAreNotToldAsFailed) {
    const ChildEnd end = SignAndBuildWith(CallsOf("fsync"), EIO, "fsync");
    EXPECT_EQ(end.Message,
              "ECR: " + ecr_ + ", " + pi_ + ", " + In("Spx.prt") +
                  ": the disk failed behind the last step of saving: the files are in their "
                  "places, and may be lost again if the power fails now");
    EXPECT_TRUE(Standing() != former_);
    EXPECT_TRUE(FileExists(In("Spx.prt")));
    EXPECT_TRUE(StatementIsSigned());
}

}  // namespace
}  // namespace zolmara::test
