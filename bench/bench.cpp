// zolmara-bench [PART] FOLDER [CLI SAMPLE.CRF]: what the main steps cost. See README.md here.

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "bench/EcrBench.h"
#include "bench/EntryBench.h"
#include "bench/ImportBench.h"
#include "bench/InMemory.h"
#include "bench/LargeStatement.h"
#include "bench/Measure.h"
#include "bench/PeakBench.h"
#include "bench/Process.h"
#include "bench/RawSqlite.h"
#include "bench/SilentHost.h"
#include "bench/StartBench.h"
#include "bench/StructureBench.h"
#include "bench/TableBench.h"
#include "calc/Calc_All.h"
#include "core/Dialogs.h"
#include "core/Globals.h"
#include "core/Host.h"
#include "import/ImportASCII.h"
#include "store/session/Session.h"
#include "worksheets/NewCrf.h"

namespace zolmara::bench {
namespace {

namespace fs = std::filesystem;

constexpr int kRuns = 5;

struct Bench {
    std::string Folder;
    std::string Large;  ///< the large statement, calculated
    std::string Work;   ///< a copy to work on

    explicit Bench(std::string folder) : Folder(std::move(folder)) {
        fs::create_directories(Folder);
        Large = Folder + "/large.CRF";
        Work = Folder + "/work.CRF";
    }

    std::string File(const std::string& name) const { return Folder + "/" + name; }
    void CopyLarge() const { fs::copy_file(Large, Work, fs::copy_options::overwrite_existing); }
};

void MakeNew(const std::string& path) {
    fs::remove(path);
    NewCrfFields fields;
    fields.FormNum = "287";
    fields.ProviderNum = "12-3456";
    fields.FYStart = "10/1/2022";
    fields.FYEnd = "9/30/2023";
    fields.FacilityName = "Large Home Office";
    CreateCrf(path, fields);
}

std::size_t WriteImportFile(const std::string& path, const LargeShape& shape) {
    std::ofstream file(path, std::ios::binary);
    return WriteLargeStatement(file, shape);
}

/// A keyed change that moves every allocated amount: the costs on line 53.
void ChangeCosts(double factor) {
    for (const std::string table : {"C1p3", "D1p3"}) {
        auto row = gDB.OpenRecordset("SELECT * FROM " + table + " WHERE LineNum=53");
        row.Edit();
        for (int i = 3; i < row.FieldCount(); ++i)
            row.Set(i, RoundTo((NumOr(row[i]) + 1000) * factor, 0));
        row.Update();
    }
}

void BuildLarge(const Bench& bench) {
    const auto text = bench.File("large.txt");
    const auto lines = WriteImportFile(text, {});
    MakeNew(bench.Large);
    const double import = Seconds(1, [&] { ImportAsciiFile(text); });
    Report("import of the large statement", import, fmt::format("{} lines", lines), bench.Folder);
    ChangeCosts(1);
    Calc_All();
    DropCrf();
}

/// Makes the large statement once in a run.
void NeedLarge(const Bench& bench) {
    static bool made = false;
    if (!std::exchange(made, true)) BuildLarge(bench);
}

int Once(const std::string&) { return 1; }

void ReportBoth(const Bench& bench, const std::string& what, const Least& took,
                const std::string& against, const Least& baseline) {
    Report(what, took.Wall, against, baseline.Wall, bench.Folder);
    Report(what + ", CPU", took.Cpu, against, baseline.Cpu, bench.Folder);
}

/// Every allocated amount changes: each run begins with the file as it was before.
Least BenchFirstRun(const Bench& bench, const std::string& before) {
    return LeastOf(
        kRuns,
        [&] {
            DropCrf();
            fs::copy_file(before, bench.Work, fs::copy_options::overwrite_existing);
            OpenCrf(bench.Work);
        },
        [] { Calc_All(); });
}

/// Each run reads the file anew.
void BenchUnchanged(const Bench& bench) {
    const auto reopen = [&] {
        DropCrf();
        OpenCrf(bench.Work);
    };
    const Least unchanged = LeastOf(kRuns, reopen, [] { Calc_All(); });
    const Least again = LeastOf(
        kRuns, [] {}, [] { Calc_All(); });
    const long writes = WritingCalls();
    Calc_All();
    fmt::print("Calc_All of nothing changed makes {} calls that write\n", WritingCalls() - writes);
    DropCrf();
    const Least reading = LeastOf(
        kRuns, [] {}, [&] { ReadAndWrite(bench.Work, {}, Once); });
    ReportBoth(bench, "Calc_All, nothing changed", unchanged, "raw SQLite, reading", reading);
    ReportBoth(bench, "Calc_All again, nothing changed", again, "raw SQLite, reading", reading);
}

void BenchCalc(const Bench& bench) {
    bench.CopyLarge();
    OpenCrf(bench.Work);
    ChangeCosts(1.01);
    DropCrf();
    const auto before = bench.File("before.CRF");
    fs::copy_file(bench.Work, before, fs::copy_options::overwrite_existing);
    const Least calc = BenchFirstRun(bench, before);
    DropCrf();
    const auto changes = Differences(before, bench.Work);
    const auto raw = bench.File("raw.CRF");
    const Least yardstick = LeastOf(
        kRuns, [&] { fs::copy_file(before, raw, fs::copy_options::overwrite_existing); },
        [&] { ReadAndWrite(raw, changes, Once); });
    const auto matrices = LoadMatrices(before);
    const Least memory = LeastOf(
        kRuns, [] {},
        [&] {
            if (Calculate(matrices) == 0) fmt::print("no amounts\n");
        });
    fmt::print("Calc_All writes {} cells\n", CellsOf(changes));
    const std::string what = "Calc_All, all allocated amounts change";
    ReportBoth(bench, what, calc, "raw SQLite, read once and written", yardstick);
    ReportBoth(bench, what, calc, "in memory", memory);
    BenchUnchanged(bench);
}

void CheckAndVacuum(const std::string& path) {
    RawFile file(path);
    file.Run("PRAGMA integrity_check");
    file.Run("VACUUM INTO '" + path + ".copy'");
}

void BenchOpenClose(const Bench& bench) {
    const auto reset = [&] {
        DropCrf();
        bench.CopyLarge();
        fs::remove(bench.Work + ".copy");
    };
    const Least open = LeastOf(kRuns, reset, [&] { OpenCrf(bench.Work); });
    const Least rawOpen = LeastOf(kRuns, reset, [&] {
        RawFile file(bench.Work);
        file.ReadAll("Master");
    });
    ReportBoth(bench, "open", open, "raw SQLite", rawOpen);
    const auto resetAndOpen = [&] {
        reset();
        OpenCrf(bench.Work);
    };
    const Least close = LeastOf(kRuns, resetAndOpen, [] { mnuReportClose(); });
    const Least rawClose = LeastOf(kRuns, reset, [&] { CheckAndVacuum(bench.Work); });
    ReportBoth(bench, "close: check and compact", close, "raw SQLite", rawClose);
}

void BenchFilesOfLarge(const Bench& bench, SilentHost& host) {
    DropCrf();
    bench.CopyLarge();
    OpenCrf(bench.Work);
    BenchEcr(bench.Folder);
    BenchPdf(bench.Folder, [&](PageDevice* device) { host.Device = device; });
    DropCrf();
}

/// A program beside this one that measures a part of its own; it is not built everywhere.
void RunBeside(const std::string& name, const std::string& arguments) {
    const fs::path program = fs::read_symlink("/proc/self/exe").parent_path() / name;
    fmt::print("\n{}:\n", name);
    if (!fs::exists(program)) return fmt::print("not built here\n");
    std::fflush(stdout);
    RunCommand(Quoted(program.string()) + " " + arguments);
}

/// The parts of a run, in their order. Each makes for itself what it needs.
struct Part {
    const char* Name;
    bool NeedsProgram;  ///< the command line's, and the sample
    void (*Run)(const Bench& bench, SilentHost& host, const std::string& cli,
                const std::string& sample);
};
constexpr Part kParts[] = {
    {"table", true,
     [](const Bench& bench, SilentHost&, const std::string& cli, const std::string& sample) {
         BenchTable(bench.Folder, cli, sample, MakeNew);
     }},
    {"entries", false,
     [](const Bench& bench, SilentHost&, const std::string&, const std::string&) {
         BenchEntries(bench.Folder, MakeNew);
     }},
    {"calc", false,
     [](const Bench& bench, SilentHost&, const std::string&, const std::string&) {
         NeedLarge(bench);
         BenchCalc(bench);
         BenchOpenClose(bench);
     }},
    {"files", false,
     [](const Bench& bench, SilentHost& host, const std::string&, const std::string&) {
         NeedLarge(bench);
         BenchFilesOfLarge(bench, host);
         BenchPeaks(bench.Folder, MakeNew);
     }},
    {"structure", false,
     [](const Bench& bench, SilentHost&, const std::string& cli, const std::string&) {
         NeedLarge(bench);
         BenchStructure(bench.Folder, bench.Large, cli, MakeNew);
     }},
    {"import", false,
     [](const Bench& bench, SilentHost&, const std::string&, const std::string&) {
         BenchImports(bench.Folder, MakeNew);
     }},
    {"start", true,
     [](const Bench& bench, SilentHost&, const std::string& cli, const std::string& sample) {
         BenchStart(bench.Folder, cli, sample);
     }},
    {"windows", true,
     [](const Bench& bench, SilentHost&, const std::string&, const std::string& sample) {
         RunBeside("zolmara-sheet-bench", Quoted(bench.Folder) + " " + Quoted(sample));
     }},
    {"pages", false,
     [](const Bench& bench, SilentHost&, const std::string&, const std::string&) {
         NeedLarge(bench);
         RunBeside("zolmara-page-bench", Quoted(bench.Folder) + " " + Quoted(bench.Large));
     }},
    {"workbooks", false,
     [](const Bench& bench, SilentHost&, const std::string&, const std::string&) {
         NeedLarge(bench);
         RunBeside("zolmara-export-bench", Quoted(bench.Folder) + " " + Quoted(bench.Large));
     }},
};

const Part* PartOf(const std::string& word) {
    const auto* found =
        std::ranges::find_if(kParts, [&](const Part& part) { return word == part.Name; });
    return found == std::end(kParts) ? nullptr : found;
}

/// A program that this one starts for the peak of one step: "peak" STEP CRF.
bool IsPeak(const std::vector<std::string>& words) {
    return words.size() == 3 && words[0] == "peak";
}

/// FOLDER [CLI SAMPLE.CRF], with the one part to run ahead of it or all of them.
int Run(std::vector<std::string> words) {
    SilentHost host;
    InstallHost(&host);
    if (IsPeak(words)) return MeasurePeak(words[1], words[2], host) ? 0 : 1;
    const Part* const only = words.empty() ? nullptr : PartOf(words[0]);
    if (only) words.erase(words.begin());
    const bool program = words.size() == 3;
    if (!program && (words.size() != 1 || (only && only->NeedsProgram))) {
        fmt::print(stderr, "zolmara-bench [PART] FOLDER [CLI SAMPLE.CRF]; parts:");
        for (const Part& part : kParts) fmt::print(stderr, " {}", part.Name);
        fmt::print(stderr, "\n");
        return 1;
    }
    const Bench bench(words[0]);
    words.resize(3);
    for (const Part& part : kParts)
        if (only ? &part == only : program || !part.NeedsProgram)
            part.Run(bench, host, words[1], words[2]);
    return 0;
}

}  // namespace
}  // namespace zolmara::bench

int main(int argc, char** argv) {
    return zolmara::bench::Run(std::vector<std::string>(argv + 1, argv + argc));
}
