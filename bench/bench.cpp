// zolmara-bench [PART] FOLDER [CLI SAMPLE.CRF]: what the main steps cost. See README.md here.

#include <fmt/format.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "bench/EcrBench.h"
#include "bench/EntryBench.h"
#include "bench/InMemory.h"
#include "bench/LargeStatement.h"
#include "bench/Measure.h"
#include "bench/RawSqlite.h"
#include "bench/SilentHost.h"
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

constexpr int kRuns = 3;

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

void BenchCalc(const Bench& bench) {
    bench.CopyLarge();
    OpenCrf(bench.Work);
    ChangeCosts(1.01);
    DropCrf();
    const auto before = bench.File("before.CRF");
    fs::copy_file(bench.Work, before, fs::copy_options::overwrite_existing);
    const double calc = Seconds(
        kRuns,
        [&] {
            DropCrf();
            fs::copy_file(before, bench.Work, fs::copy_options::overwrite_existing);
            OpenCrf(bench.Work);
        },
        [] { Calc_All(); });
    const double unchanged = Seconds(kRuns, [] { Calc_All(); });
    DropCrf();
    const auto changes = Differences(before, bench.Work);
    const auto raw = bench.File("raw.CRF");
    const double yardstick = Seconds(
        kRuns, [&] { fs::copy_file(before, raw, fs::copy_options::overwrite_existing); },
        [&] { ReadAndWrite(raw, changes, Once); });
    const auto matrices = LoadMatrices(before);
    const double memory = Seconds(kRuns, [&] {
        if (Calculate(matrices) == 0) fmt::print("no amounts\n");
    });
    fmt::print("Calc_All writes {} cells\n", CellsOf(changes));
    Report("Calc_All, all allocated amounts change", calc, "raw SQLite", yardstick, bench.Folder);
    Report("Calc_All, all allocated amounts change", calc, "in memory", memory, bench.Folder);
    Report("Calc_All, nothing changed", unchanged, "raw SQLite", yardstick, bench.Folder);
}

void BenchImport(const Bench& bench) {
    for (const int perMille : {25, 50, 100, 200}) {
        const auto text = bench.File("import.txt");
        LargeShape shape;
        shape.Components = 3000;
        shape.CostCenters = 150;
        shape.FilledPerMille = perMille;
        shape.DirectPerMille = perMille;
        const auto lines = WriteImportFile(text, shape);
        const double seconds = Seconds(
            1,
            [&] {
                DropCrf();
                MakeNew(bench.Work);
            },
            [&] { ImportAsciiFile(text); });
        Report(
            fmt::format("import of {} lines", lines), seconds,
            fmt::format("{:.1f} microseconds a line", seconds * 1e6 / static_cast<double>(lines)),
            bench.Folder);
    }
    DropCrf();
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
    const double open = Seconds(kRuns, reset, [&] { OpenCrf(bench.Work); });
    const double rawOpen = Seconds(kRuns, reset, [&] {
        RawFile file(bench.Work);
        file.ReadAll("Master");
    });
    Report("open", open, "raw SQLite", rawOpen, bench.Folder);
    const double close = Seconds(
        kRuns,
        [&] {
            reset();
            OpenCrf(bench.Work);
        },
        [] { mnuReportClose(); });
    const double rawClose = Seconds(kRuns, reset, [&] { CheckAndVacuum(bench.Work); });
    Report("close: check and compact", close, "raw SQLite", rawClose, bench.Folder);
}

void BenchFilesOfLarge(const Bench& bench, SilentHost& host) {
    DropCrf();
    bench.CopyLarge();
    OpenCrf(bench.Work);
    BenchEcr(bench.Folder);
    BenchPdf(bench.Folder, [&](PageDevice* device) { host.Device = device; });
    DropCrf();
}

void BenchCommand(const Bench& bench, const std::string& cli, const std::string& sample) {
    const auto command = fmt::format("{} calc --quiet {}", cli, bench.Work);
    fs::copy_file(sample, bench.Work, fs::copy_options::overwrite_existing);
    const double cold = Seconds(10, [&] {
        if (std::system(command.c_str()) == -1) std::abort();
    });
    Report("the command calc on the sample", cold, "aim under 50 ms", bench.Folder);
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
     }},
    {"structure", false,
     [](const Bench& bench, SilentHost&, const std::string&, const std::string&) {
         NeedLarge(bench);
         BenchStructure(bench.Folder, bench.Large, MakeNew);
     }},
    {"import", false,
     [](const Bench& bench, SilentHost&, const std::string&, const std::string&) {
         BenchImport(bench);
     }},
    {"command", true,
     [](const Bench& bench, SilentHost&, const std::string& cli, const std::string& sample) {
         BenchCommand(bench, cli, sample);
     }},
};

const Part* PartOf(const std::string& word) {
    const auto* found =
        std::ranges::find_if(kParts, [&](const Part& part) { return word == part.Name; });
    return found == std::end(kParts) ? nullptr : found;
}

/// FOLDER [CLI SAMPLE.CRF], with the one part to run ahead of it or all of them.
int Run(std::vector<std::string> words) {
    const Part* const only = words.empty() ? nullptr : PartOf(words[0]);
    if (only) words.erase(words.begin());
    const bool program = words.size() == 3;
    if (!program && (words.size() != 1 || (only && only->NeedsProgram))) {
        fmt::print(stderr, "zolmara-bench [PART] FOLDER [CLI SAMPLE.CRF]; parts:");
        for (const Part& part : kParts) fmt::print(stderr, " {}", part.Name);
        fmt::print(stderr, "\n");
        return 1;
    }
    SilentHost host;
    InstallHost(&host);
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
