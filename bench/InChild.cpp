#include "bench/InChild.h"

#include <fmt/format.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <exception>

namespace zolmara::bench {
namespace {

[[noreturn]] void RunAndEnd(const std::function<void()>& work) {
    int status = 0;
    try {
        work();
    } catch (const std::exception& error) {
        fmt::print(stderr, "{}\n", error.what());
        status = 1;
    }
    std::fflush(nullptr);
    _exit(status);
}

double SecondsOf(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

}  // namespace

Usage InChild(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    const pid_t child = fork();
    if (child == 0) RunAndEnd(work);
    int status = -1;
    rusage used = {};
    if (child < 0 || wait4(child, &status, 0, &used) != child) return {};
    constexpr double kKbInMb = 1024;
    return {
        .Cpu = SecondsOf(used.ru_utime) + SecondsOf(used.ru_stime),
        .Elapsed = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count(),
        .PeakMb = static_cast<double>(used.ru_maxrss) / kKbInMb,
        .Done = status == 0};
}

}  // namespace zolmara::bench
