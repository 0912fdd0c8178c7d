#include "bench/StartBench.h"

#include <fmt/format.h>

#include <filesystem>

#include "bench/Measure.h"
#include "bench/Process.h"

namespace zolmara::bench {
namespace {

constexpr int kRuns = 20;

Least Command(const std::string& command) {
    return LeastOf(kRuns, [&] { RunCommand(command + " >/dev/null 2>&1"); });
}

}  // namespace

void BenchStart(const std::string& folder, const std::string& cli, const std::string& sample) {
    const std::string work = folder + "/work.CRF";
    std::filesystem::copy_file(sample, work, std::filesystem::copy_options::overwrite_existing);
    const Least nothing = Command("/bin/true");
    for (const std::string words : {"--version", "info FILE", "calc FILE"}) {
        std::string command = Quoted(cli) + " " + words;
        if (const auto file = command.find("FILE"); file != std::string::npos)
            command.replace(file, 4, Quoted(work));
        const Least took = Command(command);
        Report(fmt::format("the command {} on the sample", words), took,
               "a program that does nothing", nothing, folder);
    }
}

}  // namespace zolmara::bench
