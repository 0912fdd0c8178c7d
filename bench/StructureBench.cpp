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

constexpr int kRuns = 3;

/// The same tables copied twice, as a column's place demands.
void CopyTablesTwice(const std::string& path, const std::vector<std::string_view>& tables) {
    RawFile file(path);
    file.Run("BEGIN IMMEDIATE");
    for (const auto table : tables) {
        file.Run(fmt::format("CREATE TABLE copy1 AS SELECT * FROM {}", table));
        file.Run(fmt::format("DROP TABLE {}", table));
        file.Run(fmt::format("CREATE TABLE {} AS SELECT * FROM copy1", table));
        file.Run("DROP TABLE copy1");
        file.Run(fmt::format("CREATE UNIQUE INDEX ndx{0} ON {0} (LineNum)", table));
    }
    file.Run("COMMIT");
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
    for (const int count : {25, 100, 200, 400, 800}) {
        WriteNewCenters(text, count);
        const Least least = LeastOf(
            kRuns,
            [&] {
                DropCrf();
                makeNew(folder + "/centers.CRF");
            },
            [&] { ImportAsciiFile(text); });
        Report(fmt::format("import of {} new cost centers, CPU", count), least.Cpu,
               fmt::format("{:.0f} microseconds each", least.Cpu * 1e6 / count), folder);
    }
    DropCrf();
}

}  // namespace

void BenchStructure(const std::string& folder, const std::string& large,
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
    const double add = Seconds(kRuns, reopen, [&] { RunBatch(gDB, [&] { AddCostCenter(line); }); });
    const Least gone =
        LeastOf(kRuns, reopen, [&] { RunBatch(gDB, [&] { DeleteCostCenter(last); }); });
    DropCrf();
    const double raw = Seconds(kRuns, copy, [&] { CopyTablesTwice(work, TablesWithColumn(line)); });
    Report("add a cost center", add, "raw SQLite", raw, folder);
    Report("delete a cost center", gone.Wall, "raw SQLite", raw, folder);
    Report("delete a cost center, CPU", gone.Cpu, "", folder);
    BenchNewCenters(folder, makeNew);
}

}  // namespace zolmara::bench
