#include "bench/Part.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <fstream>
#include <string>

namespace zolmara::bench {
namespace {

volatile std::sig_atomic_t gInterrupted = 0;

void Interrupt(int) { gInterrupted = 1; }

constexpr std::array kInterrupts = {SIGINT, SIGTERM, SIGHUP};

/// While it stands an interrupt is heard in the waiting alone, and what has lost its parent comes
/// to this process.
class Watch {
public:
    Watch() {
        gInterrupted = 0;
        sigset_t blocked;
        sigemptyset(&blocked);
        struct sigaction action {};
        action.sa_handler = Interrupt;
        for (std::size_t i = 0; i < kInterrupts.size(); ++i) {
            sigaddset(&blocked, kInterrupts[i]);
            sigaction(kInterrupts[i], &action, &before_[i]);
        }
        sigprocmask(SIG_BLOCK, &blocked, &mask_);
        prctl(PR_SET_CHILD_SUBREAPER, 1);
    }
    ~Watch() {
        prctl(PR_SET_CHILD_SUBREAPER, 0);
        HearAgain();
    }
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;

    /// As it was ahead of it.
    void HearAgain() const {
        for (std::size_t i = 0; i < kInterrupts.size(); ++i)
            sigaction(kInterrupts[i], &before_[i], nullptr);
        sigprocmask(SIG_SETMASK, &mask_, nullptr);
    }
    const sigset_t& Mask() const { return mask_; }

private:
    std::array<struct sigaction, kInterrupts.size()> before_{};
    sigset_t mask_{};
};

[[noreturn]] void DoPart(const std::function<void()>& work, int words) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    int status = 0;
    try {
        work();
    } catch (const std::exception& failure) {
        const std::string what = failure.what();
        status = write(words, what.data(), what.size()) < 0 ? 2 : 1;
    } catch (...) {
        status = 2;
    }
    std::fflush(stdout);
    _exit(status);
}

void EndAllStarted() {
    const std::string place = "/proc/self/task/" + std::to_string(getpid()) + "/children";
    for (bool any = true; any;) {
        any = false;
        std::ifstream children(place);
        for (pid_t child = 0; children >> child;) {
            any = true;
            kill(child, SIGKILL);
            waitpid(child, nullptr, 0);
        }
    }
}

/// Empty when the process has ended in time.
std::string WhyNotAwaited(pid_t child, int seconds, const Watch& watch) {
    // The C library's declaration of the call is not for C++.
    const int process = static_cast<int>(syscall(SYS_pidfd_open, child, 0));
    if (process < 0) return "the process cannot be watched";
    pollfd ended{process, POLLIN, 0};
    const timespec limit{seconds, 0};
    const int result = ppoll(&ended, 1, &limit, &watch.Mask());
    close(process);
    if (gInterrupted != 0) return "interrupted";
    if (result > 0) return "";
    return result == 0 ? "given up after " + std::to_string(seconds) + " s" : "not awaited";
}

std::string AllOf(int pipe) {
    std::string text;
    char piece[512];
    for (ssize_t got = 0; (got = read(pipe, piece, sizeof piece)) > 0;)
        text.append(piece, static_cast<std::size_t>(got));
    return text;
}

/// Empty when it went well. What is still open of the pipe ends with what has been started.
std::string WhyFailed(int status, int words) {
    if (WIFSIGNALED(status)) return "ended by signal " + std::to_string(WTERMSIG(status));
    if (WEXITSTATUS(status) == 0) return "";
    const std::string said = AllOf(words);
    return said.empty() ? "ended with status " + std::to_string(WEXITSTATUS(status)) : said;
}

}  // namespace

void InPart(const std::function<void()>& work, int seconds) {
    const Watch watch;
    int words[2];
    std::fflush(stdout);
    if (pipe2(words, O_CLOEXEC) != 0) throw std::runtime_error("no pipe could be made");
    const pid_t child = fork();
    if (child < 0) throw std::runtime_error("no process could be started");
    if (child == 0) {
        watch.HearAgain();
        DoPart(work, words[1]);
    }
    close(words[1]);
    std::string failure = WhyNotAwaited(child, seconds, watch);
    int status = 0;
    const bool ended = failure.empty() && waitpid(child, &status, 0) == child;
    EndAllStarted();
    if (ended) failure = WhyFailed(status, words[0]);
    close(words[0]);
    if (gInterrupted != 0) throw Interrupted(failure);
    if (!failure.empty()) throw std::runtime_error(failure);
}

}  // namespace zolmara::bench
