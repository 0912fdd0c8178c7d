#include "bench/Process.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <limits>
#include <stdexcept>

namespace zolmara::bench {
namespace {

double Seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

double CpuOf(int who) {
    rusage usage{};
    getrusage(who, &usage);
    return Seconds(usage.ru_utime) + Seconds(usage.ru_stime);
}

double Cpu() { return CpuOf(RUSAGE_SELF) + CpuOf(RUSAGE_CHILDREN); }

}  // namespace

/// As the system counts it for the program: what a process was before it became this one, and
/// rusage has in it, is not ours.
long PeakKilobytes() {
    std::ifstream status("/proc/self/status");
    for (std::string name; status >> name;)
        if (long count = 0; name == "VmHWM:" && status >> count) return count;
    throw std::runtime_error("the system tells no peak of memory");
}

long WritingCalls() {
    std::ifstream counts("/proc/self/io");
    std::string name;
    for (long count = 0; counts >> name >> count;)
        if (name == "syscw:") return count;
    throw std::runtime_error("the system counts no writes");
}

std::string Quoted(const std::string& word) {
    std::string quoted = "'";
    for (const char letter : word) quoted += letter == '\'' ? "'\\''" : std::string(1, letter);
    return quoted + "'";
}

void RunCommand(const std::string& command) {
    if (std::system(command.c_str()) != 0) throw std::runtime_error("failed: " + command);
}

std::string OutputOf(const std::string& command) {
    FILE* const pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) throw std::runtime_error("no process could be started");
    std::string output;
    std::array<char, 4096> piece{};
    for (std::size_t read = 0; (read = std::fread(piece.data(), 1, piece.size(), pipe)) > 0;)
        output.append(piece.data(), read);
    if (pclose(pipe) != 0) throw std::runtime_error("failed: " + command);
    return output;
}

bool IsInstalled(const std::string& program) {
    return std::system(("command -v " + Quoted(program) + " >/dev/null 2>&1").c_str()) == 0;
}

std::string ThisProgram() { return std::filesystem::read_symlink("/proc/self/exe").string(); }

std::string Beside(const std::string& name) {
    return (std::filesystem::path(ThisProgram()).parent_path() / name).string();
}

void InChild(const std::function<void()>& work) {
    const pid_t child = fork();
    if (child < 0) throw std::runtime_error("no process could be started");
    if (child == 0) {
        try {
            work();
        } catch (...) {
            _exit(1);
        }
        _exit(0);
    }
    int status = 0;
    if (waitpid(child, &status, 0) != child || status != 0)
        throw std::runtime_error("the work of a process failed");
}

Least operator+(const Least& a, const Least& b) { return {a.Wall + b.Wall, a.Cpu + b.Cpu}; }

Least LeastOf(int runs, const std::function<void()>& prepare, const std::function<void()>& work) {
    using Clock = std::chrono::steady_clock;
    Least least{std::numeric_limits<double>::max(), std::numeric_limits<double>::max()};
    for (int run = 0; run < runs; ++run) {
        prepare();
        const double cpu = Cpu();
        const auto start = Clock::now();
        work();
        const std::chrono::duration<double> wall = Clock::now() - start;
        least.Wall = std::min(least.Wall, wall.count());
        least.Cpu = std::min(least.Cpu, Cpu() - cpu);
    }
    return least;
}

Least LeastOf(int runs, const std::function<void()>& work) {
    return LeastOf(
        runs, [] {}, work);
}

}  // namespace zolmara::bench
