#include "bench/Measure.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

namespace zolmara::bench {
namespace {

double Once(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double Median(std::vector<double> times) {
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

std::string Milliseconds(double seconds) { return fmt::format("{:.2f} ms", seconds * 1e3); }

}  // namespace

double Seconds(int runs, const std::function<void()>& prepare, const std::function<void()>& work) {
    std::vector<double> times;
    for (int run = 0; run < runs; ++run) {
        prepare();
        times.push_back(Once(work));
    }
    return Median(std::move(times));
}

double Seconds(int runs, const std::function<void()>& work) {
    return Seconds(
        runs, [] {}, work);
}

double FsyncSeconds(const std::string& folder) {
    const auto path = folder + "/fsync";
    const int file = open(path.c_str(), O_CREAT | O_WRONLY, 0644);
    const double seconds = Seconds(
        20, [&] { return void(pwrite(file, "x", 1, 0)); }, [&] { fsync(file); });
    close(file);
    unlink(path.c_str());
    return seconds;
}

void Report(const std::string& what, double seconds, const std::string& against, double baseline,
            const std::string& folder) {
    Report(what, seconds,
           fmt::format("{} {}, ratio {:.2f}", against, Milliseconds(baseline), seconds / baseline),
           folder);
}

void Report(const std::string& what, double seconds, const std::string& note,
            const std::string& folder) {
    fmt::print("{:<44} {:>12}   {:<60} fsync {}\n", what, Milliseconds(seconds), note,
               Milliseconds(FsyncSeconds(folder)));
    std::fflush(stdout);
}

}  // namespace zolmara::bench
