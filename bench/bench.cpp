// zolmara-bench [PART] FOLDER [CLI SAMPLE.CRF]: what the main steps cost. See README.md here.

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "bench/CalcBench.h"
#include "bench/EcrBench.h"
#include "bench/EntryBench.h"
#include "bench/ImportBench.h"
#include "bench/Measure.h"
#include "bench/Part.h"
#include "bench/PeakBench.h"
#include "bench/Process.h"
#include "bench/Scratch.h"
#include "bench/SilentHost.h"
#include "bench/StartBench.h"
#include "bench/Statements.h"
#include "bench/StructureBench.h"
#include "bench/TableBench.h"
#include "core/Dialogs.h"
#include "core/Host.h"
#include "store/session/Session.h"

namespace zolmara::bench {
namespace {

namespace fs = std::filesystem;

/// What a part is given. It works in a folder of the run's own.
struct Bench {
    std::string Folder;
    std::string Large;  ///< the large statement, calculated; made where a part needs it
    std::string Cli;
    std::string Sample;
};

void BenchFilesOfLarge(const Bench& bench, SilentHost& host) {
    const std::string work = bench.Folder + "/work.CRF";
    fs::copy_file(bench.Large, work);
    Open(work);
    BenchEcr(bench.Folder);
    BenchPdf(bench.Folder, [&](PageDevice* device) { host.Device = device; });
    DropCrf();
    BenchPeaks(bench.Folder);
}

/// A program beside this one that measures a part of its own; it is not built everywhere.
void RunBeside(const std::string& name, const std::string& folder, const std::string& crf) {
    const std::string program = Beside(name);
    if (!fs::exists(program)) return ReportNote(name, "not built here");
    RunCommand(fmt::format("{} {} {}", Quoted(program), Quoted(folder), Quoted(crf)));
}

enum class Needs { Nothing, Large, Program };

/// The parts of a run, in their order.
struct Part {
    const char* Name;
    const char* Title;
    Needs What;   ///< the large statement, or the command line's program and the sample
    int Minutes;  ///< the longest that it may take
    void (*Run)(const Bench& bench, SilentHost& host);
};
constexpr Part kParts[] = {
    {"table", "", Needs::Program, 180,
     [](const Bench& bench, SilentHost&) { BenchTable(bench.Folder, bench.Cli, bench.Sample); }},
    {"entries", "One entry, by its place", Needs::Nothing, 20,
     [](const Bench& bench, SilentHost&) { BenchEntries(bench.Folder); }},
    {"calc", "Calculation, open and close", Needs::Large, 20,
     [](const Bench& bench, SilentHost&) { BenchCalc(bench.Folder, bench.Large); }},
    {"files", "Files", Needs::Large, 20, BenchFilesOfLarge},
    {"structure", "Structure", Needs::Large, 20,
     [](const Bench& bench, SilentHost&) { BenchStructure(bench.Folder, bench.Large, bench.Cli); }},
    {"import", "Import", Needs::Nothing, 20,
     [](const Bench& bench, SilentHost&) { BenchImports(bench.Folder); }},
    {"start", "Start", Needs::Program, 5,
     [](const Bench& bench, SilentHost&) { BenchStart(bench.Folder, bench.Cli, bench.Sample); }},
    {"windows", "Windows", Needs::Program, 20,
     [](const Bench& bench, SilentHost&) {
         RunBeside("zolmara-sheet-bench", bench.Folder, bench.Sample);
     }},
    {"pages", "Pages of the preview", Needs::Large, 20,
     [](const Bench& bench, SilentHost&) {
         RunBeside("zolmara-page-bench", bench.Folder, bench.Large);
     }},
    {"workbooks", "Workbooks", Needs::Large, 20,
     [](const Bench& bench, SilentHost&) {
         RunBeside("zolmara-export-bench", bench.Folder, bench.Large);
     }},
};
constexpr int kSecondsInMinute = 60;

const Part* PartOf(const std::string& word) {
    const auto* found =
        std::ranges::find_if(kParts, [&](const Part& part) { return word == part.Name; });
    return found == std::end(kParts) ? nullptr : found;
}

void MakeLarge(const Bench& bench) {
    if (fs::exists(bench.Large)) return;
    const std::string making = bench.Large + ".making";
    MakeStatement(making, {});
    DropCrf();
    fs::rename(making, bench.Large);
}

/// In a folder of its own, which goes with it. False when it failed, which is told; the run goes
/// on.
bool RunPart(const Part& part, Bench bench) {
    const Scratch scratch(bench.Folder);
    bench.Folder = scratch.Path();
    try {
        InPart(
            [&] {
                SilentHost host;
                InstallHost(&host);
                if (part.What == Needs::Large) MakeLarge(bench);
                if (*part.Title != '\0') ReportHead(part.Title);
                part.Run(bench, host);
                host.NeedSilence();
            },
            part.Minutes * kSecondsInMinute);
        return true;
    } catch (const Interrupted&) {
        throw;
    } catch (const std::exception& failure) {
        fmt::print("\nFailed: {}: {}\n", part.Name, failure.what());
        std::fflush(stdout);
        return false;
    }
}

int Usage() {
    fmt::print(stderr, "zolmara-bench [PART] FOLDER [CLI SAMPLE.CRF]; parts:");
    for (const Part& part : kParts) fmt::print(stderr, " {}", part.Name);
    fmt::print(stderr, "\n");
    return 1;
}

/// A program that this one starts for the peak of one step: "peak" STEP CRF.
int RunPeak(const std::string& step, const std::string& crf) {
    SilentHost host;
    InstallHost(&host);
    if (!MeasurePeak(step, crf, host)) return Usage();
    host.NeedSilence();
    return 0;
}

/// FOLDER [CLI SAMPLE.CRF], with the one part to run ahead of it or all of them.
int Run(std::vector<std::string> words) {
    if (words.size() == 3 && words[0] == kPeakWord) return RunPeak(words[1], words[2]);
    const Part* const only = words.empty() ? nullptr : PartOf(words[0]);
    if (only) words.erase(words.begin());
    const bool program = words.size() == 3;
    if (!program && (words.size() != 1 || (only && only->What == Needs::Program))) return Usage();
    words.resize(3);
    for (std::string& word : words)
        if (!word.empty()) word = fs::absolute(word).string();
    fs::create_directories(words[0]);
    const Scratch scratch(words[0]);
    const Bench bench{scratch.Path(), scratch.Path() + "/large.CRF", words[1], words[2]};
    bool well = true;
    for (const Part& part : kParts)
        if (only ? &part == only : program || part.What != Needs::Program)
            well = RunPart(part, bench) && well;
    return well ? 0 : 1;
}

}  // namespace
}  // namespace zolmara::bench

int main(int argc, char** argv) {
    try {
        return zolmara::bench::Run(std::vector<std::string>(argv + 1, argv + argc));
    } catch (const std::exception& failure) {
        fmt::print(stderr, "{}\n", failure.what());
        return 1;
    }
}
