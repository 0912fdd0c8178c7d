#include "bench/StructureBench.h"

#include <fmt/format.h>

#include <filesystem>
#include <fstream>

#include "bench/Measure.h"
#include "bench/Process.h"
#include "bench/RawSqlite.h"
#include "bench/Statements.h"
#include "core/Globals.h"
#include "store/session/Session.h"
#include "structure/AddDeleteCC.h"
#include "structure/CostCenterColumns.h"
#include "structure/Renumber.h"

namespace zolmara::bench {
namespace {

namespace fs = std::filesystem;

constexpr int kRuns = 5;
constexpr int kCommandRuns = 9;
constexpr int kMost = 800;  ///< new cost centers of one import

void AgainstRaw(const std::string& what, const Least& took, const Least& raw,
                const std::string& folder, const std::string& aim = "") {
    Report(what, took, "raw SQLite, the tables twice", raw, folder, aim);
}

/// Subscripts of the lines from 9 on.
void WriteNewCenters(const std::string& path, int count) {
    std::ofstream file(path, std::ios::binary);
    for (int i = 0; i < count; ++i)
        file << fmt::format("COSTCENTER\t{}.{:02}\t0\tNew center {}\n", 9 + i / 99, i % 99 + 1, i);
}

void BenchNewCenters(const std::string& folder) {
    const std::string text = folder + "/centers.txt";
    const std::string crf = folder + "/centers.CRF";
    for (const int count : {25, 100, 200, 400, kMost}) {
        WriteNewCenters(text, count);
        const Least least = LeastOf(
            kRuns,
            [&] {
                DropCrf();
                MakeNew(crf);
            },
            [&] { Import(text); });
        DropCrf();
        const auto tables = TablesWithColumn(Currency(9));
        const Least raw = LeastOf(1, [&] { CopyTablesTwice(crf, tables); });
        AgainstRaw(fmt::format("import of {} new cost centers", count), least, raw, folder,
                   count == kMost ? "1 s" : "");
    }
}

/// With the program's start and the opening of the file.
void BenchDeleteCommand(const std::string& work, const std::string& cli, Currency line,
                        const std::function<void()>& copy, const Least& raw) {
    const auto command = fmt::format("{} cc delete {} {} >/dev/null 2>&1", Quoted(cli),
                                     Quoted(work), NumberText(line));
    const Least least = LeastOf(kCommandRuns, copy, [&] { RunCommand(command); });
    AgainstRaw("the command cc delete", least, raw, fs::path(work).parent_path().string(), "0.1 s");
}

}  // namespace

void BenchStructure(const std::string& folder, const std::string& large, const std::string& cli) {
    const std::string work = folder + "/work.CRF";
    const auto copy = [&] { fs::copy_file(large, work, fs::copy_options::overwrite_existing); };
    const auto reopen = [&] {
        DropCrf();
        copy();
        Open(work);
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
    AgainstRaw("add a cost center", add, raw, folder);
    AgainstRaw("delete a cost center", gone, raw, folder, "0.1 s");
    if (!cli.empty()) BenchDeleteCommand(work, cli, last, copy, raw);
    BenchNewCenters(folder);
}

}  // namespace zolmara::bench
