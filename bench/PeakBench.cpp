#include "bench/PeakBench.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <sstream>
#include <stdexcept>

#include "bench/Measure.h"
#include "bench/Process.h"
#include "bench/Statements.h"
#include "ecr/Build_ECR.h"
#include "print/PdfDevice.h"
#include "print/PrintDriver.h"
#include "store/session/Session.h"

namespace zolmara::bench {
namespace {

namespace fs = std::filesystem;

void PrintIntoPdf(const std::string& folder, SilentHost& host) {
    PdfDevice pdf(folder + "/peak.pdf");
    host.Device = &pdf;
    Print_All(0);
    pdf.Save();
    host.Device = nullptr;
}

struct Step {
    const char* Word;
    const char* Name;
    void (*Do)(const std::string& folder, SilentHost& host);
};
constexpr Step kSteps[] = {
    {"print", "the whole form into a print file",
     [](const std::string&, SilentHost&) { Print_All(0); }},
    {"pdf", "the same, and into a PDF file", PrintIntoPdf},
    {"ecr", "report and print image, sealed", [](const std::string&, SilentHost&) { Build_ECR(); }},
};

/// What the program beside prints.
struct Peaks {
    long Opened = 0;
    long Behind = 0;
};

Peaks PeaksOf(const std::string& command) {
    std::istringstream told(OutputOf(command));
    Peaks peaks;
    if (!(told >> peaks.Opened >> peaks.Behind)) throw std::runtime_error("no peak was told");
    return peaks;
}

double Megabytes(long kilobytes) { return static_cast<double>(kilobytes) / 1024; }

void Tell(const Size& size, const char* what, const Peaks& peaks) {
    ReportNote(fmt::format("memory, {}: {}", size.Name, what),
               fmt::format("{:.1f} MB opened, {:.1f} MB more", Megabytes(peaks.Opened),
                           Megabytes(peaks.Behind - peaks.Opened)));
}

}  // namespace

void BenchPeaks(const std::string& folder) {
    for (const Size& size : kSizes) {
        const std::string crf = fmt::format("{}/{}.CRF", folder, size.Name);
        MakeStatement(crf, ShapeOf(size));
        DropCrf();
        for (const Step& step : kSteps)
            Tell(size, step.Name,
                 PeaksOf(fmt::format("{} {} {} {}", Quoted(ThisProgram()), kPeakWord, step.Word,
                                     Quoted(crf))));
        const std::string window = Beside("zolmara-page-bench");
        if (fs::exists(window))
            Tell(size, "from the window: printed, looked at, and all pages into a PDF file",
                 PeaksOf(fmt::format("{} {} {} {}", Quoted(window), Quoted(folder), Quoted(crf),
                                     kPeakWord)));
    }
}

bool MeasurePeak(const std::string& step, const std::string& crf, SilentHost& host) {
    const auto* const found =
        std::ranges::find_if(kSteps, [&](const Step& each) { return step == each.Word; });
    if (found == std::end(kSteps)) return false;
    Open(crf);
    const long opened = PeakKilobytes();
    found->Do(fs::path(crf).parent_path().string(), host);
    fmt::print("{} {}\n", opened, PeakKilobytes());
    return true;
}

}  // namespace zolmara::bench
