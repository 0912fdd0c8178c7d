// zolmara-export-bench FOLDER FILE.CRF: what writing a statement as a workbook takes, in time and
// memory, beside libxlsxwriter writing the same cells alone.

#include <fmt/format.h>

#include <filesystem>
#include <fstream>

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
    OpenCrf(crf);
    ExportWorkbook(out, {.Items = {}, .Values = values});
    DropCrf();
}

/// What a piece of work takes in a process of its own, so that it is known for it alone.
struct Usage {
    Least Time;
    double PeakMb = 0;
};

Usage Measured(const std::string& folder, const std::function<void()>& work) {
    const std::string peak = folder + "/peak";
    Usage usage;
    usage.Time = LeastOf(
        1, [] {},
        [&] {
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

std::string Shown(const Usage& usage) {
    return fmt::format("{:6.2f} s of CPU, {:6.2f} s, {:5.1f} MB", usage.Time.Cpu, usage.Time.Wall,
                       usage.PeakMb);
}

void Measure(const std::string& folder, const std::string& crf, bool values) {
    const std::string book = folder + "/export.xlsx";
    const std::string kept = folder + "/export.cells";
    const Usage own = Measured(folder, [&] { Export(crf, book, values); });
    InChild([&] {
        fmt::print("{} cells, {:.0f} MB as a file, {}\n", KeepCells(book, kept),
                   static_cast<double>(std::filesystem::file_size(book)) / 1e6,
                   values ? "values" : "formulas");
        std::fflush(stdout);
    });
    const Usage plain = Measured(folder, [&] { WritePlainBook(kept, folder + "/plain.xlsx"); });
    fmt::print("  export               {}\n  libxlsxwriter alone  {}\n  ratio of CPU {:.2f}\n",
               Shown(own), Shown(plain), own.Time.Cpu / plain.Time.Cpu);
    std::fflush(stdout);
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
