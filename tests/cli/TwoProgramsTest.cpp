// Two programs on one Cost Report File.

#include <unistd.h>

#include <filesystem>
#include <thread>

#include "cli/CliRunner.h"

namespace zolmara::test {
namespace {

namespace fs = std::filesystem;

class TwoPrograms : public CliTest {};

TEST_F(TwoPrograms, TheSecondWriterIsToldWhoHoldsTheFile) {
    const std::string crf = NewCrf();
    Do({"set", crf, "A", "8", "1", "1"});
    Database here = DBEngine::OpenDatabase(crf);
    CliResult result;
    RunBatch(here, [&] {
        here.Execute("UPDATE A SET Col_1=2 WHERE LineNum=8;");
        result = Run({"set", crf, "A", "9", "1", "3"});
    });
    EXPECT_EQ(result.Status, 4);
    EXPECT_EQ(result.Err, "ERROR\t" + crf + ": zolmara-tests (process " +
                              std::to_string(::getpid()) +
                              ") is using the file; nothing was written\n");
    here.Close();
    EXPECT_EQ(Do({"get", crf, "A", "8", "1"}), "2\n");
    EXPECT_EQ(Do({"get", crf, "A", "9", "1"}), "\n");
}

TEST_F(TwoPrograms, AWriterWaitsForOneThatIsSoonDone) {
    const std::string crf = NewCrf();
    Database here = DBEngine::OpenDatabase(crf);
    CliResult result;
    // It waits a second, and a busy machine may keep the first writer from being done so soon.
    for (int round = 0; result.Status != 0 && round < 30; ++round) {
        std::thread other;
        RunBatch(here, [&] {
            here.Execute("UPDATE A SET Col_1=? WHERE LineNum=8;", {2 + round});
            other = std::thread([&] { result = Run({"set", crf, "A", "9", "1", "3"}); });
            std::this_thread::sleep_for(std::chrono::milliseconds(150));
        });
        other.join();
        ASSERT_TRUE(result.Status == 0 || result.Err.ends_with("nothing was written\n"))
            << result.Err;
    }
    EXPECT_EQ(result.Status, 0) << result.Err;
    EXPECT_EQ(here.Scalar("SELECT Col_1 FROM A WHERE LineNum=9;").Number(), 3)
        << "and what it wrote is seen here";
}

TEST_F(TwoPrograms, AFileDeletedUnderneathTakesNoMoreWritesAndSaysSo) {
    const std::string crf = NewCrf();
    Database here = DBEngine::OpenDatabase(crf);
    here.Execute("UPDATE A SET Col_1=2 WHERE LineNum=8;");
    fs::remove(crf);
    try {
        here.Execute("UPDATE A SET Col_1=3 WHERE LineNum=8;");
        FAIL() << "written into nothing";
    } catch (const StoreError& error) {
        EXPECT_EQ(std::string(error.what()),
                  crf +
                      ": another program has deleted, moved or replaced the file while it was "
                      "open; nothing was written");
        EXPECT_EQ(error.kind(), StoreError::Kind::ReadOnly);
    }
    EXPECT_FALSE(fs::exists(crf));
}

TEST_F(TwoPrograms, AFilePutInThePlaceOfTheOpenOneIsNotOverwritten) {
    const std::string crf = NewCrf();
    const std::string other = NewCrf("Other.CRF");
    Do({"set", other, "A", "8", "1", "7"});
    Database here = DBEngine::OpenDatabase(crf);
    fs::rename(other, crf);
    EXPECT_THROW(RunBatch(here, [&] { here.Execute("UPDATE A SET Col_1=3 WHERE LineNum=8;"); }),
                 StoreError);
    here.Close();
    EXPECT_EQ(Do({"get", crf, "A", "8", "1"}), "7\n");
}

}  // namespace
}  // namespace zolmara::test
