#include "bench/ImportBench.h"

#include <fmt/format.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <vector>

#include "bench/LargeStatement.h"
#include "bench/Measure.h"
#include "bench/Process.h"
#include "bench/RawSqlite.h"
#include "bench/Statements.h"
#include "core/Globals.h"
#include "store/session/Session.h"
#include "structure/CostCenterColumns.h"

namespace zolmara::bench {
namespace {

namespace fs = std::filesystem;

constexpr int kRuns = 3;
constexpr std::size_t kLines = 100'000;
constexpr int kNewCenters = 200;

/// Raw SQLite puts the lines of a file into one table of a new database.
Least RawLines(const std::string& folder, const std::string& text) {
    const std::string raw = folder + "/lines.db";
    const Least least = LeastOf(
        kRuns, [&] { fs::remove(raw); }, [&] { InsertLines(raw, text); });
    fs::remove(raw);
    return least;
}

/// The lines of a large statement: its components, and of the others as many as are wanted.
struct Lines {
    std::string Components;
    std::string Others;
};
Lines LinesOf(const LargeShape& shape, std::size_t wanted) {
    std::stringstream all;
    WriteLargeStatement(all, shape);
    Lines lines;
    std::vector<std::string> centers;
    std::vector<std::string> amounts;
    for (std::string line; std::getline(all, line);) {
        line += '\n';
        if (line.starts_with("S2p"))
            lines.Components += line;
        else
            (line.starts_with("COSTCENTER") ? centers : amounts).push_back(line);
    }
    for (const auto& line : centers) lines.Others += line;
    const std::size_t kept = wanted - centers.size();
    for (std::size_t i = 0; i < kept; ++i) lines.Others += amounts[i * amounts.size() / kept];
    return lines;
}

void Write(const std::string& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
}

void BenchGrowingFiles(const std::string& folder) {
    const std::string text = folder + "/import.txt";
    for (const int perMille : {25, 50, 100, 200}) {
        LargeShape shape;
        shape.Components = 3000;
        shape.CostCenters = 150;
        shape.FilledPerMille = perMille;
        shape.DirectPerMille = perMille;
        std::size_t lines = 0;
        {
            std::ofstream file(text, std::ios::binary);
            lines = WriteLargeStatement(file, shape);
        }
        const auto reset = [&] {
            DropCrf();
            MakeNew(folder + "/work.CRF");
        };
        const Least took = LeastOf(1, reset, [&] { Import(text); });
        Report(fmt::format("import of {} lines, 124 new cost centers", lines), took,
               "raw SQLite, the lines", RawLines(folder, text), folder);
    }
    DropCrf();
}

void BenchNewCentersOfLarge(const std::string& folder) {
    constexpr int kFormCenters = 26;
    LargeShape shape;
    shape.CostCenters = kFormCenters + kNewCenters;
    shape.FilledPerMille = shape.DirectPerMille = 200;
    const Lines lines = LinesOf(shape, kLines);
    const std::string base = folder + "/components.CRF";
    const std::string work = folder + "/work.CRF";
    const std::string text = folder + "/import.txt";
    Write(text, lines.Components);
    MakeNew(base);
    Import(text);
    DropCrf();
    Write(text, lines.Others);
    const auto copy = [&] { fs::copy_file(base, work, fs::copy_options::overwrite_existing); };
    const Least took = LeastOf(kRuns, copy, [&] {
        Open(work);
        Import(text);
        mnuReportClose();
    });
    const std::string widened = folder + "/widened.CRF";
    auto tables = TablesWithColumn(Currency(9));
    const Least copies = LeastOf(
        kRuns, [&] { fs::copy_file(work, widened, fs::copy_options::overwrite_existing); },
        [&] { CopyTablesTwice(widened, tables); });
    fs::remove(widened);
    Report(
        fmt::format("import of {} lines, {} new cost centers, open to close", kLines, kNewCenters),
        took, "raw SQLite, the lines and the widened tables twice", RawLines(folder, text) + copies,
        folder, "1 s");
}

}  // namespace

void BenchImports(const std::string& folder) {
    BenchGrowingFiles(folder);
    BenchNewCentersOfLarge(folder);
}

}  // namespace zolmara::bench
