// A part of a benchmark's run can neither hang the run nor leave a process behind.

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/types.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>
#include <stdexcept>
#include <string>

#include "bench/Part.h"
#include "bench/Process.h"
#include "support/TestCrf.h"

namespace zolmara {
namespace {

constexpr int kLong = 600;

std::string WordsOf(const std::function<void()>& work, int seconds) {
    try {
        bench::InPart(work, seconds);
    } catch (const bench::Interrupted&) {
        return "interrupted";
    } catch (const std::exception& failure) {
        return failure.what();
    }
    return "";
}

pid_t ReadPid(const std::string& path) {
    pid_t pid = 0;
    std::ifstream(path) >> pid;
    return pid;
}

TEST(BenchPart, ThatEndsWellRaisesNothing) {
    EXPECT_EQ(WordsOf([] {}, kLong), "");
}

TEST(BenchPart, ThatFailsGivesItsWords) {
    EXPECT_EQ(WordsOf([] { throw std::runtime_error("no room on the disk"); }, kLong),
              "no room on the disk");
}

TEST(BenchPart, ThatDiesTellsItsSignal) {
    EXPECT_EQ(WordsOf([] { raise(SIGKILL); }, kLong), "ended by signal 9");
}

TEST(BenchPart, ThatEndsWithoutWordsTellsItsStatus) {
    EXPECT_EQ(WordsOf([] { _exit(3); }, kLong), "ended with status 3");
}

TEST(BenchPart, ThatTakesTooLongIsGivenUp) {
    EXPECT_EQ(WordsOf([] { bench::RunCommand("exec sleep 600"); }, 1), "given up after 1 s");
}

TEST(BenchPart, ThatIsInterruptedEndsTheRun) {
    const auto work = [] {
        kill(getppid(), SIGTERM);
        bench::RunCommand("exec sleep 600");
    };
    EXPECT_EQ(WordsOf(work, kLong), "interrupted");
}

/// One that has gone out of its group, and whose parent has ended.
TEST(BenchPart, EndsWhatItHasStarted) {
    const test::TempFolder folder;
    const std::string pids = folder.File("pids");
    const auto work = [&] {
        bench::RunCommand("setsid sh -c 'echo $$ >" + bench::Quoted(pids + ".new") + "; mv " +
                          bench::Quoted(pids + ".new") + " " + bench::Quoted(pids) +
                          "; exec sleep 600' &");
        while (ReadPid(pids) == 0) usleep(1000);
        throw std::runtime_error("given up");
    };
    EXPECT_EQ(WordsOf(work, kLong), "given up");
    EXPECT_EQ(kill(ReadPid(pids), 0), -1);
    EXPECT_EQ(errno, ESRCH);
}

TEST(BenchProcess, ACommandThatFailsIsNoFigure) {
    EXPECT_THROW(bench::RunCommand("exit 3"), std::runtime_error);
    EXPECT_THROW(bench::OutputOf("echo half; exit 3"), std::runtime_error);
    EXPECT_EQ(bench::OutputOf("echo whole"), "whole\n");
    EXPECT_THROW(bench::InChild([] { throw 1; }), std::runtime_error);
}

TEST(BenchProcess, AWordReachesTheCommandAsItIs) {
    EXPECT_EQ(bench::OutputOf("printf %s " + bench::Quoted("it's $HOME; `x`")), "it's $HOME; `x`");
}

}  // namespace
}  // namespace zolmara
