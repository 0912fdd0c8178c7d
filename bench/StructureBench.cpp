#include "bench/StructureBench.h"

#include <fmt/format.h>

#include <filesystem>
#include <fstream>

#include "bench/Measure.h"
#include "bench/Process.h"
#include "bench/RawSqlite.h"
#include "core/Globals.h"
#include "import/ImportASCII.h"
#include "store/session/Session.h"
#include "structure/AddDeleteCC.h"
#include "structure/CostCenterColumns.h"
#include "structure/Renumber.h"

namespace zolmara::bench {
namespace {

namespace fs = std::filesystem;

constexpr int kRuns = 5;
constexpr int kCommandRuns = 9;

void ReportBoth(const std::string& what, const Least& took, const Least& raw,
                const std::string& folder) {
    Report(what, took.Wall, "raw SQLite, the tables twice", raw.Wall, folder);
    Report(what + ", CPU", took.Cpu, "raw SQLite, the tables twice", raw.Cpu, folder);
}

/// Subscripts of the lines from 9 on.
void WriteNewCenters(const std::string& path, int count) {
    std::ofstream file(path, std::ios::binary);
    for (int i = 0; i < count; ++i)
        file << fmt::format("COSTCENTER\t{}.{:02}\t0\tNew center {}\n", 9 + i / 99, i % 99 + 1, i);
}

void BenchNewCenters(const std::string& folder,
                     const std::function<void(const std::string&)>& makeNew) {
    const std::string text = folder + "/centers.txt";
    const std::string crf = folder + "/centers.CRF";
    for (const int count : {25, 100, 200, 400, 800}) {
        WriteNewCenters(text, count);
        const Least least = LeastOf(
            kRuns,
            [&] {
                DropCrf();
                makeNew(crf);
            },
            [&] { ImportAsciiFile(text); });
        DropCrf();
        const auto tables = TablesWithColumn(Currency(9));
        const Least raw = LeastOf(
            1, [] {}, [&] { CopyTablesTwice(crf, tables); });
        ReportBoth(fmt::format("import of {} new cost centers", count), least, raw, folder);
    }
}

/// With the program's start and the opening of the file.
void BenchDeleteCommand(const std::string& work, const std::string& cli, Currency line,
                        const std::function<void()>& copy, const Least& raw) {
    const auto command = fmt::format("{} cc delete {} {} >/dev/null 2>&1", Quoted(cli),
                                     Quoted(work), NumberText(line));
    const Least least = LeastOf(kCommandRuns, copy, [&] { RunCommand(command); });
    ReportBoth("the command cc delete", least, raw, fs::path(work).parent_path().string());
}

}  // namespace

void BenchStructure(const std::string& folder, const std::string& large, const std::string& cli,
                    const std::function<void(const std::string&)>& makeNew) {
    const std::string work = folder + "/work.CRF";
    const auto copy = [&] { fs::copy_file(large, work, fs::copy_options::overwrite_existing); };
    const auto reopen = [&] {
        DropCrf();
        copy();
        OpenCrf(work);
    };
    reopen();
    const Currency last =
        CurOr(gDB.Scalar("SELECT Max(LineNum) FROM CostCenters WHERE LineNum>=9 AND LineNum<10"));
    const Currency line = last + kSubscriptStep;
    const Least add = LeastOf(kRuns, reopen, [&] { RunBatch(gDB, [&] { AddCostCenter(line); }); });
    const Least gone =
        LeastOf(kRuns, reopen, [&] { RunBatch(gDB, [&] { DeleteCostCenter(last); }); });
    DropCrf();
    const auto tables = TablesWithColumn(line);
    const Least raw = LeastOf(kRuns, copy, [&] { CopyTablesTwice(work, tables); });
    ReportBoth("add a cost center", add, raw, folder);
    ReportBoth("delete a cost center", gone, raw, folder);
    if (!cli.empty()) BenchDeleteCommand(work, cli, last, copy, raw);
    BenchNewCenters(folder, makeNew);
}

}  // namespace zolmara::bench
