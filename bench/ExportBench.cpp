// zolmara-export-bench FOLDER FILE.CRF: what writing a statement as a workbook takes, in time and
// memory, beside libxlsxwriter writing the same cells alone.

#include <fmt/format.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "bench/Measure.h"
#include "bench/PlainBook.h"
#include "bench/Process.h"
#include "bench/SilentHost.h"
#include "spreadsheet/Export.h"
#include "store/files/FileDoor.h"
#include "store/session/Session.h"

namespace zolmara::bench {
namespace {

void Export(const std::string& crf, const std::string& out, bool values) {
    SilentHost host;
    InstallHost(&host);
    const ReplaceAsTold told(true, "");
    if (!OpenCrf(crf)) throw std::runtime_error(crf + " was refused");
    ExportWorkbook(out, {.Items = {}, .Values = values});
    DropCrf();
    host.NeedSilence();
}

/// What a piece of work takes in a process of its own, so that it is known for it alone.
struct Usage {
    Least Time;
    double PeakMb = 0;
};

Usage Measured(const std::string& folder, const std::function<void()>& work) {
    const std::string peak = folder + "/peak";
    Usage usage;
    usage.Time = LeastOf(1, [&] {
        InChild([&] {
            work();
            std::ofstream(peak) << PeakKilobytes();
        });
    });
    constexpr double kKbInMb = 1024;
    std::ifstream(peak) >> usage.PeakMb;
    usage.PeakMb /= kKbInMb;
    return usage;
}

long CellsKept(const std::string& folder, const std::string& book, const std::string& kept) {
    const std::string count = folder + "/count";
    InChild([&] { std::ofstream(count) << KeepCells(book, kept); });
    long cells = 0;
    std::ifstream(count) >> cells;
    return cells;
}

void Measure(const std::string& folder, const std::string& crf, bool values) {
    const std::string book = folder + "/export.xlsx";
    const std::string kept = folder + "/export.cells";
    const Usage own = Measured(folder, [&] { Export(crf, book, values); });
    const long cells = CellsKept(folder, book, kept);
    const Usage plain = Measured(folder, [&] { WritePlainBook(kept, folder + "/plain.xlsx"); });
    Report(fmt::format("{}: {} cells, {:.0f} MB as a file, {:.0f} MB of memory",
                       values ? "plain values" : "live formulas", cells,
                       static_cast<double>(std::filesystem::file_size(book)) / 1e6, own.PeakMb),
           own.Time, fmt::format("libxlsxwriter alone, {:.0f} MB of memory", plain.PeakMb),
           plain.Time, folder);
}

}  // namespace
}  // namespace zolmara::bench

int main(int argc, char** argv) {
    if (argc != 3) {
        fmt::print(stderr, "zolmara-export-bench FOLDER FILE.CRF\n");
        return 1;
    }
    std::filesystem::create_directories(argv[1]);
    zolmara::bench::Measure(argv[1], argv[2], true);
    zolmara::bench::Measure(argv[1], argv[2], false);
    return 0;
}
