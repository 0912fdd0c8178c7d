#include "bench/Measure.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <stdexcept>
#include <vector>

namespace zolmara::bench {
namespace {

constexpr int kFsyncs = 21;

double Once(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double Median(std::vector<double> times) {
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

std::string WithUnit(double seconds) { return seconds == 0 ? "" : Milliseconds(seconds) + " ms"; }

std::string Ratio(double took, double baseline) {
    return took == 0 || baseline == 0 ? "" : fmt::format("{:.2f}", took / baseline);
}

struct Row {
    std::string What;
    std::string Took;
    std::string Cpu;
    std::string Against;
    std::string Ratio;
    std::string CpuRatio;
    std::string Aim;
    std::string Fsync;
};

void Print(const Row& row) {
    fmt::print("| {:<60} | {:>8} | {:>8} | {:<54} | {:>5} | {:>6} | {} | {} |\n", row.What,
               row.Took, row.Cpu, row.Against, row.Ratio, row.CpuRatio, row.Aim, row.Fsync);
    std::fflush(stdout);
}

std::string FsyncOf(const std::string& folder) { return WithUnit(FsyncSeconds(folder)); }

std::string Yardstick(const std::string& name, const Least& took) {
    const std::string cpu = took.Cpu == 0 ? "" : fmt::format(", {} of CPU", WithUnit(took.Cpu));
    return fmt::format("{}, {}{}", name, WithUnit(took.Wall), cpu);
}

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
    bool synced = file >= 0;
    const double seconds = Seconds(
        kFsyncs, [&] { synced = synced && pwrite(file, "x", 1, 0) == 1; },
        [&] { synced = synced && fsync(file) == 0; });
    close(file);
    unlink(path.c_str());
    if (!synced) throw std::runtime_error(path + " cannot be synced");
    return seconds;
}

std::string Milliseconds(double seconds) {
    constexpr double kTold = 10;
    const double value = seconds * 1e3;
    if (value < 1) return fmt::format("{:.2f}", value);
    return value < kTold ? fmt::format("{:.1f}", value) : fmt::format("{:.0f}", value);
}

void ReportHead(const std::string& title) {
    fmt::print("\n### {}\n\n", title);
    Print({"Step", "Took", "CPU", "Against", "Ratio", "of CPU", "Aim", "One fsync"});
    fmt::print("|---|---|---|---|---|---|---|---|\n");
    std::fflush(stdout);  // the rows may be another program's
}

void Report(const std::string& what, const Least& took, const std::string& against,
            const Least& baseline, const std::string& folder, const std::string& aim) {
    Print({what, WithUnit(took.Wall), WithUnit(took.Cpu), Yardstick(against, baseline),
           Ratio(took.Wall, baseline.Wall), Ratio(took.Cpu, baseline.Cpu), aim, FsyncOf(folder)});
}

void Report(const std::string& what, double seconds, const std::string& against, double baseline,
            const std::string& folder, const std::string& aim) {
    Report(what, Least{seconds, 0}, against, Least{baseline, 0}, folder, aim);
}

void Report(const std::string& what, const Least& took, const std::string& note,
            const std::string& folder, const std::string& aim) {
    Print({what, WithUnit(took.Wall), WithUnit(took.Cpu), note, "", "", aim, FsyncOf(folder)});
}

void Report(const std::string& what, double seconds, const std::string& note,
            const std::string& folder, const std::string& aim) {
    Report(what, Least{seconds, 0}, note, folder, aim);
}

void ReportNote(const std::string& what, const std::string& note) {
    Print({what, "", "", note, "", "", "", ""});
}

}  // namespace zolmara::bench
